// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/utils.h>

#include "narrow/crossing.h"

namespace quen {

using internal::Wide;

std::int32_t CQuenXMLUtils2::IsValidElementName(const string& inName) {
  return CQuenXMLUtils2w::IsValidElementName(Wide(inName));
}

string ToUtf8(const wstring& inText) { return internal::Utf8(inText); }
wstring ToUtf16(const string& inText) {
  return internal::Narrow([&] { return Wide(inText); });
}

}  // namespace quen
