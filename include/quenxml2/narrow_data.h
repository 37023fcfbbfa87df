// SPDX-License-Identifier: Apache-2.0
//
// Data trees in UTF-8. narrow.h tells what all narrow classes share; data.h the paths, the cursor,
// the values and what the operations do.
//
//   quen::CQuenXMLData2 order;
//   order.CreateNodes("/order/item[qty='3']");
//   order.SetData("Grüße", "/order/item");
//   std::string text;
//   order.GetSubset(text, "/");  // <order><item qty="3">Grüße</item></order>
#ifndef QUENXML2_NARROW_DATA_H_
#define QUENXML2_NARROW_DATA_H_

#include <cstdint>
#include <memory>

#include <quenxml2/data.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/narrow_dom.h>
#include <quenxml2/types.h>

namespace quen {

// As CQuenXMLData2w. There is no GetUTF8Subset and no AppendUTF8Subset: GetSubset and AppendSubset
// are UTF-8 here, and GetSubset with the path "/" gives the whole document.
class QUENXML2_API CQuenXMLData2 {
 public:
  CQuenXMLData2();
  CQuenXMLData2(const string& inXML);
  CQuenXMLData2(const CQuenXMLData2& inOther);

  virtual ~CQuenXMLData2();
  virtual CQuenXMLData2& operator=(const string& inXML);
  virtual CQuenXMLData2& operator=(const CQuenXMLData2& inOther);
  virtual void RemoveData(const string& inPath);
  virtual void RemoveAttr(const string& inName, const string& inPath);
  virtual void AddRootNode(const string& inName);
  virtual void AddData(double inValue, const string& inPath);
  virtual void AddData(float inValue, const string& inPath);
  virtual void AddData(std::uint32_t inValue, const string& inPath);
  virtual void AddData(std::int32_t inValue, const string& inPath);
  virtual void AddData(const string& inValue, const string& inPath);
  // Adds a child element with bytes as its value, at a path of AddData: 0x, then two hexadecimal
  // digits for each byte. The string forms store the bytes of `inData` up to its first zero byte,
  // and hold it to be text: it must be well-formed UTF-8. Bytes of any other kind go through the
  // buffer forms.
  virtual void AddBinaryData(const string& inData, const string& inPath);
  virtual void AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const string& inPath);
  virtual void AddChildNode(const string& inName, const string& inPath);
  virtual void AddSiblingNode(const string& inName, const string& inPath);
  virtual void SetData(double inValue, const string& inPath);
  virtual void SetData(float inValue, const string& inPath);
  virtual void SetData(std::uint32_t inValue, const string& inPath);
  virtual void SetData(std::int32_t inValue, const string& inPath);
  virtual void SetData(const string& inValue, const string& inPath);
  virtual void SetBinaryData(const string& inData, const string& inPath);
  virtual void SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const string& inPath);
  virtual void SetAttr(const string& inName, double inValue, const string& inPath);
  virtual void SetAttr(const string& inName, float inValue, const string& inPath);
  virtual void SetAttr(const string& inName, std::uint32_t inValue, const string& inPath);
  virtual void SetAttr(const string& inName, std::int32_t inValue, const string& inPath);
  virtual void SetAttr(const string& inName, const string& inValue, const string& inPath);
  virtual void AppendSubset(const string& inXML, const string& inPath);
  virtual void AppendSubset(const CQuenXMLData2& inOther, const string& inPath);
  virtual void GetSubset(CQuenXMLData2& ioTarget, const string& inPath) const;
  virtual void GetSubset(string& outXML, const string& inPath) const;
  virtual void GetFormattedSubset(string& outXML, const string& inPath) const;
  virtual void GetData(double& outValue, const string& inPath) const;
  virtual void GetData(float& outValue, const string& inPath) const;
  virtual void GetData(std::uint32_t& outValue, const string& inPath) const;
  virtual void GetData(std::int32_t& outValue, const string& inPath) const;
  virtual void GetData(string& outValue, const string& inPath) const;
  virtual void GetBinaryData(string& outData, const string& inPath) const;
  virtual void GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                             const string& inPath) const;
  virtual void GetAttr(const string& inName, double& outValue, const string& inPath) const;
  virtual void GetAttr(const string& inName, float& outValue, const string& inPath) const;
  virtual void GetAttr(const string& inName, std::uint32_t& outValue, const string& inPath) const;
  virtual void GetAttr(const string& inName, std::int32_t& outValue, const string& inPath) const;
  virtual void GetAttr(const string& inName, string& outValue, const string& inPath) const;
  virtual std::int32_t CursorTo(const string& inPath);
  virtual std::int32_t CursorToRoot();
  virtual std::int32_t CursorToFirstChild();
  virtual std::int32_t CursorToLastChild();
  virtual std::int32_t CursorToNextSibling();
  virtual std::int32_t CursorToPreviousSibling();
  virtual std::int32_t CursorToParent();
  // Always 0; the argument is not looked at.
  virtual std::int32_t IsCursorInPath(const string& inPath) const;
  virtual string GetPath() const;
  virtual string GetNodeAtCursor() const;
  virtual void GetNumChildren(std::uint32_t& outCount, const string& inPath);
  virtual std::int32_t HasChildren(const string& inPath) const;
  virtual std::int32_t HasChildElement(const string& inPath) const;
  virtual std::int32_t HasRoot() const;
  // Whether the element has the attribute. A path that fails in any way gives 0. An argument that
  // is not well-formed UTF-8 raises a CQuenXMLException2w.
  virtual std::int32_t HasAttr(const string& inName, const string& inPath);
  // Whether the path selects an element first. 0 for an empty path and a wrong one. A path that is
  // not well-formed UTF-8 raises a CQuenXMLException2w.
  virtual std::int32_t PathExists(const string& inPath) const;
  virtual void ReadFromFile(const string& inFile);
  virtual void WriteToFile(const string& inFile, std::int32_t inOverwrite);
  virtual CQuenXMLData2& CreateNodes(string inPath);
  virtual void AddProcessingInstruction(const string& inTarget, const string& inData,
                                        const string& inPath);
  virtual void RemoveProcessingInstruction(const string& inTarget, const string& inPath);
  virtual void GetProcessingInstruction(string& outTarget, string& outData,
                                        const string& inPath) const;
  virtual void AddComment(const string& inText, const string& inPath);
  virtual void RemoveComment(const string& inPath);
  virtual void GetComment(string& outText, const string& inPath);
  virtual void AddCDATA(const string& inText, const string& inPath);
  virtual void GetCDATA(string& outText, const string& inPath);
  virtual void RemoveCDATA(const string& inPath);
  virtual void AddChildNodeNS(const string& inName, const string& inNamespaceURI,
                              const string& inPath);
  // Not the caller's; lives until this object is destroyed or assigned. What the wide class can do
  // beyond this one can be done with it.
  virtual CQuenXMLDataImpl2w* GetCQuenXMLData2Impl() const;
  // Replaces the tree by a copy of `inDocument`. HasRoot is 1 afterwards, whatever it held, and the
  // tree's document has the default settings, whatever those of `inDocument` are. Result: 1.
  virtual std::int32_t SetDocument(const CQuenXMLDocument2& inDocument);
  // An independent copy of the document, without the detour through text: an empty tree gives an
  // empty document, and a document type declaration is no obstacle. Default settings.
  virtual CQuenXMLDocument2 GetDocument() const;
  virtual void AppendEncryptedSubset(const string& inEnciphered, const string& inKey,
                                     const string& inPath);
  virtual void GetEncryptedSubset(string& outEnciphered, const string& inKey, const string& inPath);
  // Writes the whole document, with its declaration, enciphered. The file name is passed on as it
  // is, and UTF-8 all the same. Throws 2012 if the file exists and `inOverwrite` is 0, and as the
  // cipher does.
  virtual void WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                    const string& inKey);
  virtual void ReadFromEncryptedFile(const string& inFile, const string& inKey);
  virtual CQuenXMLNode2 GetCursor();
  virtual void SetCursor(const CQuenXMLNode2& inNode);
  virtual void WriteToFileBinary(const string& inFile, std::int32_t inOverwrite) const;

 private:
  std::unique_ptr<CQuenXMLDataImpl2w> impl_;
  // Of the call that runs: their memory serves the next one.
  mutable wstring path_;
  mutable wstring value_;
};

}  // namespace quen

#endif  // QUENXML2_NARROW_DATA_H_
