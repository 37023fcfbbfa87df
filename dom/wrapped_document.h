// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_DOM_WRAPPED_DOCUMENT_H_
#define QUENXML2_DOM_WRAPPED_DOCUMENT_H_

#include <optional>

#include <xalanc/XercesParserLiaison/XercesDocumentWrapper.hpp>

#include "foundation/parser.h"

namespace quen::internal {

// A document as Xalan-C sees it, also one without a document element. Xalan-C 1.12 takes that for
// a fragment of a result tree, looks for the fragment's root above the document and ends the
// process; so it is shown an element of another document, of which it asks nothing.
class WrappedDocument : public xalanc::XercesDocumentWrapper {
 public:
  // Built at once, it numbers the nodes in document order. Both documents outlive it.
  WrappedDocument(const xercesc::DOMDocument& inDocument, bool inBuild);

  // Never null, but for the engine alone: HasElement tells.
  xalanc::XalanElement* getDocumentElement() const override;
  bool HasElement() const { return XercesDocumentWrapper::getDocumentElement() != nullptr; }

 private:
  DocumentPtr otherDocument_;
  std::optional<xalanc::XercesDocumentWrapper> other_;
};

}  // namespace quen::internal

#endif  // QUENXML2_DOM_WRAPPED_DOCUMENT_H_
