// SPDX-License-Identifier: Apache-2.0
//
// Every code unit is predictable: no declaration, double quotes around attribute values, four
// escapes, the short form for an element without children.
#include "foundation/xml_writer.h"

#include <algorithm>
#include <array>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <utility>
#include <vector>

#include <xercesc/dom/DOM.hpp>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "foundation/utf.h"

namespace quen {
namespace {

using xercesc::DOMNode;

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

// Where the text goes, in runs.
class Sink {
 public:
  virtual void Take(std::u16string_view inRun) = 0;

 protected:
  ~Sink() = default;
};

class StreamSink final : public Sink {
 public:
  explicit StreamSink(std::basic_ostream<char16_t>& outStream) : buffer_(*outStream.rdbuf()) {}
  void Take(std::u16string_view inRun) override {
    buffer_.sputn(inRun.data(), static_cast<std::streamsize>(inRun.size()));
  }

 private:
  std::basic_streambuf<char16_t>& buffer_;
};

class TextSink final : public Sink {
 public:
  void Take(std::u16string_view inRun) override { text.append(inRun); }
  wstring text;
};

class Utf8Sink final : public Sink {
 public:
  void Take(std::u16string_view inRun) override {
    wellFormed = wellFormed && internal::AppendUtf8(inRun, bytes) == internal::kWellFormed;
  }
  string bytes;
  bool wellFormed = true;
};

// Gathers the many short pieces of a text. Ends with a Flush, also before a failure.
class Output {
 public:
  explicit Output(Sink& outSink) : sink_(outSink) {}

  void Put(std::u16string_view inText) {
    if (inText.size() > chunk_.size() - used_) {
      Flush();
      if (inText.size() > chunk_.size()) {
        sink_.Take(inText);
        return;
      }
    }
    std::copy_n(inText.data(), inText.size(), chunk_.data() + used_);
    used_ += inText.size();
  }

  void Put(char16_t inUnit) {
    if (used_ == chunk_.size()) Flush();
    chunk_[used_++] = inUnit;
  }

  void PutEscaped(const char16_t* inText) {
    if (inText == nullptr) return;
    const char16_t* run = inText;
    const char16_t* unit = inText;
    for (; *unit != 0; ++unit) {
      if (*unit > u'>') continue;
      const std::u16string_view escape = EscapeOf(*unit);
      if (escape.empty()) continue;
      Put({run, static_cast<std::size_t>(unit - run)});
      Put(escape);
      run = unit + 1;
    }
    Put({run, static_cast<std::size_t>(unit - run)});
  }

  void Flush() {
    sink_.Take({chunk_.data(), used_});
    used_ = 0;
  }

 private:
  Sink& sink_;
  std::array<char16_t, 1024> chunk_;
  std::size_t used_ = 0;
};

// The value of an attribute. The engine's own way to it goes through a dynamic_cast, which for a
// short value costs more than all the rest.
const char16_t* ValueOf(const DOMNode* inAttribute) {
  const DOMNode* const text = inAttribute->getFirstChild();
  if (text == nullptr) return u"";
  return text->getNodeType() == DOMNode::TEXT_NODE && text->getNextSibling() == nullptr
             ? text->getNodeValue()
             : inAttribute->getNodeValue();
}

class Writer {
 public:
  Writer(Sink& outSink, bool inFormatted, std::uint32_t inDepth)
      : output_(outSink), formatted_(inFormatted), depth_(inDepth) {}

  // Walks without recursion, so that any tree that can be built can be written. Keeps the way up
  // itself: getParentNode has a dynamic_cast inside.
  void Write(const DOMNode* inTop) {
    std::vector<const DOMNode*> parents;
    const DOMNode* node = inTop;
    for (;;) {
      const DOMNode* const child = Open(node);
      if (child != nullptr) {
        parents.push_back(node);
        node = child;
        continue;
      }
      while (!parents.empty()) {
        const DOMNode* const next = node->getNextSibling();
        if (next != nullptr) {
          node = next;
          break;
        }
        Close(parents.back(), node->getNodeType());
        node = parents.back();
        parents.pop_back();
      }
      if (parents.empty()) break;
    }
    output_.Flush();
  }

