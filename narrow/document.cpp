// SPDX-License-Identifier: Apache-2.0
#include <quenxml2/narrow_dom.h>

#include "narrow/crossing.h"

namespace quen {

using internal::Narrow;
using internal::NarrowText;
using internal::NarrowTwin;
using internal::Wide;

CQuenXMLDocument2::CQuenXMLDocument2()
    : CQuenXMLNode2(NarrowTwin([] { return CQuenXMLDocument2w(); })) {}
CQuenXMLDocument2::CQuenXMLDocument2(const CQuenXMLDocument2& inOther)
    : CQuenXMLDocument2(inOther.Twin()) {}
CQuenXMLDocument2::CQuenXMLDocument2(const CQuenXMLNode2& inNode)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLDocument2w(*inNode.GetImpl()); })) {}
CQuenXMLDocument2::~CQuenXMLDocument2() = default;
CQuenXMLDocument2& CQuenXMLDocument2::operator=(const CQuenXMLDocument2& inOther) {
  if (this != &inOther) twin_ = std::make_unique<CQuenXMLDocument2w>(inOther.Twin());
  return *this;
}

CQuenXMLElement2 CQuenXMLDocument2::CreateElement(const string& inName) {
  return CQuenXMLElement2(NarrowTwin([&] { return Twin().CreateElement(Wide(inName)); }));
}
CQuenXMLComment2 CQuenXMLDocument2::CreateComment(const string& inText) {
  return CQuenXMLComment2(NarrowTwin([&] { return Twin().CreateComment(Wide(inText)); }));
}
CQuenXMLCDATA2 CQuenXMLDocument2::CreateCDATA(const string& inText) {
  return CQuenXMLCDATA2(NarrowTwin([&] { return Twin().CreateCDATA(Wide(inText)); }));
}
CQuenXMLPI2 CQuenXMLDocument2::CreatePI(const string& inTarget, const string& inData) {
  return CQuenXMLPI2(NarrowTwin([&] { return Twin().CreatePI(Wide(inTarget), Wide(inData)); }));
}

void CQuenXMLDocument2::Load(const string& inLocation) {
  Narrow([&] { Twin().Load(Wide(inLocation)); });
}
void CQuenXMLDocument2::LoadXML(const string& inXML) {
  Narrow([&] { Twin().LoadXML(Wide(inXML)); });
}
void CQuenXMLDocument2::SetExternalSchemaLocation(const string& inLocations) {
  Narrow([&] { Twin().SetExternalSchemaLocation(Wide(inLocations)); });
}
void CQuenXMLDocument2::SetExternalNoNamespaceSchemaLocation(const string& inLocation) {
  Narrow([&] { Twin().SetExternalNoNamespaceSchemaLocation(Wide(inLocation)); });
}
void CQuenXMLDocument2::Validate() const {
  Narrow([&] { Twin().Validate(); });
}
void CQuenXMLDocument2::WriteToFile(const string& inPath, std::int32_t inOverwrite) const {
  Narrow([&] { Twin().WriteToFile(inPath, inOverwrite); });
}
void CQuenXMLDocument2::Normalize() {
  Narrow([&] { Twin().Normalize(); });
}
void CQuenXMLDocument2::SetDoValidationOnParse(std::int32_t inFlag) {
  Narrow([&] { Twin().SetDoValidationOnParse(inFlag); });
}
std::int32_t CQuenXMLDocument2::GetDoValidationOnParse() const {
  return Narrow([&] { return Twin().GetDoValidationOnParse(); });
}
void CQuenXMLDocument2::SetDoNamespaceOnParse(std::int32_t inFlag) {
  Narrow([&] { Twin().SetDoNamespaceOnParse(inFlag); });
}
std::int32_t CQuenXMLDocument2::GetDoNamespaceOnParse() const {
  return Narrow([&] { return Twin().GetDoNamespaceOnParse(); });
}
CQuenXMLElement2 CQuenXMLDocument2::GetDocumentElement() const {
  return CQuenXMLElement2(NarrowTwin([&] { return Twin().GetDocumentElement(); }));
}
void CQuenXMLDocument2::SetDocumentElement(const CQuenXMLElement2& inElement) {
  Narrow([&] { Twin().SetDocumentElement(inElement.Twin()); });
}
CQuenXMLElement2 CQuenXMLDocument2::CreateElementNS(const string& inName,
                                                    const string& inNamespaceURI) {
  return CQuenXMLElement2(
      NarrowTwin([&] { return Twin().CreateElementNS(Wide(inName), Wide(inNamespaceURI)); }));
}

void CQuenXMLDocument2::WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                                             const string& inKey) const {
  Narrow([&] { Twin().WriteToEncryptedFile(inPath, inOverwrite, Wide(inKey)); });
}
void CQuenXMLDocument2::LoadXMLEncrypted(const string& inData, const string& inKey) {
  Narrow([&] { Twin().LoadXMLEncrypted(inData, Wide(inKey)); });
}
void CQuenXMLDocument2::LoadEncrypted(const string& inPath, const string& inKey) {
  Narrow([&] { Twin().LoadEncrypted(Wide(inPath), Wide(inKey)); });
}
string CQuenXMLDocument2::GetEncryptedSubset(const string& inKey) {
  return Twin().GetEncryptedSubset(Wide(inKey));
}
void CQuenXMLDocument2::AppendEncryptedSubset(const string& inData, const string& inKey) {
  Narrow([&] { Twin().AppendEncryptedSubset(inData, Wide(inKey)); });
}

void CQuenXMLDocument2::WriteToFileBinary(const string& inPath, std::int32_t inOverwrite) const {
  Narrow([&] { Twin().WriteToFileBinary(inPath, inOverwrite); });
}

CQuenXMLDocument2::CQuenXMLDocument2(const CQuenXMLDocument2w& inDocument)
    : CQuenXMLNode2(NarrowTwin([&] { return CQuenXMLDocument2w(inDocument); })) {}
CQuenXMLDocument2::CQuenXMLDocument2(std::unique_ptr<CQuenXMLNode2w> inTwin)
    : CQuenXMLNode2(std::move(inTwin)) {}
// Every constructor makes a twin of this class, and assignment through the base keeps it.
CQuenXMLDocument2w& CQuenXMLDocument2::Twin() const {
  return static_cast<CQuenXMLDocument2w&>(*twin_);
}

}  // namespace quen
