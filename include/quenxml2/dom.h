// SPDX-License-Identifier: Apache-2.0
//
// The document object layer: handles on the nodes of an XML document.
//
// A handle is a small object, copied and passed by value. It owns no node: every node belongs to
// its document, also one that was removed from the tree, and lives as long as the
// CQuenXMLDocument2w that owns it. When that document is destroyed or loaded again, every handle
// and iterator into it dangles; nothing detects this. A CQuenXMLDocument2w is a value: a copy is a
// second tree.
//
//   quen::CQuenXMLDocument2w document;
//   document.LoadXML(u"<order><item qty='3'>bolt</item></order>");
//   for (quen::CQuenXMLElement2w& item : document.GetDocumentElement()) item.SetValue(u"nut");
//   quen::CQuenXMLNode2w third = document.SelectSingleNode(u"/order/item[@qty='3']");
//
// A handle without a node is a null handle: what a navigation that finds nothing gives. It compares
// equal to a null QuenXMLDOMNode2w_NullPtr*, and can be copied, assigned and destroyed; every other
// operation on it throws code 8, "Node was not initialized".
//
// Failures are CQuenXMLException2w: code 8 as above; a refusal of the DOM with the DOM's own code
// and a message that begins with "DOM Error: "; 1000 "Unknown Exception" for anything else. What an
// operation has done by then stays done, but for the loading operations, which change the document
// only when they succeed.
//
// Texts end at their first zero unit. A tree belongs to one thread at a time, also for reading;
// different documents need no lock.
#ifndef QUENXML2_DOM_H_
#define QUENXML2_DOM_H_

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <vector>

#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/types.h>

namespace quen {

class CQuenXMLNodeImpl2w;
class CQuenXMLElementImpl2w;
class CQuenXMLAttrImpl2w;
class CQuenXMLCDATAImpl2w;
class CQuenXMLPIImpl2w;
class CQuenXMLCommentImpl2w;
class CQuenXMLDocumentImpl2w;
class element_iteratorImpl2w;
class attr_iteratorImpl2w;

class CQuenXMLDocument2w;

// Declared and never defined: a null pointer of this type stands for the null handle in
// comparisons.
class QuenXMLDOMNode2w_NullPtr;

// A handle on a node of any kind.
class QUENXML2_API CQuenXMLNode2w {
 public:
  // The node type codes of the W3C DOM.
  enum NodeType : std::int16_t {
    ElementNode = 1,
    AttributeNode = 2,
    TextNode = 3,
    CDATASectionNode = 4,
    EntityReferenceNode = 5,
    EntityNode = 6,
    ProcessingInstructionNode = 7,
    CommentNode = 8,
    DocumentNode = 9,
    DocumentTypeNode = 10,
    DocumentFragmentNode = 11,
    NotationNode = 12
  };

  // A second handle on the same node, always a plain one. No node is copied.
  CQuenXMLNode2w(const CQuenXMLNode2w& inOther);

  virtual ~CQuenXMLNode2w();

