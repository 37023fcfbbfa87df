// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/quenxml2.h>

#include <iostream>
#include <string>

int main() {
  // A password: deriving the key from it takes over half a second on purpose. A service that keeps
  // a random key gives it as "quen-raw-key:" and 64 hexadecimal digits. Neither belongs into a
  // source file.
  const std::string password = "correct horse battery staple";
  try {
    quen::CQuenXMLData2 account("<account><balance>1250</balance></account>");
    account.WriteToEncryptedFile("account.bin", 1, password);

    quen::CQuenXMLData2 again;
    again.ReadFromEncryptedFile("account.bin", password);
    std::cout << quen::Get<int>(again, "/account/balance") << '\n';

    // A wrong password, or one changed bit in the file, is a failure. The tree stays as it was.
    again.ReadFromEncryptedFile("account.bin", "a guess");
  } catch (const quen::CQuenXMLException2& failure) {
    std::cout << failure.GetErrorCode() << " " << failure.GetErrorMessage() << '\n';
  }
}
