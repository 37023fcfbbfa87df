// SPDX-License-Identifier: Apache-2.0
//
// Data trees: typed values in an XML document, addressed by path.
//
// A tree owns its document; a copy is a second document with its cursor on the root. One thread at
// a time may use a tree, also for reading; different trees need no lock.
//
//   quen::CQuenXMLData2w order(u"<order><item qty='3'>bolt</item></order>");
//   order.SetData(u"nut", u"/order/item");       // XPath: the item must exist
//   order.CreateNodes(u"/order/item[qty='4']");  // makes what the path lacks
//   std::int32_t quantity = 0;
//   order.GetAttr(u"qty", quantity, u"/order/item[2]");
//
// Paths. CreateNodes alone reads a creation path, the small language told at that operation. Every
// other path is an XPath 1.0 expression with the cursor as its context node; the first node in
// document order counts. A path that begins with '/' starts at the document. An empty path is the
// node at the cursor, but for AddData, CursorTo and PathExists. Prefixes are those that the
// document element declares. There are no default paths: an explicit u"" says that the cursor is
// meant.
//
// Cursor. A new tree has none; AddRootNode and every load, assignment and SetDocument put it on the
// root. Only the operations named CursorTo..., SetCursor and RemoveData(u"") move it. It may stand
// on the document (after CursorToParent from the root), or on a node of any kind (after SetCursor).
// An operation with an empty path that needs an element throws code 8, "Node was not initialized",
// when the cursor stands on something else. On a tree that never had a root an operation with an
// empty path does nothing, and one with a path throws 1013, unless it says otherwise.
//
// Values. Five types: double, float, std::uint32_t, std::int32_t and text. The value of an element
// is its first direct text child. Numbers stand in the tree as decimal text in fixed notation:
// integers without, floating point numbers with fifty decimals. A number that is read may be
// followed by other text (12abc reads as 12), and an integer is rounded (123.7 reads as 124). A
// number outside the range of the type is not stored and raises nothing: the variable keeps what it
// held. Infinity and NaN are written as "inf" and "nan" and do not read back.
//
// Failures are CQuenXMLException2w. Those that many operations share:
//   1013 "Path not found", "Path does not resolve to an Element Node"
//   1010 the path is a wrong expression, or no path by its nature (a number, a string)
//   the DOM's code, "DOM Error: ...": a name that is no XML name, a place that takes no such child
// An out argument is untouched by a failure unless its operation says otherwise. A std::int32_t
// result is 1 for yes or success and 0 for no or failure. Texts end at their first zero unit.
#ifndef QUENXML2_DATA_H_
#define QUENXML2_DATA_H_

#include <cstdint>
#include <memory>
#include <vector>

#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/export.h>
#include <quenxml2/types.h>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

// One predicate of a creation path: an attribute and its value.
struct QuenXMLData2_Attr {
  quen::wstring name;   // before the '='
  quen::wstring value;  // behind it, without its quotes
};

// One segment of a creation path: an element and the attributes that it must have, in the order of
// the text.
struct QuenXMLData2_Node {
  quen::wstring name;                         // of the element
  std::vector<QuenXMLData2_Attr> attributes;  // one for each predicate
};

// A whole creation path.
struct QuenXMLData2_NodePosList {
  std::int32_t absolute = 0;             // 1 when the path begins with '/'
  std::vector<QuenXMLData2_Node> nodes;  // from the outermost segment on
};

namespace quen {

class CQuenXMLDataImpl2w;

// A tree of values by path, in UTF-16. It owns its document; a copy shares nothing with it.
class QUENXML2_API CQuenXMLData2w {
 public:
  // An empty tree.
  CQuenXMLData2w();
  // A tree parsed from the text; empty text gives an empty tree. Throws 1009.
  CQuenXMLData2w(const wstring& inXML);
  CQuenXMLData2w(const CQuenXMLData2w& inOther);

