// SPDX-License-Identifier: Apache-2.0
//
// How the typed handles make their implementations.
#ifndef QUENXML2_DOM_HANDLE_IMPL_H_
#define QUENXML2_DOM_HANDLE_IMPL_H_

#include <memory>

#include "dom/leaf_impl.h"

namespace quen::internal {

// On the node of another handle, whatever its kind.
template <class Impl>
std::unique_ptr<Impl> ImplOnNodeOf(const CQuenXMLNode2w& inHandle) {
  return std::make_unique<Impl>(inHandle.GetImpl()->GetDOMNode());
}

// On the node of another handle if it is of the right kind, null if it is not; throws 8 for a null
// one.
template <class Impl>
std::unique_ptr<Impl> ImplFromNode(const CQuenXMLNode2w& inHandle) {
  return std::make_unique<Impl>(*inHandle.GetImpl());
}

}  // namespace quen::internal

#endif  // QUENXML2_DOM_HANDLE_IMPL_H_
