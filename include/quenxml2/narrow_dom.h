// SPDX-License-Identifier: Apache-2.0
//
// The document object layer in UTF-8. narrow.h tells what all narrow classes share; dom.h what the
// operations do.
//
//   quen::CQuenXMLDocument2 document;
//   document.LoadXML("<order><item qty='3'>bolt</item></order>");
//   for (quen::CQuenXMLElement2& item : document.GetDocumentElement()) item.SetValue("nut");
//   quen::CQuenXMLNode2 third = document.SelectSingleNode("/order/item[@qty='3']");
//
// A narrow handle owns a wide one, its twin, which GetImpl gives: the way to a wide operation, and
// to the same node.
#ifndef QUENXML2_NARROW_DOM_H_
#define QUENXML2_NARROW_DOM_H_

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <vector>

#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

class CQuenXMLDocument2;

// As CQuenXMLNode2w.
class QUENXML2_API CQuenXMLNode2 {
 public:
  // The node type codes of the W3C DOM.
  enum NodeType : std::int16_t {
    ElementNode = CQuenXMLNode2w::ElementNode,
    AttributeNode = CQuenXMLNode2w::AttributeNode,
    TextNode = CQuenXMLNode2w::TextNode,
    CDATASectionNode = CQuenXMLNode2w::CDATASectionNode,
    EntityReferenceNode = CQuenXMLNode2w::EntityReferenceNode,
    EntityNode = CQuenXMLNode2w::EntityNode,
    ProcessingInstructionNode = CQuenXMLNode2w::ProcessingInstructionNode,
    CommentNode = CQuenXMLNode2w::CommentNode,
    DocumentNode = CQuenXMLNode2w::DocumentNode,
    DocumentTypeNode = CQuenXMLNode2w::DocumentTypeNode,
    DocumentFragmentNode = CQuenXMLNode2w::DocumentFragmentNode,
    NotationNode = CQuenXMLNode2w::NotationNode
  };

  CQuenXMLNode2(const CQuenXMLNode2& inOther);

  virtual ~CQuenXMLNode2();

  virtual string GetName() const;
  virtual string GetValue() const;
  virtual NodeType GetNodeType() const;
  virtual string GetNamespaceURI() const;
  virtual string GetPrefix() const;
  virtual bool HasChildNodes() const;
  virtual bool HasAttributes() const;
  virtual CQuenXMLNode2 GetParent() const;
  virtual CQuenXMLNode2 GetNextSibling() const;
  virtual CQuenXMLNode2 GetPreviousSibling() const;
  virtual CQuenXMLNode2 GetFirstChild() const;
  virtual CQuenXMLNode2 GetLastChild() const;
  virtual CQuenXMLDocument2 GetOwnerDocument() const;
  virtual string GetSubset() const;
  virtual string GetFormattedSubset() const;
  virtual void SetValue(const string& inValue);
  virtual void SetPrefix(const string& inPrefix);
  virtual CQuenXMLNode2 InsertBefore(const CQuenXMLNode2& inNew, const CQuenXMLNode2& inRef);
  virtual CQuenXMLNode2 AppendChild(const CQuenXMLNode2& inNew);
  virtual CQuenXMLNode2 ReplaceChild(const CQuenXMLNode2& inNew, const CQuenXMLNode2& inOld);
  virtual CQuenXMLNode2 RemoveChild(const CQuenXMLNode2& inOld);
  virtual void AppendSubset(const string& inXML);
  virtual std::vector<CQuenXMLNode2> SelectNodes(const string& inExpression) const;
  virtual CQuenXMLNode2 SelectSingleNode(const string& inExpression) const;
  virtual CQuenXMLNode2 Clone(bool inDeep) const;
  // The twin: not the caller's, never null; it lives until this handle is assigned or destroyed. In
  // a derived class it is of the wide class of the same name, but for a default-constructed handle,
  // whose twin is a plain null handle.
  virtual CQuenXMLNode2w* GetImpl() const;

  CQuenXMLNode2& operator=(const CQuenXMLNode2& inOther);

