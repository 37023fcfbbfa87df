// SPDX-License-Identifier: Apache-2.0
// What a walk asks of every node, without a virtual call for the kinds that make up nearly all of a
// tree. A node of any other class, and of these in a library that has them twice, answers through
// the DOM's interface; the answer is the same.
#ifndef QUENXML2_DOM_NODE_ACCESS_H_
#define QUENXML2_DOM_NODE_ACCESS_H_

#include <string_view>
#include <typeinfo>

#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementNSImpl.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

namespace quen::internal {

struct NodeFacts {
  int type;
  xercesc::DOMNode* next;   // sibling
  xercesc::DOMNode* child;  // first; only of elements and documents
};

// A plain or namespace-aware element as the class that both are, else null.
inline xercesc::DOMElementImpl* AsElement(xercesc::DOMNode* node) {
  const std::type_info* const type = &typeid(*node);
  return type == &typeid(xercesc::DOMElementNSImpl) || type == &typeid(xercesc::DOMElementImpl)
             ? static_cast<xercesc::DOMElementImpl*>(node)
             : nullptr;
}

// A plain text node as its class, else null.
inline xercesc::DOMTextImpl* AsText(xercesc::DOMNode* node) {
  return &typeid(*node) == &typeid(xercesc::DOMTextImpl) ? static_cast<xercesc::DOMTextImpl*>(node)
                                                         : nullptr;
}

// What an element that AsElement() knows says of its namespace: null for none.
class NamespaceOf : private xercesc::DOMElementNSImpl {
 public:
  // May be empty for none, too.
  static const char16_t* Get(const xercesc::DOMElementImpl& element) {
    if (&typeid(element) == &typeid(xercesc::DOMElementImpl)) return nullptr;
    return static_cast<const xercesc::DOMElementNSImpl&>(element).*(&NamespaceOf::fNamespaceURI);
  }
  static const char16_t* LocalName(const xercesc::DOMElementImpl& element) {
    if (&typeid(element) == &typeid(xercesc::DOMElementImpl)) return nullptr;
    return static_cast<const xercesc::DOMElementNSImpl&>(element).*(&NamespaceOf::fLocalName);
  }
};

// Whether a document may have an element or attribute of that name or local name, or that
// namespace. The DOM keeps all of them in a table of the document. All of that is looked through:
// Xerces-C 3.2 puts some entries into other rows than their hash says.
class NamesOf : private xercesc::DOMDocumentImpl {
 public:
  static bool MayHave(const xercesc::DOMNode& document, std::u16string_view text) {
    if (&typeid(document) != &typeid(xercesc::DOMDocumentImpl)) return true;
    const auto& names = static_cast<const xercesc::DOMDocumentImpl&>(document);
    const xercesc::DOMStringPoolEntry* const* const rows = names.*(&NamesOf::fNameTable);
    const XMLSize_t count = names.*(&NamesOf::fNameTableSize);
    for (XMLSize_t row = 0; row != count; ++row) {
      for (auto entry = rows[row]; entry != nullptr; entry = entry->fNext) {
        if (std::u16string_view(entry->fString, entry->fLength) == text) return true;
      }
    }
    return false;
  }
};

inline NodeFacts FactsOf(xercesc::DOMNode* node) {
  using xercesc::DOMNode;
  if (const auto* const element = AsElement(node)) {
    return {DOMNode::ELEMENT_NODE, element->fChild.nextSibling, element->fParent.fFirstChild};
  }
  if (const auto* const text = AsText(node)) {
    return {DOMNode::TEXT_NODE, text->fChild.nextSibling, nullptr};
  }
  const int type = node->getNodeType();
  const bool hasChildren = type == DOMNode::ELEMENT_NODE || type == DOMNode::DOCUMENT_NODE;
  return {type, node->getNextSibling(), hasChildren ? node->getFirstChild() : nullptr};
}

}  // namespace quen::internal

#endif  // QUENXML2_DOM_NODE_ACCESS_H_
