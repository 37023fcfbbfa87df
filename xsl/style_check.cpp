// SPDX-License-Identifier: Apache-2.0
#include "xsl/style_check.h"

#include <algorithm>
#include <optional>

#include "dom/modulus.h"
#include "dom/selection_limits.h"
#include "foundation/failure.h"
#include "xsl/limits.h"

namespace quen::internal {
namespace {

constexpr std::u16string_view kXslt = u"http://www.w3.org/1999/XSL/Transform";

std::u16string_view Trimmed(std::u16string_view inText) {
  constexpr std::u16string_view kBlanks = u" \t\r\n";
  const std::size_t begin = inText.find_first_not_of(kBlanks);
  if (begin == inText.npos) return {};
  return inText.substr(begin, inText.find_last_not_of(kBlanks) - begin + 1);
}

std::u16string_view PrefixOf(std::u16string_view inName) {
  const std::size_t colon = inName.find(u':');
  return colon == inName.npos ? std::u16string_view() : inName.substr(0, colon);
}

bool IsDigit(char16_t inUnit) { return inUnit >= u'0' && inUnit <= u'9'; }

bool IsPatternAttribute(std::u16string_view inElement, std::u16string_view inAttribute) {
  if (inElement == u"template" || inElement == u"key") return inAttribute == u"match";
  return inElement == u"number" && (inAttribute == u"count" || inAttribute == u"from");
}

// Whether the keys of an xsl:sort stay numbers.
bool SortsNumbers(const std::vector<StyleAttribute>& inAttributes) {
  return std::any_of(inAttributes.begin(), inAttributes.end(), [](const auto& attribute) {
    return attribute.name == u"data-type" && attribute.value == u"number";
  });
}

// An xsl:number writes the number of its value itself where that is not a count.
Becomes ResultOf(std::u16string_view inElement, std::u16string_view inAttribute,
                 const std::vector<StyleAttribute>& inAttributes) {
  if (inAttribute == u"select" && inElement == u"value-of") return Becomes::kText;
  if (inAttribute == u"select" && inElement == u"sort")
    return SortsNumbers(inAttributes) ? Becomes::kAnything : Becomes::kText;
  return inElement == u"number" && inAttribute == u"value" ? Becomes::kNumber : Becomes::kAnything;
}

bool IsExpressionAttribute(std::u16string_view inAttribute) {
  constexpr std::u16string_view kNames[] = {u"select", u"test", u"match", u"use",
                                            u"count",  u"from", u"value"};
  return std::find(std::begin(kNames), std::end(kNames), inAttribute) != std::end(kNames);
}

// Whether the result may be a number that arithmetic has made. Says yes too often.
bool MayBeNumber(std::u16string_view inExpression) {
  constexpr std::u16string_view kSigns[] = {u"+",   u"-",      u"*",     u"div",     u"mod",
                                            u"sum", u"number", u"floor", u"ceiling", u"round"};
  return std::any_of(std::begin(kSigns), std::end(kSigns), [&](std::u16string_view sign) {
    return inExpression.find(sign) != inExpression.npos;
  });
}

// What stands between a pair of braces.
struct Part {
  std::size_t begin;
  std::size_t end;
  std::u16string_view Of(std::u16string_view inTemplate) const {
    return inTemplate.substr(begin, end - begin);
  }
};

// The next expression of an attribute value template, nothing where no brace is closed any more:
// the engine refuses what is left then.
std::optional<Part> NextExpression(std::u16string_view inTemplate, std::size_t inFrom) {
  std::size_t begin = inTemplate.find(u'{', inFrom);
  while (begin != inTemplate.npos && inTemplate.substr(begin, 2) == u"{{")
    begin = inTemplate.find(u'{', begin + 2);
  if (begin == inTemplate.npos) return std::nullopt;
  std::size_t end = ++begin;
  while (end < inTemplate.size() && inTemplate[end] != u'}') {
    if (inTemplate[end] == u'\'' || inTemplate[end] == u'"')
      end = std::min(inTemplate.find(inTemplate[end], end + 1), inTemplate.size() - 1);
    ++end;
  }
  if (end >= inTemplate.size()) return std::nullopt;
  return Part{begin, end};
}

wstring Shown(std::u16string_view inText) {
  constexpr std::size_t kShownUnits = 80;
  return wstring(inText.substr(0, kShownUnits)) + (inText.size() > kShownUnits ? u"..." : u"");
}

}  // namespace

bool IsBearable(std::u16string_view inExpression) {
  if (inExpression.size() > kMaxExpressionLength) return false;
  std::size_t nesting = 0;
  std::size_t operators = 0;
  for (std::size_t at = 0; at < inExpression.size(); ++at) {
    switch (inExpression[at]) {
      case u'(':
      case u'[':
        if (++nesting > kMaxExpressionNesting) return false;
        break;
      case u')':
      case u']':
        if (nesting > 0) --nesting;
        break;
      case u'+':
      case u'*':
      case u'=':
      case u'<':
      case u'>':
      case u'|':
      case u'/':
      case u',':
        ++operators;
        break;
      case u'\'':
      case u'"':  // the engine refuses a text without an end
        at = std::min(inExpression.find(inExpression[at], at + 1), inExpression.size());
        break;
      case u'.':
        while (at + 1 < inExpression.size() && IsDigit(inExpression[at + 1])) ++at;
        break;
      case u'-':  // in a name, mostly
        operators += at == 0 || inExpression[at - 1] <= u'-' ? 1 : 0;
        break;
      case u' ':  // and, or, div, mod
        operators += inExpression.size() - at > 4 && (inExpression[at + 1] | 0x20) >= u'a' ? 1 : 0;
        break;
      default:
        if (IsDigit(inExpression[at])) {
          const std::size_t begin =
              std::min(inExpression.find_first_not_of(u'0', at), inExpression.size());
          for (at = begin; at < inExpression.size() && IsDigit(inExpression[at]);) ++at;
          if (at - begin > kMaxLiteralDigits) return false;
          --at;
        }
        break;
    }
  }
  return operators <= kMaxExpressionOperators && WithPositiveDivisors(inExpression).has_value();
}

bool IsPattern(std::u16string_view inText) {
  std::size_t begin = 0;
  std::size_t nesting = 0;
  for (std::size_t at = 0; at <= inText.size(); ++at) {
    const char16_t unit = at < inText.size() ? inText[at] : u'|';
    if (unit == u'\'' || unit == u'"') {
      at = inText.find(unit, at + 1);
      if (at == inText.npos) return true;  // the engine says so
    } else if (unit == u'(' || unit == u'[') {
      ++nesting;
    } else if (unit == u')' || unit == u']') {
      if (nesting > 0) --nesting;
    } else if (unit == u'|' && (nesting == 0 || at == inText.size())) {
      const std::u16string_view alternative = Trimmed(inText.substr(begin, at - begin));
      if (alternative.empty() || (alternative.back() == u'/' && alternative != u"/")) return false;
      begin = at + 1;
    }
  }
  return true;
}

wstring WithNumbersAsValues(std::u16string_view inExpression, Becomes inBecomes) {
  constexpr std::u16string_view kLength = u"string-length";
  constexpr std::u16string_view kOpen = u"string(";
  std::u16string_view before, behind;
  if (inBecomes == Becomes::kText && MayBeNumber(inExpression)) {
    before = kOpen;
    behind = u")";
  } else if (inBecomes == Becomes::kNumber && !Trimmed(inExpression).empty()) {
    before = u"number(string(number(";
    behind = u")))";
  } else if (inExpression.find(kLength) == inExpression.npos) {
    return wstring(inExpression);
  }
  wstring result(before);
  std::vector<char16_t> open;  // what closes each bracket; 0 for that of string-length
  for (std::size_t at = 0; at < inExpression.size(); ++at) {
    const char16_t unit = inExpression[at];
    if (unit == u'\'' || unit == u'"') {
      const std::size_t end = inExpression.find(unit, at + 1);
      if (end == inExpression.npos) return wstring(inExpression);
      result += inExpression.substr(at, end - at);
      at = end;
    } else if (unit == u'(' || unit == u'[') {
      const std::u16string_view name = Trimmed(inExpression.substr(0, at));
      const std::u16string_view inside = Trimmed(inExpression.substr(at + 1));
      const bool isLength = unit == u'(' && name.size() >= kLength.size() &&
                            name.substr(name.size() - kLength.size()) == kLength &&
                            !inside.empty() && inside[0] != u')';
      open.push_back(isLength ? u'\0' : unit == u'(' ? u')' : u']');
      result += unit;
      if (isLength) result += kOpen;
      continue;
    } else if (unit == u')' || unit == u']') {
      if (open.empty() || (open.back() != unit && (open.back() != 0 || unit != u')')))
        return wstring(inExpression);
      if (open.back() == 0) result += u')';
      open.pop_back();
    }
    result += inExpression[at];
  }
  if (!open.empty()) return wstring(inExpression);
  result += behind;
  return result;
}

bool IsBearableTemplate(std::u16string_view inTemplate) {
  std::size_t at = 0;
  while (const auto part = NextExpression(inTemplate, at)) {
    if (!IsBearable(part->Of(inTemplate))) return false;
    at = part->end;
  }
  return true;
}

wstring TemplateWithNumbersAsValues(std::u16string_view inTemplate) {
  wstring result;
  std::size_t at = 0;
  while (const auto part = NextExpression(inTemplate, at)) {
    result += inTemplate.substr(at, part->begin - at);
    result += WithNumbersAsValues(*WithPositiveDivisors(part->Of(inTemplate)), Becomes::kText);
    at = part->end;
  }
  result += inTemplate.substr(at);
  return result;
}

bool StyleCheck::IsXslt(std::u16string_view inPrefix) const {
  for (auto binding = bindings_.rbegin(); binding != bindings_.rend(); ++binding)
    if (binding->prefix == inPrefix) return binding->isXslt;
  return false;
}

// What makes a literal result element a style sheet (XSLT 1.0, 2.3).
bool StyleCheck::NamesVersion(const std::vector<StyleAttribute>& inAttributes) const {
  return std::any_of(inAttributes.begin(), inAttributes.end(), [&](const auto& attribute) {
    const std::u16string_view prefix = PrefixOf(attribute.name);
    return !prefix.empty() && IsXslt(prefix) && attribute.name.substr(prefix.size()) == u":version";
  });
}

wstring StyleCheck::Start(std::u16string_view inName, std::vector<StyleAttribute>& ioAttributes) {
  ++depth_;
  for (const StyleAttribute& attribute : ioAttributes) {
    if (attribute.name == u"xmlns")
      bindings_.push_back({u"", attribute.value == kXslt, depth_});
    else if (PrefixOf(attribute.name) == u"xmlns")
      bindings_.push_back({attribute.name.substr(6), attribute.value == kXslt, depth_});
  }
  const std::u16string_view prefix = PrefixOf(inName);
  const bool isXslt = IsXslt(prefix);
  const std::u16string_view local = prefix.empty() ? inName : inName.substr(prefix.size() + 1);
  if (depth_ == 1 && !isXslt && !NamesVersion(ioAttributes))
    return u"'" + Shown(inName) + u"' is no style sheet";
  for (auto& [name, value] : ioAttributes) {
    if (isXslt && IsPatternAttribute(local, name) && !IsPattern(value))
      return u"'" + Shown(value) + u"' is not a pattern";
    // ICU 72 writes a name with other characters over the end of a buffer on the stack.
    if (isXslt && local == u"output" && name == u"encoding" &&
        std::any_of(value.begin(), value.end(), [](char16_t unit) { return unit >= 0x80; }))
      return u"'" + Shown(value) + u"' is not an encoding";
    const bool isExpression = isXslt && IsExpressionAttribute(name);
    if (!isExpression && value.find(u'{') == value.npos) continue;
    if (!(isExpression ? IsBearable(value) : IsBearableTemplate(value)))
      return u"The expression '" + Shown(value) + u"'" + kNotBearable;
    value = isExpression ? WithNumbersAsValues(*WithPositiveDivisors(value),
                                               ResultOf(local, name, ioAttributes))
                         : TemplateWithNumbersAsValues(value);
  }
  return {};
}

void StyleCheck::End() {
  while (!bindings_.empty() && bindings_.back().depth == depth_) bindings_.pop_back();
  --depth_;
}

}  // namespace quen::internal