  // The same node, whatever the classes of the handles.
  bool operator==(const CQuenXMLNode2& inOther) const;
  bool operator!=(const CQuenXMLNode2& inOther) const;
  bool operator==(const QuenXMLDOMNode2w_NullPtr* inNull) const;
  bool operator!=(const QuenXMLDOMNode2w_NullPtr* inNull) const;

  // For the library's own lists of handles: no one else has a key.
  class Key {
    friend class CQuenXMLNode2;
    Key() {}
  };
  // A handle with `inNode` as its twin; without a key no one can call it.
  CQuenXMLNode2(Key, const CQuenXMLNode2w& inNode);

 protected:
  CQuenXMLNode2();
  explicit CQuenXMLNode2(const CQuenXMLNode2w& inNode);
  explicit CQuenXMLNode2(std::unique_ptr<CQuenXMLNode2w> inTwin);

  std::unique_ptr<CQuenXMLNode2w> twin_;

 private:
  friend class CQuenXMLData2;
  friend class CQuenXMLMsg2;
};

class CQuenXMLAttr2;

// As CQuenXMLElement2w.
class QUENXML2_API CQuenXMLElement2 : public CQuenXMLNode2 {
 public:
  class element_iterator;
  class attr_iterator;

  CQuenXMLElement2(const CQuenXMLElement2& inOther);
  CQuenXMLElement2(const CQuenXMLNode2& inNode);
  ~CQuenXMLElement2() override;

  virtual CQuenXMLElement2& operator=(const CQuenXMLElement2& inOther);
  virtual string GetAttribute(const string& inName) const;
  virtual element_iterator GetParentIterator();
  virtual element_iterator GetSiblingIterator();
  virtual bool HasParent() const;
  virtual void SetAttribute(const string& inName, const string& inValue);
  virtual void RemoveAttribute(const string& inName);
  virtual CQuenXMLElement2 AddChildNode(const CQuenXMLElement2& inElement, bool inDeep);
  virtual CQuenXMLElement2 AddChildNode(const string& inName);
  virtual element_iterator insert(element_iterator inPosition, const CQuenXMLElement2& inElement,
                                  bool inDeep);
  virtual element_iterator insert(element_iterator inPosition, const string& inName);
  virtual element_iterator begin();
  virtual element_iterator end();
  virtual element_iterator find(const string& inName);
  virtual bool empty() const;
  virtual element_iterator erase(element_iterator inFirst, element_iterator inLast);
  virtual element_iterator erase(element_iterator inPosition);
  virtual attr_iterator attr_begin();
  virtual attr_iterator attr_end();
  virtual attr_iterator attr_find(const string& inName);
  virtual bool attr_empty() const;
  virtual attr_iterator attr_erase(attr_iterator inFirst, attr_iterator inLast);
  virtual attr_iterator attr_erase(attr_iterator inPosition);

 protected:
  CQuenXMLElement2();
  explicit CQuenXMLElement2(const CQuenXMLElement2w& inElement);
  explicit CQuenXMLElement2(std::unique_ptr<CQuenXMLNode2w> inTwin);

 private:
  friend class CQuenXMLAttr2;
  friend class CQuenXMLDocument2;

  CQuenXMLElement2w& Twin() const;
};

// As CQuenXMLElement2w::element_iterator.
class QUENXML2_API CQuenXMLElement2::element_iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = CQuenXMLElement2;
  using difference_type = std::ptrdiff_t;
  using pointer = CQuenXMLElement2*;
  using reference = CQuenXMLElement2&;

  element_iterator();
  element_iterator(const element_iterator& inOther);

  virtual ~element_iterator();
  virtual element_iterator& operator+=(std::uint32_t inCount);
  virtual element_iterator& operator[](std::uint32_t inCount);
  virtual element_iterator& operator-=(std::uint32_t inCount);
  virtual element_iterator operator++(int);
  virtual element_iterator& operator++();
  virtual element_iterator operator--(int);
  virtual element_iterator& operator--();
  virtual bool operator==(const element_iterator& inOther) const;
  virtual bool operator!=(const element_iterator& inOther) const;
  virtual element_iterator& operator=(const element_iterator& inOther);
  // Each dereference makes a new handle. The reference lives until the next dereference of this
  // iterator, or its end; to keep an element, copy the handle.
  virtual CQuenXMLElement2& operator*();
  virtual CQuenXMLElement2* operator->();

 private:
  friend class CQuenXMLElement2;

  explicit element_iterator(std::unique_ptr<CQuenXMLElement2w::element_iterator> inWide);

  std::unique_ptr<CQuenXMLElement2w::element_iterator> wide_;
  std::unique_ptr<CQuenXMLElement2> current_;
};