  // The qualified name of an element or attribute, the target of a processing instruction, "#text"
  // and the like for the rest.
  virtual wstring GetName() const;
  // An element: its first text child, "" if it has none; CDATA sections and later text do not
  // count. Any other node: its own value, "" where its kind has none.
  virtual wstring GetValue() const;
  // The kind of the node.
  virtual NodeType GetNodeType() const;
  // "" where there is none, and for nodes that were made without a namespace.
  virtual wstring GetNamespaceURI() const;
  // The prefix of the name. "" where there is none, and for nodes that were made without a
  // namespace.
  virtual wstring GetPrefix() const;
  // Children of every kind count.
  virtual bool HasChildNodes() const;
  // Whether it is an element with attributes.
  virtual bool HasAttributes() const;
  // A null handle for the document, an attribute, and a node that is not in a tree.
  virtual CQuenXMLNode2w GetParent() const;
  // The node behind this one, of any kind. A null handle if there is none.
  virtual CQuenXMLNode2w GetNextSibling() const;
  // The node before this one, of any kind. A null handle if there is none.
  virtual CQuenXMLNode2w GetPreviousSibling() const;
  // The first child, of any kind. A null handle if there is none.
  virtual CQuenXMLNode2w GetFirstChild() const;
  // The last child, of any kind. A null handle if there is none.
  virtual CQuenXMLNode2w GetLastChild() const;
  // A deep copy of the document that the node belongs to, with default settings: changes to it do
  // not reach this node's tree. On a document handle, which belongs to no other document: throws
  // 1000.
  virtual CQuenXMLDocument2w GetOwnerDocument() const;
  // The node and all below it as XML text, without a declaration. Throws 1010 "Invalid DOM Node
  // Type" for an attribute and for a document that has a document type declaration.
  virtual wstring GetSubset() const;
  // As GetSubset, with line feeds and two blanks a level.
  virtual wstring GetFormattedSubset() const;
  // An element: replaces its first text child, or appends one. Any other node: sets its own value.
  virtual void SetValue(const wstring& inValue);
  // Changes the prefix of the name. Throws the DOM's code where the node has no namespace, or
  // cannot have that prefix.
  virtual void SetPrefix(const wstring& inPrefix);
  // A node of another document is copied deep, and the copy goes in; a node of this document moves.
  // The result is a handle on the node as it stands in this tree. A null `inNew` does nothing and
  // gives a null handle; a null `inRef` means the end.
  virtual CQuenXMLNode2w InsertBefore(const CQuenXMLNode2w& inNew, const CQuenXMLNode2w& inRef);
  // As InsertBefore, at the end.
  virtual CQuenXMLNode2w AppendChild(const CQuenXMLNode2w& inNew);
  // As InsertBefore; the result is the old node, which is out of the tree and stays usable.
  virtual CQuenXMLNode2w ReplaceChild(const CQuenXMLNode2w& inNew, const CQuenXMLNode2w& inOld);
  // The removed node stays usable while its document lives.
  virtual CQuenXMLNode2w RemoveChild(const CQuenXMLNode2w& inOld);
  // Parses `inXML` and appends a copy of its document element. Attributes that only its document
  // type declaration gives stay behind. Throws 1009 if it does not parse, and has changed nothing
  // then.
  virtual void AppendSubset(const wstring& inXML);
  // All nodes that the XPath 1.0 expression selects, in document order, with this node as the
  // context. Prefixes are those that the document element declares. Throws 1010 for an expression
  // that is wrong, is no node set, or exceeds a limit. docs/paths.md tells more.
  virtual std::vector<CQuenXMLNode2w> SelectNodes(const wstring& inExpression) const;
  // The first of them; a null handle if there is none.
  virtual CQuenXMLNode2w SelectSingleNode(const wstring& inExpression) const;
  // A copy of the node in the same document, without a parent. The copy of a document is a document
  // that nothing owns and nothing releases: copy the CQuenXMLDocument2w instead.
  virtual CQuenXMLNode2w Clone(bool inDeep) const;
  // Never null. For the library's own classes.
  virtual CQuenXMLNodeImpl2w* GetImpl() const;

  // To the node of `inOther`. A handle of a derived class can be given a node of another kind by
  // its base: the operations of its own class throw 8 then, and those of a document handle do so
  // for any node, since it owns none any more. One of its own nodes makes it a null handle.
  CQuenXMLNode2w& operator=(const CQuenXMLNode2w& inOther);

  // Whether both are handles on one node, whatever the classes of the handles.
  bool operator==(const CQuenXMLNode2w& inOther) const;
  // Whether the two are not handles on one node.
  bool operator!=(const CQuenXMLNode2w& inOther) const;
  // Whether this is a null handle. The argument is not looked at.
  bool operator==(const QuenXMLDOMNode2w_NullPtr* inNull) const;
  // Whether this is a handle on a node. The argument is not looked at.
  bool operator!=(const QuenXMLDOMNode2w_NullPtr* inNull) const;

 protected:
  CQuenXMLNode2w();
  explicit CQuenXMLNode2w(const CQuenXMLNodeImpl2w& inImpl);
  // Takes over an implementation of a derived class.
  explicit CQuenXMLNode2w(std::unique_ptr<CQuenXMLNodeImpl2w> inImpl);
  void ReplaceImpl(std::unique_ptr<CQuenXMLNodeImpl2w> inImpl);
  // Copies one that is a pointer to a node and nothing else into the handle. For the library's own
  // classes.
  template <class Impl>
  QUENXML2_HIDDEN void SetImpl(const Impl& inImpl) noexcept;

 private:
  friend class CQuenXMLNodeImpl2w;
  friend class CQuenXMLDataImpl2w;
  friend class CQuenXMLMsgImpl2;

