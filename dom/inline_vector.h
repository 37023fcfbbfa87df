// SPDX-License-Identifier: Apache-2.0
// A growing array whose first elements stand in the object itself. Selections of ordinary size
// allocate nothing with it.
#ifndef QUENXML2_DOM_INLINE_VECTOR_H_
#define QUENXML2_DOM_INLINE_VECTOR_H_

#include <algorithm>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace quen::internal {

// Elements are left uninitialised by Extend() and moved by copying their bytes.
template <class T, std::size_t kInline>
class InlineVector {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  InlineVector() {}
  InlineVector(const InlineVector&) = delete;
  InlineVector& operator=(const InlineVector&) = delete;

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T& operator[](std::size_t at) { return data_[at]; }
  const T& operator[](std::size_t at) const { return data_[at]; }
  T& back() { return data_[size_ - 1]; }
  T* begin() { return data_; }
  T* end() { return data_ + size_; }

  void push_back(T element) { *Extend(1) = element; }
  void pop_back() { --size_; }
  void Shrink(std::size_t size) { size_ = size; }
  void clear() { size_ = 0; }
  T* Extend(std::size_t count) {
    if (capacity_ - size_ < count) Grow(count);
    size_ += count;
    return data_ + size_ - count;
  }

 private:
  void Grow(std::size_t count) {
    const std::size_t capacity = std::max(capacity_ * 2, size_ + count);
    std::unique_ptr<T[]> larger(new T[capacity]);
    std::copy(data_, data_ + size_, larger.get());
    heap_ = std::move(larger);
    data_ = heap_.get();
    capacity_ = capacity;
  }

  std::size_t size_ = 0;
  std::size_t capacity_ = kInline;
  std::unique_ptr<T[]> heap_;
  union {
    T inline_[kInline];
  };
  T* data_ = inline_;
};

}  // namespace quen::internal

#endif  // QUENXML2_DOM_INLINE_VECTOR_H_
