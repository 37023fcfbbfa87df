// SPDX-License-Identifier: Apache-2.0
//
// What every narrow operation does around its wide one: text in, text out, one clause.
#ifndef QUENXML2_NARROW_CROSSING_H_
#define QUENXML2_NARROW_CROSSING_H_

#include <cstddef>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include <quenxml2/dom.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/types.h>

#include "foundation/failure.h"
#include "foundation/impl_utils.h"

namespace quen::internal {

inline wstring Wide(const string& inText) { return gImplUtils.TranscodeFromUTF8(inText); }
// Into a string that is used again and again, and so needs no allocation for each call. The memory
// of a long text goes with the next call.
inline const wstring& Wide(const string& inText, wstring& outText) {
  constexpr std::size_t kKeptUnits = 1024;
  if (outText.capacity() > kKeptUnits) wstring().swap(outText);
  gImplUtils.TranscodeFromUTF8(inText, outText);
  return outText;
}
inline string Utf8(const wstring& inText) { return gImplUtils.TransCodeToUTF8(inText); }

// Runs a wide operation. Its failure arrives as the narrow class; all else passes. Arguments are
// transcoded inside `inOperation`, so that their failures cross too.
template <class Operation>
decltype(auto) Narrow(Operation&& inOperation) {
  try {
    return std::forward<Operation>(inOperation)();
  } catch (const CQuenXMLException2w& failure) {
    RethrowNarrow(failure);
  }
}

// The same with a text as the result.
template <class Operation>
string NarrowText(Operation&& inOperation) {
  return Narrow([&] { return Utf8(inOperation()); });
}

// The same with a handle or an iterator as the result, made where it stays: a wide document that
// is returned is not cloned once more.
template <class Operation>
auto NarrowTwin(Operation&& inOperation) {
  using Result = std::invoke_result_t<Operation>;
  return Narrow([&] { return std::unique_ptr<Result>(new Result(inOperation())); });
}

// A text that a wide operation may set. No text of the library holds a zero unit, so that one tells
// what the operation has left alone: the caller's string is left alone then, too.
class OutText {
 public:
  operator wstring&() { return text_; }
  void Deliver(string& outText) const {
    if (text_.size() != 1 || text_[0] != u'\0') gImplUtils.TransCodeToUTF8(text_, outText);
  }

 private:
  wstring text_ = wstring(1, u'\0');
};

// The same for an operation that takes the text as an out argument.
template <class Operation>
void NarrowOut(string& outText, Operation&& inOperation) {
  Narrow([&] {
    OutText text;
    inOperation(text);
    text.Deliver(outText);
  });
}

template <class WideClass>
bool HasClass(const CQuenXMLNode2w& inTwin) {
  return typeid(inTwin) == typeid(WideClass);
}

// A twin of the class of `inTwin`: `WideClass`, or plain for a default-constructed handle.
template <class WideClass>
std::unique_ptr<CQuenXMLNode2w> CopyOfTwin(const CQuenXMLNode2w& inTwin) {
  if (!HasClass<WideClass>(inTwin)) return std::make_unique<CQuenXMLNode2w>(inTwin);
  return std::make_unique<WideClass>(static_cast<const WideClass&>(inTwin));
}

// The twin as its own class. A null handle of that class answers for a plain twin: it holds no
// state but that it is null, so that all threads may share it.
template <class WideClass>
WideClass& TwinAs(CQuenXMLNode2w& inTwin) {
  if (HasClass<WideClass>(inTwin)) return static_cast<WideClass&>(inTwin);
  static WideClass null{CQuenXMLDocument2w()};  // of no other kind than a document
  return null;
}

}  // namespace quen::internal

#endif  // QUENXML2_NARROW_CROSSING_H_