  void Release() noexcept;

  // The implementation lies in the handle, or behind it where it is more than a pointer to a node.
  CQuenXMLNodeImpl2w* impl_;
  alignas(void*) unsigned char place_[2 * sizeof(void*)];
};

class CQuenXMLAttr2w;

// A handle on an element: attributes by name, and list-like views of its child elements and its
// attributes.
class QUENXML2_API CQuenXMLElement2w : public CQuenXMLNode2w {
 public:
  class element_iterator;
  class attr_iterator;

  CQuenXMLElement2w(const CQuenXMLElement2w& inOther);
  // A null handle if `inNode` is no element; throws 8 if `inNode` is null itself.
  CQuenXMLElement2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLElement2w() override;

  virtual CQuenXMLElement2w& operator=(const CQuenXMLElement2w& inOther);
  // "" if there is no such attribute. Names are qualified names.
  virtual wstring GetAttribute(const wstring& inName) const;
  // An iterator on this element's parent, among the parent's siblings. Throws 1 if the parent or
  // the grandparent is no element.
  virtual element_iterator GetParentIterator();
  // An iterator on this element, among its siblings. Throws 1 at the document element.
  virtual element_iterator GetSiblingIterator();
  // Whether the parent is an element: the document does not count.
  virtual bool HasParent() const;
  // Makes the attribute or overwrites it.
  virtual void SetAttribute(const wstring& inName, const wstring& inValue);
  // An attribute that is not there changes nothing.
  virtual void RemoveAttribute(const wstring& inName);
  // A new last child. An element of another document is copied deep, one of this document moves;
  // `inDeep` has no effect. The result is a handle on the element as it stands in this tree.
  virtual CQuenXMLElement2w AddChildNode(const CQuenXMLElement2w& inElement, bool inDeep);
  virtual CQuenXMLElement2w AddChildNode(const wstring& inName);
  // Puts an element before `inPosition`, into the element that the iterator was made from. The
  // result stands on the new element; `inPosition` and all other iterators over that element are
  // stale. Before the first element (index -1) counts as the end, and a null handle throws 8.
  virtual element_iterator insert(element_iterator inPosition, const CQuenXMLElement2w& inElement,
                                  bool inDeep);
  virtual element_iterator insert(element_iterator inPosition, const wstring& inName);
  // An iterator on the first child element; end() if there is none.
  virtual element_iterator begin();
  // The iterator behind the last child element.
  virtual element_iterator end();
  // The first child element of that qualified name, else end().
  virtual element_iterator find(const wstring& inName);
  // Whether there is no child element; text and comments do not count.
  virtual bool empty() const;
  // Removes the child elements from `inFirst` up to `inLast`; only the indexes of the two are read.
  // A pair turned round removes from behind `inLast` up to and with `inFirst`. The result stands
  // behind what was removed. Throws 1 if `inFirst` stands on no element.
  virtual element_iterator erase(element_iterator inFirst, element_iterator inLast);
  // Removes the element at `inPosition`; the result stands on the next one. Throws 1.
  virtual element_iterator erase(element_iterator inPosition);
  // An iterator on the first attribute; attr_end() if there is none.
  virtual attr_iterator attr_begin();
  // The iterator behind the last attribute.
  virtual attr_iterator attr_end();
  // The attribute of that qualified name, else attr_end().
  virtual attr_iterator attr_find(const wstring& inName);
  // Whether there is no attribute.
  virtual bool attr_empty() const;
  // As erase. The result lists the attributes as they were before, erased ones included, and stands
  // on the one behind the range.
  virtual attr_iterator attr_erase(attr_iterator inFirst, attr_iterator inLast);
  // As erase, but nothing happens on an element without attributes, and an attribute that was
  // removed by other means throws 8.
  virtual attr_iterator attr_erase(attr_iterator inPosition);

 protected:
  CQuenXMLElement2w();
  explicit CQuenXMLElement2w(const CQuenXMLElementImpl2w& inImpl);

 private:
  friend class CQuenXMLAttr2w;
  friend class CQuenXMLDocument2w;
  friend class element_iteratorImpl2w;
  friend class CQuenXMLDataImpl2w;
  friend class CQuenXMLMsgImpl2;

