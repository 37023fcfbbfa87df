// SPDX-License-Identifier: Apache-2.0
//
// Binary data as hexadecimal text. The wide forms store the UTF-8 form of a text, the buffer forms
// the bytes themselves; plain ASCII looks the same either way.
#include <algorithm>
#include <cstring>

#include <quenxml2/data.h>

#include "foundation/failure.h"
#include "foundation/hexbincv.h"
#include "foundation/impl_utils.h"
#include "foundation/utf.h"

namespace quen {
namespace {

wstring HexText(const char* inBytes, std::size_t inCount) {
  wstring text;
  WriteHexText(inBytes, inCount, text);
  return text;
}

wstring HexText(const string& inBytes) { return HexText(inBytes.data(), inBytes.size()); }

wstring HexText(const unsigned char* inData, std::uint32_t inLength) {
  return HexText(reinterpret_cast<const char*>(inData), inData != nullptr ? inLength : 0);
}

// In UTF-8; what was not written here may hold anything.
string Narrowed(const wstring& inText) {
  const std::u16string_view units = internal::UpToZero(inText);
  char16_t all = 0;
  for (const char16_t unit : units) all = static_cast<char16_t>(all | unit);
  if (all >= 0x80) return gImplUtils.TransCodeToUTF8(inText);
  string text(units.size(), '\0');
  std::transform(units.begin(), units.end(), text.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  return text;
}

string BytesAt(const CQuenXMLDataImpl2w& inTree, const wstring& inPath) {
  wstring text;
  inTree.GetData(text, inPath);
  if (text.compare(0, 2, u"0x") != 0) {
    ThrowXMLException2w(u"CQuenXMLDataImpl::GetBinaryData()", kInvalidBinaryData,
                        u"Invalid Binary Data");
  }
  string bytes;
  HexTextToBytes(Narrowed(text), bytes);
  return bytes;
}

}  // namespace

void CQuenXMLDataImpl2w::AddBinaryData(const wstring& inData, const wstring& inPath) {
  AddData(HexText(gImplUtils.TransCodeToUTF8(inData)), inPath);
}

void CQuenXMLDataImpl2w::AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                       const wstring& inPath) {
  AddData(HexText(inData, inLength), inPath);
}

void CQuenXMLDataImpl2w::SetBinaryData(const wstring& inData, const wstring& inPath) {
  SetData(HexText(gImplUtils.TransCodeToUTF8(inData)), inPath);
}

void CQuenXMLDataImpl2w::SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                       const wstring& inPath) {
  SetData(HexText(inData, inLength), inPath);
}

void CQuenXMLDataImpl2w::GetBinaryData(wstring& outData, const wstring& inPath) const {
  outData = gImplUtils.TranscodeFromUTF8(BytesAt(*this, inPath));
}

void CQuenXMLDataImpl2w::GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                                       const wstring& inPath) const {
  const string bytes = BytesAt(*this, inPath);
  const std::size_t copied = std::min<std::size_t>(bytes.size(), ioLength);
  if (copied > 0) std::memcpy(outData, bytes.data(), copied);
  if (copied == bytes.size()) ioLength = static_cast<std::uint32_t>(copied);
}

}  // namespace quen
