// SPDX-License-Identifier: Apache-2.0
//
// The library's own string stream of 16-bit units, for output. Its buffer grows geometrically: 32
// units, then twice the size and one more, so that writing n units costs O(n).
#ifndef QUENXML2_FOUNDATION_WIDE_STREAM_H_
#define QUENXML2_FOUNDATION_WIDE_STREAM_H_

#include <algorithm>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

namespace quenxml_private {

template <class Char, class Traits = std::char_traits<Char>, class Allocator = std::allocator<Char>>
class quen_basic_stringbuf : public std::basic_streambuf<Char, Traits> {
 public:
  using Base = std::basic_streambuf<Char, Traits>;
  using typename Base::int_type;
  using String = std::basic_string<Char, Traits, Allocator>;

  quen_basic_stringbuf() = default;
  ~quen_basic_stringbuf() override = default;

  // What was written so far; empty when nothing was.
  String str() const {
    return Base::pptr() == nullptr ? String() : String(Base::pbase(), Base::pptr());
  }

  // Units that the present buffer holds.
  std::size_t capacity() const { return size_; }

 protected:
  int_type overflow(int_type inChar = Traits::eof()) override {
    if (Traits::eq_int_type(inChar, Traits::eof())) return Traits::not_eof(inChar);
    if (Base::pptr() == Base::epptr()) Grow();
    *Base::pptr() = Traits::to_char_type(inChar);
    Base::pbump(1);
    return inChar;
  }

  // Whole runs at once: one copy, and one growth at the most.
  std::streamsize xsputn(const Char* inText, std::streamsize inLength) override {
    while (Base::epptr() - Base::pptr() < inLength) Grow();
    std::copy_n(inText, inLength, Base::pptr());
    Advance(inLength);
    return inLength;
  }

 private:
  static constexpr std::size_t kFirstSize = 32;

  void Grow() {
    const std::size_t used = static_cast<std::size_t>(Base::pptr() - Base::pbase());
    const std::size_t size = size_ < kFirstSize ? kFirstSize + size_ : 2 * size_ + 1;
    std::unique_ptr<Char[]> buffer(new Char[size]);
    std::copy_n(buffer_.get(), used, buffer.get());
    buffer_ = std::move(buffer);
    size_ = size;
    Base::setp(buffer_.get(), buffer_.get() + size_);
    Advance(static_cast<std::streamsize>(used));
  }

  // pbump takes an int, and a document can be longer.
  void Advance(std::streamsize inLength) {
    constexpr std::streamsize kStep = 1 << 30;
    for (; inLength > kStep; inLength -= kStep) Base::pbump(static_cast<int>(kStep));
    Base::pbump(static_cast<int>(inLength));
  }

  std::unique_ptr<Char[]> buffer_;
  std::size_t size_ = 0;
};

template <class Char, class Traits = std::char_traits<Char>, class Allocator = std::allocator<Char>>
class quen_basic_ostringstream : public std::basic_ostream<Char, Traits> {
 public:
  using Base = std::basic_ostream<Char, Traits>;

  quen_basic_ostringstream() : Base(nullptr) { Base::rdbuf(&buffer_); }
  std::basic_string<Char, Traits, Allocator> str() const { return buffer_.str(); }

 private:
  quen_basic_stringbuf<Char, Traits, Allocator> buffer_;
};

}  // namespace quenxml_private

#endif  // QUENXML2_FOUNDATION_WIDE_STREAM_H_
