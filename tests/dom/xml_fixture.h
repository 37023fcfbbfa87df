// SPDX-License-Identifier: Apache-2.0
// Documents from text, and nodes as text, for the tests of selection.
#ifndef QUENXML2_TESTS_DOM_XML_FIXTURE_H_
#define QUENXML2_TESTS_DOM_XML_FIXTURE_H_

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dom/location_path.h"
#include "dom/xalan_selection.h"

namespace quen::tests {

using xercesc::DOMNode;
using Nodes = std::vector<DOMNode*>;

struct ReleaseDocument {
  void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

inline void StartEngine() {
  static const bool started = (xercesc::XMLPlatformUtils::Initialize(), true);
  static_cast<void>(started);
}

inline Document Parse(std::string_view text, bool entityReferences = false) {
  StartEngine();
  xercesc::XercesDOMParser parser;
  parser.setDoNamespaces(true);
  parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
  parser.setLoadExternalDTD(false);
  parser.setCreateEntityReferenceNodes(entityReferences);
  const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size(), u"test");
  parser.parse(source);
  if (parser.getErrorCount() != 0) throw std::runtime_error("not well-formed");
  return Document(parser.adoptDocument());
}

inline std::u16string Wide(std::string_view ascii) { return {ascii.begin(), ascii.end()}; }

inline std::string Ascii(const char16_t* text) {
  std::string out;
  for (; text != nullptr && *text != u'\0'; ++text) {
    if (*text < 0x80) {
      out.push_back(static_cast<char>(*text));
    } else {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\%04x", static_cast<unsigned>(*text));
      out.append(escape);
    }
  }
  return out;
}

// Appends: GCC 12 warns of `"(" + text`, without reason.
inline std::string Between(const char* open, const std::string& text, const char* close) {
  return std::string(open).append(text).append(close);
}

// An element as its name and, if it has one, its attribute i: `b#2`. Others as in their text.
inline std::string Show(const DOMNode& node) {
  const std::string name = Ascii(node.getNodeName());
  const std::string value = Ascii(node.getNodeValue());
  switch (node.getNodeType()) {
    case DOMNode::ELEMENT_NODE: {
      const char16_t* const id = static_cast<const xercesc::DOMElement&>(node).getAttribute(u"i");
      return *id == u'\0' ? name : Between(name.c_str(), "#", Ascii(id).c_str());
    }
    case DOMNode::DOCUMENT_NODE:
      return "/";
    case DOMNode::ATTRIBUTE_NODE:
      return Between("@", name, "=").append(value);
    case DOMNode::TEXT_NODE:
      return Between("'", value, "'");
    case DOMNode::CDATA_SECTION_NODE:
      return Between("[", value, "]");
    case DOMNode::COMMENT_NODE:
      return Between("<!--", value, "-->");
    case DOMNode::PROCESSING_INSTRUCTION_NODE:
      return Between("<?", name, " ").append(value).append("?>");
    default:
      return Between("(", name, ")");
  }
}

inline std::string Show(const Nodes& nodes) {
  std::string out;
  for (const DOMNode* const node : nodes) {
    if (!out.empty()) out.push_back(' ');
    out.append(Show(*node));
  }
  return out;
}

// The nodes, or "declined".
inline std::string ShowDirect(DOMNode& context, const std::u16string& expression,
                              bool firstOnly = false) {
  Nodes nodes;
  if (internal::SelectDirectly(context, expression, firstOnly, nodes) ==
      internal::Direct::kDeclined) {
    return nodes.empty() ? "declined" : "declined with nodes";
  }
  return Show(nodes);
}

// The nodes, or what went wrong in one word.
inline std::string ShowXalan(DOMNode& context, const std::u16string& expression,
                             bool firstOnly = false) {
  Nodes nodes;
  try {
    internal::SelectWithXalan(context, expression, firstOnly, nodes);
  } catch (const xalanc::XSLException&) {
    return "wrong";
  } catch (const internal::NotANodeSet&) {
    return "no node set";
  } catch (const internal::ExpressionRefused& refused) {
    return "refused: " + Ascii(refused.message);
  }
  return Show(nodes);
}

}  // namespace quen::tests

#endif  // QUENXML2_TESTS_DOM_XML_FIXTURE_H_
