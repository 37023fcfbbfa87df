// SPDX-License-Identifier: Apache-2.0
//
// The public data tree: every operation forwards to the implementation of the same name.
#include <quenxml2/data.h>

#include "foundation/impl_utils.h"

namespace quen {

CQuenXMLData2w::CQuenXMLData2w() : impl_(std::make_unique<CQuenXMLDataImpl2w>()) {}
CQuenXMLData2w::CQuenXMLData2w(const wstring& inXML)
    : impl_(std::make_unique<CQuenXMLDataImpl2w>(inXML)) {}
CQuenXMLData2w::CQuenXMLData2w(const CQuenXMLData2w& inOther)
    : impl_(std::make_unique<CQuenXMLDataImpl2w>(*inOther.impl_)) {}
CQuenXMLData2w::~CQuenXMLData2w() = default;

CQuenXMLDataImpl2w& CQuenXMLData2w::Impl() const { return *impl_; }

CQuenXMLData2w& CQuenXMLData2w::operator=(const wstring& inXML) {
  // The old tree goes first; a text that does not parse leaves an empty one.
  impl_ = std::make_unique<CQuenXMLDataImpl2w>();
  impl_ = std::make_unique<CQuenXMLDataImpl2w>(inXML);
  return *this;
}
CQuenXMLData2w& CQuenXMLData2w::operator=(const CQuenXMLData2w& inOther) {
  if (this == &inOther) return *this;
  impl_ = std::make_unique<CQuenXMLDataImpl2w>(*inOther.impl_);
  return *this;
}

void CQuenXMLData2w::RemoveData(const wstring& inPath) { Impl().RemoveData(inPath); }
void CQuenXMLData2w::RemoveAttr(const wstring& inName, const wstring& inPath) {
  Impl().RemoveAttr(inName, inPath);
}
void CQuenXMLData2w::AddRootNode(const wstring& inName) { Impl().AddRootNode(inName); }
void CQuenXMLData2w::AddData(double inValue, const wstring& inPath) {
  Impl().AddData(inValue, inPath);
}
void CQuenXMLData2w::AddData(float inValue, const wstring& inPath) {
  Impl().AddData(inValue, inPath);
}
void CQuenXMLData2w::AddData(std::uint32_t inValue, const wstring& inPath) {
  Impl().AddData(inValue, inPath);
}
void CQuenXMLData2w::AddData(std::int32_t inValue, const wstring& inPath) {
  Impl().AddData(inValue, inPath);
}
void CQuenXMLData2w::AddData(const wstring& inValue, const wstring& inPath) {
  Impl().AddData(inValue, inPath);
}
void CQuenXMLData2w::AddBinaryData(const wstring& inData, const wstring& inPath) {
  Impl().AddBinaryData(inData, inPath);
}
void CQuenXMLData2w::AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                   const wstring& inPath) {
  Impl().AddBinaryData(inData, inLength, inPath);
}
void CQuenXMLData2w::AddChildNode(const wstring& inName, const wstring& inPath) {
  Impl().AddChildNode(inName, inPath);
}
void CQuenXMLData2w::AddSiblingNode(const wstring& inName, const wstring& inPath) {
  Impl().AddSiblingNode(inName, inPath);
}
void CQuenXMLData2w::SetData(double inValue, const wstring& inPath) {
  Impl().SetData(inValue, inPath);
}
void CQuenXMLData2w::SetData(float inValue, const wstring& inPath) {
  Impl().SetData(inValue, inPath);
}
void CQuenXMLData2w::SetData(std::uint32_t inValue, const wstring& inPath) {
  Impl().SetData(inValue, inPath);
}
void CQuenXMLData2w::SetData(std::int32_t inValue, const wstring& inPath) {
  Impl().SetData(inValue, inPath);
}
void CQuenXMLData2w::SetData(const wstring& inValue, const wstring& inPath) {
  Impl().SetData(inValue, inPath);
}
void CQuenXMLData2w::SetBinaryData(const wstring& inData, const wstring& inPath) {
  Impl().SetBinaryData(inData, inPath);
}
void CQuenXMLData2w::SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                   const wstring& inPath) {
  Impl().SetBinaryData(inData, inLength, inPath);
}
void CQuenXMLData2w::SetAttr(const wstring& inName, double inValue, const wstring& inPath) {
  Impl().SetAttr(inName, inValue, inPath);
}
void CQuenXMLData2w::SetAttr(const wstring& inName, float inValue, const wstring& inPath) {
  Impl().SetAttr(inName, inValue, inPath);
}
void CQuenXMLData2w::SetAttr(const wstring& inName, std::uint32_t inValue, const wstring& inPath) {
  Impl().SetAttr(inName, inValue, inPath);
}
void CQuenXMLData2w::SetAttr(const wstring& inName, std::int32_t inValue, const wstring& inPath) {
  Impl().SetAttr(inName, inValue, inPath);
}
void CQuenXMLData2w::SetAttr(const wstring& inName, const wstring& inValue, const wstring& inPath) {
  Impl().SetAttr(inName, inValue, inPath);
}
void CQuenXMLData2w::AppendSubset(const wstring& inXML, const wstring& inPath) {
  Impl().AppendSubset(inXML, inPath);
}
void CQuenXMLData2w::AppendSubset(const CQuenXMLData2w& inOther, const wstring& inPath) {
  Impl().AppendSubset(inOther.Impl(), inPath);
}
void CQuenXMLData2w::GetSubset(CQuenXMLData2w& ioTarget, const wstring& inPath) const {
  Impl().GetSubset(ioTarget.Impl(), inPath);
}
void CQuenXMLData2w::GetSubset(wstring& outXML, const wstring& inPath) const {
  Impl().GetSubset(outXML, inPath);
}
void CQuenXMLData2w::GetFormattedSubset(wstring& outXML, const wstring& inPath) const {
  Impl().GetFormattedSubset(outXML, inPath);
}
void CQuenXMLData2w::GetData(double& outValue, const wstring& inPath) const {
  Impl().GetData(outValue, inPath);
}
void CQuenXMLData2w::GetData(float& outValue, const wstring& inPath) const {
  Impl().GetData(outValue, inPath);
}
void CQuenXMLData2w::GetData(std::uint32_t& outValue, const wstring& inPath) const {
  Impl().GetData(outValue, inPath);
}
void CQuenXMLData2w::GetData(std::int32_t& outValue, const wstring& inPath) const {
  Impl().GetData(outValue, inPath);
}
void CQuenXMLData2w::GetData(wstring& outValue, const wstring& inPath) const {
  Impl().GetData(outValue, inPath);
}
void CQuenXMLData2w::GetBinaryData(wstring& outData, const wstring& inPath) const {
  Impl().GetBinaryData(outData, inPath);
}
void CQuenXMLData2w::GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                                   const wstring& inPath) const {
  Impl().GetBinaryData(outData, ioLength, inPath);
}
void CQuenXMLData2w::GetAttr(const wstring& inName, double& outValue, const wstring& inPath) const {
  Impl().GetAttr(inName, outValue, inPath);
}
void CQuenXMLData2w::GetAttr(const wstring& inName, float& outValue, const wstring& inPath) const {
  Impl().GetAttr(inName, outValue, inPath);
}
void CQuenXMLData2w::GetAttr(const wstring& inName, std::uint32_t& outValue,
                             const wstring& inPath) const {
  Impl().GetAttr(inName, outValue, inPath);
}
void CQuenXMLData2w::GetAttr(const wstring& inName, std::int32_t& outValue,
                             const wstring& inPath) const {
  Impl().GetAttr(inName, outValue, inPath);
}
void CQuenXMLData2w::GetAttr(const wstring& inName, wstring& outValue,
                             const wstring& inPath) const {
  Impl().GetAttr(inName, outValue, inPath);
}
std::int32_t CQuenXMLData2w::CursorTo(const wstring& inPath) { return Impl().CursorTo(inPath); }
std::int32_t CQuenXMLData2w::CursorToRoot() { return Impl().CursorToRoot(); }
std::int32_t CQuenXMLData2w::CursorToFirstChild() { return Impl().CursorToFirstChild(); }
std::int32_t CQuenXMLData2w::CursorToLastChild() { return Impl().CursorToLastChild(); }
std::int32_t CQuenXMLData2w::CursorToNextSibling() { return Impl().CursorToNextSibling(); }
std::int32_t CQuenXMLData2w::CursorToPreviousSibling() { return Impl().CursorToPreviousSibling(); }
std::int32_t CQuenXMLData2w::CursorToParent() { return Impl().CursorToParent(); }
std::int32_t CQuenXMLData2w::IsCursorInPath(const wstring&) const { return 0; }
wstring CQuenXMLData2w::GetPath() const { return Impl().GetPath(); }
wstring CQuenXMLData2w::GetNodeAtCursor() const { return Impl().GetNodeAtCursor(); }
void CQuenXMLData2w::GetNumChildren(std::uint32_t& outCount, const wstring& inPath) {
  Impl().GetNumChildren(outCount, inPath);
}
std::int32_t CQuenXMLData2w::HasChildren(const wstring& inPath) const {
  return Impl().HasChildren(inPath);
}
std::int32_t CQuenXMLData2w::HasChildElement(const wstring& inPath) const {
  return Impl().HasChildElement(inPath);
}
std::int32_t CQuenXMLData2w::HasRoot() const { return Impl().HasRoot(); }
std::int32_t CQuenXMLData2w::HasAttr(const wstring& inName, const wstring& inPath) {
  return Impl().HasAttr(inName, inPath);
}
std::int32_t CQuenXMLData2w::PathExists(const wstring& inPath) const {
  return Impl().PathExists(inPath);
}
void CQuenXMLData2w::ReadFromFile(const wstring& inFile) { Impl().ReadFromFile(inFile); }
void CQuenXMLData2w::WriteToFile(const wstring& inFile, std::int32_t inOverwrite) {
  Impl().WriteToFile(gImplUtils.TransCodeToUTF8(inFile), inOverwrite);
}
CQuenXMLData2w& CQuenXMLData2w::CreateNodes(wstring inPath) {
  Impl().CreateNodes(std::move(inPath));
  return *this;
}
void CQuenXMLData2w::AddProcessingInstruction(const wstring& inTarget, const wstring& inData,
                                              const wstring& inPath) {
  Impl().AddProcessingInstruction(inTarget, inData, inPath);
}
void CQuenXMLData2w::RemoveProcessingInstruction(const wstring& inTarget, const wstring& inPath) {
  Impl().RemoveProcessingInstruction(inTarget, inPath);
}
void CQuenXMLData2w::GetProcessingInstruction(wstring& outTarget, wstring& outData,
                                              const wstring& inPath) const {
  Impl().GetProcessingInstruction(outTarget, outData, inPath);
}
void CQuenXMLData2w::AddComment(const wstring& inText, const wstring& inPath) {
  Impl().AddComment(inText, inPath);
}
void CQuenXMLData2w::RemoveComment(const wstring& inPath) { Impl().RemoveComment(inPath); }
void CQuenXMLData2w::GetComment(wstring& outText, const wstring& inPath) {
  Impl().GetComment(outText, inPath);
}
void CQuenXMLData2w::AddCDATA(const wstring& inText, const wstring& inPath) {
  Impl().AddCDATA(inText, inPath);
}
void CQuenXMLData2w::GetCDATA(wstring& outText, const wstring& inPath) {
  Impl().GetCDATA(outText, inPath);
}
void CQuenXMLData2w::RemoveCDATA(const wstring& inPath) { Impl().RemoveCDATA(inPath); }
void CQuenXMLData2w::AddChildNodeNS(const wstring& inName, const wstring& inNamespaceURI,
                                    const wstring& inPath) {
  Impl().AddChildNodeNS(inName, inNamespaceURI, inPath);
}
CQuenXMLDataImpl2w* CQuenXMLData2w::GetCQuenXMLData2wImpl() const { return impl_.get(); }
std::int32_t CQuenXMLData2w::SetDocument(const CQuenXMLDocument2w& inDocument) {
  return Impl().SetDocument(inDocument);
}
CQuenXMLDocument2w CQuenXMLData2w::GetDocument() const {
  // Written out and parsed again, so that nothing of the tree but its text is shared.
  CQuenXMLDocument2w document;
  wstring text;
  Impl().GetSubset(text, u"/");
  document.LoadXML(text);
  return document;
}
void CQuenXMLData2w::AppendEncryptedSubset(const string& inEnciphered, const wstring& inKey,
                                           const wstring& inPath) {
  Impl().AppendEncryptedSubset(inEnciphered, inKey, inPath);
}
void CQuenXMLData2w::GetEncryptedSubset(string& outEnciphered, const wstring& inKey,
                                        const wstring& inPath) {
  Impl().GetEncryptedSubset(outEnciphered, inKey, inPath);
}
void CQuenXMLData2w::WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                          const wstring& inKey) {
  Impl().WriteToEncryptedFile(inFile, inOverwrite, inKey);
}
void CQuenXMLData2w::ReadFromEncryptedFile(const wstring& inFile, const wstring& inKey) {
  Impl().ReadFromEncryptedFile(inFile, inKey);
}
void CQuenXMLData2w::AppendUTF8Subset(const string& inXML) { Impl().AppendUTF8Subset(inXML); }
void CQuenXMLData2w::GetUTF8Subset(string& outXML) const { Impl().GetUTF8Subset(outXML); }
CQuenXMLNode2w CQuenXMLData2w::GetCursor() { return Impl().GetCursor(); }
void CQuenXMLData2w::SetCursor(const CQuenXMLNode2w& inNode) { Impl().SetCursor(inNode); }
void CQuenXMLData2w::WriteToFileBinary(const wstring& inFile, std::int32_t inOverwrite) const {
  Impl().WriteToFileBinary(gImplUtils.TransCodeToUTF8(inFile), inOverwrite);
}

}  // namespace quen