  CQuenXMLElementImpl2w Impl() const;
};

// A position among the child elements of one element; other children are stepped over.
//
// It holds a count and a node and does not follow the tree: a change of the child elements by any
// other way than through this iterator makes it stale, and it is then only assigned or destroyed.
// Making one counts the children, so a loop asks for end() once and not at every step.
// `++` and `--` stop at the end and before the first element (index -1) without a failure. A
// default-constructed iterator can be assigned, copied, compared and destroyed; it equals another
// such one alone, and every other operation on it throws 1000 "input parent node is NULL".
class QUENXML2_API CQuenXMLElement2w::element_iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = CQuenXMLElement2w;
  using difference_type = std::ptrdiff_t;
  using pointer = CQuenXMLElement2w*;
  using reference = CQuenXMLElement2w&;

  // An iterator over nothing, as the comment on the class tells.
  element_iterator();
  element_iterator(const element_iterator& inOther);

  virtual ~element_iterator();
  // Moves on by `inCount`, at most to the end.
  virtual element_iterator& operator+=(std::uint32_t inCount);
  // Moves on by `inCount`, exactly as +=. It does not index from the start.
  virtual element_iterator& operator[](std::uint32_t inCount);
  // Moves back by `inCount`, at most to before the first element.
  virtual element_iterator& operator-=(std::uint32_t inCount);
  // Moves on by one; the result is the former position.
  virtual element_iterator operator++(int);
  // Moves on by one.
  virtual element_iterator& operator++();
  // Moves back by one; the result is the former position.
  virtual element_iterator operator--(int);
  // Moves back by one.
  virtual element_iterator& operator--();
  // The same element walked, the same index and the same count.
  virtual bool operator==(const element_iterator& inOther) const;
  // The opposite of ==.
  virtual bool operator!=(const element_iterator& inOther) const;
  virtual element_iterator& operator=(const element_iterator& inOther);
  // The reference lives as long as the iterator and shows the position of the latest dereference;
  // to keep an element, copy the handle. Throws 1 at the end and before the first element.
  virtual CQuenXMLElement2w& operator*();
  // As *, as a pointer.
  virtual CQuenXMLElement2w* operator->();

 private:
  friend class CQuenXMLElement2w;

  explicit element_iterator(const element_iteratorImpl2w& inImpl);
  element_iteratorImpl2w& Impl() const;

  std::unique_ptr<element_iteratorImpl2w> impl_;
};

// A position in a snapshot of the attributes of one element, taken when the iterator is made. An
// attribute removed by other means stays listed, and its handle usable. Steps, clamps and the
// default-constructed iterator are as for element_iterator.
class QUENXML2_API CQuenXMLElement2w::attr_iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = CQuenXMLAttr2w;
  using difference_type = std::ptrdiff_t;
  using pointer = CQuenXMLAttr2w*;
  using reference = CQuenXMLAttr2w&;

  // An iterator over nothing, as for element_iterator.
  attr_iterator();
  attr_iterator(const attr_iterator& inOther);

  virtual ~attr_iterator();
  // Moves on by `inCount`, at most to the end.
  virtual attr_iterator& operator+=(std::uint32_t inCount);
  // Moves on by `inCount`, exactly as +=. It does not index from the start.
  virtual attr_iterator& operator[](std::uint32_t inCount);
  // Moves back by `inCount`, at most to before the first attribute.
  virtual attr_iterator& operator-=(std::uint32_t inCount);
  // Moves on by one; the result is the former position.
  virtual attr_iterator operator++(int);
  // Moves on by one.
  virtual attr_iterator& operator++();
  // Moves back by one; the result is the former position.
  virtual attr_iterator operator--(int);
  // Moves back by one.
  virtual attr_iterator& operator--();
  // The reference lives as long as the entry in this iterator's snapshot.
  virtual CQuenXMLAttr2w& operator*();
  // As *, as a pointer.
  virtual CQuenXMLAttr2w* operator->();
  // The same element and the same index; the snapshots are not compared.
  virtual bool operator==(const attr_iterator& inOther) const;
  // The opposite of ==.
  virtual bool operator!=(const attr_iterator& inOther) const;
  virtual attr_iterator& operator=(const attr_iterator& inOther);

 private:
  friend class CQuenXMLElement2w;

  explicit attr_iterator(const attr_iteratorImpl2w& inImpl);
  attr_iteratorImpl2w& Impl() const;

  std::unique_ptr<attr_iteratorImpl2w> impl_;
};