// As CQuenXMLElement2w::attr_iterator.
class QUENXML2_API CQuenXMLElement2::attr_iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = CQuenXMLAttr2;
  using difference_type = std::ptrdiff_t;
  using pointer = CQuenXMLAttr2*;
  using reference = CQuenXMLAttr2&;

  attr_iterator();
  attr_iterator(const attr_iterator& inOther);

  virtual ~attr_iterator();
  virtual attr_iterator& operator+=(std::uint32_t inCount);
  virtual attr_iterator& operator[](std::uint32_t inCount);
  virtual attr_iterator& operator-=(std::uint32_t inCount);
  virtual attr_iterator operator++(int);
  virtual attr_iterator& operator++();
  virtual attr_iterator operator--(int);
  virtual attr_iterator& operator--();
  virtual bool operator==(const attr_iterator& inOther) const;
  virtual bool operator!=(const attr_iterator& inOther) const;
  virtual attr_iterator& operator=(const attr_iterator& inOther);
  // As element_iterator.
  virtual CQuenXMLAttr2& operator*();
  virtual CQuenXMLAttr2* operator->();

 private:
  friend class CQuenXMLElement2;

  explicit attr_iterator(std::unique_ptr<CQuenXMLElement2w::attr_iterator> inWide);

  std::unique_ptr<CQuenXMLElement2w::attr_iterator> wide_;
  std::unique_ptr<CQuenXMLAttr2> current_;
};

// As CQuenXMLAttr2w.
class QUENXML2_API CQuenXMLAttr2 : public CQuenXMLNode2 {
 public:
  CQuenXMLAttr2(const CQuenXMLAttr2& inOther);
  // A handle on the node of a wide handle.
  explicit CQuenXMLAttr2(const CQuenXMLAttr2w& inAttr);
  CQuenXMLAttr2(const CQuenXMLNode2& inNode);
  ~CQuenXMLAttr2() override;
  CQuenXMLAttr2& operator=(const CQuenXMLAttr2& inOther);

  virtual CQuenXMLElement2 GetOwnerElement() const;

 protected:
  CQuenXMLAttr2();
};

// As CQuenXMLCDATA2w.
class QUENXML2_API CQuenXMLCDATA2 : public CQuenXMLNode2 {
 public:
  CQuenXMLCDATA2();
  CQuenXMLCDATA2(const CQuenXMLCDATA2& inOther);
  // A handle on the node of a wide handle.
  explicit CQuenXMLCDATA2(const CQuenXMLCDATA2w& inSection);
  CQuenXMLCDATA2(const CQuenXMLNode2& inNode);
  ~CQuenXMLCDATA2() override;
  CQuenXMLCDATA2& operator=(const CQuenXMLCDATA2& inOther);

 private:
  friend class CQuenXMLDocument2;

  explicit CQuenXMLCDATA2(std::unique_ptr<CQuenXMLNode2w> inTwin);
};

// As CQuenXMLComment2w.
class QUENXML2_API CQuenXMLComment2 : public CQuenXMLNode2 {
 public:
  CQuenXMLComment2(const CQuenXMLComment2& inOther);
  // A handle on the node of a wide handle.
  explicit CQuenXMLComment2(const CQuenXMLComment2w& inComment);
  CQuenXMLComment2(const CQuenXMLNode2& inNode);
  ~CQuenXMLComment2() override;
  CQuenXMLComment2& operator=(const CQuenXMLComment2& inOther);

