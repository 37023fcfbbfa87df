// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/utils.h>

#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLString.hpp>

namespace quen {

std::int32_t CQuenXMLUtils2w::IsValidElementName(const wstring& inName) {
  const XMLSize_t length = xercesc::XMLString::stringLen(inName.c_str());
  return xercesc::XMLChar1_0::isValidName(inName.c_str(), length) ? 1 : 0;
}

}  // namespace quen
