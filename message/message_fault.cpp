// SPDX-License-Identifier: Apache-2.0
//
// The fault: the four fields of an exception as an element of the body.
#include <limits>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"
#include "message/dropped_failure.h"
#include "message/envelope.h"
#include "message/message_format.h"
#include "message/message_impl.h"

namespace quen {

namespace format = message_format;

namespace {

// The code as text: whole numbers of up to twenty characters.
constexpr std::int32_t kCodeWidth = 20;
constexpr std::int32_t kCodePrecision = 0;

// 0 where the text is no number of 32 bits.
std::uint32_t CodeOf(const wstring& inText) {
  double number = 0;
  const bool isNumber =
      CQuenXMLImplUtils2w::TextToNumber(kCodeWidth, kCodePrecision, inText, number) != 0;
  const bool fits = number >= 0 && number <= std::numeric_limits<std::uint32_t>::max();
  return isNumber && fits ? static_cast<std::uint32_t>(number) : 0;
}

// An element that holds an element gives what its first child is, as XML.
wstring DetailOf(const CQuenXMLElementImpl2w& inDetail) {
  return inDetail.empty() ? inDetail.GetValue() : inDetail.GetFirstChild().GetSubset();
}

// Gives the child to `inRead`. A child that is absent or cannot be read leaves things as they are.
template <class Read>
void ReadChild(const CQuenXMLElementImpl2w& inFault, const char16_t* inName, Read&& inRead) {
  internal::DropFailure([&] {
    const CQuenXMLElementImpl2w child = internal::ChildNamed(inFault, inName);
    if (child.GetDOMNode() != nullptr) inRead(child);
  });
}

}  // namespace

bool CQuenXMLMsgImpl2::HasError() const { return fault_.GetDOMNode() != nullptr; }

void CQuenXMLMsgImpl2::GetError(wstring& outContext, std::uint32_t& outCode, wstring& outMessage,
                                wstring& outDetail) const {
  if (fault_.GetDOMNode() == nullptr) {
    ThrowXMLException2w(u"CQuenXMLMsgImpl2::GetError()", kNotInitialized,
                        u"No SOAP fault information found.");
  }
  outCode = 0;
  outContext.clear();
  outDetail.clear();
  outMessage.clear();
  using Element = CQuenXMLElementImpl2w;
  ReadChild(fault_, format::kFaultCode,
            [&](const Element& inCode) { outCode = CodeOf(inCode.GetValue()); });
  ReadChild(fault_, format::kFaultString,
            [&](const Element& inMessage) { outMessage = inMessage.GetValue(); });
  ReadChild(fault_, format::kFaultActor,
            [&](const Element& inContext) { outContext = inContext.GetValue(); });
  ReadChild(fault_, format::kFaultDetail,
            [&](const Element& inDetail) { outDetail = DetailOf(inDetail); });
}

void CQuenXMLMsgImpl2::GetError(CQuenXMLException2w& outException) const {
  wstring context;
  std::uint32_t code = 0;
  wstring message;
  wstring detail;
  GetError(context, code, message, detail);
  outException.SetErrorCode(code);
  outException.SetErrorMessage(message);
  outException.SetErrorContext(context);
  outException.SetErrorDetail(detail);
}

void CQuenXMLMsgImpl2::SetError(const wstring& inContext, const std::uint32_t& inCode,
                                const wstring& inMessage, const wstring& inDetail) {
  ClearError();
  CQuenXMLNodeImpl2w body = Find(format::kBodyPath);
  fault_ = internal::NewPart(Document(), format::kFault);
  fault_ = CQuenXMLElementImpl2w(body.AppendChild(fault_));
  wstring code;
  CQuenXMLImplUtils2w::NumberToText(kCodeWidth, kCodePrecision, inCode, code);
  fault_.AppendElement(format::kFaultCode).SetValue(code);
  fault_.AppendElement(format::kFaultActor).SetValue(inContext);
  fault_.AppendElement(format::kFaultString).SetValue(inMessage);
  CQuenXMLElementImpl2w detail = fault_.AppendElement(format::kFaultDetail);
  if (!inDetail.empty() && inDetail.front() == u'<') {
    detail.AppendSubset(inDetail);
    TreeHasGrown();
  } else {
    detail.SetValue(inDetail);
  }
}

void CQuenXMLMsgImpl2::SetError(const CQuenXMLException2w& inException) {
  SetError(inException.GetErrorContext(), inException.GetErrorCode(), inException.GetErrorMessage(),
           inException.GetErrorDetail());
}

void CQuenXMLMsgImpl2::ClearError() {
  if (fault_.GetDOMNode() == nullptr) return;
  fault_.GetParent().RemoveChild(fault_);
  fault_ = CQuenXMLElementImpl2w();
}

}  // namespace quen
