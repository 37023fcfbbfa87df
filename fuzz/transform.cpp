// SPDX-License-Identifier: Apache-2.0
// A style sheet, a line of "----", and a source: streams and a compiled style sheet, and both
// widths, give the same bytes or fail all; trees and documents end in a result or a failure.
//
// A style sheet is a program, whose time and memory are not bounded: run this target with
// -fork=1 -ignore_timeouts=1 -ignore_ooms=1, as fuzz/run does.
#include <sstream>

#include "fuzz/support.h"

namespace quen::fuzz {
namespace {

template <class W>
std::string Streams(const std::string& inSheet, const std::string& inSource, bool inCompiled) {
  typename W::Xsl xsl;
  xsl.SetStyleSheetParam(W::Text("p"), W::Text("'v'"));
  std::istringstream sheet(inSheet);
  std::istringstream source(inSource);
  std::ostringstream result;
  const std::string failure = FailureOf<typename W::Exception>([&] {
    if (!inCompiled) return xsl.Transform(source, sheet, result);
    std::uintptr_t handle = 0;
    xsl.RegisterCompiledStyleSheet(sheet, handle);
    xsl.Transform(source, result, handle);
    xsl.UnregisterCompiledStyleSheet(handle);
  });
  return failure.empty() ? "=" + result.str() : failure;
}

// A result is the same in every run unless it holds addresses.
bool IsSteady(const std::string& inSheet) {
  return inSheet.find("generate-id") == std::string::npos && inSheet.find('&') == std::string::npos;
}

void Run(const std::string& inSheet, const std::string& inSource) {
  const std::string plain = Streams<WideTypes>(inSheet, inSource, false);
  const std::string compiled = Streams<WideTypes>(inSheet, inSource, true);
  const std::string narrow = Streams<NarrowTypes>(inSheet, inSource, false);
  const bool succeeds = plain[0] == '=';
  Require((compiled[0] == '=') == succeeds, "a compiled style sheet ends otherwise",
          plain + compiled);
  Require((narrow[0] == '=') == succeeds, "the widths end differently", plain + narrow);
  if (succeeds && IsSteady(inSheet)) {
    RequireSame(plain, compiled, "a compiled style sheet gives another result");
    RequireSame(plain, narrow, "the widths give different results");
  }

  CQuenXMLData2w sheet;
  CQuenXMLData2w source;
  if (!FailureOf<CQuenXMLException2w>([&] { sheet.AppendUTF8Subset(inSheet); }).empty() ||
      !FailureOf<CQuenXMLException2w>([&] { source.AppendUTF8Subset(inSource); }).empty())
    return;
  CQuenXMLData2w result(u"<old/>");
  CQuenXSL2w xsl;
  const std::string failure =
      FailureOf<CQuenXMLException2w>([&] { xsl.Transform(source, sheet, result); });
  wstring text;
  FailureOf<CQuenXMLException2w>([&] { result.GetSubset(text, u"/"); });
  if (!failure.empty()) Require(text == u"<old/>", "a failed transform changed the result");
  source.CreateNodes(u"/" + source.GetNodeAtCursor() + u"/usable");
}

}  // namespace
}  // namespace quen::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* inBytes, std::size_t inSize) {
  static const std::string kLine = "\n----\n";
  const std::string bytes(reinterpret_cast<const char*>(inBytes), inSize);
  const std::size_t at = bytes.find(kLine);
  if (at == std::string::npos) return 0;
  quen::fuzz::Run(bytes.substr(0, at), bytes.substr(at + kLine.size()));
  return 0;
}
