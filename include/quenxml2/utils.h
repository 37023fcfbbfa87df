// SPDX-License-Identifier: Apache-2.0
//
// Whether a text may be the name of an element, asked before a node or a path is made of it; and
// the way between the two text types.
//
//   quen::CQuenXMLUtils2::IsValidElementName("order");     // 1
//   quen::CQuenXMLUtils2::IsValidElementName("2nd-item");  // 0
//   quen::ToUtf8(u"Gr\u00fc\u00dfe");                       // "Grüße", five units, seven bytes
#ifndef QUENXML2_UTILS_H_
#define QUENXML2_UTILS_H_

#include <cstdint>

#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

// Questions about wide names.
class QUENXML2_API CQuenXMLUtils2w {
 public:
  // 1 if the text up to its first zero unit is a Name of XML 1.0, else 0. Colons may stand anywhere
  // in a Name; prefixes are not looked at. Raises nothing.
  static std::int32_t IsValidElementName(const wstring& inName);
};

// Questions about names in UTF-8.
class QUENXML2_API CQuenXMLUtils2 {
 public:
  // The same for UTF-8. Text that is not well-formed raises a CQuenXMLException2w.
  static std::int32_t IsValidElementName(const string& inName);
};

// A text of the other type, up to its first zero unit. They are carried exactly or not at all: a
// surrogate without its partner raises a CQuenXMLException2w, bytes that are not well-formed UTF-8
// a CQuenXMLException2. No state: any thread may call them.
QUENXML2_API string ToUtf8(const wstring& inText);
// The other way round.
QUENXML2_API wstring ToUtf16(const string& inText);

}  // namespace quen

#endif  // QUENXML2_UTILS_H_
