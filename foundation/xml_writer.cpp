// SPDX-License-Identifier: Apache-2.0
//
// The text of a tree. Every code unit is predictable: no declaration, double quotes around
// attribute values, four escapes, the short form for an element without children.
#include <ostream>
#include <streambuf>
#include <string_view>

#include <xercesc/dom/DOM.hpp>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"

namespace quen {
namespace {

using xercesc::DOMNode;

using Buffer = std::basic_streambuf<char16_t>;

void Put(Buffer& outBuffer, std::u16string_view inText) {
  outBuffer.sputn(inText.data(), static_cast<std::streamsize>(inText.size()));
}

std::u16string_view View(const char16_t* inText) {
  return inText != nullptr ? std::u16string_view(inText) : std::u16string_view();
}

std::u16string_view EscapeOf(char16_t inUnit) {
  switch (inUnit) {
    case u'"':
      return u"&quot;";
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    default:
      return {};
  }
}

void PutEscaped(Buffer& outBuffer, const char16_t* inText) {
  if (inText == nullptr) return;
  const char16_t* run = inText;
  const char16_t* unit = inText;
  for (; *unit != 0; ++unit) {
    if (*unit > u'>') continue;
    const std::u16string_view escape = EscapeOf(*unit);
    if (escape.empty()) continue;
    outBuffer.sputn(run, unit - run);
    Put(outBuffer, escape);
    run = unit + 1;
  }
  outBuffer.sputn(run, unit - run);
}

class Writer {
 public:
  Writer(Buffer& outBuffer, bool inFormatted, std::uint32_t inDepth)
      : buffer_(outBuffer), formatted_(inFormatted), depth_(inDepth) {}

  // Walks without recursion, so that any tree that can be built can be written.
  void Write(const DOMNode* inTop) {
    const DOMNode* node = inTop;
    for (;;) {
      const DOMNode* const child = Open(node);
      if (child != nullptr) {
        node = child;
        continue;
      }
      while (node != inTop) {
        const DOMNode* const next = node->getNextSibling();
        if (next != nullptr) {
          node = next;
          break;
        }
        const DOMNode* const parent = node->getParentNode();
        Close(parent, node->getNodeType());
        node = parent;
      }
      if (node == inTop) return;
    }
  }

 private:
  // A line feed and the indent in formatted text, nothing in plain text.
  void Break() {
    if (!formatted_) return;
    buffer_.sputc(u'\n');
    for (std::uint32_t i = 0; i < depth_; ++i) Put(buffer_, u"  ");
  }

  // Writes what stands before the children. Returns the first child to go on with, or null when the
  // node is complete.
  const DOMNode* Open(const DOMNode* inNode) {
    switch (inNode->getNodeType()) {
      case DOMNode::ELEMENT_NODE:
        return OpenElement(static_cast<const xercesc::DOMElement*>(inNode));
      case DOMNode::TEXT_NODE:
        PutEscaped(buffer_, inNode->getNodeValue());
        return nullptr;
      case DOMNode::CDATA_SECTION_NODE:
        Between(u"<![CDATA[", inNode, u"]]>");
        return nullptr;
      case DOMNode::COMMENT_NODE:
        Between(u"<!--", inNode, u"-->");
        return nullptr;
      case DOMNode::NOTATION_NODE:
        Between(u"<!", inNode, u">");
        return nullptr;
      case DOMNode::PROCESSING_INSTRUCTION_NODE:
        Break();
        Put(buffer_, u"<?");
        Put(buffer_, View(inNode->getNodeName()));
        buffer_.sputc(u' ');
        Put(buffer_, View(inNode->getNodeValue()));
        Put(buffer_, u"?>");
        return nullptr;
      case DOMNode::DOCUMENT_NODE:
      case DOMNode::ENTITY_REFERENCE_NODE:
        return inNode->getFirstChild();
      default:
        ThrowXMLException2w(u"CQuenXMLDataImpl::BuildXMLString()", kXslFailure,
                            u"Invalid DOM Node Type");
    }
  }

  const DOMNode* OpenElement(const xercesc::DOMElement* inElement) {
    Break();
    buffer_.sputc(u'<');
    Put(buffer_, View(inElement->getNodeName()));
    if (inElement->hasAttributes()) {
      const xercesc::DOMNamedNodeMap* const attributes = inElement->getAttributes();
      const XMLSize_t count = attributes->getLength();
      for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* const attribute = attributes->item(i);
        buffer_.sputc(u' ');
        Put(buffer_, View(attribute->getNodeName()));
        Put(buffer_, u"=\"");
        PutEscaped(buffer_, attribute->getNodeValue());
        buffer_.sputc(u'"');
      }
    }
    const DOMNode* const child = inElement->getFirstChild();
    if (child == nullptr) {
      Put(buffer_, u"/>");
      return nullptr;
    }
    buffer_.sputc(u'>');
    ++depth_;
    return child;
  }

  // Writes what stands behind the children, the last of which had the type `inLastType`.
  void Close(const DOMNode* inParent, DOMNode::NodeType inLastType) {
    if (inParent->getNodeType() != DOMNode::ELEMENT_NODE) return;
    --depth_;
    if (inLastType != DOMNode::TEXT_NODE) Break();
    Put(buffer_, u"</");
    Put(buffer_, View(inParent->getNodeName()));
    buffer_.sputc(u'>');
  }

  void Between(std::u16string_view inBefore, const DOMNode* inNode, std::u16string_view inAfter) {
    Break();
    Put(buffer_, inBefore);
    Put(buffer_, View(inNode->getNodeValue()));
    Put(buffer_, inAfter);
  }

  Buffer& buffer_;
  const bool formatted_;
  std::uint32_t depth_;
};

}  // namespace

void CQuenXMLImplUtils2w::EscapeText(std::basic_ostream<char16_t>& outStream,
                                     const char16_t* inText) {
  PutEscaped(*outStream.rdbuf(), inText);
}

void CQuenXMLImplUtils2w::BuildXMLString(std::basic_ostream<char16_t>& outStream,
                                         const DOMNode* inNode, std::uint32_t& ioDepth,
                                         std::int32_t inFormatted) {
  Writer(*outStream.rdbuf(), inFormatted == 1, ioDepth).Write(inNode);
}

}  // namespace quen
