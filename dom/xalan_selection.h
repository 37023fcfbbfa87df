// SPDX-License-Identifier: Apache-2.0
// Selection by Xalan-C: the whole of XPath 1.0, for what the direct evaluator declines and for
// every expression that is wrong.
//
// Each call wraps the document, compiles the expression and releases both. Calls on different
// documents may run on different threads. Nothing is read from outside of the document: document()
// gives nothing, extension functions and system-property() are refused, and nothing is written to
// the standard error stream.

#ifndef QUENXML2_DOM_XALAN_SELECTION_H_
#define QUENXML2_DOM_XALAN_SELECTION_H_

#include <string>
#include <vector>

#include <xercesc/dom/DOMNode.hpp>

namespace quen::internal {

// The value of the expression is a number, a text, a boolean or unknown.
struct NotANodeSet {};

// The expression is not handed to the engine. `message` says why and lives for ever.
struct ExpressionRefused {
  const char16_t* message;
};

// Starts the XPath part of Xalan-C, once in the process. The engine counts its starts in a plain
// number, so every other start of a part of it comes here first.
void StartXPath();

// Appends the selected nodes in document order and without duplicates to `outNodes`; at most the
// first with `inFirstOnly`. Throws NotANodeSet, ExpressionRefused, and xalanc::XSLException for a
// wrong expression; `outNodes` is then as it was.
void SelectWithXalan(xercesc::DOMNode& inContext, const std::u16string& inExpression,
                     bool inFirstOnly, std::vector<xercesc::DOMNode*>& outNodes);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_XALAN_SELECTION_H_
