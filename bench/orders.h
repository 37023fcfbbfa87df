// SPDX-License-Identifier: Apache-2.0
//
// The data of the benchmarks: a list of orders, in two encodings of one text.
#ifndef QUENXML2_BENCH_ORDERS_H_
#define QUENXML2_BENCH_ORDERS_H_

#include <cstddef>
#include <string>

namespace bench {

inline constexpr std::size_t kElementsPerOrder = 11;

// About `inElements` elements, 1 + 11 for each order: attributes, numbers, escapes, some text that
// is not ASCII, and the line feeds of a formatted file. 29 bytes an element.
inline std::string OrdersUtf8(std::size_t inElements) {
  std::string text = "<orders>\n";
  for (std::size_t i = 1; i * kElementsPerOrder < inElements; ++i) {
    const std::string number = std::to_string(i);
    text += "  <order day=\"2024-03-18\" id=\"" + number +
            "\">\n    <name>Gr\xC3\xBCnwald &amp; S\xC3\xB6hne " + number + "</name>\n";
    for (const char* item : {"bolt", "nut", "washer"}) {
      text += "    <item qty=\"" + std::to_string(i % 97) + "\"><article>" + item + "-" + number +
              "</article><price>" + std::to_string(i % 1000) + "." + std::to_string(i % 10) +
              "</price></item>\n";
    }
    text += "  </order>\n";
  }
  return text + "</orders>";
}

// All characters here are of the basic plane.
inline std::u16string ToUtf16(const std::string& inBytes) {
  std::u16string text;
  text.reserve(inBytes.size());
  for (std::size_t i = 0; i < inBytes.size(); ++i) {
    const unsigned char byte = static_cast<unsigned char>(inBytes[i]);
    if (byte < 0x80) {
      text += static_cast<char16_t>(byte);
    } else {
      const unsigned char next = static_cast<unsigned char>(inBytes[++i]);
      text += static_cast<char16_t>((byte & 0x1F) << 6 | (next & 0x3F));
    }
  }
  return text;
}

}  // namespace bench

#endif  // QUENXML2_BENCH_ORDERS_H_
