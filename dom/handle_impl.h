// SPDX-License-Identifier: Apache-2.0
//
// How the typed handles make their implementations.
#ifndef QUENXML2_DOM_HANDLE_IMPL_H_
#define QUENXML2_DOM_HANDLE_IMPL_H_

#include <new>
#include <type_traits>

#include "dom/leaf_impl.h"

namespace quen {

// Nothing is lost when the storage of such an implementation is given to another.
template <class Impl>
void CQuenXMLNode2w::SetImpl(const Impl& inImpl) noexcept {
  static_assert(sizeof(Impl) <= sizeof(place_) && alignof(Impl) <= alignof(void*) &&
                std::is_nothrow_copy_constructible_v<Impl>);
  const Impl copy(inImpl);  // which may lie in this handle
  Release();
  impl_ = new (place_) Impl(copy);
}

namespace internal {

// On the node of another handle, whatever its kind.
template <class Impl>
Impl ImplOnNodeOf(const CQuenXMLNode2w& inHandle) {
  return Impl(inHandle.GetImpl()->GetDOMNode());
}

// On the node of another handle if it is of the right kind, null if it is not; throws 8 for a null
// one.
template <class Impl>
Impl ImplFromNode(const CQuenXMLNode2w& inHandle) {
  return Impl(*inHandle.GetImpl());
}

}  // namespace internal
}  // namespace quen

#endif  // QUENXML2_DOM_HANDLE_IMPL_H_