// A handle on an attribute. SetValue through it shows at once in its element.
class QUENXML2_API CQuenXMLAttr2w : public CQuenXMLNode2w {
 public:
  CQuenXMLAttr2w(const CQuenXMLAttr2w& inOther);
  // A null handle if `inNode` is no attribute; throws 8 if `inNode` is null itself.
  CQuenXMLAttr2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLAttr2w() override;
  CQuenXMLAttr2w& operator=(const CQuenXMLAttr2w& inOther);

  // A null handle if the attribute belongs to no element, or if this handle is null.
  virtual CQuenXMLElement2w GetOwnerElement() const;

 protected:
  CQuenXMLAttr2w();
  explicit CQuenXMLAttr2w(const CQuenXMLAttrImpl2w& inImpl);

 private:
  friend class attr_iteratorImpl2w;
};

// A handle on a CDATA section.
class QUENXML2_API CQuenXMLCDATA2w : public CQuenXMLNode2w {
 public:
  // A null handle.
  CQuenXMLCDATA2w();
  CQuenXMLCDATA2w(const CQuenXMLCDATA2w& inOther);
  // A null handle if `inNode` is no CDATA section; throws 8 if `inNode` is null itself.
  CQuenXMLCDATA2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLCDATA2w() override;
  CQuenXMLCDATA2w& operator=(const CQuenXMLCDATA2w& inOther);

 protected:
  explicit CQuenXMLCDATA2w(const CQuenXMLCDATAImpl2w& inImpl);

 private:
  friend class CQuenXMLDocument2w;
};

// A handle on a comment.
class QUENXML2_API CQuenXMLComment2w : public CQuenXMLNode2w {
 public:
  CQuenXMLComment2w(const CQuenXMLComment2w& inOther);
  // A null handle if `inNode` is no comment; throws 8 if `inNode` is null itself.
  CQuenXMLComment2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLComment2w() override;
  CQuenXMLComment2w& operator=(const CQuenXMLComment2w& inOther);

 protected:
  CQuenXMLComment2w();
  explicit CQuenXMLComment2w(const CQuenXMLCommentImpl2w& inImpl);

 private:
  friend class CQuenXMLDocument2w;
};

// A handle on a processing instruction: the target is its name, the data its value.
class QUENXML2_API CQuenXMLPI2w : public CQuenXMLNode2w {
 public:
  CQuenXMLPI2w(const CQuenXMLPI2w& inOther);
  // A null handle if `inNode` is no processing instruction; throws 8 if `inNode` is null itself.
  CQuenXMLPI2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLPI2w() override;
  CQuenXMLPI2w& operator=(const CQuenXMLPI2w& inOther);

 protected:
  CQuenXMLPI2w();
  explicit CQuenXMLPI2w(const CQuenXMLPIImpl2w& inImpl);

 private:
  friend class CQuenXMLDocument2w;
};

// A document: the owner of a tree, and a value. It is never null; it may be empty.
//
// The settings (schema locations, validation, namespaces) belong to this object and not to the
// tree: a load keeps them, a copy copies them, and a document that comes from anywhere else has the
// defaults.
class QUENXML2_API CQuenXMLDocument2w : public CQuenXMLNode2w {
 public:
  // An empty document.
  CQuenXMLDocument2w();
  // A deep copy, settings included.
  CQuenXMLDocument2w(const CQuenXMLDocument2w& inOther);
  // A deep copy of a document node; from any other node a new document that holds a deep copy of
  // it. Throws 8 if `inNode` is null, and what AppendChild throws for a node that no document can
  // hold.
  CQuenXMLDocument2w(const CQuenXMLNode2w& inNode);
  ~CQuenXMLDocument2w() override;
  CQuenXMLDocument2w& operator=(const CQuenXMLDocument2w& inOther);

  // Makes an element, which belongs to this document and is not in its tree yet. This and the other
  // factories throw the DOM's code, or 1009 "Unknown Error".
  virtual CQuenXMLElement2w CreateElement(const wstring& inName);
  // Makes a comment, as CreateElement. The text is not checked for what XML cannot carry.
  virtual CQuenXMLComment2w CreateComment(const wstring& inText);
  // Makes a CDATA section, as CreateElement. The text is not checked for what XML cannot carry.
  virtual CQuenXMLCDATA2w CreateCDATA(const wstring& inText);
  // Makes a processing instruction, as CreateElement. The data are not checked for what XML cannot
  // carry.
  virtual CQuenXMLPI2w CreatePI(const wstring& inTarget, const wstring& inData);

