// SPDX-License-Identifier: Apache-2.0
// Bytes: the narrow classes, the wide ones behind the transcoder, UTF-8 subsets and files agree,
// and the transcoder agrees with the one of the C library.
#include <iconv.h>

#include <cerrno>

#include "foundation/impl_utils.h"
#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

// Whether the C library takes the bytes for UTF-8, and what it makes of them.
bool TakenByIconv(const std::string& inBytes, wstring& outText) {
  static const iconv_t converter = ::iconv_open("UTF-16LE", "UTF-8");
  outText.assign(inBytes.size(), u'\0');
  char* from = const_cast<char*>(inBytes.data());
  char* to = reinterpret_cast<char*>(outText.data());
  std::size_t left = inBytes.size();
  std::size_t room = 2 * outText.size();
  ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
  const bool taken = ::iconv(converter, &from, &left, &to, &room) != static_cast<std::size_t>(-1);
  outText.resize(outText.size() - room / 2);
  return taken;
}

// A file is UTF-8 unless it says otherwise in one of these ways.
bool SaysUtf8(std::string_view inBytes) {
  const auto begins = [&](std::string_view start) {
    return inBytes.substr(0, start.size()) == start;
  };
  using namespace std::string_view_literals;
  return !begins("<\0"sv) && !begins("\0<"sv) && !begins("\xFF\xFE") && !begins("\xFE\xFF") &&
         (!begins("<?xml") || inBytes.find("encoding") == std::string_view::npos);
}

void Run(const std::string& inBytes) {
  wstring wide;
  const bool isUtf8 = internal::AppendUtf16(inBytes, wide) == internal::kWellFormed;
  wstring byIconv;
  Require(TakenByIconv(inBytes, byIconv) == isUtf8 && (!isUtf8 || byIconv == wide),
          "the transcoder differs from that of the C library");

  CQuenXMLData2w wideTree;
  CQuenXMLData2 narrowTree;
  const std::string wideFailure = FailureOf<CQuenXMLException2w>(
      [&] { wideTree.AppendSubset(gImplUtils.TranscodeFromUTF8(inBytes), u""); });
  const std::string narrowFailure =
      FailureOf<CQuenXMLException2>([&] { narrowTree.AppendSubset(inBytes, ""); });
  RequireSame(wideFailure, narrowFailure, "the widths differ");
  CQuenXMLData2w utf8Tree;
  RequireSame(wideFailure,
              FailureOf<CQuenXMLException2w>([&] { utf8Tree.AppendUTF8Subset(inBytes); }),
              "the UTF-8 operation differs");
  const bool taken = wideFailure.empty();
  if (!isUtf8) Require(wideFailure.compare(0, 3, "78 ") == 0, "malformed UTF-8", wideFailure);
  if (taken) {
    string utf8;
    string narrowText;
    const std::string failure =
        FailureOf<CQuenXMLException2w>([&] { wideTree.GetUTF8Subset(utf8); });
    RequireSame(failure,
                FailureOf<CQuenXMLException2>([&] { narrowTree.GetSubset(narrowText, "/"); }),
                "the widths fail differently");
    RequireSame(utf8, narrowText, "the widths write differently");
  }

  static const MemoryFile file;
  file.Hold(inBytes);
  CQuenXMLData2w fromFile(u"<old/>");
  const std::string fileFailure =
      FailureOf<CQuenXMLException2w>([&] { fromFile.ReadFromFile(WideTypes::Text(file.Path())); });
  if (!fileFailure.empty()) {
    RequireParseFailure(fileFailure);
    Require(Dump::Of(fromFile.GetCursor()) == Dump::Of(CQuenXMLData2w(u"<old/>").GetCursor()),
            "a refused file changed the tree");
  }
  // Of a text in memory the part up to a zero byte counts, of a file all.
  if (SaysUtf8(inBytes) && inBytes.find('\0') == std::string::npos)
    Require(fileFailure.empty() == taken, "a file and its bytes differ", fileFailure + wideFailure);
  if (!fileFailure.empty()) return;

  CQuenXMLDocument2w& document = fromFile.GetCQuenXMLData2wImpl()->GetDocument();
  const wstring tree = Dump::Of(document);
  if (SaysUtf8(inBytes))
    RequireSame(Shown(tree), Shown(Dump::Of(wideTree.GetCQuenXMLData2wImpl()->GetDocument())),
                "a file and its bytes are two trees");
  RequireRoundTrip(document, u"<!DOCTYPE 1.1");
  const std::string written = FailureOf<CQuenXMLException2w>(
      [&] { fromFile.WriteToFile(WideTypes::Text(file.Path()), 1); });
  if (!written.empty()) return;
  CQuenXMLDocument2w again;
  const std::string readFailure =
      FailureOf<CQuenXMLException2w>([&] { again.Load(WideTypes::Text(file.Path())); });
  if (readFailure.empty())
    RequireSame(Shown(tree), Shown(Dump::Of(again)), "a file changes the tree");
  else
    Require(inBytes.find("1.1") != std::string::npos || !SaysUtf8(inBytes),
            "a written file cannot be read", readFailure);
}

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  quen::fuzz::Run({reinterpret_cast<const char*>(inBytes), inSize});
  return 0;
}
