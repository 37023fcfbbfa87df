// SPDX-License-Identifier: Apache-2.0
//
// The two text types of the library.
//
// Wide text is a sequence of 16-bit code units, read as UTF-16. Narrow text is a sequence of bytes,
// read as UTF-8 whatever the locale. The platform's wchar_t has 32 bits and is used nowhere.
#ifndef QUENXML2_TYPES_H_
#define QUENXML2_TYPES_H_

#include <cstdint>
#include <string>

namespace quen {

// Wide text: UTF-16 in 16-bit code units.
using wstring = std::u16string;
// Narrow text: UTF-8 in bytes.
using string = std::string;

}  // namespace quen

#endif  // QUENXML2_TYPES_H_
