// SPDX-License-Identifier: Apache-2.0
// 16-bit text: loaded, grafted, written and read again it is the same tree; what is refused is
// refused by both ways in and leaves the tree as it was.
#include "fuzz/support.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  using namespace quen;
  const wstring text = fuzz::UnitsOf({reinterpret_cast<const char*>(inBytes), inSize});
  CQuenXMLDocument2w document;
  document.LoadXML(u"<old/>");
  const std::string failure = fuzz::FailureOf<CQuenXMLException2w>([&] { document.LoadXML(text); });

  CQuenXMLData2w host(u"<host/>");
  const std::string grafted =
      fuzz::FailureOf<CQuenXMLException2w>([&] { host.AppendSubset(text, u""); });
  fuzz::RequireSame(failure, grafted, "loading and grafting differ");
  if (!failure.empty()) {
    fuzz::RequireParseFailure(failure);
    fuzz::Require(document.GetSubset() == u"<old/>", "a refused text changed the document");
    wstring whole;
    host.GetSubset(whole, u"/");
    fuzz::Require(whole == u"<host/>", "a refused text changed the tree");
    return 0;
  }
  fuzz::Require(text.find(u'\0') == wstring::npos, "a text with U+0000 was taken");
  string utf8;
  fuzz::Require(internal::AppendUtf8(text, utf8) == internal::kWellFormed,
                "a lone surrogate was taken");
  // Attributes that only a DTD gives stay behind with it (W3C DOM 3 Core, importNode).
  if (text.find(u"<!ATTLIST") == wstring::npos)
    fuzz::RequireSame(fuzz::Shown(fuzz::Dump::Of(document.GetDocumentElement())),
                      fuzz::Shown(fuzz::Dump::Of(host.GetCursor().GetFirstChild())),
                      "a grafted tree is another");
  fuzz::RequireRoundTrip(document, text);
  return 0;
}
