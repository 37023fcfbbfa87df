// SPDX-License-Identifier: Apache-2.0
// The direct evaluator: location paths of XPath 1.0, compiled into steps and walked over the DOM.
//
// It takes the paths that programs write and is exact or declines; docs/paths.md lists what it
// takes and where its answer is not Xalan-C's. It keeps nothing between calls, never recurses over
// a tree, and recurses over an expression no deeper than a small bound.
#ifndef QUENXML2_DOM_LOCATION_PATH_H_
#define QUENXML2_DOM_LOCATION_PATH_H_

#include <string_view>
#include <vector>

#include <xercesc/dom/DOMNode.hpp>

namespace quen::internal {

enum class Direct { kDone, kDeclined };

// Appends the selected nodes, in document order and without duplicates, to `outNodes`. With
// `inFirstOnly` at most one node, the first in document order, is appended, and the walk stops as
// soon as it is known. kDeclined: nothing was appended, Xalan-C has to decide.
Direct SelectDirectly(xercesc::DOMNode& inContext, std::u16string_view inExpression,
                      bool inFirstOnly, std::vector<xercesc::DOMNode*>& outNodes);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_LOCATION_PATH_H_
