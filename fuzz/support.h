// SPDX-License-Identifier: Apache-2.0
//
// What the fuzz targets share: how a find is reported, which failures are none, and trees as text.
#ifndef QUENXML2_FUZZ_SUPPORT_H_
#define QUENXML2_FUZZ_SUPPORT_H_

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <quenxml2/narrow.h>
#include <quenxml2/quenxml2.h>

#include "foundation/utf.h"

namespace quen::fuzz {

// A find: libFuzzer stores the input when the program aborts.
[[noreturn]] inline void Report(const char* inWhat, const std::string& inLeft = {},
                                const std::string& inRight = {}) {
  std::fprintf(stderr, "FIND: %s\n  %s\n  %s\n", inWhat, inLeft.c_str(), inRight.c_str());
  std::abort();
}
inline void Require(bool inHolds, const char* inWhat, const std::string& inShown = {}) {
  if (!inHolds) Report(inWhat, inShown);
}
inline void RequireSame(const std::string& inLeft, const std::string& inRight, const char* inWhat) {
  if (inLeft != inRight) Report(inWhat, inLeft, inRight);
}

// Any 16-bit units from bytes, ASCII as itself: other bytes announce a unit of the two behind them.
inline wstring UnitsOf(std::string_view inBytes) {
  wstring text;
  for (std::size_t i = 0; i < inBytes.size(); ++i) {
    const auto at = [&](std::size_t index) { return static_cast<unsigned char>(inBytes[index]); };
    if (at(i) < 0x80) {
      text += static_cast<char16_t>(at(i));
    } else if (i + 2 < inBytes.size()) {
      text += static_cast<char16_t>(at(i + 1) << 8 | at(i + 2));
      i += 2;
    }
  }
  return text;
}

inline std::string Shown(const wstring& inText) { return internal::ToUtf8Lossy(inText); }
inline std::string Shown(const string& inText) { return inText; }

// Codes that docs/errors.md lists. A failure that nobody foresaw is a find.
template <class Exception>
std::string FailureText(const Exception& inFailure) {
  const std::uint32_t code = inFailure.GetErrorCode();
  const std::string message = Shown(inFailure.GetErrorMessage());
  const bool known = (code >= 1 && code <= 26) || code == 77 || code == 78 || code == 1002 ||
                     code == 1006 || code == 1007 || (code >= 1009 && code <= 1016) ||
                     (code >= 2001 && code <= 2010) || code == 1000;
  if (!known || message == "Unknown Error" || message == "Unknown Exception")
    Report("an undocumented failure", std::to_string(code) + " " + message,
           Shown(inFailure.GetErrorContext()));
  return std::to_string(code) + " " + message;
}

// "" or "1013 Path not found". Whatever else leaves the operation ends the program, which is a
// find.
template <class Exception, class Operation>
std::string FailureOf(Operation&& inOperation) {
  try {
    inOperation();
    return {};
  } catch (const Exception& failure) {
    return FailureText(failure);
  }
}

struct WideTypes {
  using Exception = CQuenXMLException2w;
  using String = wstring;
  using Node = CQuenXMLNode2w;
  using Document = CQuenXMLDocument2w;
  using Data = CQuenXMLData2w;
  using Msg = CQuenXMLMsg2w;
  using Xsl = CQuenXSL2w;
  static CQuenXMLDataImpl2w& Impl(const Data& inTree) { return *inTree.GetCQuenXMLData2wImpl(); }
  // `inUtf8` is well-formed.
  static wstring Text(std::string_view inUtf8) {
    wstring text;
    internal::AppendUtf16(inUtf8, text);
    return text;
  }
};
struct NarrowTypes {
  using Exception = CQuenXMLException2;
  using String = string;
  using Node = CQuenXMLNode2;
  using Document = CQuenXMLDocument2;
  using Data = CQuenXMLData2;
  using Msg = CQuenXMLMsg2;
  using Xsl = CQuenXSL2;
  static CQuenXMLDataImpl2w& Impl(const Data& inTree) { return *inTree.GetCQuenXMLData2Impl(); }
  static string Text(std::string_view inUtf8) { return string(inUtf8); }
};

inline bool IsUtf8(std::string_view inBytes) {
  wstring text;
  return internal::AppendUtf16(inBytes, text) == internal::kWellFormed;
}

// What reading a text again makes of line ends in it (XML 1.0, 2.11), and of white space in an
// attribute value (3.3.3): the writer puts both down as they are.
inline wstring ReadAgain(const wstring& inText, bool inAttribute) {
  wstring text;
  for (std::size_t i = 0; i < inText.size(); ++i) {
    const bool pair = inText[i] == u'\r' && i + 1 < inText.size() && inText[i + 1] == u'\n';
    if (pair) ++i;
    const char16_t unit = inText[i] == u'\r' ? u'\n' : inText[i];
    text += inAttribute && (unit == u'\n' || unit == u'\t') ? u' ' : unit;
  }
  return text;
}

// A tree with all that a reader of it can tell, through handles alone. Text in pieces counts as
// one, and what stands behind an entity reference as a part of its surroundings.
class Dump {
 public:
  static wstring Of(const CQuenXMLNode2w& inNode) {
    Dump dump;
    dump.Walk(inNode);
    dump.EndText();
    return dump.out_;
  }

