// SPDX-License-Identifier: Apache-2.0
#include "dom/modulus.h"

#include <algorithm>
#include <vector>

#include "dom/expression_units.h"

namespace quen::internal {
namespace {

constexpr std::size_t kMaxLevels = 4;

// Reads an expression from token to token. It need not be right: the engine says so then.
class DivisorScan {
 public:
  explicit DivisorScan(std::u16string_view text) : text_(text) {}
  std::optional<std::u16string> Run();

 private:
  void Name();
  void Sign(char16_t c);
  // Operators end the operand of a `mod` on their level, and so do brackets.
  void EndDivisors() {
    while (!divisors_.empty() && divisors_.back().depth == depth_) EndDivisor();
  }
  void EndDivisor();
  bool IsNumberNext() const {
    std::size_t next = at_;
    while (next < text_.size() && IsBlank(text_[next])) ++next;
    return next < text_.size() && IsDigit(text_[next]);
  }

  std::u16string_view text_;
  std::u16string out_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;  // of brackets
  struct Divisor {
    std::size_t depth;
    std::size_t begin;   // in out_
    std::size_t levels;  // of others in it
  };
  std::vector<Divisor> divisors_;  // that have not ended
  bool isTooDeep_ = false;
  bool operandBefore_ = false;
  char16_t before_ = u'\0';  // the last sign that is no blank
};

std::optional<std::u16string> DivisorScan::Run() {
  while (at_ < text_.size() && !isTooDeep_) {
    const char16_t c = text_[at_];
    if (IsBlank(c)) {
      out_ += c;
      ++at_;
    } else if (c == u'"' || c == u'\'') {
      const std::size_t end = text_.find(c, at_ + 1);
      const std::size_t count = end == text_.npos ? text_.size() - at_ : end + 1 - at_;
      out_ += text_.substr(at_, count);
      at_ += count;
      operandBefore_ = true;
      before_ = c;
    } else if (IsNameStart(c)) {
      Name();
    } else if (IsDigit(c) || c == u'.') {
      for (; at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == u'.'); ++at_)
        out_ += text_[at_];
      operandBefore_ = true;
      before_ = c;
    } else {
      Sign(c);
      out_ += c;
      before_ = c;
      ++at_;
    }
  }
  while (!divisors_.empty() && !isTooDeep_) EndDivisor();
  if (isTooDeep_) return std::nullopt;
  return std::move(out_);
}

void DivisorScan::EndDivisor() {
  const Divisor divisor = divisors_.back();
  divisors_.pop_back();
  const std::u16string operand = u"number(" + out_.substr(divisor.begin) + u")";
  out_.resize(divisor.begin);
  out_ += u" (" + operand + u" * (1 - 2 * (" + operand + u" < 0)))";
  if (divisors_.empty()) return;
  std::size_t& levels = divisors_.back().levels;
  levels = std::max(levels, divisor.levels + 1);
  isTooDeep_ = isTooDeep_ || levels >= kMaxLevels;
}

void DivisorScan::Name() {
  const std::size_t begin = at_;
  while (at_ < text_.size() && IsNameChar(text_[at_])) ++at_;
  const std::u16string_view name = text_.substr(begin, at_ - begin);
  const bool isOperator = operandBefore_ && before_ != u':';
  if (isOperator) EndDivisors();
  out_ += name;
  operandBefore_ = !isOperator;
  before_ = u'a';
  if (isOperator && name == u"mod" && !IsNumberNext()) {
    divisors_.push_back({depth_, out_.size(), 0});
  }
}

void DivisorScan::Sign(char16_t c) {
  switch (c) {
    case u'(':
    case u'[':
      ++depth_;
      operandBefore_ = false;
      break;
    case u')':
    case u']':
      EndDivisors();
      if (depth_ > 0) --depth_;
      operandBefore_ = true;
      break;
    case u'*':  // a name, or a product
      if (operandBefore_) EndDivisors();
      operandBefore_ = !operandBefore_;
      break;
    case u'-':  // of the operand itself, or a difference
      if (operandBefore_ || before_ == u'/') EndDivisors();
      operandBefore_ = false;
      break;
    case u'+':
    case u',':
    case u'=':
    case u'!':
    case u'<':
    case u'>':
      EndDivisors();
      operandBefore_ = false;
      break;
    default:  // / | : @ $ and what XPath does not know
      operandBefore_ = false;
      break;
  }
}

}  // namespace

std::optional<std::u16string> WithPositiveDivisors(std::u16string_view expression) {
  if (expression.find(u"mod") == expression.npos) return std::u16string(expression);
  return DivisorScan(expression).Run();
}

}  // namespace quen::internal
