// SPDX-License-Identifier: Apache-2.0
//
// The node handle: every operation forwards to the implementation of the same name.
#include <typeinfo>

#include "dom/document_impl.h"
#include "dom/handle_impl.h"

namespace quen {
namespace {

CQuenXMLNodeImpl2w& ImplOf(const CQuenXMLNode2w& inHandle) { return *inHandle.GetImpl(); }

}  // namespace

CQuenXMLNode2w::CQuenXMLNode2w() : impl_(new (place_) CQuenXMLNodeImpl2w()) {}
CQuenXMLNode2w::CQuenXMLNode2w(const CQuenXMLNode2w& inOther) : CQuenXMLNode2w(*inOther.impl_) {}
CQuenXMLNode2w::CQuenXMLNode2w(const CQuenXMLNodeImpl2w& inImpl)
    : impl_(new (place_) CQuenXMLNodeImpl2w(inImpl.GetDOMNode())) {}
CQuenXMLNode2w::CQuenXMLNode2w(std::unique_ptr<CQuenXMLNodeImpl2w> inImpl)
    : impl_(inImpl.release()) {}
CQuenXMLNode2w::~CQuenXMLNode2w() { Release(); }

void CQuenXMLNode2w::Release() noexcept {
  if (static_cast<const void*>(impl_) != place_) delete impl_;
}

CQuenXMLNode2w& CQuenXMLNode2w::operator=(const CQuenXMLNode2w& inOther) {
  if (this == &inOther) return *this;
  xercesc::DOMNode* node = inOther.impl_->GetDOMNode();
  // A document handle gives up its document, with all its nodes.
  const bool isDocument = static_cast<const void*>(impl_) != place_;
  if (isDocument && node != nullptr && internal::DocumentOf(node) == impl_->GetDOMNode())
    node = nullptr;
  SetImpl(CQuenXMLNodeImpl2w(node));
  return *this;
}

void CQuenXMLNode2w::ReplaceImpl(std::unique_ptr<CQuenXMLNodeImpl2w> inImpl) {
  Release();
  impl_ = inImpl.release();
}

wstring CQuenXMLNode2w::GetName() const { return impl_->GetName(); }
wstring CQuenXMLNode2w::GetValue() const { return impl_->GetValue(); }
CQuenXMLNode2w::NodeType CQuenXMLNode2w::GetNodeType() const { return impl_->GetNodeType(); }
wstring CQuenXMLNode2w::GetNamespaceURI() const { return impl_->GetNamespaceURI(); }
wstring CQuenXMLNode2w::GetPrefix() const { return impl_->GetPrefix(); }
bool CQuenXMLNode2w::HasChildNodes() const { return impl_->HasChildNodes(); }
bool CQuenXMLNode2w::HasAttributes() const { return impl_->HasAttributes(); }
CQuenXMLNode2w CQuenXMLNode2w::GetParent() const { return CQuenXMLNode2w(impl_->GetParent()); }
CQuenXMLNode2w CQuenXMLNode2w::GetNextSibling() const {
  return CQuenXMLNode2w(impl_->GetNextSibling());
}
CQuenXMLNode2w CQuenXMLNode2w::GetPreviousSibling() const {
  return CQuenXMLNode2w(impl_->GetPreviousSibling());
}
CQuenXMLNode2w CQuenXMLNode2w::GetFirstChild() const {
  return CQuenXMLNode2w(impl_->GetFirstChild());
}
CQuenXMLNode2w CQuenXMLNode2w::GetLastChild() const {
  return CQuenXMLNode2w(impl_->GetLastChild());
}
CQuenXMLDocument2w CQuenXMLNode2w::GetOwnerDocument() const {
  return CQuenXMLDocument2w(impl_->GetOwnerDocument());
}
wstring CQuenXMLNode2w::GetSubset() const { return impl_->GetSubset(); }
wstring CQuenXMLNode2w::GetFormattedSubset() const { return impl_->GetFormattedSubset(); }
void CQuenXMLNode2w::SetValue(const wstring& inValue) { impl_->SetValue(inValue); }
void CQuenXMLNode2w::SetPrefix(const wstring& inPrefix) { impl_->SetPrefix(inPrefix); }
CQuenXMLNode2w CQuenXMLNode2w::InsertBefore(const CQuenXMLNode2w& inNew,
                                            const CQuenXMLNode2w& inRef) {
  return CQuenXMLNode2w(impl_->InsertBefore(ImplOf(inNew), ImplOf(inRef)));
}
CQuenXMLNode2w CQuenXMLNode2w::AppendChild(const CQuenXMLNode2w& inNew) {
  return CQuenXMLNode2w(impl_->AppendChild(ImplOf(inNew)));
}
CQuenXMLNode2w CQuenXMLNode2w::ReplaceChild(const CQuenXMLNode2w& inNew,
                                            const CQuenXMLNode2w& inOld) {
  return CQuenXMLNode2w(impl_->ReplaceChild(ImplOf(inNew), ImplOf(inOld)));
}
CQuenXMLNode2w CQuenXMLNode2w::RemoveChild(const CQuenXMLNode2w& inOld) {
  return CQuenXMLNode2w(impl_->RemoveChild(ImplOf(inOld)));
}
void CQuenXMLNode2w::AppendSubset(const wstring& inXML) { impl_->AppendSubset(inXML); }
std::vector<CQuenXMLNode2w> CQuenXMLNode2w::SelectNodes(const wstring& inExpression) const {
  return impl_->SelectNodes(inExpression);
}

CQuenXMLNode2w CQuenXMLNode2w::SelectSingleNode(const wstring& inExpression) const {
  // The library's own classes can stop at the first node. A class that may have replaced
  // SelectNodes is asked for all of them.
  const std::type_info& type = typeid(*this);
  if (type == typeid(CQuenXMLNode2w) || type == typeid(CQuenXMLElement2w) ||
      type == typeid(CQuenXMLDocument2w)) {
    return CQuenXMLNode2w(impl_->SelectFirst(inExpression));
  }
  const std::vector<CQuenXMLNode2w> nodes = SelectNodes(inExpression);
  return nodes.empty() ? CQuenXMLNode2w() : nodes.front();
}

CQuenXMLNode2w CQuenXMLNode2w::Clone(bool inDeep) const {
  return CQuenXMLNode2w(impl_->Clone(inDeep));
}
CQuenXMLNodeImpl2w* CQuenXMLNode2w::GetImpl() const { return impl_; }

bool CQuenXMLNode2w::operator==(const CQuenXMLNode2w& inOther) const {
  return *impl_ == *inOther.impl_;
}
bool CQuenXMLNode2w::operator!=(const CQuenXMLNode2w& inOther) const {
  return *impl_ != *inOther.impl_;
}
bool CQuenXMLNode2w::operator==(const QuenXMLDOMNode2w_NullPtr* inNull) const {
  return *impl_ == inNull;
}
bool CQuenXMLNode2w::operator!=(const QuenXMLDOMNode2w_NullPtr* inNull) const {
  return *impl_ != inNull;
}

}  // namespace quen
