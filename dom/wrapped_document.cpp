// SPDX-License-Identifier: Apache-2.0
#include "dom/wrapped_document.h"

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

namespace quen::internal {
namespace {

xercesc::MemoryManager& Memory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

}  // namespace

WrappedDocument::WrappedDocument(const xercesc::DOMDocument& inDocument, bool inBuild)
    : XercesDocumentWrapper(Memory(), &inDocument, false, inBuild, inBuild) {
  if (inDocument.getDocumentElement() != nullptr) return;
  otherDocument_.reset(
      xercesc::DOMImplementation::getImplementation()->createDocument(nullptr, u"none", nullptr));
  other_.emplace(Memory(), otherDocument_.get(), false, true, true);
}

xalanc::XalanElement* WrappedDocument::getDocumentElement() const {
  xalanc::XalanElement* const element = XercesDocumentWrapper::getDocumentElement();
  return element != nullptr || !other_ ? element : other_->getDocumentElement();
}

}  // namespace quen::internal
