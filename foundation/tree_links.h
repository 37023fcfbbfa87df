// SPDX-License-Identifier: Apache-2.0
//
// Putting a tree together where everything about the nodes is known.
//
// The engine (Xerces-C 3.2) asks again at each insertion: it finds a node's place in the tree by
// dynamic_cast, six to a dozen of them, which was more than half of the time of a parse and nine
// tenths of a copy. What it keeps there is public in its headers.
#ifndef QUENXML2_FOUNDATION_TREE_LINKS_H_
#define QUENXML2_FOUNDATION_TREE_LINKS_H_

#include <xercesc/dom/DOM.hpp>

namespace quen::internal {

// Appends a node that was just made for the document of `ioParent`: without a parent, and no
// document fragment.
void AppendNew(xercesc::DOMElement* ioParent, xercesc::DOMNode* inNew);

// The same for a parent that can be changed, and a document whose lists of nodes nobody holds yet
// or that is told by its changed() afterwards.
void LinkNew(xercesc::DOMElement* ioParent, xercesc::DOMNode* inNew);

// What getParentNode and getValue say, without a cast.
xercesc::DOMNode* ParentOf(const xercesc::DOMNode* inNode);
const char16_t* ValueOf(const xercesc::DOMAttr* inAttribute);

// Puts an attribute whose name has changed where its element looks for that name.
void SortRenamed(xercesc::DOMAttr* ioAttribute);

// Gives an attribute that was just made its value.
void SetNewAttribute(xercesc::DOMAttr* ioAttribute, const char16_t* inValue, bool inIsSpecified);

// Puts attributes into an element that has none, and to which its document type gives none. Their
// names differ.
class NewAttributes {
 public:
  NewAttributes(xercesc::DOMElement* ioElement, XMLSize_t inCount);
  void Add(xercesc::DOMAttr* inAttribute);
  // For an attribute whose name is behind the names of those that are there.
  void AddLast(xercesc::DOMAttr* inAttribute);

 private:
  xercesc::DOMElement* element_;
};

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_TREE_LINKS_H_