  virtual ~CQuenXMLData2w();
  // Rebuilds the tree from text; empty text empties it. Throws 1009, and the tree is empty then.
  virtual CQuenXMLData2w& operator=(const wstring& inXML);
  // Becomes a copy of `inOther`, empty if that is empty.
  virtual CQuenXMLData2w& operator=(const CQuenXMLData2w& inOther);
  // Removes the element with all below it. With an empty path the cursor moves to the parent; else
  // it stays, even inside what was removed. Nothing happens on an empty tree. Throws 1013.
  virtual void RemoveData(const wstring& inPath);
  // An attribute that is not there changes nothing. Throws 1013.
  virtual void RemoveAttr(const wstring& inName, const wstring& inPath);
  // Makes the root and puts the cursor on it. Throws 1014 "Root node already exists".
  virtual void AddRootNode(const wstring& inName);
  // Adds a child element with a value. What stands before the last '/' names its parent, which must
  // exist (else nothing happens); what stands behind it is the name of the new element. A path of
  // one segment with a leading '/', or with a trailing '/', writes the value of the element itself.
  // Calling it again adds another element. The cut is made with no regard to brackets. Throws 1013
  // for an empty path.
  virtual void AddData(double inValue, const wstring& inPath);
  virtual void AddData(float inValue, const wstring& inPath);
  virtual void AddData(std::uint32_t inValue, const wstring& inPath);
  virtual void AddData(std::int32_t inValue, const wstring& inPath);
  virtual void AddData(const wstring& inValue, const wstring& inPath);
  // Binary data stand as text: 0x, then two hexadecimal digits for each byte. The wide form stores
  // the UTF-8 form of `inData`, up to its first zero unit; the buffer form stores `inLength` bytes
  // as they are, zero bytes too. Each reads what the other wrote of plain ASCII. Paths are those of
  // AddData.
  virtual void AddBinaryData(const wstring& inData, const wstring& inPath);
  virtual void AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const wstring& inPath);
  // A new last child of the element. Throws 3 "Position does not exist" on a tree that never had a
  // root, and 1013.
  virtual void AddChildNode(const wstring& inName, const wstring& inPath);
  // A new last child of the element's parent: not the neighbour of the element. Throws as
  // AddChildNode.
  virtual void AddSiblingNode(const wstring& inName, const wstring& inPath);
  // Writes the value of an element that must exist. Throws 1013.
  virtual void SetData(double inValue, const wstring& inPath);
  virtual void SetData(float inValue, const wstring& inPath);
  virtual void SetData(std::uint32_t inValue, const wstring& inPath);
  virtual void SetData(std::int32_t inValue, const wstring& inPath);
  virtual void SetData(const wstring& inValue, const wstring& inPath);
  // Writes binary data, in the two forms of AddBinaryData, as the value of an element that must
  // exist. Throws 1013.
  virtual void SetBinaryData(const wstring& inData, const wstring& inPath);
  virtual void SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const wstring& inPath);
  // Makes the attribute of an element that must exist, or overwrites it. Throws 1013.
  virtual void SetAttr(const wstring& inName, double inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, float inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, std::uint32_t inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, std::int32_t inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, const wstring& inValue, const wstring& inPath);
  // Grafts XML text: its document element becomes the last child of the element. On an empty tree
  // with an empty path the text becomes the document. Throws 1009 and 1013.
  virtual void AppendSubset(const wstring& inXML, const wstring& inPath);
  // Grafts a copy of the root of `inOther` in the same way. Nothing happens if `inOther` is empty.
  virtual void AppendSubset(const CQuenXMLData2w& inOther, const wstring& inPath);
  // Appends the node with all below it to `ioTarget`, at its cursor; an empty target takes it as
  // its document. Throws 1013, and 1009 from an empty tree with an empty path.
  virtual void GetSubset(CQuenXMLData2w& ioTarget, const wstring& inPath) const;
  // The node, of any kind, with all below it as XML text; u"/" is the whole document. `outXML`
  // keeps what it held on an empty tree. Throws 1013, and 1010 for an attribute.
  virtual void GetSubset(wstring& outXML, const wstring& inPath) const;
  // As GetSubset, with line feeds and two blanks a level.
  virtual void GetFormattedSubset(wstring& outXML, const wstring& inPath) const;
  // Reads the value of an element. Throws 1013; the numeric forms throw 1011 "Data conversion
  // error" where there is no number. With an empty path the value of any kind of node is read.
  virtual void GetData(double& outValue, const wstring& inPath) const;
  virtual void GetData(float& outValue, const wstring& inPath) const;
  virtual void GetData(std::uint32_t& outValue, const wstring& inPath) const;
  virtual void GetData(std::int32_t& outValue, const wstring& inPath) const;
  virtual void GetData(wstring& outValue, const wstring& inPath) const;
  // Reads binary data. Throws 1002 "Invalid Binary Data" if the value does not begin with 0x. A
  // character behind it that is no hexadecimal digit gives a wrong byte, and an odd last digit is
  // dropped.
  virtual void GetBinaryData(wstring& outData, const wstring& inPath) const;
  // The buffer form. `ioLength` counts bytes: the capacity of `outData` on entry. What fits is
  // copied and its length stored; data that are longer are cut, and `ioLength` stays as it was.
  virtual void GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                             const wstring& inPath) const;
  // Reads an attribute. One that is absent reads as the empty text; where there is no number, the
  // numeric forms leave `outValue` as it was and raise nothing. Throws 1013.
  virtual void GetAttr(const wstring& inName, double& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, float& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, std::uint32_t& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, std::int32_t& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, wstring& outValue, const wstring& inPath) const;
  // Moves the cursor to the element that the path selects. 0 if it selects none, is wrong or is
  // empty. No cursor move raises anything: 0 means that the cursor stayed where it was.
  virtual std::int32_t CursorTo(const wstring& inPath);
  // To the document element. 0 if there is none.
  virtual std::int32_t CursorToRoot();
  // To the first child element. 0 if there is none.
  virtual std::int32_t CursorToFirstChild();
  // To the last child element. 0 if there is none.
  virtual std::int32_t CursorToLastChild();
  // To the next element with the same parent. 0 if there is none.
  virtual std::int32_t CursorToNextSibling();
  // To the previous element with the same parent. 0 if there is none.
  virtual std::int32_t CursorToPreviousSibling();
  // To the parent: from the root to the document, and from there to nowhere, which is a move too.
  virtual std::int32_t CursorToParent();
  // Always 0.
  virtual std::int32_t IsCursorInPath(const wstring& inPath) const;
  // The cursor's element as an absolute path of qualified names; an element that carries a
  // non-empty attribute _quenxmlidx shows its text in brackets. "" without a cursor and on the
  // document. On any other kind of node, and inside a removed subtree, the elements upwards as far
  // as there are any.
  virtual wstring GetPath() const;
  // The qualified name of the element at the cursor, "" without a cursor. Throws 8 on another node.
  virtual wstring GetNodeAtCursor() const;
  // Counts children: those of every kind for a path, child elements alone for the cursor. Throws
  // 1013.
  virtual void GetNumChildren(std::uint32_t& outCount, const wstring& inPath);
  // Whether there are children of any kind; 0 if the path selects no element. Throws 1010 for a
  // wrong path.
  virtual std::int32_t HasChildren(const wstring& inPath) const;
  // Whether there are child elements. The rest is as for HasChildren.
  virtual std::int32_t HasChildElement(const wstring& inPath) const;
  // Whether the tree takes itself to have a root. It is a flag that loads and AddRootNode set, and
  // that RemoveData clears when it removes the first child of the document.
  virtual std::int32_t HasRoot() const;
  // Whether the element has the attribute. A path that fails in any way gives 0.
  virtual std::int32_t HasAttr(const wstring& inName, const wstring& inPath);
  // Whether the path selects an element first. 0 for an empty path and a wrong one; raises nothing.
  virtual std::int32_t PathExists(const wstring& inPath) const;
  // Replaces the tree by the parsed file or absolute URL. Throws 1009; the tree is unchanged then.
  virtual void ReadFromFile(const wstring& inFile);
  // Writes the whole document in UTF-8 behind "<?xml version='1.0' encoding='utf-8'?>". The file
  // name becomes UTF-8. Throws 1015 if the file exists and `inOverwrite` is 0, 1016 if it cannot be
  // opened or written. Where the tree cannot be written it throws what GetSubset throws; the file
  // is there then, with the declaration alone, and what it held before is lost.
  virtual void WriteToFile(const wstring& inFile, std::int32_t inOverwrite);
  // Makes the elements that a creation path names and the tree lacks, with their attributes:
  //   /name/name[attribute='value'][attribute='value']/name
  // At each segment the walk goes on in the first child element, in document order, of that name
  // and with those attribute values; without one it appends a new element. A path with a leading
  // '/' begins at the root, which it makes if there is none (and whose own predicates are not
  // looked at); another path begins at the cursor. Nothing is ever removed or reordered, and the
  // cursor does not move but onto a new root. The walk looks through all children of each element
  // on the path, so that making n siblings one by one this way takes n squared steps; AddData and
  // AddChildNode do not look.
  //
  // A value may hold anything but '/' and ']'. Quotes are taken off by position. A predicate
  // without
  // '=' has no effect, and one that is not closed ends the segment: the predicates before it count.
  // Throws 1013 "Invalid Path:  Node not found" if the first name is not the root's,
  // std::out_of_range for a predicate with nothing behind its '=', and the DOM's code for what is
  // no name; what was made before stays.
  virtual CQuenXMLData2w& CreateNodes(wstring inPath);
  // Appends a processing instruction as the last child of the element, or, with an empty path on a
  // tree that never had a root, of the document. Throws 1013.
  virtual void AddProcessingInstruction(const wstring& inTarget, const wstring& inData,
                                        const wstring& inPath);
  // Removes the element's first child of that kind, whatever its target; where there is none,
  // nothing happens. Throws 1013.
  virtual void RemoveProcessingInstruction(const wstring& inTarget, const wstring& inPath);
  // Reads the first one; where there is none, both arguments keep what they held. Throws 1013.
  virtual void GetProcessingInstruction(wstring& outTarget, wstring& outData,
                                        const wstring& inPath) const;
  // Appends a comment as the last child of the element, or, with an empty path on a tree that never
  // had a root, of the document. Throws 1013.
  virtual void AddComment(const wstring& inText, const wstring& inPath);
  // Removes the element's first comment; where there is none, nothing happens. Throws 1013.
  virtual void RemoveComment(const wstring& inPath);
  // Reads the element's first comment; where there is none, `outText` keeps what it held. Throws
  // 1013.
  virtual void GetComment(wstring& outText, const wstring& inPath);
  // Appends a CDATA section as the last child of the element. Throws 1013.
  virtual void AddCDATA(const wstring& inText, const wstring& inPath);
  // Reads the element's first CDATA section; where there is none, `outText` keeps what it held.
  // Throws 1013.
  virtual void GetCDATA(wstring& outText, const wstring& inPath);
  // Removes the element's first CDATA section; where there is none, nothing happens. Throws 1013.
  virtual void RemoveCDATA(const wstring& inPath);
  // As AddChildNode, in a namespace.
  virtual void AddChildNodeNS(const wstring& inName, const wstring& inNamespaceURI,
                              const wstring& inPath);
  // Not the caller's; lives until this object is destroyed or assigned.
  virtual CQuenXMLDataImpl2w* GetCQuenXMLData2wImpl() const;
  // Replaces the tree by a copy of `inDocument`. HasRoot is 1 afterwards, whatever it held.
  // Result: 1.
  virtual std::int32_t SetDocument(const CQuenXMLDocument2w& inDocument);
  // An independent document: the tree written as text and parsed again. Throws 1009 on an empty
  // tree.
  virtual CQuenXMLDocument2w GetDocument() const;
  // AppendSubset of the text that was enciphered. The enciphered forms are described in
  // docs/cipher.md. A key is used and not kept. A failure of the cipher arrives as
  // CQuenXMLException2w with the cipher's context, code and message.
  virtual void AppendEncryptedSubset(const string& inEnciphered, const wstring& inKey,
                                     const wstring& inPath);
  // Enciphers the text of GetSubset. `outEnciphered` becomes empty first, and stays so on an empty
  // tree. Throws as GetSubset and as the cipher do.
  virtual void GetEncryptedSubset(string& outEnciphered, const wstring& inKey,
                                  const wstring& inPath);
  // Writes the whole document, with its declaration, enciphered. The file name is UTF-8. Throws
  // 2012 if the file exists and `inOverwrite` is 0, and as the cipher does.
  virtual void WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                    const wstring& inKey);
  // Replaces the tree by the deciphered file. Throws as the cipher does, and 1009 for what does not
  // parse; the tree is unchanged then.
  virtual void ReadFromEncryptedFile(const wstring& inFile, const wstring& inKey);
  // AppendSubset of UTF-8 text at the cursor.
  virtual void AppendUTF8Subset(const string& inXML);
  // The whole document as UTF-8 text, without a declaration; "" for an empty tree.
  virtual void GetUTF8Subset(string& outXML) const;
  // A second handle on the node at the cursor; it does not follow later moves. Throws 1007.
  virtual CQuenXMLNode2w GetCursor();
  // Any node of the tree's document is taken, the document itself too. Throws 1007 for a null
  // handle, 4 for a node of another document, and 1013 on a tree that never had a root.
  virtual void SetCursor(const CQuenXMLNode2w& inNode);
  // As WriteToFile: there is no text mode on this platform.
  virtual void WriteToFileBinary(const wstring& inFile, std::int32_t inOverwrite) const;

 private:
  CQuenXMLDataImpl2w& Impl() const;

  std::unique_ptr<CQuenXMLDataImpl2w> impl_;
};

