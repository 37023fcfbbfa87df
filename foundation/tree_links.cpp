// SPDX-License-Identifier: Apache-2.0
#include "foundation/tree_links.h"

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>
#include <xercesc/util/XMLString.hpp>

namespace quen::internal {
namespace {

using xercesc::DOMElementImpl;
using xercesc::DOMNode;

// Where the engine keeps a node's place in the tree.
struct Links {
  xercesc::DOMNodeImpl& node;
  xercesc::DOMChildNode& siblings;
};

template <class Impl>
Links LinksIn(DOMNode* inNode) {
  Impl* const impl = static_cast<Impl*>(inNode);
  return {impl->fNode, impl->fChild};
}

// For the two kinds of node that make up a tree the class is known.
Links LinksOf(DOMNode* inNode) {
  switch (inNode->getNodeType()) {
    case DOMNode::ELEMENT_NODE:
      return LinksIn<DOMElementImpl>(inNode);
    case DOMNode::TEXT_NODE:
      return LinksIn<xercesc::DOMTextImpl>(inNode);
    default:
      return {*xercesc::castToNodeImpl(inNode), *xercesc::castToChildImpl(inNode)};
  }
}

// The list of attributes, sorted by qualified name.
struct MapContents : xercesc::DOMAttrMapImpl {
  static xercesc::DOMNodeVector* Of(xercesc::DOMAttrMapImpl* inMap) {
    return inMap->*(&MapContents::fNodes);
  }
};

void LinkOnly(DOMNode*& outFirst, DOMNode* inParent, DOMNode* inNew, Links ioLinks) {
  ioLinks.node.fOwnerNode = inParent;
  ioLinks.node.isOwned(true);
  ioLinks.node.isFirstChild(true);
  // The engine keeps the last child as the first one's previous sibling.
  ioLinks.siblings.previousSibling = inNew;
  outFirst = inNew;
}

}  // namespace

void LinkNew(xercesc::DOMElement* ioParent, DOMNode* inNew) {
  Links child = LinksOf(inNew);
  DOMNode*& first = static_cast<DOMElementImpl*>(ioParent)->fParent.fFirstChild;
  if (first == nullptr) {
    LinkOnly(first, ioParent, inNew, child);
    return;
  }
  child.node.fOwnerNode = ioParent;
  child.node.isOwned(true);
  DOMNode*& last = LinksOf(first).siblings.previousSibling;
  child.siblings.previousSibling = last;
  LinksOf(last).siblings.nextSibling = inNew;
  last = inNew;
}

void AppendNew(xercesc::DOMElement* ioParent, DOMNode* inNew) {
  if (static_cast<DOMElementImpl*>(ioParent)->fNode.isReadOnly())
    throw xercesc::DOMException(xercesc::DOMException::NO_MODIFICATION_ALLOWED_ERR, 0);
  LinkNew(ioParent, inNew);
  // The live lists of nodes have to know.
  static_cast<xercesc::DOMDocumentImpl*>(ioParent->getOwnerDocument())->changed();
}

DOMNode* ParentOf(const DOMNode* inNode) {
  switch (inNode->getNodeType()) {
    case DOMNode::ELEMENT_NODE:
    case DOMNode::TEXT_NODE: {
      const xercesc::DOMNodeImpl& node = LinksOf(const_cast<DOMNode*>(inNode)).node;
      return node.isOwned() ? node.fOwnerNode : nullptr;
    }
    default:
      return inNode->getParentNode();
  }
}

const char16_t* ValueOf(const xercesc::DOMAttr* inAttribute) {
  const DOMNode* const text =
      static_cast<const xercesc::DOMAttrImpl*>(inAttribute)->fParent.fFirstChild;
  if (text == nullptr) return u"";
  const bool isWhole =
      text->getNodeType() == DOMNode::TEXT_NODE &&
      LinksIn<xercesc::DOMTextImpl>(const_cast<DOMNode*>(text)).siblings.nextSibling == nullptr;
  return isWhole ? static_cast<const xercesc::DOMTextImpl*>(text)->getData()
                 : inAttribute->getValue();
}

void SortRenamed(xercesc::DOMAttr* ioAttribute) {
  xercesc::DOMElement* const owner = ioAttribute->getOwnerElement();
  if (owner == nullptr) return;
  xercesc::DOMNodeVector* const all =
      MapContents::Of(static_cast<DOMElementImpl*>(owner)->fAttributes);
  XMLSize_t at = 0;
  while (all->elementAt(at) != ioAttribute) ++at;
  all->removeElementAt(at);
  at = 0;
  while (at < all->size() && xercesc::XMLString::compareString(all->elementAt(at)->getNodeName(),
                                                               ioAttribute->getName()) < 0)
    ++at;
  all->insertElementAt(ioAttribute, at);
}

void SetNewAttribute(xercesc::DOMAttr* ioAttribute, const char16_t* inValue, bool inIsSpecified) {
  auto* const attribute = static_cast<xercesc::DOMAttrImpl*>(ioAttribute);
  DOMNode* const text = attribute->fParent.fOwnerDocument->createTextNode(inValue);
  LinkOnly(attribute->fParent.fFirstChild, attribute, text, LinksIn<xercesc::DOMTextImpl>(text));
  attribute->setSpecified(inIsSpecified);
}

NewAttributes::NewAttributes(xercesc::DOMElement* ioElement, XMLSize_t inCount)
    : element_(ioElement) {
  static_cast<DOMElementImpl*>(element_)->fAttributes->reserve(inCount);
}

void NewAttributes::Add(xercesc::DOMAttr* inAttribute) {
  xercesc::DOMAttrMapImpl* const map = static_cast<DOMElementImpl*>(element_)->fAttributes;
  if (map->getLength() == 0) {
    AddLast(inAttribute);
  } else {
    map->setNamedItemNSFast(inAttribute);
  }
}

void NewAttributes::AddLast(xercesc::DOMAttr* inAttribute) {
  xercesc::DOMNodeImpl& node = static_cast<xercesc::DOMAttrImpl*>(inAttribute)->fNode;
  node.fOwnerNode = element_;
  node.isOwned(true);
  MapContents::Of(static_cast<DOMElementImpl*>(element_)->fAttributes)->addElement(inAttribute);
}

}  // namespace quen::internal
