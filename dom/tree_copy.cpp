// SPDX-License-Identifier: Apache-2.0
#include "dom/tree_copy.h"

#include <algorithm>
#include <vector>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/dom/DOMMemoryManager.hpp>
#include <xercesc/dom/impl/DOMAttrNSImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementNSImpl.hpp>
#include <xercesc/util/XMLChar.hpp>

#include "foundation/limits.h"
#include "foundation/parser.h"
#include "foundation/tree_links.h"

namespace quen::internal {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMMemoryManager;
using xercesc::DOMNode;

// The node behind `inNode` in document order within the subtree of `inTop`; null at its end.
// `ioDepth`, the level below `inTop`, follows. Entity references are not entered.
const DOMNode* NextInSubtree(const DOMNode* inNode, const DOMNode* inTop, std::size_t& ioDepth) {
  const DOMNode* next =
      inNode->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE ? nullptr : inNode->getFirstChild();
  if (next != nullptr) {
    ++ioDepth;
    return next;
  }
  while (inNode != inTop) {
    next = inNode->getNextSibling();
    if (next != nullptr) return next;
    inNode = inNode->getParentNode();
    --ioDepth;
  }
  return nullptr;
}

// Whether the engine's own copy is safe and whole: not too deep, and without entity references,
// which lose what they expand to on the way into another document.
bool CanTheEngineCopy(const DOMNode* inTop, bool inIntoAnotherDocument) {
  std::size_t depth = 0;
  for (const DOMNode* node = inTop; node != nullptr; node = NextInSubtree(node, inTop, depth)) {
    if (depth > kMaxDepth) return false;
    if (inIntoAnotherDocument && node->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE)
      return false;
  }
  return true;
}

// The copy of an entity reference. Entities nest no deeper than the parser takes them.
DOMNode* ImportReference(DOMDocument* inDocument, const DOMNode* inReference) {
  DOMNode* const copy = inDocument->importNode(inReference, true);
  if (copy->hasChildNodes()) return copy;  // the document has a declaration of its own
  xercesc::DOMNodeImpl* const access = xercesc::castToNodeImpl(copy);
  access->setReadOnly(false, false);
  for (const DOMNode* child = inReference->getFirstChild(); child != nullptr;
       child = child->getNextSibling()) {
    copy->appendChild(ImportDeep(inDocument, child));
  }
  access->setReadOnly(true, true);
  return copy;
}

DOMNode* ImportWithoutRecursion(DOMDocument* inDocument, const DOMNode* inTop) {
  // The copies on the way down. Each is hung under its parent when it is complete, and so before
  // its parent has ancestors, all of which the engine would look through.
  std::vector<DOMNode*> open;
  const auto closeTo = [&](std::size_t count) {
    for (; open.size() > count; open.pop_back()) open[open.size() - 2]->appendChild(open.back());
  };
  std::size_t depth = 0;
  for (const DOMNode* node = inTop; node != nullptr; node = NextInSubtree(node, inTop, depth)) {
    closeTo(std::max<std::size_t>(depth, 1));
    open.push_back(node->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE
                       ? ImportReference(inDocument, node)
                       : inDocument->importNode(node, false));
  }
  closeTo(1);
  return open.front();
}

// The document element is taken out for the time that the engine copies the rest, and put back:
// only so does a document type come along.
class WithoutDocumentElement {
 public:
  explicit WithoutDocumentElement(DOMDocument* ioDocument)
      : document_(ioDocument),
        element_(ioDocument->getDocumentElement()),
        next_(element_->getNextSibling()) {
    document_->removeChild(element_);
  }
  ~WithoutDocumentElement() { document_->insertBefore(element_, next_); }
  WithoutDocumentElement(const WithoutDocumentElement&) = delete;
  WithoutDocumentElement& operator=(const WithoutDocumentElement&) = delete;

  const DOMNode* Element() const { return element_; }
  // How many nodes stand behind the element.
  std::size_t Behind() const {
    std::size_t count = 0;
    for (const DOMNode* node = next_; node != nullptr; node = node->getNextSibling()) ++count;
    return count;
  }

 private:
  DOMDocument* document_;
  DOMNode* element_;
  DOMNode* next_;
};

DOMNode* CloneDeepDocument(const DOMDocument* inDocument) {
  const WithoutDocumentElement rest(const_cast<DOMDocument*>(inDocument));
  DOMDocument* const clone = static_cast<DOMDocument*>(inDocument->cloneNode(true));
  DocumentPtr owner(clone);
  DOMNode* before = nullptr;
  for (std::size_t i = rest.Behind(); i > 0; --i)
    before = before == nullptr ? clone->getLastChild() : before->getPreviousSibling();
  clone->insertBefore(ImportWithoutRecursion(clone, rest.Element()), before);
  return owner.release();
}

// The copy of one node, not yet in the tree. `inWithDefaults` is whether attributes come along that
// a document type gave and nobody wrote: they do in a clone, and not in what is imported.
class NodeCopier {
 public:
  NodeCopier(DOMDocument* inTarget, bool inWithDefaults)
      : target_(inTarget), withDefaults_(inWithDefaults) {}