// The tree behind CQuenXMLData2w and CQuenXMLData2. A class may derive from it: where one operation
// builds on another it calls it as a virtual one, so that replacing a text form changes all forms
// that stand on it. The operations mean what those of CQuenXMLData2w mean; file names are UTF-8,
// and GetDocument gives the document itself.
class QUENXML2_API CQuenXMLDataImpl2w {
 public:
  // An empty tree.
  CQuenXMLDataImpl2w();
  // A tree parsed from the text. Empty text gives an empty tree. Throws 1009.
  explicit CQuenXMLDataImpl2w(const wstring& inXML);
  CQuenXMLDataImpl2w(const CQuenXMLDataImpl2w& inOther);

  virtual ~CQuenXMLDataImpl2w();
  // Parses the text, also an empty one, and changes the tree only when that succeeds.
  virtual CQuenXMLDataImpl2w& operator=(const wstring& inXML);
  // Throws 1006 if `inOther` is empty.
  virtual CQuenXMLDataImpl2w& operator=(const CQuenXMLDataImpl2w& inOther);
  virtual void RemoveData(const wstring& inPath);
  virtual void RemoveAttr(const wstring& inName, const wstring& inPath);
  virtual void AddRootNode(const wstring& inName);
  virtual void AddData(double inValue, const wstring& inPath);
  virtual void AddData(float inValue, const wstring& inPath);
  virtual void AddData(std::uint32_t inValue, const wstring& inPath);
  virtual void AddData(std::int32_t inValue, const wstring& inPath);
  virtual void AddData(const wstring& inValue, const wstring& inPath);
  virtual void AddBinaryData(const wstring& inData, const wstring& inPath);
  virtual void AddBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const wstring& inPath);
  virtual void AddChildNode(const wstring& inName, const wstring& inPath);
  virtual void AddSiblingNode(const wstring& inName, const wstring& inPath);
  virtual void SetData(double inValue, const wstring& inPath);
  virtual void SetData(float inValue, const wstring& inPath);
  virtual void SetData(std::uint32_t inValue, const wstring& inPath);
  virtual void SetData(std::int32_t inValue, const wstring& inPath);
  virtual void SetData(const wstring& inValue, const wstring& inPath);
  virtual void SetBinaryData(const wstring& inData, const wstring& inPath);
  virtual void SetBinaryData(const unsigned char* inData, std::uint32_t inLength,
                             const wstring& inPath);
  virtual void SetAttr(const wstring& inName, double inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, float inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, std::uint32_t inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, std::int32_t inValue, const wstring& inPath);
  virtual void SetAttr(const wstring& inName, const wstring& inValue, const wstring& inPath);
  virtual void AppendSubset(const wstring& inXML, const wstring& inPath);
  virtual void AppendSubset(const CQuenXMLDataImpl2w& inOther, const wstring& inPath);
  virtual void GetSubset(CQuenXMLDataImpl2w& ioTarget, const wstring& inPath) const;
  virtual void GetSubset(wstring& outXML, const wstring& inPath) const;
  virtual void GetFormattedSubset(wstring& outXML, const wstring& inPath) const;
  virtual void GetData(double& outValue, const wstring& inPath) const;
  virtual void GetData(float& outValue, const wstring& inPath) const;
  virtual void GetData(std::uint32_t& outValue, const wstring& inPath) const;
  virtual void GetData(std::int32_t& outValue, const wstring& inPath) const;
  virtual void GetData(wstring& outValue, const wstring& inPath) const;
  virtual void GetBinaryData(wstring& outData, const wstring& inPath) const;
  virtual void GetBinaryData(unsigned char* outData, std::uint32_t& ioLength,
                             const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, double& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, float& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, std::uint32_t& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, std::int32_t& outValue, const wstring& inPath) const;
  virtual void GetAttr(const wstring& inName, wstring& outValue, const wstring& inPath) const;
  virtual std::int32_t CursorTo(const wstring& inPath);
  virtual std::int32_t CursorToRoot();
  virtual std::int32_t CursorToFirstChild();
  virtual std::int32_t CursorToLastChild();
  virtual std::int32_t CursorToNextSibling();
  virtual std::int32_t CursorToPreviousSibling();
  virtual std::int32_t CursorToParent();
  virtual wstring GetNodeAtCursor() const;
  virtual std::int32_t HasRoot() const;
  virtual std::int32_t HasAttr(const wstring& inName, const wstring& inPath);
  virtual std::int32_t PathExists(const wstring& inPath) const;
  virtual void ReadFromFile(const wstring& inFile);
  virtual void WriteToFile(const string& inFile, std::int32_t inOverwrite);
  virtual void GetNumChildren(std::uint32_t& outCount, const wstring& inPath);
  virtual void AddProcessingInstruction(const wstring& inTarget, const wstring& inData,
                                        const wstring& inPath);
  virtual void RemoveProcessingInstruction(const wstring& inTarget, const wstring& inPath);
  virtual void GetProcessingInstruction(wstring& outTarget, wstring& outData,
                                        const wstring& inPath) const;
  virtual void AddComment(const wstring& inText, const wstring& inPath);
  virtual void RemoveComment(const wstring& inPath);
  virtual void GetComment(wstring& outText, const wstring& inPath);
  virtual void AddCDATA(const wstring& inText, const wstring& inPath);
  virtual void GetCDATA(wstring& outText, const wstring& inPath);
  virtual void RemoveCDATA(const wstring& inPath);
  virtual CQuenXMLDataImpl2w& CreateNodes(wstring inPath);
  virtual std::int32_t SetDocument(const CQuenXMLDocument2w& inDocument);
  // The document itself, which lives as long as this object. Whoever loads or assigns it calls
  // CursorToRoot next: the cursor stands on what it held before.
  virtual CQuenXMLDocument2w& GetDocument();
  virtual void AddChildNodeNS(const wstring& inName, const wstring& inNamespaceURI,
                              const wstring& inPath);
  virtual std::int32_t HasChildren(const wstring& inPath) const;
  virtual std::int32_t HasChildElement(const wstring& inPath) const;
  virtual void AppendEncryptedSubset(const string& inEnciphered, const wstring& inKey,
                                     const wstring& inPath);
  virtual void GetEncryptedSubset(string& outEnciphered, const wstring& inKey,
                                  const wstring& inPath);
  virtual void WriteToEncryptedFile(const string& inFile, std::int32_t inOverwrite,
                                    const wstring& inKey);
  virtual void ReadFromEncryptedFile(const wstring& inFile, const wstring& inKey);
  virtual void GetUTF8Subset(string& outXML) const;
  virtual void AppendUTF8Subset(const string& inXML);
  virtual CQuenXMLNode2w GetCursor();
  virtual void SetCursor(const CQuenXMLNode2w& inNode);
  virtual wstring GetPath() const;
  virtual void WriteToFileBinary(const string& inFile, std::int32_t inOverwrite) const;

 protected:
  // The seams of the creation paths. ParsePath turns a path into `outList`, which comes empty, and
  // gives 1; after a 0, CreateNodes ends and has done nothing. It calls HandleAttributes for each
  // segment.
  virtual std::int32_t ParsePath(wstring& inPath, QuenXMLData2_NodePosList& outList);
  // Walks and extends the tree below `ioElement` along the list, from segment `inIndex` on;
  // `ioElement` moves down to the last element that existed before. The library's own takes one
  // segment and calls itself for the next; from the 257th on it walks the rest of the path in one
  // call. 0 if there is no such segment.
  virtual std::int32_t RecursePath(CQuenXMLElement2w* ioElement,
                                   const QuenXMLData2_NodePosList& inList, std::int32_t inIndex);
  // Reads the name and the predicates of one segment into `outNode`, which comes empty.
  virtual void HandleAttributes(QuenXMLData2_Node* outNode, wstring inSegment);
  // The text in the brackets of GetPath: the attribute _quenxmlidx of an element.
  virtual const wstring GetIndexValue(const xercesc::DOMNode* inNode) const;
  // The element that a path names. Throws 1013.
  CQuenXMLNode2w GetElementFromXPath(const wstring& inPath) const;

 private:
  using Step = CQuenXMLNodeImpl2w (CQuenXMLNodeImpl2w::*)() const;
  std::int32_t MoveCursor(Step inStart, Step inStep);
  std::int32_t CursorToNewRoot();
  void AddLeaf(const CQuenXMLNode2w& inLeaf, const wstring& inPath, const char16_t* inContext);

  CQuenXMLDocument2w document_;
  std::unique_ptr<CQuenXMLNode2w> cursor_;  // none until the first successful CursorToRoot
  std::int32_t hasRoot_ = 0;
};

}  // namespace quen

#endif  // QUENXML2_DATA_H_
