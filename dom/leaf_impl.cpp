// SPDX-License-Identifier: Apache-2.0
#include "dom/leaf_impl.h"

namespace quen {

CQuenXMLElementImpl2w CQuenXMLAttrImpl2w::GetOwnerElement() const {
  return CQuenXMLElementImpl2w(
      node_ != nullptr ? static_cast<xercesc::DOMAttr*>(node_)->getOwnerElement() : nullptr);
}

}  // namespace quen
