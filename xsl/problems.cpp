// SPDX-License-Identifier: Apache-2.0
#include "xsl/problems.h"

#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xalanc/XalanDOM/XalanDOMException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

#include "foundation/failure.h"

namespace quen::internal {
namespace {

xercesc::MemoryManager& Memory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

// The engine ends its lines; a message has none.
wstring Message(const xalanc::XalanDOMString& inText) {
  wstring message(inText.c_str(), inText.length());
  while (!message.empty() && message.back() == u'\n') message.pop_back();
  return message;
}

}  // namespace

Problems::Problems() : text_(Memory()), writer_(text_), listener_(Memory(), nullptr, &writer_) {}

void Problems::Rethrow() const {
  xalanc::XalanDOMString text(Memory());
  try {
    throw;
  } catch (const xalanc::XSLException& failure) {
    failure.defaultFormat(text);
  } catch (const xercesc::SAXParseException& failure) {
    xalanc::XSLException::defaultFormat(
        failure.getMessage(), failure.getSystemId() != nullptr ? failure.getSystemId() : u"",
        failure.getLineNumber(), failure.getColumnNumber(), u"SAXParseException", text);
  } catch (const xercesc::SAXException& failure) {
    text = failure.getMessage();
  } catch (const xercesc::XMLException& failure) {
    text = failure.getMessage();
  } catch (const xalanc::XalanDOMException& failure) {
    const int code = failure.getExceptionCode();
    throw TransformFailure{u"XalanDOMException caught.  The code is " + Decimal(code) +
                           (code == xalanc::XalanDOMException::HIERARCHY_REQUEST_ERR
                                ? u": the result has a text or a second element beside its root."
                                : u".")};
  }
  throw TransformFailure{Message(text_.empty() ? text : text_)};
}

}  // namespace quen::internal
