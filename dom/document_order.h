// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_DOM_DOCUMENT_ORDER_H_
#define QUENXML2_DOM_DOCUMENT_ORDER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <xercesc/dom/DOMNode.hpp>

namespace quen::internal {

// The parent in the sense of XPath: of an attribute, the element that it stands on.
xercesc::DOMNode* ParentOf(const xercesc::DOMNode& node);

// A set of nodes by address.
class NodeAddresses {
 public:
  // False if it was there already.
  bool Insert(const xercesc::DOMNode* node);
  bool Contains(const xercesc::DOMNode* node) const;

 private:
  std::size_t Slot(const xercesc::DOMNode* node) const;
  void Grow();

  std::vector<const xercesc::DOMNode*> slots_;
  std::size_t size_ = 0;
};

// Brings the nodes from `first` on into document order, attributes by their place in the element's
// map, and removes duplicates. The cost follows the ancestors of the nodes and the siblings among
// which more than one of them hang, not the size of the document. Trees without a common root keep
// the order in which they came.
void SortInDocumentOrder(std::vector<xercesc::DOMNode*>& nodes, std::size_t first);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_DOCUMENT_ORDER_H_
