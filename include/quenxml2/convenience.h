// SPDX-License-Identifier: Apache-2.0
//
// Values of data trees as results, and wide text on ordinary streams. Everything here stands on the
// classes of the library and keeps no state; both widths have the same functions.
//
//   quen::CQuenXMLData2 order("<order id='7'><item qty='3'>bolt</item></order>");
//   quen::Get<std::string>(order, "/order/item");        // "bolt"
//   quen::Get<std::uint64_t>(order, "/order/item/@qty"); // 3
//   quen::Find<double>(order, "/order/discount");        // std::nullopt
//   quen::GetOr(order, "/order/discount", 0.5);          // 0.5
//   quen::Get<int>(order, "/order/note");                // throws 1013 "Path not found"
//   quen::Get<int>(order, "/order/item");                // throws 1011 "Data conversion error"
//
// Paths are XPath expressions with the cursor as their context, as in data.h; an empty one is the
// node at the cursor. Unlike GetData, they may select a node of any kind: the first node in
// document order counts, and gives what GetValue of its handle gives. An element is its first text
// child, an attribute its value. A document has no value: it counts as nothing.
//
// Types:
//   text            quen::wstring in wide trees, quen::string in narrow ones
//   bool            true, false, 1 and 0, as in XML Schema; white space around them is skipped
//   integers        of 8 to 64 bits, with and without a sign. std::int8_t and std::uint8_t are
//                   numbers too; char and its kin are refused by the compiler
//   floating point  float, double, long double
//
// Number text is read as GetData reads it: white space in front is skipped, a sign and an exponent
// may be there, what follows the number is ignored (12abc is 12), and an integer is rounded, half
// to even (123.7 is 124). Different are two things. A number that the type cannot hold, too large
// or too close to zero, is a failure. Nothing is lost on the way: an integer is exact up to 64
// bits, and a floating point number is not cut behind fifty decimals.
//
// Failures are CQuenXMLException2w and CQuenXMLException2, with the path as their detail:
//   1013 "Path not found"         Get: the path selects nothing, or the tree never had a root
//   1011 "Data conversion error"  Get, Find, GetOr: the value is no number, no boolean
//   1011 "Number out of range"    Get, Find, GetOr: the type cannot hold the number
//   1010 for a wrong path, as everywhere
#ifndef QUENXML2_CONVENIENCE_H_
#define QUENXML2_CONVENIENCE_H_

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

#include <quenxml2/data.h>
#include <quenxml2/exceptions.h>
#include <quenxml2/narrow_data.h>
#include <quenxml2/types.h>