 private:
  // A line feed and the indent in formatted text, nothing in plain text.
  void Break() {
    if (!formatted_) return;
    output_.Put(u'\n');
    for (std::uint32_t i = 0; i < depth_; ++i) output_.Put(u"  ");
  }

  // Writes what stands before the children. Returns the first child to go on with, or null when the
  // node is complete.
  const DOMNode* Open(const DOMNode* inNode) {
    switch (inNode->getNodeType()) {
      case DOMNode::ELEMENT_NODE:
        return OpenElement(static_cast<const xercesc::DOMElement*>(inNode));
      case DOMNode::TEXT_NODE:
        output_.PutEscaped(inNode->getNodeValue());
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
        output_.Put(u"<?");
        output_.Put(View(inNode->getNodeName()));
        output_.Put(u' ');
        output_.Put(View(inNode->getNodeValue()));
        output_.Put(u"?>");
        return nullptr;
      case DOMNode::DOCUMENT_NODE:
      case DOMNode::ENTITY_REFERENCE_NODE:
        return inNode->getFirstChild();
      default:
        output_.Flush();
        ThrowXMLException2w(u"CQuenXMLDataImpl::BuildXMLString()", kXslFailure,
                            u"Invalid DOM Node Type");
    }
  }

  const DOMNode* OpenElement(const xercesc::DOMElement* inElement) {
    Break();
    output_.Put(u'<');
    output_.Put(View(inElement->getNodeName()));
    if (inElement->hasAttributes()) {
      const xercesc::DOMNamedNodeMap* const attributes = inElement->getAttributes();
      const XMLSize_t count = attributes->getLength();
      for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* const attribute = attributes->item(i);
        output_.Put(u' ');
        output_.Put(View(attribute->getNodeName()));
        output_.Put(u"=\"");
        output_.PutEscaped(ValueOf(attribute));
        output_.Put(u'"');
      }
    }
    const DOMNode* const child = inElement->getFirstChild();
    if (child == nullptr) {
      output_.Put(u"/>");
      return nullptr;
    }
    output_.Put(u'>');
    ++depth_;
    return child;
  }

  // Writes what stands behind the children, the last of which had the type `inLastType`.
  void Close(const DOMNode* inParent, DOMNode::NodeType inLastType) {
    if (inParent->getNodeType() != DOMNode::ELEMENT_NODE) return;
    --depth_;
    if (inLastType != DOMNode::TEXT_NODE) Break();
    output_.Put(u"</");
    output_.Put(View(inParent->getNodeName()));
    output_.Put(u'>');
  }

  void Between(std::u16string_view inBefore, const DOMNode* inNode, std::u16string_view inAfter) {
    Break();
    output_.Put(inBefore);
    output_.Put(View(inNode->getNodeValue()));
    output_.Put(inAfter);
  }

  Output output_;
  const bool formatted_;
  std::uint32_t depth_;
};

}  // namespace

void CQuenXMLImplUtils2w::EscapeText(std::basic_ostream<char16_t>& outStream,
                                     const char16_t* inText) {
  StreamSink sink(outStream);
  Output output(sink);
  output.PutEscaped(inText);
  output.Flush();
}

void CQuenXMLImplUtils2w::BuildXMLString(std::basic_ostream<char16_t>& outStream,
                                         const DOMNode* inNode, std::uint32_t& ioDepth,
                                         std::int32_t inFormatted) {
  StreamSink sink(outStream);
  Writer(sink, inFormatted == 1, ioDepth).Write(inNode);
}

namespace internal {

wstring XmlText(const DOMNode* inNode, bool inFormatted) {
  TextSink sink;
  Writer(sink, inFormatted, 0).Write(inNode);
  return std::move(sink.text);
}

string XmlUtf8(const DOMNode* inNode) {
  Utf8Sink sink;
  Writer(sink, false, 0).Write(inNode);
  // Runs may part a surrogate pair that two text nodes have between them, so the whole text
  // decides.
  return sink.wellFormed ? std::move(sink.bytes)
                         : gImplUtils.TransCodeToUTF8(XmlText(inNode, false));
}

}  // namespace internal
}  // namespace quen
