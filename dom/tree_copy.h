// SPDX-License-Identifier: Apache-2.0
//
// Changes of a tree where the engine's own way is not safe or not economical.
#ifndef QUENXML2_DOM_TREE_COPY_H_
#define QUENXML2_DOM_TREE_COPY_H_

#include <cstddef>

#include <quenxml2/types.h>
#include <xercesc/dom/DOM.hpp>

#include "foundation/tree_links.h"

namespace quen::internal {

// A deep copy in the same document, or a document of its own for a document. The engine copies
// recursively and crashes on a small stack from about 4,000 levels on; trees that deep are copied
// without recursion. It also leaves entity references empty in another document; here they keep
// what they expand to.
xercesc::DOMNode* CloneDeep(const xercesc::DOMNode* inNode);

// A deep copy of `inNode` that belongs to `inDocument`.
xercesc::DOMNode* ImportDeep(xercesc::DOMDocument* inDocument, const xercesc::DOMNode* inNode);

// Sets the value of an attribute. The engine would give its text node back and take a new one each
// time, under the handles on it; this writes into the one that is there, which takes a third of the
// time, or leaves the old ones to their document.
void SetAttributeText(xercesc::DOMAttr* ioAttribute, const wstring& inValue);

// Throws the DOM's NOT_FOUND_ERR if `inChild` is no child of `inParent`. The engine does not look
// at a null pointer.
void CheckIsChild(const xercesc::DOMNode* inParent, const xercesc::DOMNode* inChild);

// Merges adjacent text nodes in all of the document, and removes text of white space alone below
// the document element. Does not recurse.
void NormalizeTree(xercesc::DOMDocument* ioDocument);

// Merges adjacent text nodes alone. Does not recurse, which the engine's own way does.
void MergeAdjacentTexts(xercesc::DOMDocument* ioDocument);

// Whether a node below `inTop` stands more than `inLevels` levels under it.
bool IsDeeperThan(const xercesc::DOMNode* inTop, std::size_t inLevels);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_TREE_COPY_H_
