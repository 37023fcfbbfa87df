// SPDX-License-Identifier: Apache-2.0
//
// The implementation that owns a tree, with the settings of a document.
#ifndef QUENXML2_DOM_DOCUMENT_IMPL_H_
#define QUENXML2_DOM_DOCUMENT_IMPL_H_

#include <cstdint>

#include "dom/leaf_impl.h"
#include "foundation/parser.h"

namespace quen {

class CQuenXMLDocumentImpl2w : public CQuenXMLNodeImpl2w {
 public:
  // An empty document.
  CQuenXMLDocumentImpl2w();
  // A deep copy, settings included.
  CQuenXMLDocumentImpl2w(const CQuenXMLDocumentImpl2w& inOther);
  // A deep copy with default settings.
  explicit CQuenXMLDocumentImpl2w(const xercesc::DOMDocument* inDocument);
  // A deep copy of a document node, or a new document that holds a copy of any other node.
  explicit CQuenXMLDocumentImpl2w(const CQuenXMLNodeImpl2w& inNode);
  // A new document that was loaded as LoadXML does it. Adds to `outCount` how many elements have
  // that local name.
  CQuenXMLDocumentImpl2w(const wstring& inXML, const char16_t* inCountedName,
                         std::size_t& outCount);
  ~CQuenXMLDocumentImpl2w() override;
  CQuenXMLDocumentImpl2w& operator=(const CQuenXMLDocumentImpl2w&) = delete;

  virtual string GetEncryptedSubset(const wstring& inKey);
  virtual void AppendEncryptedSubset(const string& inData, const wstring& inKey);
  virtual string GetUTF8Subset() const;
  virtual void AppendUTF8Subset(const string& inData);

  CQuenXMLElementImpl2w CreateElement(const wstring& inName);
  CQuenXMLElementImpl2w CreateElementNS(const wstring& inName, const wstring& inNamespaceURI);
  CQuenXMLCommentImpl2w CreateComment(const wstring& inText);
  CQuenXMLCDATAImpl2w CreateCDATA(const wstring& inText);
  CQuenXMLPIImpl2w CreatePI(const wstring& inTarget, const wstring& inData);

  void Load(const wstring& inLocation);
  void LoadXML(const wstring& inXML);
  void Validate() const;
  void Normalize();
  CQuenXMLElementImpl2w GetDocumentElement() const;
  void SetDocumentElement(const CQuenXMLElement2w& inElement);

  void SetExternalSchemaLocation(const wstring& inLocations) { schemaLocation_ = inLocations; }
  void SetExternalNoNamespaceSchemaLocation(const wstring& inLocation) {
    noNamespaceSchemaLocation_ = inLocation;
  }
  void SetDoValidationOnParse(std::int32_t inFlag) { validates_ = inFlag; }
  std::int32_t GetDoValidationOnParse() const { return validates_; }
  void SetDoNamespaceOnParse(std::int32_t inFlag) { namespaces_ = inFlag; }
  std::int32_t GetDoNamespaceOnParse() const { return namespaces_; }

  void WriteToFile(const string& inPath, std::int32_t inOverwrite) const;
  void WriteToFileBinary(const string& inPath, std::int32_t inOverwrite) const;
  void WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                            const wstring& inKey) const;
  void LoadEncrypted(const wstring& inPath, const wstring& inKey);
  void LoadXMLEncrypted(const string& inData, const wstring& inKey);

  xercesc::DOMDocument* Document() const { return static_cast<xercesc::DOMDocument*>(node_); }

 private:
  internal::ParseSettings Settings() const;
  void Adopt(internal::DocumentPtr inDocument);

  wstring schemaLocation_;
  wstring noNamespaceSchemaLocation_;
  std::int32_t validates_ = 0;
  std::int32_t namespaces_ = 1;
};

}  // namespace quen

#endif  // QUENXML2_DOM_DOCUMENT_IMPL_H_
