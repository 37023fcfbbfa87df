// SPDX-License-Identifier: Apache-2.0
//
// What stands behind a message of either width: a document that is an envelope, and four elements
// of it that are kept at hand.
//
// Every value of a message lives in the document; the elements are a cache, and each operation says
// what it does to them. An element that leaves the tree stays one of its document, and so an
// operation on it does no harm.
#ifndef QUENXML2_MESSAGE_MESSAGE_IMPL_H_
#define QUENXML2_MESSAGE_MESSAGE_IMPL_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include <quenxml2/data.h>

#include "dom/document_impl.h"
#include "dom/element_impl.h"

namespace quen {

class CQuenXMLMsgImpl2 {
 public:
  // An empty message: an envelope with an empty body, and no element at hand.
  CQuenXMLMsgImpl2();
  explicit CQuenXMLMsgImpl2(const wstring& inXML);
  CQuenXMLMsgImpl2(const CQuenXMLMsgImpl2& inOther);
  CQuenXMLMsgImpl2& operator=(const CQuenXMLMsgImpl2& inOther);

  virtual ~CQuenXMLMsgImpl2();
  virtual void GetCustomHeader(const wstring& inName, CQuenXMLDocument2w& outHeader) const;
  virtual void GetCustomHeader(const wstring& inName, CQuenXMLData2w& outHeader) const;
  virtual void SetCustomHeader(const CQuenXMLDocument2w& inHeader);
  virtual void SetCustomHeader(const CQuenXMLData2w& inHeader);
  virtual void GetBody(CQuenXMLDocument2w& outBody) const;
  virtual void GetBody(CQuenXMLData2w& outBody) const;
  virtual wstring GetMessageName() const;
  virtual void GetError(wstring& outContext, std::uint32_t& outCode, wstring& outMessage,
                        wstring& outDetail) const;
  virtual void GetError(CQuenXMLException2w& outException) const;
  virtual void SetError(const wstring& inContext, const std::uint32_t& inCode,
                        const wstring& inMessage, const wstring& inDetail);
  virtual void SetError(const CQuenXMLException2w& inException);
  virtual void ClearError();
  virtual void GetMessageContents(CQuenXMLDocument2w& outDocument) const;
  virtual void GetMessageContents(CQuenXMLData2w& outData) const;
  virtual string GetMessageContents() const;
  virtual wstring GetMessageContentsw() const;
  virtual bool HasHeader() const;
  virtual bool HasBody() const;
  virtual bool HasError() const;
  virtual wstring GetSourceAddress() const;
  virtual wstring GetReplyAddress() const;
  virtual wstring GetDestinationAddress() const;
  virtual wstring GetMessageType() const;
  virtual wstring GetTransportType() const;
  virtual wstring GetUserNameA() const;
  virtual wstring GetHostName() const;
  virtual wstring GetTransactionID() const;
  virtual void SetSourceAddress(const wstring& inAddress);
  virtual void SetReplyAddress(const wstring& inAddress);
  virtual void SetDestinationAddress(const wstring& inAddress);
  virtual void SetMessageType(const wstring& inType);
  virtual void SetTransportType(const wstring& inType);
  virtual void SetTransactionID(const wstring& inId);
  virtual void SetBody(const CQuenXMLDocument2w& inBody);
  virtual void SetBody(const CQuenXMLData2w& inBody);
  virtual string GetEncryptedMessageContents(const wstring& inKey);
  virtual void SetEncryptedMessageContents(const string& inCipherText, const wstring& inKey);
  // Contents that have no root raise 8, and the former contents stay.
  virtual void SetMessageContents(const CQuenXMLDocument2w& inDocument);
  virtual void SetMessageContents(const CQuenXMLData2w& inData);
  virtual void SetMessageContents(const string& inXML);
  virtual void SetMessageContentsw(const wstring& inXML);
  virtual void ConstructReplyMessage(CQuenXMLMsgImpl2& outReply) const;
  virtual void SetXMLMessageType(std::uint32_t inType);
  virtual std::uint32_t GetXMLMessageType() const;
  virtual void SetMessageId(const wstring& inId);
  virtual wstring GetMessageId() const;
  virtual string GetFormattedMessageContents() const;
  virtual wstring GetFormattedMessageContentsw() const;

  // The body element itself. What is done through the handle is done to the message.
  CQuenXMLElement2w GetBody();

  // Finds the four elements in the document. What fails on the way leaves the rest null.
  void InitializeElementNodes();

 private:
  using DocumentOwner = std::unique_ptr<CQuenXMLDocumentImpl2w>;

  // Whether an envelope stands inside of the envelope, so that it may supply a part.
  enum class Nesting : std::uint8_t {
    kNone,
    kSome,
    kUnknown,     // found out when it matters
    kOpenToUser,  // a handle into the tree is out: never known again
  };

  CQuenXMLDocumentImpl2w& Document() const;
  CQuenXMLNodeImpl2w Find(std::u16string_view inPath) const;
  CQuenXMLNodeImpl2w FindOwnPart(std::u16string_view inPath) const;
  CQuenXMLNodeImpl2w RequireHeader(const wstring& inPath, const wstring& inName) const;
  bool MayNest() const;
  void TreeHasGrown();

  void Parse(const wstring& inXML);
  void Take(DocumentOwner inDocument, Nesting inNesting);
  void ForgetElements();

  CQuenXMLNodeImpl2w Header();
  void MakeHeaderElement(CQuenXMLElementImpl2w& outElement, const char16_t* inName);
  void SetChildField(CQuenXMLElementImpl2w& ioParent, const char16_t* inParentName,
                     const char16_t* inName, const wstring& inValue);
  wstring GetHeaderField(std::u16string_view inPath) const;
  void SetHeaderField(std::u16string_view inPath, const char16_t* inName, const wstring& inValue);

  void RemoveHeaderNamed(const wstring& inName);
  void AddCustomHeader(const CQuenXMLElement2w& inHeader);

  mutable DocumentOwner document_;  // none in a new message that nobody has looked at
  CQuenXMLElementImpl2w body_;
  CQuenXMLElementImpl2w delivery_;
  CQuenXMLElementImpl2w message_;
  CQuenXMLElementImpl2w fault_;
  mutable Nesting nesting_ = Nesting::kUnknown;
};

namespace internal {

// The first child element of that qualified name; null if there is none.
CQuenXMLElementImpl2w ChildNamed(const CQuenXMLElementImpl2w& inParent, const char16_t* inName);

}  // namespace internal
}  // namespace quen

#endif  // QUENXML2_MESSAGE_MESSAGE_IMPL_H_