namespace quen {

// For printing: the text in UTF-8, up to its first zero unit, with U+FFFD for a surrogate without
// its partner. ToUtf8 in utils.h is the form that refuses such a text.
inline string AsUtf8(const wstring& inText) {
  return CQuenExceptionw(u"", 0, inText.c_str()).what();
}

// What the operators of exceptions.h write, in UTF-8. Those stand in the global namespace, where
// the one below would hide them from code in this one.
using ::operator<<;
inline std::ostream& operator<<(std::ostream& outStream, const CQuenXMLException2w& inException) {
  outStream << AsUtf8(inException.ReportErrorMessage());
  const wstring detail = inException.GetErrorDetail();
  return detail.empty() ? outStream : outStream << "Error Detail: " << AsUtf8(detail);
}

// Not for users.
namespace convenience {

template <class Tree>
struct Width;
template <>
struct Width<CQuenXMLData2w> {
  using Text = wstring;
  using Node = CQuenXMLNode2w;
  using Exception = CQuenXMLException2w;
  static constexpr const char16_t* kContext = u"quen::Get";
  static constexpr const char16_t* kNotFound = u"Path not found";
  static constexpr const char16_t* kNoValue = u"Data conversion error";
  static constexpr const char16_t* kOutOfRange = u"Number out of range";
};
template <>
struct Width<CQuenXMLData2> {
  using Text = string;
  using Node = CQuenXMLNode2;
  using Exception = CQuenXMLException2;
  static constexpr const char* kContext = "quen::Get";
  static constexpr const char* kNotFound = "Path not found";
  static constexpr const char* kNoValue = "Data conversion error";
  static constexpr const char* kOutOfRange = "Number out of range";
};

template <class T>
constexpr bool kIsInteger =
    std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
    !std::is_same_v<T, wchar_t> && !std::is_same_v<T, char16_t> && !std::is_same_v<T, char32_t>;

enum class Reading { kDone, kNoValue, kOutOfRange };

// Numbers and booleans are ASCII: the first run of such characters, up to a blank.
template <class Text>
string Word(const Text& inText) {
  string word;
  for (const auto unit : inText) {
    const bool isBlank = unit == ' ' || (unit >= '\t' && unit <= '\r');
    if (isBlank && word.empty()) continue;
    if (unit <= ' ' || unit >= 0x7F) break;
    word += static_cast<char>(unit);
  }
  return word;
}

template <class Text>
Reading Read(const Text& inText, bool& outValue) {
  constexpr typename Text::value_type kBlanks[] = {' ', '\t', '\n', '\r', 0};
  const string word = Word(inText);
  const std::size_t behind = inText.find_last_not_of(kBlanks) + 1;
  const std::size_t first = inText.find_first_not_of(kBlanks);
  outValue = word == "true" || word == "1";
  const bool known = outValue || word == "false" || word == "0";
  return known && behind - first == word.size() ? Reading::kDone : Reading::kNoValue;
}

// <charconv> takes the longest number at the head, but no '+', and takes words for infinity and
// NaN.
template <class Number>
std::from_chars_result Scan(std::string_view inWord, Number& outValue) {
  const bool hasSign = !inWord.empty() && (inWord[0] == '+' || inWord[0] == '-');
  const std::string_view rest = inWord.substr(hasSign ? 1 : 0);
  if (rest.empty() || (rest[0] != '.' && (rest[0] < '0' || rest[0] > '9')))
    return {inWord.data(), std::errc::invalid_argument};
  if (inWord[0] == '+') inWord = rest;
  return std::from_chars(inWord.data(), inWord.data() + inWord.size(), outValue);
}

template <class Text, class Number>
Reading Read(const Text& inText, Number& outValue) {
  const string word = Word(inText);
  const auto [end, error] = Scan(word, outValue);
  if constexpr (std::is_floating_point_v<Number>) {
    if (error == std::errc::invalid_argument) return Reading::kNoValue;
    return error == std::errc() ? Reading::kDone : Reading::kOutOfRange;
  } else {
    // Digits alone are exact. With a point or an exponent the number is read as GetData reads it,
    // but for 64 bits, which no double holds.
    const bool isWhole =
        end == word.data() + word.size() || (*end != '.' && *end != 'e' && *end != 'E');
    if (error == std::errc() && isWhole) return Reading::kDone;
    using Real = std::conditional_t<(sizeof(Number) > 4), long double, double>;
    Real real = 0;
    const std::errc realError = Scan(word, real).ec;
    if (realError == std::errc::invalid_argument) return Reading::kNoValue;
    real -= std::remainder(real, Real(1));  // half to even
    const Real limit = std::ldexp(Real(1), std::numeric_limits<Number>::digits);
    if (realError != std::errc() || real >= limit || real < (std::is_signed_v<Number> ? -limit : 0))
      return Reading::kOutOfRange;
    outValue = static_cast<Number>(real);
    return Reading::kDone;
  }
}

// The node at the cursor. Reading it changes nothing: it is only not declared so.
template <class Tree>
std::optional<typename Width<Tree>::Node> Cursor(const Tree& inTree) {
  constexpr std::uint32_t kNoCursor = 1007;
  try {
    return const_cast<Tree&>(inTree).GetCursor();
  } catch (const typename Width<Tree>::Exception& failure) {
    if (failure.GetErrorCode() != kNoCursor) throw;
    return std::nullopt;
  }
}

template <class T, class Tree, class W = Width<Tree>>
std::optional<T> Find(const Tree& inTree, const typename W::Text& inPath) {
  static_assert(std::is_same_v<T, typename W::Text> || std::is_same_v<T, bool> || kIsInteger<T> ||
                    std::is_floating_point_v<T>,
                "a value is an integer, a bool, a floating point number, or text of the tree's "
                "width: quen::wstring or quen::string");
  const std::optional<typename W::Node> cursor = Cursor(inTree);
  if (!cursor) return std::nullopt;
  const typename W::Node node = inPath.empty() ? *cursor : cursor->SelectSingleNode(inPath);
  constexpr const QuenXMLDOMNode2w_NullPtr* kNoNode = nullptr;
  if (node == kNoNode || node.GetNodeType() == W::Node::DocumentNode) return std::nullopt;
  if constexpr (std::is_same_v<T, typename W::Text>) {
    return node.GetValue();
  } else {
    constexpr std::uint32_t kConversionFailure = 1011;
    T value{};
    const Reading reading = Read(node.GetValue(), value);
    if (reading == Reading::kDone) return value;
    throw typename W::Exception(W::kContext, kConversionFailure,
                                reading == Reading::kNoValue ? W::kNoValue : W::kOutOfRange,
                                inPath.c_str());
  }
}

template <class T, class Tree, class W = Width<Tree>>
T Get(const Tree& inTree, const typename W::Text& inPath) {
  constexpr std::uint32_t kPathNotFound = 1013;
  std::optional<T> value = convenience::Find<T>(inTree, inPath);
  if (!value) throw typename W::Exception(W::kContext, kPathNotFound, W::kNotFound, inPath.c_str());
  return *std::move(value);
}

}  // namespace convenience

// The value at the path.
template <class T>
T Get(const CQuenXMLData2w& inTree, const wstring& inPath) {
  return convenience::Get<T>(inTree, inPath);
}
template <class T>
T Get(const CQuenXMLData2& inTree, const string& inPath) {
  return convenience::Get<T>(inTree, inPath);
}

// The value at the path; none where the path selects nothing. A value that cannot be read as a T is
// a failure all the same.
template <class T>
std::optional<T> Find(const CQuenXMLData2w& inTree, const wstring& inPath) {
  return convenience::Find<T>(inTree, inPath);
}
template <class T>
std::optional<T> Find(const CQuenXMLData2& inTree, const string& inPath) {
  return convenience::Find<T>(inTree, inPath);
}

// The same with a value in the place of none, whose type is the type of the result.
template <class T>
T GetOr(const CQuenXMLData2w& inTree, const wstring& inPath, T inFallback) {
  return convenience::Find<T>(inTree, inPath).value_or(std::move(inFallback));
}
template <class T>
T GetOr(const CQuenXMLData2& inTree, const string& inPath, T inFallback) {
  return convenience::Find<T>(inTree, inPath).value_or(std::move(inFallback));
}
inline wstring GetOr(const CQuenXMLData2w& inTree, const wstring& inPath,
                     const char16_t* inFallback) {
  return GetOr<wstring>(inTree, inPath, inFallback);
}
inline string GetOr(const CQuenXMLData2& inTree, const string& inPath, const char* inFallback) {
  return GetOr<string>(inTree, inPath, inFallback);
}

}  // namespace quen

#endif  // QUENXML2_CONVENIENCE_H_