  // Replaces the tree by the parsed file: a path, or an absolute URL. Throws 1009 if it cannot be
  // opened or parsed; the document is unchanged then. Only regular files are read. What the
  // document names (external entities, an external DTD subset, schemas) is not.
  virtual void Load(const wstring& inLocation);
  // The same from text. An encoding that the text declares is not heeded; one U+FEFF may stand in
  // front.
  virtual void LoadXML(const wstring& inXML);
  // Where the schemas are: "namespace location namespace location ...". No effect but when
  // validating.
  virtual void SetExternalSchemaLocation(const wstring& inLocations);
  // Where the schema for elements without a namespace is. No effect but when validating.
  virtual void SetExternalNoNamespaceSchemaLocation(const wstring& inLocation);
  // Checks a copy of the document against its schemas, whatever the settings for parsing say.
  // Throws 1009 if it is not valid, which includes a document that no schema describes.
  virtual void Validate() const;
  // Writes the 38 bytes "<?xml version='1.0' encoding='utf-8'?>" and the document in UTF-8.
  // `inPath` is handed to the system as it is. Throws 1015 if the file exists and `inOverwrite` is
  // 0, 1016 if it cannot be opened or written. Where the document cannot be written it throws what
  // GetUTF8Subset throws; the file is there then, with the 38 bytes alone, and what it held before
  // is lost.
  virtual void WriteToFile(const string& inPath, std::int32_t inOverwrite) const;
  // Merges adjacent text nodes, and removes text that is only white space from all elements.
  virtual void Normalize();
  // Whether loading validates: any value but 0 means yes, which forces namespaces on. A new
  // document has 0.
  virtual void SetDoValidationOnParse(std::int32_t inFlag);
  // What was set last.
  virtual std::int32_t GetDoValidationOnParse() const;
  // Whether loading looks at namespaces: any value but 0 means yes. A new document has 1.
  virtual void SetDoNamespaceOnParse(std::int32_t inFlag);
  // What was set last.
  virtual std::int32_t GetDoNamespaceOnParse() const;
  // A null handle on an empty document.
  virtual CQuenXMLElement2w GetDocumentElement() const;
  // Replaces the document element; a null handle removes it. A foreign element is copied deep.
  virtual void SetDocumentElement(const CQuenXMLElement2w& inElement);
  // As CreateElement, in a namespace.
  virtual CQuenXMLElement2w CreateElementNS(const wstring& inName, const wstring& inNamespaceURI);

  // Writes the document, with its declaration, enciphered. The enciphered forms are described in
  // docs/cipher.md. A key is used and not kept. A failure of the cipher arrives with the cipher's
  // code and message. The path is UTF-8.
  virtual void WriteToEncryptedFile(const string& inPath, std::int32_t inOverwrite,
                                    const wstring& inKey) const;
  // LoadXML of the text that was enciphered. Throws as LoadXML and as the cipher do.
  virtual void LoadXMLEncrypted(const string& inData, const wstring& inKey);
  // LoadXML of the text of an enciphered file. Throws as LoadXML and as the cipher do.
  virtual void LoadEncrypted(const wstring& inPath, const wstring& inKey);
  // The text of GetSubset, enciphered; "" for an empty document.
  virtual string GetEncryptedSubset(const wstring& inKey);
  // AppendSubset of the text that was enciphered. Throws as AppendSubset and as the cipher do.
  virtual void AppendEncryptedSubset(const string& inData, const wstring& inKey);

  // The document as UTF-8, without a declaration.
  virtual string GetUTF8Subset() const;
  // AppendSubset of UTF-8 text.
  virtual void AppendUTF8Subset(const string& inData);
  // As WriteToFile: there is no text mode on this platform.
  virtual void WriteToFileBinary(const string& inPath, std::int32_t inOverwrite) const;

 protected:
  explicit CQuenXMLDocument2w(const CQuenXMLDocumentImpl2w& inImpl);

 private:
  friend class CQuenXMLNode2w;
  friend class CQuenXMLDataImpl2w;
  friend class CQuenXMLMsgImpl2;

  explicit CQuenXMLDocument2w(std::unique_ptr<CQuenXMLDocumentImpl2w> inImpl);
  CQuenXMLDocumentImpl2w& Impl() const;
};

}  // namespace quen

#endif  // QUENXML2_DOM_H_
