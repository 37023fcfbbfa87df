// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/utils.h>

#include "narrow/crossing.h"

namespace quen {

using internal::Wide;

std::int32_t CQuenXMLUtils2::IsValidElementName(const string& inName) {
  return CQuenXMLUtils2w::IsValidElementName(Wide(inName));
}

}  // namespace quen
