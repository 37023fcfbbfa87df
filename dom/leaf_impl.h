// SPDX-License-Identifier: Apache-2.0
//
// The implementations of the handles that only narrow down the kind of node.
#ifndef QUENXML2_DOM_LEAF_IMPL_H_
#define QUENXML2_DOM_LEAF_IMPL_H_

#include "dom/element_impl.h"

namespace quen {

namespace internal {

// An implementation for one kind of node.
template <CQuenXMLNode2w::NodeType kType>
class LeafImpl : public CQuenXMLNodeImpl2w {
 public:
  LeafImpl() = default;
  explicit LeafImpl(xercesc::DOMNode* inNode) : CQuenXMLNodeImpl2w(inNode) {}
  // Null if `inNode` is of another kind; throws 8 if it is null itself.
  explicit LeafImpl(const CQuenXMLNodeImpl2w& inNode)
      : CQuenXMLNodeImpl2w(inNode.GetNodeType() == kType ? inNode.GetDOMNode() : nullptr) {}
};

}  // namespace internal

class CQuenXMLAttrImpl2w : public internal::LeafImpl<CQuenXMLNode2w::AttributeNode> {
 public:
  using LeafImpl::LeafImpl;
  // A null element if there is no owner, or no attribute.
  CQuenXMLElementImpl2w GetOwnerElement() const;
};

class CQuenXMLCDATAImpl2w : public internal::LeafImpl<CQuenXMLNode2w::CDATASectionNode> {
 public:
  using LeafImpl::LeafImpl;
};

class CQuenXMLPIImpl2w : public internal::LeafImpl<CQuenXMLNode2w::ProcessingInstructionNode> {
 public:
  using LeafImpl::LeafImpl;
};

class CQuenXMLCommentImpl2w : public internal::LeafImpl<CQuenXMLNode2w::CommentNode> {
 public:
  using LeafImpl::LeafImpl;
};

}  // namespace quen

#endif  // QUENXML2_DOM_LEAF_IMPL_H_
