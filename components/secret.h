// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_COMPONENTS_SECRET_H_
#define QUENXML2_COMPONENTS_SECRET_H_

#include <openssl/crypto.h>

#include <cstddef>
#include <memory>

namespace quen::internal {

// Bytes that are wiped when they go, on every way out. They never move, so that no copy stays back.
class Secret {
 public:
  explicit Secret(std::size_t inSize) : bytes_(new unsigned char[inSize]()), size_(inSize) {}
  ~Secret() { OPENSSL_cleanse(bytes_.get(), size_); }
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;

  unsigned char* Data() { return bytes_.get(); }
  const unsigned char* Data() const { return bytes_.get(); }
  std::size_t Size() const { return size_; }

 private:
  std::unique_ptr<unsigned char[]> bytes_;
  std::size_t size_;
};

}  // namespace quen::internal

#endif  // QUENXML2_COMPONENTS_SECRET_H_
