// SPDX-License-Identifier: Apache-2.0
//
// The handles that only narrow down the kind of node.
#include "dom/handle_impl.h"

namespace quen {

using internal::ImplFromNode;
using internal::ImplOnNodeOf;

CQuenXMLAttr2w::CQuenXMLAttr2w() = default;
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLAttr2w& inOther) : CQuenXMLNode2w() {
  SetImpl(ImplOnNodeOf<CQuenXMLAttrImpl2w>(inOther));
}
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLNode2w& inNode) : CQuenXMLNode2w() {
  SetImpl(ImplFromNode<CQuenXMLAttrImpl2w>(inNode));
}
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLAttrImpl2w& inImpl) : CQuenXMLNode2w() {
  SetImpl(inImpl);
}
CQuenXMLAttr2w::~CQuenXMLAttr2w() = default;
CQuenXMLAttr2w& CQuenXMLAttr2w::operator=(const CQuenXMLAttr2w& inOther) {
  if (this != &inOther) SetImpl(ImplOnNodeOf<CQuenXMLAttrImpl2w>(inOther));
  return *this;
}

CQuenXMLElement2w CQuenXMLAttr2w::GetOwnerElement() const {
  // A default-constructed handle has a plain implementation, and one that was assigned through its
  // base may stand on a node of any kind.
  xercesc::DOMNode* const node = GetImpl()->GetDOMNode();
  const bool isAttribute =
      node != nullptr && node->getNodeType() == xercesc::DOMNode::ATTRIBUTE_NODE;
  return CQuenXMLElement2w(CQuenXMLAttrImpl2w(isAttribute ? node : nullptr).GetOwnerElement());
}

CQuenXMLCDATA2w::CQuenXMLCDATA2w() = default;
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLCDATA2w& inOther) : CQuenXMLNode2w() {
  SetImpl(ImplOnNodeOf<CQuenXMLCDATAImpl2w>(inOther));
}
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLNode2w& inNode) : CQuenXMLNode2w() {
  SetImpl(ImplFromNode<CQuenXMLCDATAImpl2w>(inNode));
}
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLCDATAImpl2w& inImpl) : CQuenXMLNode2w() {
  SetImpl(inImpl);
}
CQuenXMLCDATA2w::~CQuenXMLCDATA2w() = default;
CQuenXMLCDATA2w& CQuenXMLCDATA2w::operator=(const CQuenXMLCDATA2w& inOther) {
  if (this != &inOther) SetImpl(ImplOnNodeOf<CQuenXMLCDATAImpl2w>(inOther));
  return *this;
}

CQuenXMLComment2w::CQuenXMLComment2w() = default;
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLComment2w& inOther) : CQuenXMLNode2w() {
  SetImpl(ImplOnNodeOf<CQuenXMLCommentImpl2w>(inOther));
}
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLNode2w& inNode) : CQuenXMLNode2w() {
  SetImpl(ImplFromNode<CQuenXMLCommentImpl2w>(inNode));
}
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLCommentImpl2w& inImpl) : CQuenXMLNode2w() {
  SetImpl(inImpl);
}
CQuenXMLComment2w::~CQuenXMLComment2w() = default;
CQuenXMLComment2w& CQuenXMLComment2w::operator=(const CQuenXMLComment2w& inOther) {
  if (this != &inOther) SetImpl(ImplOnNodeOf<CQuenXMLCommentImpl2w>(inOther));
  return *this;
}

CQuenXMLPI2w::CQuenXMLPI2w() = default;
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLPI2w& inOther) : CQuenXMLNode2w() {
  SetImpl(ImplOnNodeOf<CQuenXMLPIImpl2w>(inOther));
}
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLNode2w& inNode) : CQuenXMLNode2w() {
  SetImpl(ImplFromNode<CQuenXMLPIImpl2w>(inNode));
}
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLPIImpl2w& inImpl) : CQuenXMLNode2w() { SetImpl(inImpl); }
CQuenXMLPI2w::~CQuenXMLPI2w() = default;
CQuenXMLPI2w& CQuenXMLPI2w::operator=(const CQuenXMLPI2w& inOther) {
  if (this != &inOther) SetImpl(ImplOnNodeOf<CQuenXMLPIImpl2w>(inOther));
  return *this;
}

}  // namespace quen
