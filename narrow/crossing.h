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
// What is kept for the next call is short.
inline void ForgetLong(wstring& ioText) {
  constexpr std::size_t kKeptUnits = 1024;
  if (ioText.capacity() > kKeptUnits) wstring().swap(ioText);
}
// Into a string that is used again and again, and so needs no allocation for each call. The memory
// of a long text goes with the next call.
inline const wstring& Wide(const string& inText, wstring& outText) {
  ForgetLong(outText);
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
  explicit OutText(wstring& ioText) : text_(ioText) { text_.assign(1, u'\0'); }
  void Deliver(string& outText) const {
    if (text_.size() != 1 || text_[0] != u'\0') gImplUtils.TransCodeToUTF8(text_, outText);
  }

 private:
  wstring& text_;
};

// The same for an operation that takes the text as an out argument. `ioText` is a string that is
// used again and again.
template <class Operation>
void NarrowOut(string& outText, wstring& ioText, Operation&& inOperation) {
  Narrow([&] {
    const OutText text(ioText);
    inOperation(ioText);
    text.Deliver(outText);
  });
  ForgetLong(ioText);
}
template <class Operation>
void NarrowOut(string& outText, Operation&& inOperation) {
  wstring text;
  NarrowOut(outText, text, std::forward<Operation>(inOperation));
}

template <class WideClass>
bool HasClass(const CQuenXMLNode2w& inTwin) {
  return typeid(inTwin) == typeid(WideClass);
}

// A null handle holds no state but that it is null, so that all threads may share it.
template <class WideClass>
WideClass& NullTwin() {
  // Of no other kind than a document; never destroyed, since static objects may hold trees.
  static WideClass& null = *new WideClass(CQuenXMLDocument2w());
  return null;
}

// The twin as its own class. The twin of a default-constructed handle is plain and null.
template <class WideClass>
WideClass& TwinAs(CQuenXMLNode2w& inTwin) {
  return HasClass<WideClass>(inTwin) ? static_cast<WideClass&>(inTwin) : NullTwin<WideClass>();
}

template <class WideClass>
std::unique_ptr<CQuenXMLNode2w> CopyOfTwin(const CQuenXMLNode2w& inTwin) {
  return std::make_unique<WideClass>(
      HasClass<WideClass>(inTwin) ? static_cast<const WideClass&>(inTwin) : NullTwin<WideClass>());
}

}  // namespace quen::internal

#endif  // QUENXML2_NARROW_CROSSING_H_
