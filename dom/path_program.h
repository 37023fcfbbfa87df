// SPDX-License-Identifier: Apache-2.0
// A compiled location path: steps, paths and predicate expressions in three arrays that refer to
// each other by index. It lives for one selection and points into the text of the expression.
#ifndef QUENXML2_DOM_PATH_PROGRAM_H_
#define QUENXML2_DOM_PATH_PROGRAM_H_

#include <cstdint>
#include <string_view>

#include <xercesc/dom/DOMDocument.hpp>

#include "dom/inline_vector.h"

namespace quen::internal {

using Index = std::uint16_t;
inline constexpr Index kNone = 0xffff;

// Levels of brackets that the direct evaluator follows, compiling and running; each costs about
// 2 KB of stack. Deeper expressions go to Xalan-C.
inline constexpr int kMaxDirectNesting = 16;

// Predicates with a position on one step.
inline constexpr std::uint8_t kMaxPositionsOfStep = 4;

enum class Axis : std::uint8_t {
  kSelf,
  kChild,
  kDescendant,
  kDescendantOrSelf,
  kAttribute,
  kFollowingSibling,
  kFollowing,
  kParent,
  kAncestor,
  kAncestorOrSelf,
  kPrecedingSibling,
  kPreceding,
};

inline bool IsReverse(Axis axis) { return axis >= Axis::kParent; }

enum class NodeTest : std::uint8_t {
  kLocalName,     // name of no namespace
  kExpandedName,  // p:name
  kNamespace,     // p:*
  kAnyName,       // *
  kNode,
  kText,
  kComment,
  kInstruction,
  kNamedInstruction,
};

// Compares the names of nodes with one text. The DOM keeps one copy of each name of a document, so
// that nearly always the pointer decides.
class NameMatcher {
 public:
  void Set(std::u16string_view text) {
    text_ = text;
    hit_ = miss_ = nullptr;
  }
  bool Matches(const char16_t* name) {
    if (name == hit_) return name != nullptr;
    if (name == miss_) return false;
    return Compare(name);
  }
  std::u16string_view Text() const { return text_; }

 private:
  bool Compare(const char16_t* name);

  std::u16string_view text_;
  const char16_t* hit_;
  const char16_t* miss_;
};

struct Step {
  Axis axis;
  NodeTest test;
  std::uint8_t positions;  // predicates that look at position() or last()
  std::uint32_t place;     // n of a first predicate [n], else 0
  Index next;              // step of the same path
  Index predicates;        // first predicate, linked by Expression::next
  NameMatcher name;
  NameMatcher uri;
};

enum class Operation : std::uint8_t {
  // Boolean
  kOr,
  kAnd,
  kNot,
  kConstant,
  kCompare,
  kContains,
  kStartsWith,
  // Number
  kNumber,
  kPosition,
  kLast,
  kCount,
  kNegate,
  kArithmetic,
  kNumberOf,
  kStringLength,
  // Text
  kLiteral,
  kName,
  kLocalName,
  kNamespaceUri,
  kStringOf,
  // Node set
  kPath,
};

enum class Type : std::uint8_t { kBoolean, kNumber, kText, kNodes };

inline Type TypeOf(Operation operation) {
  if (operation <= Operation::kStartsWith) return Type::kBoolean;
  if (operation <= Operation::kStringLength) return Type::kNumber;
  return operation == Operation::kPath ? Type::kNodes : Type::kText;
}

enum class Relation : std::uint8_t {
  kEqual,
  kNotEqual,
  kLess,
  kLessEqual,
  kGreater,
  kGreaterEqual
};

// Operands are a list: `first`, then the `next` of each. As a predicate, `next` is the next
// predicate.
struct Expression {
  Operation operation;
  Relation relation;  // kCompare
  char16_t joint;     // sign before this operand of kArithmetic: + - * d m
  bool usesPosition;
  bool usesLast;
  Index first;
  Index next;
  Index path;       // kPath: index of a PathSet
  Index attribute;  // kCompare of `@name` with a literal: the step
  double number;
  std::u16string_view text;
};

struct Path {
  bool absolute;
  Index first;  // step
  Index next;   // path of the same union
  std::uint8_t length;
  std::uint8_t firstBit;      // number of the first step in the walk of the union
  std::uint8_t downwardFrom;  // the steps from here on lead down the tree
};

// A union of paths. Bit k of a mask is step k, counted through all paths of the union.
struct PathSet {
  Index first;    // path
  Index steps;    // index of step 0 in Program::walkSteps
  bool walkable;  // few enough steps for the masks
  bool downward;  // every path leads down, and all begin at the same node
  std::uint64_t self;
  std::uint64_t child;
  std::uint64_t descendant;
  std::uint64_t descendantOrSelf;
  std::uint64_t attribute;
  std::uint64_t last;
  std::uint64_t start;
};

struct Program {
  InlineVector<Step, 16> steps;
  InlineVector<Index, 16> walkSteps;
  InlineVector<Path, 8> paths;
  InlineVector<PathSet, 8> sets;
  InlineVector<Expression, 24> expressions;
};

// The set of the whole expression, or kNone: the expression is wrong or not for the direct
// evaluator. Prefixes are resolved through the document element of `document`.
Index Compile(std::u16string_view text, xercesc::DOMDocument& document, Program& program);

}  // namespace quen::internal

#endif  // QUENXML2_DOM_PATH_PROGRAM_H_