 protected:
  CQuenXMLComment2();

 private:
  friend class CQuenXMLDocument2;

  explicit CQuenXMLComment2(std::unique_ptr<CQuenXMLNode2w> inTwin);
};

// As CQuenXMLPI2w.
class QUENXML2_API CQuenXMLPI2 : public CQuenXMLNode2 {
 public:
  CQuenXMLPI2(const CQuenXMLPI2& inOther);
  // A handle on the node of a wide handle.
  explicit CQuenXMLPI2(const CQuenXMLPI2w& inInstruction);
  CQuenXMLPI2(const CQuenXMLNode2& inNode);
  ~CQuenXMLPI2() override;
  CQuenXMLPI2& operator=(const CQuenXMLPI2& inOther);

 protected:
  CQuenXMLPI2();

 private:
  friend class CQuenXMLDocument2;

  explicit CQuenXMLPI2(std::unique_ptr<CQuenXMLNode2w> inTwin);
};

// As CQuenXMLDocument2w. There is no GetUTF8Subset and no AppendUTF8Subset: GetSubset and
// AppendSubset are UTF-8 here.
class QUENXML2_API CQuenXMLDocument2 : public CQuenXMLNode2 {
 public:
  CQuenXMLDocument2();
  CQuenXMLDocument2(const CQuenXMLDocument2& inOther);
  CQuenXMLDocument2(const CQuenXMLNode2& inNode);
  ~CQuenXMLDocument2() override;
  CQuenXMLDocument2& operator=(const CQuenXMLDocument2& inOther);

  virtual CQuenXMLElement2 CreateElement(const string& inName);
  virtual CQuenXMLComment2 CreateComment(const string& inText);
  virtual CQuenXMLCDATA2 CreateCDATA(const string& inText);
  virtual CQuenXMLPI2 CreatePI(const string& inTarget, const string& inData);

  virtual void Load(const string& inLocation);
  // Replaces the tree by the parsed text, which is UTF-8, whatever encoding it declares. Throws
  // 1009; the document is unchanged then.
  virtual void LoadXML(const string& inXML);
  virtual void SetExternalSchemaLocation(const string& inLocations);
  virtual void SetExternalNoNamespaceSchemaLocation(const string& inLocation);
  virtual void Validate() const;
  virtual void WriteToFile(const string& inPath, std::int32_t inOverwrite) const;
  virtual void Normalize();
  virtual void SetDoValidationOnParse(std::int32_t inFlag);
  virtual std::int32_t GetDoValidationOnParse() const;
  virtual void SetDoNamespaceOnParse(std::int32_t inFlag);
  virtual std::int32_t GetDoNamespaceOnParse() const;
  virtual CQuenXMLElement2 GetDocumentElement() const;
  virtual void SetDocumentElement(const CQuenXMLElement2& inElement);
  virtual CQuenXMLElement2 CreateElementNS(const string& inName, const string& inNamespaceURI);

  virtual void WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                                    const string& inKey) const;
  virtual void LoadXMLEncrypted(const string& inData, const string& inKey);
  virtual void LoadEncrypted(const string& inPath, const string& inKey);
  // The text of GetSubset, enciphered; "" for an empty document. Throws a CQuenXMLException2w.
  virtual string GetEncryptedSubset(const string& inKey);
  virtual void AppendEncryptedSubset(const string& inData, const string& inKey);

  virtual void WriteToFileBinary(const string& inPath, std::int32_t inOverwrite) const;

 protected:
  explicit CQuenXMLDocument2(const CQuenXMLDocument2w& inDocument);

 private:
  friend class CQuenXMLData2;
  friend class CQuenXMLNode2;

  explicit CQuenXMLDocument2(std::unique_ptr<CQuenXMLNode2w> inTwin);
  CQuenXMLDocument2w& Twin() const;
};

}  // namespace quen

#endif  // QUENXML2_NARROW_DOM_H_