  DOMNode* Copy(const DOMNode* inNode) {
    switch (inNode->getNodeType()) {
      case DOMNode::ELEMENT_NODE:
        return CopyElement(static_cast<const xercesc::DOMElement*>(inNode));
      case DOMNode::TEXT_NODE:
        return target_->createTextNode(inNode->getNodeValue());
      case DOMNode::ENTITY_REFERENCE_NODE:
        return ImportReference(target_, inNode);
      default:
        return target_->importNode(inNode, false);
    }
  }

 private:
  // The names were checked when the node was made.
  xercesc::DOMElement* CopyElement(const xercesc::DOMElement* inElement) {
    const char16_t* const localName = inElement->getLocalName();
    xercesc::DOMElement* const copy =
        localName != nullptr ? new (target_, DOMMemoryManager::ELEMENT_NS_OBJECT)
                                   xercesc::DOMElementNSImpl(target_, inElement->getNamespaceURI(),
                                                             inElement->getPrefix(), localName,
                                                             inElement->getNodeName())
                             : new (target_, DOMMemoryManager::ELEMENT_OBJECT)
                                   xercesc::DOMElementImpl(target_, inElement->getNodeName());
    if (inElement->hasAttributes()) CopyAttributes(inElement->getAttributes(), copy);
    return copy;
  }

  void CopyAttributes(const xercesc::DOMNamedNodeMap* inFrom, xercesc::DOMElement* ioElement) {
    const XMLSize_t count = inFrom->getLength();
    NewAttributes attributes(ioElement, count);
    for (XMLSize_t i = 0; i < count; ++i) {
      const auto* const attribute = static_cast<const xercesc::DOMAttr*>(inFrom->item(i));
      if (!withDefaults_ && !attribute->getSpecified()) continue;
      const char16_t* const localName = attribute->getLocalName();
      xercesc::DOMAttr* const copy =
          localName != nullptr
              ? new (target_, DOMMemoryManager::ATTR_NS_OBJECT)
                    xercesc::DOMAttrNSImpl(target_, attribute->getNamespaceURI(),
                                           attribute->getPrefix(), localName, attribute->getName())
              : new (target_, DOMMemoryManager::ATTR_OBJECT)
                    xercesc::DOMAttrImpl(target_, attribute->getName());
      SetNewAttribute(copy, ValueOf(attribute), attribute->getSpecified());
      attributes.AddLast(copy);
      // A schema makes identifiers, too.
      if (attribute->isId()) static_cast<xercesc::DOMAttrImpl*>(copy)->addAttrToIDNodeMap();
    }
  }

  DOMDocument* const target_;
  const bool withDefaults_;
};

// Trees of elements in documents without a type. A type makes attributes of its own in the target,
// and identifiers in the source.
bool CanCopyInto(const DOMDocument* inTarget, const DOMNode* inNode) {
  return inNode->getNodeType() == DOMNode::ELEMENT_NODE && inTarget->getDoctype() == nullptr &&
         inNode->getOwnerDocument()->getDoctype() == nullptr;
}

// Does not recurse.
DOMNode* CopyOfTree(DOMDocument* inTarget, const DOMNode* inTop, bool inWithDefaults) {
  NodeCopier copier(inTarget, inWithDefaults);
  DOMNode* const top = copier.Copy(inTop);
  xercesc::DOMElement* parent = static_cast<xercesc::DOMElement*>(top);
  const DOMNode* node = inTop->getFirstChild();
  const DOMNode* above = inTop;
  while (node != nullptr || above != inTop) {
    if (node == nullptr) {
      node = above->getNextSibling();
      above = ParentOf(above);
      parent = static_cast<xercesc::DOMElement*>(ParentOf(parent));
      continue;
    }
    DOMNode* const copy = copier.Copy(node);
    LinkNew(parent, copy);
    if (node->getNodeType() == DOMNode::ELEMENT_NODE) {
      above = node;
      parent = static_cast<xercesc::DOMElement*>(copy);
      node = node->getFirstChild();
    } else {
      node = node->getNextSibling();
    }
  }
  return top;
}

DOMNode* CopyOfDocument(const DOMDocument* inDocument) {
  auto* const copy = static_cast<DOMDocument*>(inDocument->cloneNode(false));
  DocumentPtr owner(copy);
  for (const DOMNode* child = inDocument->getFirstChild(); child != nullptr;
       child = child->getNextSibling()) {
    copy->appendChild(child->getNodeType() == DOMNode::ELEMENT_NODE
                          ? CopyOfTree(copy, child, true)
                          : copy->importNode(child, false));
  }
  return owner.release();
}

bool IsBlank(const char16_t* inText) {
  return xercesc::XMLChar1_0::isAllSpaces(inText, std::char_traits<char16_t>::length(inText));
}

void NormalizeChildren(DOMNode* ioParent, bool inStripBlanks) {
  DOMNode* child = ioParent->getFirstChild();
  while (child != nullptr) {
    DOMNode* next = child->getNextSibling();
    if (child->getNodeType() == DOMNode::TEXT_NODE) {
      while (next != nullptr && next->getNodeType() == DOMNode::TEXT_NODE) {
        static_cast<xercesc::DOMText*>(child)->appendData(next->getNodeValue());
        ioParent->removeChild(next);
        next = child->getNextSibling();
      }
      if (inStripBlanks && IsBlank(child->getNodeValue())) ioParent->removeChild(child);
    }
    child = next;
  }
}

}  // namespace

