// SPDX-License-Identifier: Apache-2.0
//
// Custom headers and the body: whole elements that are copied in and out.
#include <typeinfo>

#include "foundation/failure.h"
#include "message/envelope.h"
#include "message/message_format.h"
#include "message/message_impl.h"

namespace quen {

namespace format = message_format;

namespace {

// Both forms of an operation say this, whichever is called.
constexpr const char16_t* kGetCustomHeader = u"CQuenXMLMsgImpl2::GetCustomHeader(CQuenXMLData2w)";
constexpr const char16_t* kSetCustomHeader = u"CQuenXMLMsgImpl2::SetCustomHeader(CQuenXMLData2w)";

wstring HeaderPathOf(const wstring& inName) {
  if (inName.empty())
    ThrowXMLException2w(kGetCustomHeader, kXslFailure, u"Header name cannot be empty.");
  if (inName.front() == u'/') return inName;
  return wstring(format::kHeaderPath) + u"/" + inName;
}

[[noreturn]] void ThrowNoHeader() {
  ThrowXMLException2w(kSetCustomHeader, kXslFailure,
                      u"User specified msg header object has no root element.");
}

void RequireBody(const CQuenXMLElementImpl2w& inBody) {
  if (inBody.GetDOMNode() == nullptr) {
    ThrowXMLException2w(u"CQuenXMLMsgImpl2::GetBody", kNotInitialized,
                        u"The CQuenXMLMsg does not have a Body.");
  }
}

void RemoveDocumentElement(CQuenXMLDocument2w& ioDocument) {
  const CQuenXMLElement2w element = ioDocument.GetDocumentElement();
  if (element.GetImpl()->GetDOMNode() != nullptr) ioDocument.RemoveChild(element);
}

}  // namespace

// Custom headers.

// A whole expression is evaluated as it is: it need not point into the header.
CQuenXMLNodeImpl2w CQuenXMLMsgImpl2::RequireHeader(const wstring& inPath,
                                                   const wstring& inName) const {
  const CQuenXMLNodeImpl2w header =
      inName.front() == u'/' ? Document().SelectFirst(inPath) : Find(inPath);
  if (header.GetDOMNode() == nullptr)
    ThrowXMLException2w(kGetCustomHeader, kNotInitialized, u"Header not found: " + inName);
  return header;
}

void CQuenXMLMsgImpl2::GetCustomHeader(const wstring& inName, CQuenXMLData2w& outHeader) const {
  const wstring path = HeaderPathOf(inName);
  outHeader.RemoveData(u"");
  outHeader.AppendSubset(RequireHeader(path, inName).GetSubset(), u"");
}

void CQuenXMLMsgImpl2::GetCustomHeader(const wstring& inName, CQuenXMLDocument2w& outHeader) const {
  const wstring path = HeaderPathOf(inName);
  RemoveDocumentElement(outHeader);
  outHeader.AppendChild(CQuenXMLNode2w(RequireHeader(path, inName)));
}

void CQuenXMLMsgImpl2::SetCustomHeader(const CQuenXMLDocument2w& inHeader) {
  const CQuenXMLElement2w header = inHeader.GetDocumentElement();
  if (header.GetImpl()->GetDOMNode() == nullptr) ThrowNoHeader();
  RemoveHeaderNamed(header.GetName());
  AddCustomHeader(header);
}

void CQuenXMLMsgImpl2::SetCustomHeader(const CQuenXMLData2w& inHeader) {
  if (inHeader.HasRoot() == 0) ThrowNoHeader();
  RemoveHeaderNamed(inHeader.GetNodeAtCursor());
  AddCustomHeader(inHeader.GetDocument().GetDocumentElement());
}

void CQuenXMLMsgImpl2::RemoveHeaderNamed(const wstring& inName) {
  const CQuenXMLNodeImpl2w present = Find(wstring(format::kHeaderPath) + u"/" + inName);
  if (present.GetDOMNode() != nullptr) present.GetParent().RemoveChild(present);
}

void CQuenXMLMsgImpl2::AddCustomHeader(const CQuenXMLElement2w& inHeader) {
  Header().AppendChild(*inHeader.GetImpl());
  TreeHasGrown();
}

bool CQuenXMLMsgImpl2::HasHeader() const {
  return Find(format::kHeaderPath).GetDOMNode() != nullptr;
}

// The body.

bool CQuenXMLMsgImpl2::HasBody() const { return body_.GetDOMNode() != nullptr; }

void CQuenXMLMsgImpl2::GetBody(CQuenXMLDocument2w& outBody) const {
  RemoveDocumentElement(outBody);
  RequireBody(body_);
  outBody.AppendChild(CQuenXMLElement2w(body_));
}

void CQuenXMLMsgImpl2::GetBody(CQuenXMLData2w& outBody) const {
  if (outBody.CursorToRoot() != 0) outBody.RemoveData(u"");
  if (body_.GetDOMNode() == nullptr) return;
  CQuenXMLDocument2w body;
  GetBody(body);
  outBody.SetDocument(body);
}

CQuenXMLElement2w CQuenXMLMsgImpl2::GetBody() {
  RequireBody(body_);
  nesting_ = Nesting::kOpenToUser;
  return CQuenXMLElement2w(body_);
}

void CQuenXMLMsgImpl2::SetBody(const CQuenXMLDocument2w& inBody) {
  const CQuenXMLElement2w element = inBody.GetDocumentElement();
  if (element.GetImpl()->GetDOMNode() == nullptr) {
    ThrowXMLException2w(u"CQuenXMLMsgImpl2::SetBody(CQuenXMLDocument2w)", kNotInitialized,
                        u"No root node found.");
  }
  CQuenXMLNodeImpl2w body;
  if (body_.GetDOMNode() != nullptr) {
    // All that the former body holds goes with it, a fault too.
    const CQuenXMLNodeImpl2w former = body_.GetParent();
    CQuenXMLNodeImpl2w envelope = former.GetParent();
    envelope.RemoveChild(former);
    body_ = CQuenXMLElementImpl2w();
    body = envelope.AppendChild(internal::NewPart(Document(), format::kBody));
  } else {
    body = Find(format::kBodyPath);
    if (body.GetDOMNode() == nullptr) return;
  }
  body_ = CQuenXMLElementImpl2w(body.AppendChild(*element.GetImpl()));
  TreeHasGrown();
}

void CQuenXMLMsgImpl2::SetBody(const CQuenXMLData2w& inBody) {
  if (inBody.HasRoot() == 0) {
    ThrowXMLException2w(u"CQuenXMLMsgImpl2::SetBody(CQuenXMLData2w)", kNotInitialized,
                        u"No root node found.");
  }
  SetBody(inBody.GetDocument());
}

}  // namespace quen
