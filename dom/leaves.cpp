// SPDX-License-Identifier: Apache-2.0
//
// The handles that only narrow down the kind of node.
#include "dom/handle_impl.h"

namespace quen {

using internal::ImplFromNode;
using internal::ImplOnNodeOf;

CQuenXMLAttr2w::CQuenXMLAttr2w() = default;
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLAttr2w& inOther)
    : CQuenXMLNode2w(ImplOnNodeOf<CQuenXMLAttrImpl2w>(inOther)) {}
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLNode2w& inNode)
    : CQuenXMLNode2w(ImplFromNode<CQuenXMLAttrImpl2w>(inNode)) {}
CQuenXMLAttr2w::CQuenXMLAttr2w(const CQuenXMLAttrImpl2w& inImpl)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLAttrImpl2w>(inImpl)) {}
CQuenXMLAttr2w::~CQuenXMLAttr2w() = default;
CQuenXMLAttr2w& CQuenXMLAttr2w::operator=(const CQuenXMLAttr2w& inOther) {
  if (this != &inOther) ReplaceImpl(ImplOnNodeOf<CQuenXMLAttrImpl2w>(inOther));
  return *this;
}

CQuenXMLElement2w CQuenXMLAttr2w::GetOwnerElement() const {
  // A default-constructed handle has a plain implementation.
  return CQuenXMLElement2w(CQuenXMLAttrImpl2w(GetImpl()->GetDOMNode()).GetOwnerElement());
}

CQuenXMLCDATA2w::CQuenXMLCDATA2w() = default;
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLCDATA2w& inOther)
    : CQuenXMLNode2w(ImplOnNodeOf<CQuenXMLCDATAImpl2w>(inOther)) {}
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLNode2w& inNode)
    : CQuenXMLNode2w(ImplFromNode<CQuenXMLCDATAImpl2w>(inNode)) {}
CQuenXMLCDATA2w::CQuenXMLCDATA2w(const CQuenXMLCDATAImpl2w& inImpl)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLCDATAImpl2w>(inImpl)) {}
CQuenXMLCDATA2w::~CQuenXMLCDATA2w() = default;
CQuenXMLCDATA2w& CQuenXMLCDATA2w::operator=(const CQuenXMLCDATA2w& inOther) {
  if (this != &inOther) ReplaceImpl(ImplOnNodeOf<CQuenXMLCDATAImpl2w>(inOther));
  return *this;
}

CQuenXMLComment2w::CQuenXMLComment2w() = default;
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLComment2w& inOther)
    : CQuenXMLNode2w(ImplOnNodeOf<CQuenXMLCommentImpl2w>(inOther)) {}
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLNode2w& inNode)
    : CQuenXMLNode2w(ImplFromNode<CQuenXMLCommentImpl2w>(inNode)) {}
CQuenXMLComment2w::CQuenXMLComment2w(const CQuenXMLCommentImpl2w& inImpl)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLCommentImpl2w>(inImpl)) {}
CQuenXMLComment2w::~CQuenXMLComment2w() = default;
CQuenXMLComment2w& CQuenXMLComment2w::operator=(const CQuenXMLComment2w& inOther) {
  if (this != &inOther) ReplaceImpl(ImplOnNodeOf<CQuenXMLCommentImpl2w>(inOther));
  return *this;
}

CQuenXMLPI2w::CQuenXMLPI2w() = default;
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLPI2w& inOther)
    : CQuenXMLNode2w(ImplOnNodeOf<CQuenXMLPIImpl2w>(inOther)) {}
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLNode2w& inNode)
    : CQuenXMLNode2w(ImplFromNode<CQuenXMLPIImpl2w>(inNode)) {}
CQuenXMLPI2w::CQuenXMLPI2w(const CQuenXMLPIImpl2w& inImpl)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLPIImpl2w>(inImpl)) {}
CQuenXMLPI2w::~CQuenXMLPI2w() = default;
CQuenXMLPI2w& CQuenXMLPI2w::operator=(const CQuenXMLPI2w& inOther) {
  if (this != &inOther) ReplaceImpl(ImplOnNodeOf<CQuenXMLPIImpl2w>(inOther));
  return *this;
}

}  // namespace quen
