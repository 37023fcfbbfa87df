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

namespace quen {
namespace {

wstring HexText(string inBytes) {
  string text;
  BytesToHexText(std::move(inBytes), text);
  return gImplUtils.TranscodeFromUTF8(text);
}

string BytesOf(const unsigned char* inData, std::uint32_t inLength) {
  if (inData == nullptr) return string();
  return string(reinterpret_cast<const char*>(inData), inLength);
}

string BytesAt(const CQuenXMLDataImpl2w& inTree, const wstring& inPath) {
  wstring text;
  inTree.GetData(text, inPath);
  if (text.compare(0, 2, u"0x") != 0) {
    ThrowXMLException2w(u"CQuenXMLDataImpl::GetBinaryData()", kInvalidBinaryData,
                        u"Invalid Binary Data");
  }
  string bytes;
  HexTextToBytes(gImplUtils.TransCodeToUTF8(text), bytes);
  return bytes;
}

}  // namespace

void CQuenXMLDataImpl2w::AddBinaryData(const wstring& inData, const wstring& inPath) {
  AddData(HexText(gImplUtils.TransCodeToUTF8(inData)), inPath);
}

void CQuenXMLDataImpl2w::AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                       const wstring& inPath) {
  AddData(HexText(BytesOf(inData, inLength)), inPath);
}

void CQuenXMLDataImpl2w::SetBinaryData(const wstring& inData, const wstring& inPath) {
  SetData(HexText(gImplUtils.TransCodeToUTF8(inData)), inPath);
}

void CQuenXMLDataImpl2w::SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                       const wstring& inPath) {
  SetData(HexText(BytesOf(inData, inLength)), inPath);
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
