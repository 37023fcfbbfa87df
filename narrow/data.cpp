// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/narrow_data.h>

#include "narrow/crossing.h"

namespace quen {

using internal::Narrow;
using internal::NarrowOut;
using internal::NarrowText;
using internal::NarrowTwin;
using internal::OutText;
using internal::Utf8;
using internal::Wide;

CQuenXMLData2::CQuenXMLData2()
    : impl_(Narrow([] { return std::make_unique<CQuenXMLDataImpl2w>(); })) {}
CQuenXMLData2::CQuenXMLData2(const string& inXML)
    : impl_(Narrow([&] { return std::make_unique<CQuenXMLDataImpl2w>(Wide(inXML)); })) {}
CQuenXMLData2::CQuenXMLData2(const CQuenXMLData2& inOther)
    : impl_(Narrow([&] { return std::make_unique<CQuenXMLDataImpl2w>(*inOther.impl_); })) {}

CQuenXMLData2::~CQuenXMLData2() = default;
CQuenXMLData2& CQuenXMLData2::operator=(const string& inXML) {
  Narrow([&] {
    const wstring text = Wide(inXML);
    impl_ = std::make_unique<CQuenXMLDataImpl2w>();  // what stays when the text does not parse
    impl_ = std::make_unique<CQuenXMLDataImpl2w>(text);
  });
  return *this;
}
CQuenXMLData2& CQuenXMLData2::operator=(const CQuenXMLData2& inOther) {
  if (this != &inOther)
    impl_ = Narrow([&] { return std::make_unique<CQuenXMLDataImpl2w>(*inOther.impl_); });
  return *this;
}
void CQuenXMLData2::RemoveData(const string& inPath) {
  Narrow([&] { impl_->RemoveData(Wide(inPath, path_)); });
}
void CQuenXMLData2::RemoveAttr(const string& inName, const string& inPath) {
  Narrow([&] { impl_->RemoveAttr(Wide(inName), Wide(inPath, path_)); });
}
void CQuenXMLData2::AddRootNode(const string& inName) {
  Narrow([&] { impl_->AddRootNode(Wide(inName)); });
}
void CQuenXMLData2::AddData(double inValue, const string& inPath) {
  Narrow([&] { impl_->AddData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddData(float inValue, const string& inPath) {
  Narrow([&] { impl_->AddData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddData(std::uint32_t inValue, const string& inPath) {
  Narrow([&] { impl_->AddData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddData(std::int32_t inValue, const string& inPath) {
  Narrow([&] { impl_->AddData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddData(const string& inValue, const string& inPath) {
  Narrow([&] { impl_->AddData(Wide(inValue, value_), Wide(inPath, path_)); });
}
void CQuenXMLData2::AddBinaryData(const string& inData, const string& inPath) {
  Narrow([&] { impl_->AddBinaryData(Wide(inData), Wide(inPath, path_)); });
}
void CQuenXMLData2::AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                  const string& inPath) {
  Narrow([&] { impl_->AddBinaryData(inData, inLength, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddChildNode(const string& inName, const string& inPath) {
  Narrow([&] { impl_->AddChildNode(Wide(inName), Wide(inPath, path_)); });
}
void CQuenXMLData2::AddSiblingNode(const string& inName, const string& inPath) {
  Narrow([&] { impl_->AddSiblingNode(Wide(inName), Wide(inPath, path_)); });
}
void CQuenXMLData2::SetData(double inValue, const string& inPath) {
  Narrow([&] { impl_->SetData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetData(float inValue, const string& inPath) {
  Narrow([&] { impl_->SetData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetData(std::uint32_t inValue, const string& inPath) {
  Narrow([&] { impl_->SetData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetData(std::int32_t inValue, const string& inPath) {
  Narrow([&] { impl_->SetData(inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetData(const string& inValue, const string& inPath) {
  Narrow([&] { impl_->SetData(Wide(inValue, value_), Wide(inPath, path_)); });
}
void CQuenXMLData2::SetBinaryData(const string& inData, const string& inPath) {
  Narrow([&] { impl_->SetBinaryData(Wide(inData), Wide(inPath, path_)); });
}
void CQuenXMLData2::SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                                  const string& inPath) {
  Narrow([&] { impl_->SetBinaryData(inData, inLength, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetAttr(const string& inName, double inValue, const string& inPath) {
  Narrow([&] { impl_->SetAttr(Wide(inName), inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetAttr(const string& inName, float inValue, const string& inPath) {
  Narrow([&] { impl_->SetAttr(Wide(inName), inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetAttr(const string& inName, std::uint32_t inValue, const string& inPath) {
  Narrow([&] { impl_->SetAttr(Wide(inName), inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetAttr(const string& inName, std::int32_t inValue, const string& inPath) {
  Narrow([&] { impl_->SetAttr(Wide(inName), inValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::SetAttr(const string& inName, const string& inValue, const string& inPath) {
  Narrow([&] { impl_->SetAttr(Wide(inName), Wide(inValue, value_), Wide(inPath, path_)); });
}
void CQuenXMLData2::AppendSubset(const string& inXML, const string& inPath) {
  Narrow([&] { impl_->AppendSubset(Wide(inXML), Wide(inPath, path_)); });
}
void CQuenXMLData2::AppendSubset(const CQuenXMLData2& inOther, const string& inPath) {
  Narrow([&] { impl_->AppendSubset(*inOther.impl_, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetSubset(CQuenXMLData2& ioTarget, const string& inPath) const {
  Narrow([&] { impl_->GetSubset(*ioTarget.impl_, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetSubset(string& outXML, const string& inPath) const {
  NarrowOut(outXML, value_, [&](wstring& text) { impl_->GetSubset(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetFormattedSubset(string& outXML, const string& inPath) const {
  NarrowOut(outXML, value_,
            [&](wstring& text) { impl_->GetFormattedSubset(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetData(double& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetData(outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetData(float& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetData(outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetData(std::uint32_t& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetData(outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetData(std::int32_t& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetData(outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetData(string& outValue, const string& inPath) const {
  NarrowOut(outValue, value_, [&](wstring& text) { impl_->GetData(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetBinaryData(string& outData, const string& inPath) const {
  NarrowOut(outData, value_,
            [&](wstring& text) { impl_->GetBinaryData(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                                  const string& inPath) const {
  Narrow([&] { impl_->GetBinaryData(outData, ioLength, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetAttr(const string& inName, double& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetAttr(Wide(inName), outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetAttr(const string& inName, float& outValue, const string& inPath) const {
  Narrow([&] { impl_->GetAttr(Wide(inName), outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetAttr(const string& inName, std::uint32_t& outValue,
                            const string& inPath) const {
  Narrow([&] { impl_->GetAttr(Wide(inName), outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetAttr(const string& inName, std::int32_t& outValue,
                            const string& inPath) const {
  Narrow([&] { impl_->GetAttr(Wide(inName), outValue, Wide(inPath, path_)); });
}
void CQuenXMLData2::GetAttr(const string& inName, string& outValue, const string& inPath) const {
  NarrowOut(outValue, value_,
            [&](wstring& text) { impl_->GetAttr(Wide(inName), text, Wide(inPath, path_)); });
}
std::int32_t CQuenXMLData2::CursorTo(const string& inPath) {
  return Narrow([&] { return impl_->CursorTo(Wide(inPath, path_)); });
}
std::int32_t CQuenXMLData2::CursorToRoot() {
  return Narrow([&] { return impl_->CursorToRoot(); });
}
std::int32_t CQuenXMLData2::CursorToFirstChild() {
  return Narrow([&] { return impl_->CursorToFirstChild(); });
}
std::int32_t CQuenXMLData2::CursorToLastChild() {
  return Narrow([&] { return impl_->CursorToLastChild(); });
}
std::int32_t CQuenXMLData2::CursorToNextSibling() {
  return Narrow([&] { return impl_->CursorToNextSibling(); });
}
std::int32_t CQuenXMLData2::CursorToPreviousSibling() {
  return Narrow([&] { return impl_->CursorToPreviousSibling(); });
}
std::int32_t CQuenXMLData2::CursorToParent() {
  return Narrow([&] { return impl_->CursorToParent(); });
}
std::int32_t CQuenXMLData2::IsCursorInPath(const string&) const { return 0; }
string CQuenXMLData2::GetPath() const {
  return NarrowText([&] { return impl_->GetPath(); });
}
string CQuenXMLData2::GetNodeAtCursor() const {
  return NarrowText([&] { return impl_->GetNodeAtCursor(); });
}
void CQuenXMLData2::GetNumChildren(std::uint32_t& outCount, const string& inPath) {
  Narrow([&] { impl_->GetNumChildren(outCount, Wide(inPath, path_)); });
}
std::int32_t CQuenXMLData2::HasChildren(const string& inPath) const {
  return Narrow([&] { return impl_->HasChildren(Wide(inPath, path_)); });
}
std::int32_t CQuenXMLData2::HasChildElement(const string& inPath) const {
  return Narrow([&] { return impl_->HasChildElement(Wide(inPath, path_)); });
}
std::int32_t CQuenXMLData2::HasRoot() const {
  return Narrow([&] { return impl_->HasRoot(); });
}
// These two have no clause: what they raise stays wide.
std::int32_t CQuenXMLData2::HasAttr(const string& inName, const string& inPath) {
  return impl_->HasAttr(Wide(inName), Wide(inPath, path_));
}
std::int32_t CQuenXMLData2::PathExists(const string& inPath) const {
  return impl_->PathExists(Wide(inPath, path_));
}
void CQuenXMLData2::ReadFromFile(const string& inFile) {
  Narrow([&] { impl_->ReadFromFile(Wide(inFile)); });
}
// The name that the wide class would pass: checked, and up to its first zero byte.
void CQuenXMLData2::WriteToFile(const string& inFile, std::int32_t inOverwrite) {
  Narrow([&] { impl_->WriteToFile(Utf8(Wide(inFile)), inOverwrite); });
}
CQuenXMLData2& CQuenXMLData2::CreateNodes(string inPath) {
  Narrow([&] { impl_->CreateNodes(Wide(inPath)); });
  return *this;
}
void CQuenXMLData2::AddProcessingInstruction(const string& inTarget, const string& inData,
                                             const string& inPath) {
  Narrow(
      [&] { impl_->AddProcessingInstruction(Wide(inTarget), Wide(inData), Wide(inPath, path_)); });
}
void CQuenXMLData2::RemoveProcessingInstruction(const string& inTarget, const string& inPath) {
  Narrow([&] { impl_->RemoveProcessingInstruction(Wide(inTarget), Wide(inPath, path_)); });
}
void CQuenXMLData2::GetProcessingInstruction(string& outTarget, string& outData,
                                             const string& inPath) const {
  Narrow([&] {
    wstring target;
    wstring data;
    const OutText newTarget(target);
    const OutText newData(data);
    impl_->GetProcessingInstruction(target, data, Wide(inPath, path_));
    // Both or none, and the data last, should both arguments be the same.
    string dataBytes = outData;
    newData.Deliver(dataBytes);
    newTarget.Deliver(outTarget);
    outData.swap(dataBytes);
  });
}
void CQuenXMLData2::AddComment(const string& inText, const string& inPath) {
  Narrow([&] { impl_->AddComment(Wide(inText), Wide(inPath, path_)); });
}
void CQuenXMLData2::RemoveComment(const string& inPath) {
  Narrow([&] { impl_->RemoveComment(Wide(inPath, path_)); });
}
void CQuenXMLData2::GetComment(string& outText, const string& inPath) {
  NarrowOut(outText, value_, [&](wstring& text) { impl_->GetComment(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::AddCDATA(const string& inText, const string& inPath) {
  Narrow([&] { impl_->AddCDATA(Wide(inText), Wide(inPath, path_)); });
}
void CQuenXMLData2::GetCDATA(string& outText, const string& inPath) {
  NarrowOut(outText, value_, [&](wstring& text) { impl_->GetCDATA(text, Wide(inPath, path_)); });
}
void CQuenXMLData2::RemoveCDATA(const string& inPath) {
  Narrow([&] { impl_->RemoveCDATA(Wide(inPath, path_)); });
}
void CQuenXMLData2::AddChildNodeNS(const string& inName, const string& inNamespaceURI,
                                   const string& inPath) {
  Narrow([&] { impl_->AddChildNodeNS(Wide(inName), Wide(inNamespaceURI), Wide(inPath, path_)); });
}
CQuenXMLDataImpl2w* CQuenXMLData2::GetCQuenXMLData2Impl() const { return impl_.get(); }
// Both go through a plain node: a document that is made from a node has the default settings.
std::int32_t CQuenXMLData2::SetDocument(const CQuenXMLDocument2& inDocument) {
  return Narrow([&] { return impl_->SetDocument(CQuenXMLDocument2w(*inDocument.GetImpl())); });
}
CQuenXMLDocument2 CQuenXMLData2::GetDocument() const {
  const auto node = [&]() -> const CQuenXMLNode2w& { return impl_->GetDocument(); };
  return CQuenXMLDocument2(NarrowTwin([&] { return CQuenXMLDocument2w(node()); }));
}
void CQuenXMLData2::AppendEncryptedSubset(const string& inEnciphered, const string& inKey,
                                          const string& inPath) {
  Narrow([&] { impl_->AppendEncryptedSubset(inEnciphered, Wide(inKey), Wide(inPath, path_)); });
}
void CQuenXMLData2::GetEncryptedSubset(string& outEnciphered, const string& inKey,
                                       const string& inPath) {
  Narrow([&] { impl_->GetEncryptedSubset(outEnciphered, Wide(inKey), Wide(inPath, path_)); });
}
void CQuenXMLData2::WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                         const string& inKey) {
  Narrow([&] { impl_->WriteToEncryptedFile(inFile, inOverwrite, Wide(inKey)); });
}
void CQuenXMLData2::ReadFromEncryptedFile(const string& inFile, const string& inKey) {
  Narrow([&] { impl_->ReadFromEncryptedFile(Wide(inFile), Wide(inKey)); });
}
CQuenXMLNode2 CQuenXMLData2::GetCursor() {
  return CQuenXMLNode2(NarrowTwin([&] { return impl_->GetCursor(); }));
}
void CQuenXMLData2::SetCursor(const CQuenXMLNode2& inNode) {
  Narrow([&] { impl_->SetCursor(*inNode.GetImpl()); });
}
void CQuenXMLData2::WriteToFileBinary(const string& inFile, std::int32_t inOverwrite) const {
  Narrow([&] { impl_->WriteToFileBinary(Utf8(Wide(inFile)), inOverwrite); });
}

}  // namespace quen
