// SPDX-License-Identifier: Apache-2.0
//
// The document handle: every operation forwards to the implementation of the same name.
#include <typeinfo>

#include "dom/document_impl.h"
#include "foundation/failure.h"

namespace quen {

CQuenXMLDocument2w::CQuenXMLDocument2w()
    : CQuenXMLNode2w(std::make_unique<CQuenXMLDocumentImpl2w>()) {}
CQuenXMLDocument2w::CQuenXMLDocument2w(const CQuenXMLDocument2w& inOther)
    : CQuenXMLDocument2w(inOther.Impl()) {}
CQuenXMLDocument2w::CQuenXMLDocument2w(const CQuenXMLNode2w& inNode)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLDocumentImpl2w>(*inNode.GetImpl())) {}
CQuenXMLDocument2w::CQuenXMLDocument2w(const CQuenXMLDocumentImpl2w& inImpl)
    : CQuenXMLNode2w(std::make_unique<CQuenXMLDocumentImpl2w>(inImpl)) {}
CQuenXMLDocument2w::CQuenXMLDocument2w(std::unique_ptr<CQuenXMLDocumentImpl2w> inImpl)
    : CQuenXMLNode2w(std::move(inImpl)) {}
CQuenXMLDocument2w::~CQuenXMLDocument2w() = default;
CQuenXMLDocument2w& CQuenXMLDocument2w::operator=(const CQuenXMLDocument2w& inOther) {
  if (this != &inOther) ReplaceImpl(std::make_unique<CQuenXMLDocumentImpl2w>(inOther.Impl()));
  return *this;
}

// Assigned through its base, the handle has a plain implementation and owns no document.
CQuenXMLDocumentImpl2w& CQuenXMLDocument2w::Impl() const {
  CQuenXMLNodeImpl2w& impl = *GetImpl();
  if (typeid(impl) != typeid(CQuenXMLDocumentImpl2w)) {
    ThrowXMLException2w(u"CQuenXMLDocument2w", kNotInitialized, u"Node was not initialized");
  }
  return static_cast<CQuenXMLDocumentImpl2w&>(impl);
}

CQuenXMLElement2w CQuenXMLDocument2w::CreateElement(const wstring& inName) {
  return CQuenXMLElement2w(Impl().CreateElement(inName));
}
CQuenXMLComment2w CQuenXMLDocument2w::CreateComment(const wstring& inText) {
  return CQuenXMLComment2w(Impl().CreateComment(inText));
}
CQuenXMLCDATA2w CQuenXMLDocument2w::CreateCDATA(const wstring& inText) {
  return CQuenXMLCDATA2w(Impl().CreateCDATA(inText));
}
CQuenXMLPI2w CQuenXMLDocument2w::CreatePI(const wstring& inTarget, const wstring& inData) {
  return CQuenXMLPI2w(Impl().CreatePI(inTarget, inData));
}
void CQuenXMLDocument2w::Load(const wstring& inLocation) { Impl().Load(inLocation); }
void CQuenXMLDocument2w::LoadXML(const wstring& inXML) { Impl().LoadXML(inXML); }
void CQuenXMLDocument2w::SetExternalSchemaLocation(const wstring& inLocations) {
  Impl().SetExternalSchemaLocation(inLocations);
}
void CQuenXMLDocument2w::SetExternalNoNamespaceSchemaLocation(const wstring& inLocation) {
  Impl().SetExternalNoNamespaceSchemaLocation(inLocation);
}
void CQuenXMLDocument2w::Validate() const { Impl().Validate(); }
void CQuenXMLDocument2w::WriteToFile(const string& inPath, std::int32_t inOverwrite) const {
  Impl().WriteToFile(inPath, inOverwrite);
}
void CQuenXMLDocument2w::Normalize() { Impl().Normalize(); }
void CQuenXMLDocument2w::SetDoValidationOnParse(std::int32_t inFlag) {
  Impl().SetDoValidationOnParse(inFlag);
}
std::int32_t CQuenXMLDocument2w::GetDoValidationOnParse() const {
  return Impl().GetDoValidationOnParse();
}
void CQuenXMLDocument2w::SetDoNamespaceOnParse(std::int32_t inFlag) {
  Impl().SetDoNamespaceOnParse(inFlag);
}
std::int32_t CQuenXMLDocument2w::GetDoNamespaceOnParse() const {
  return Impl().GetDoNamespaceOnParse();
}
CQuenXMLElement2w CQuenXMLDocument2w::GetDocumentElement() const {
  return CQuenXMLElement2w(Impl().GetDocumentElement());
}
void CQuenXMLDocument2w::SetDocumentElement(const CQuenXMLElement2w& inElement) {
  Impl().SetDocumentElement(inElement);
}
CQuenXMLElement2w CQuenXMLDocument2w::CreateElementNS(const wstring& inName,
                                                      const wstring& inNamespaceURI) {
  return CQuenXMLElement2w(Impl().CreateElementNS(inName, inNamespaceURI));
}
void CQuenXMLDocument2w::WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                                              const wstring& inKey) const {
  Impl().WriteToEncryptedFile(inPath, inOverwrite, inKey);
}
void CQuenXMLDocument2w::LoadXMLEncrypted(const string& inData, const wstring& inKey) {
  Impl().LoadXMLEncrypted(inData, inKey);
}
void CQuenXMLDocument2w::LoadEncrypted(const wstring& inPath, const wstring& inKey) {
  Impl().LoadEncrypted(inPath, inKey);
}
string CQuenXMLDocument2w::GetEncryptedSubset(const wstring& inKey) {
  return Impl().GetEncryptedSubset(inKey);
}
void CQuenXMLDocument2w::AppendEncryptedSubset(const string& inData, const wstring& inKey) {
  Impl().AppendEncryptedSubset(inData, inKey);
}
string CQuenXMLDocument2w::GetUTF8Subset() const { return Impl().GetUTF8Subset(); }
void CQuenXMLDocument2w::AppendUTF8Subset(const string& inData) { Impl().AppendUTF8Subset(inData); }
void CQuenXMLDocument2w::WriteToFileBinary(const string& inPath, std::int32_t inOverwrite) const {
  Impl().WriteToFileBinary(inPath, inOverwrite);
}

}  // namespace quen
