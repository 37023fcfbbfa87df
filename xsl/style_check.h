// SPDX-License-Identifier: Apache-2.0
//
// Looks at the expressions of a style sheet before Xalan-C 1.12 compiles them.
//
// The engine crashes on a pattern that is "//" alone or begins with '|', and recurses over what is
// nested: those are refused. It also ends the process when it writes a number of 90 characters
// where an expression becomes text without a value in between; there the expression is
// rewritten so that there is one, which the factory of numbers can refuse.
#ifndef QUENXML2_XSL_STYLE_CHECK_H_
#define QUENXML2_XSL_STYLE_CHECK_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include <quenxml2/types.h>

namespace quen::internal {

// Whether the engine can be given this expression, and those in the braces of an attribute value
// template. WithPositiveDivisors() gives it then.
bool IsBearable(std::u16string_view inExpression);
bool IsBearableTemplate(std::u16string_view inTemplate);
constexpr char16_t kNotBearable[] =
    u" is too long, is nested too deeply, or has a number with too many digits";

// Whether the engine can be given this pattern: no alternative of it is empty or ends in '/', but
// for "/" itself. None of those is a pattern (XSLT 1.0, 5.2).
bool IsPattern(std::u16string_view inText);

// What the engine makes of the result of an expression.
enum class Becomes { kAnything, kText, kNumber };

// The same expression with the arguments of string-length() as values, and with its own result as
// one if it becomes a text or a number. An expression that is wrong comes back as it is.
wstring WithNumbersAsValues(std::u16string_view inExpression, Becomes inBecomes);
// The same for the expressions in the braces of an attribute value template.
wstring TemplateWithNumbersAsValues(std::u16string_view inTemplate);

struct StyleAttribute {
  wstring name;  // as it stands in the text
  wstring value;
};

// Follows the elements of a style sheet.
class StyleCheck {
 public:
  // Rewrites the attributes. The result is what is wrong with the element, empty if nothing is.
  wstring Start(std::u16string_view inName, std::vector<StyleAttribute>& ioAttributes);
  void End();

 private:
  struct Binding {
    wstring prefix;
    bool isXslt;
    std::size_t depth;
  };
  bool IsXslt(std::u16string_view inPrefix) const;
  bool NamesVersion(const std::vector<StyleAttribute>& inAttributes) const;

  std::vector<Binding> bindings_;
  std::size_t depth_ = 0;
};

}  // namespace quen::internal

#endif  // QUENXML2_XSL_STYLE_CHECK_H_