DOMNode* CloneDeep(const DOMNode* inNode) {
  const bool isDocument = inNode->getNodeType() == DOMNode::DOCUMENT_NODE;
  const DOMDocument* const document =
      isDocument ? static_cast<const DOMDocument*>(inNode) : inNode->getOwnerDocument();
  if (isDocument && document->getDoctype() == nullptr) return CopyOfDocument(document);
  if (!isDocument && CanCopyInto(document, inNode))
    return CopyOfTree(const_cast<DOMDocument*>(document), inNode, true);
  if (CanTheEngineCopy(inNode, isDocument)) return inNode->cloneNode(true);
  if (isDocument) return CloneDeepDocument(document);
  return ImportWithoutRecursion(inNode->getOwnerDocument(), inNode);
}

DOMNode* ImportDeep(DOMDocument* inDocument, const DOMNode* inNode) {
  if (CanCopyInto(inDocument, inNode)) return CopyOfTree(inDocument, inNode, false);
  return CanTheEngineCopy(inNode, true) ? inDocument->importNode(inNode, true)
                                        : ImportWithoutRecursion(inDocument, inNode);
}

void SetAttributeText(xercesc::DOMAttr* ioAttribute, const wstring& inValue) {
  // The identifiers of a document are found by their values.
  xercesc::DOMElement* const owner = ioAttribute->isId() ? ioAttribute->getOwnerElement() : nullptr;
  if (owner != nullptr) owner->setIdAttributeNode(ioAttribute, false);
  DOMNode* const text = ioAttribute->getFirstChild();
  const bool canReuse = text != nullptr && text->getNextSibling() == nullptr &&
                        text->getNodeType() == DOMNode::TEXT_NODE && ioAttribute->getSpecified();
  if (canReuse) {
    text->setNodeValue(inValue.c_str());
  } else {
    while (DOMNode* const child = ioAttribute->getFirstChild()) ioAttribute->removeChild(child);
    ioAttribute->setValue(inValue.c_str());
  }
  if (owner != nullptr) owner->setIdAttributeNode(ioAttribute, true);
}

void CheckIsChild(const DOMNode* inParent, const DOMNode* inChild) {
  if (inChild == nullptr || inChild->getParentNode() != inParent)
    throw xercesc::DOMException(xercesc::DOMException::NOT_FOUND_ERR, 0);
}

void NormalizeTree(DOMDocument* ioDocument) {
  std::size_t depth = 0;
  for (const DOMNode* node = ioDocument; node != nullptr;
       node = NextInSubtree(node, ioDocument, depth)) {
    // The children change before the walk reaches them.
    const bool isElement = node->getNodeType() == DOMNode::ELEMENT_NODE;
    if (isElement || node == ioDocument) NormalizeChildren(const_cast<DOMNode*>(node), isElement);
  }
}

void MergeAdjacentTexts(DOMDocument* ioDocument) {
  std::size_t depth = 0;
  for (const DOMNode* node = ioDocument; node != nullptr;
       node = NextInSubtree(node, ioDocument, depth)) {
    if (node->getNodeType() == DOMNode::ELEMENT_NODE || node == ioDocument)
      NormalizeChildren(const_cast<DOMNode*>(node), false);
  }
}

bool IsDeeperThan(const DOMNode* inTop, std::size_t inLevels) {
  std::size_t depth = 0;
  for (const DOMNode* node = inTop; node != nullptr; node = NextInSubtree(node, inTop, depth))
    if (depth > inLevels) return true;
  return false;
}

}  // namespace quen::internal