 private:
  void EndText() {
    if (!text_.empty()) out_ += u"\n'" + ReadAgain(text_, false) + u"'";
    text_.clear();
  }
  void Line(const char16_t* inKind, const wstring& inName, const wstring& inValue) {
    EndText();
    out_ += u"\n";
    out_ += inKind;
    out_ += inName + u" " + inValue;
  }
  void Children(const CQuenXMLNode2w& inNode) {
    for (CQuenXMLNode2w child = inNode.GetFirstChild(); child != kNull;
         child = child.GetNextSibling())
      Walk(child);
  }
  void Walk(const CQuenXMLNode2w& inNode) {
    switch (inNode.GetNodeType()) {
      case CQuenXMLNode2w::ElementNode: {
        Line(u"<", inNode.GetName(),
             u"{" + ReadAgain(inNode.GetNamespaceURI(), true) + u"}" + inNode.GetPrefix());
        CQuenXMLElement2w element(inNode);
        const auto end = element.attr_end();
        for (auto at = element.attr_begin(); at != end; ++at)
          Line(u"@", at->GetName(),
               ReadAgain(at->GetValue(), true) + u" {" + ReadAgain(at->GetNamespaceURI(), true) +
                   u"}");
        Children(inNode);
        Line(u">", {}, {});
        return;
      }
      case CQuenXMLNode2w::TextNode:
        text_ += inNode.GetValue();
        return;
      case CQuenXMLNode2w::CDATASectionNode:
        return Line(u"[", {}, ReadAgain(inNode.GetValue(), false));
      case CQuenXMLNode2w::CommentNode:
        return Line(u"!", {}, ReadAgain(inNode.GetValue(), false));
      case CQuenXMLNode2w::ProcessingInstructionNode:
        return Line(u"?", inNode.GetName(), ReadAgain(inNode.GetValue(), false));
      case CQuenXMLNode2w::DocumentTypeNode:
        return;
      default:
        return Children(inNode);
    }
  }

  static constexpr const QuenXMLDOMNode2w_NullPtr* kNull = nullptr;
  wstring out_;
  wstring text_;
};

// 1009, or the DOM's 9 for a version of XML that the engine does not know, or its 14 for the name
// of an attribute with a default.
inline void RequireParseFailure(const std::string& inFailure) {
  const std::string code = inFailure.substr(0, inFailure.find(' '));
  Require(code == "1009" || code == "9" || code == "14", "no parse failure", inFailure);
}

// A file in memory that has a path.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(::memfd_create("fuzz", MFD_CLOEXEC)) {
    if (descriptor_ < 0) std::abort();
    path_ = "/proc/self/fd/" + std::to_string(descriptor_);
  }
  void Hold(std::string_view inBytes) const {
    if (::ftruncate(descriptor_, 0) != 0) std::abort();
    if (::pwrite(descriptor_, inBytes.data(), inBytes.size(), 0) !=
        static_cast<ssize_t>(inBytes.size()))
      std::abort();
  }
  const std::string& Path() const { return path_; }

 private:
  int descriptor_;
  std::string path_;
};

// What holds for every text that came in as a tree: what is written reads as the same tree, plain
// and grafted, and formatted it reads. `inText` only tells what XML 1.0 cannot write.
inline void RequireRoundTrip(const CQuenXMLDocument2w& inDocument, const wstring& inText) {
  const CQuenXMLElement2w root = inDocument.GetDocumentElement();
  wstring written;
  std::string failure = FailureOf<CQuenXMLException2w>([&] { written = inDocument.GetSubset(); });
  const bool hasDoctype = !failure.empty();
  if (hasDoctype) {
    Require(failure == "1010 Invalid DOM Node Type" && inText.find(u"<!DOCTYPE") != wstring::npos,
            "a parsed document cannot be written", failure);
    written = root.GetSubset();
  }
  const CQuenXMLNode2w top = hasDoctype ? CQuenXMLNode2w(root) : CQuenXMLNode2w(inDocument);
  const wstring tree = Dump::Of(top);

  CQuenXMLDocument2w again;
  failure = FailureOf<CQuenXMLException2w>([&] { again.LoadXML(written); });
  if (!failure.empty()) {
    // XML 1.1 has characters and names that XML 1.0, which is what is written, has not.
    Require(inText.find(u"1.1") != wstring::npos, "a written tree cannot be read", failure);
    return;
  }
  const CQuenXMLNode2w readTop =
      hasDoctype ? CQuenXMLNode2w(again.GetDocumentElement()) : CQuenXMLNode2w(again);
  RequireSame(Shown(tree), Shown(Dump::Of(readTop)), "a tree changes when it is written and read");

  CQuenXMLDocument2w host;
  host.LoadXML(u"<host/>");
  host.GetDocumentElement().AppendSubset(written);
  RequireSame(Shown(Dump::Of(root)), Shown(Dump::Of(host.GetDocumentElement().GetFirstChild())),
              "a grafted tree is another");
  CQuenXMLDocument2w formatted;
  formatted.LoadXML(again.GetFormattedSubset());
}

}  // namespace quen::fuzz

#endif  // QUENXML2_FUZZ_SUPPORT_H_
