// SPDX-License-Identifier: Apache-2.0
//
// The XML writer behind BuildXMLString, for whoever needs the text as a whole: without a stream in
// between, and as UTF-8 without the wide text.
#ifndef QUENXML2_FOUNDATION_XML_WRITER_H_
#define QUENXML2_FOUNDATION_XML_WRITER_H_

#include <quenxml2/types.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace quen::internal {

// The text of `inNode` and all below it. Raises 1010 for a node that cannot stand in a text.
wstring XmlText(const xercesc::DOMNode* inNode, bool inFormatted);

// The plain text as UTF-8. A text that UTF-8 cannot carry raises what TransCodeToUTF8 raises.
string XmlUtf8(const xercesc::DOMNode* inNode);

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_XML_WRITER_H_
