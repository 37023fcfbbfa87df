// SPDX-License-Identifier: Apache-2.0
#include "dom/path_program.h"

#include <xalanc/PlatformSupport/XalanXMLChar.hpp>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include "dom/number_value.h"
#include "dom/selection_limits.h"

namespace quen::internal {
namespace {

constexpr std::u16string_view kXmlUri = u"http://www.w3.org/XML/1998/namespace";

class Compiler {
 public:
  Compiler(std::u16string_view text, xercesc::DOMDocument& document, Program& program)
      : at_(text.data()), end_(text.data() + text.size()), document_(document), program_(program) {}

  Index Run() {
    const Index set = ParseUnion();
    SkipBlanks();
    return failed_ || at_ != end_ ? kNone : set;
  }

 private:
  // Every Parse function gives kNone after Fail(); callers may go on, nothing is read behind it.
  Index Fail() {
    failed_ = true;
    at_ = end_;
    return kNone;
  }

  static bool IsBlank(char16_t c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
  static bool IsDigit(char16_t c) { return c >= u'0' && c <= u'9'; }
  // Beyond ASCII the names that Xalan-C takes, which are fewer than the parser's.
  static bool IsNameStart(char16_t c) {
    return c < 0x80 ? (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_'
                    : xalanc::XalanXMLChar::isLetter(c);
  }
  static bool IsNameChar(char16_t c) {
    return c < 0x80 ? IsNameStart(c) || IsDigit(c) || c == u'-' || c == u'.'
                    : xalanc::XalanXMLChar::isLetter(c) || xalanc::XalanXMLChar::isDigit(c) ||
                          xalanc::XalanXMLChar::isCombiningChar(c) ||
                          xalanc::XalanXMLChar::isExtender(c);
  }

  void SkipBlanks() {
    while (at_ != end_ && IsBlank(*at_)) ++at_;
  }
  // The character behind `offset` more, U+0000 at the end.
  char16_t Peek(std::size_t offset = 0) const {
    return offset < static_cast<std::size_t>(end_ - at_) ? at_[offset] : u'\0';
  }
  bool Take(char16_t c) {
    SkipBlanks();
    if (Peek() != c) return false;
    ++at_;
    return true;
  }
  bool TakeColons() {
    SkipBlanks();
    if (Peek() != u':' || Peek(1) != u':') return false;
    at_ += 2;
    return true;
  }
  std::u16string_view TakeName() {
    const char16_t* const begin = at_;
    if (at_ == end_ || !IsNameStart(*at_)) return {};
    while (at_ != end_ && IsNameChar(*at_)) ++at_;
    return {begin, static_cast<std::size_t>(at_ - begin)};
  }
  // An operator that is written as a name. Stands only where an operand has ended.
  bool TakeWord(std::u16string_view word) {
    SkipBlanks();
    const char16_t* const begin = at_;
    if (TakeName() == word) return true;
    at_ = begin;
    return false;
  }
  bool TakeLiteral(std::u16string_view& literal) {
    const char16_t quote = Peek();
    if (quote != u'"' && quote != u'\'') return false;
    const char16_t* const begin = ++at_;
    while (at_ != end_ && *at_ != quote) ++at_;
    literal = {begin, static_cast<std::size_t>(at_ - begin)};
    if (at_ == end_) {
      Fail();
    } else {
      ++at_;
    }
    return true;
  }

  template <class Vector, class Element>
  Index Add(Vector& vector, const Element& element) {
    if (vector.size() >= kMaxExpressionOperators) return Fail();
    vector.push_back(element);
    return static_cast<Index>(vector.size() - 1);
  }
  Index AddExpression(Operation operation, Index first = kNone) {
    Expression expression{};
    expression.operation = operation;
    expression.first = first;
    expression.next = kNone;
    expression.path = kNone;
    expression.attribute = kNone;
    for (Index each = first; each != kNone; each = At(each).next) {
      expression.usesPosition |= At(each).usesPosition;
      expression.usesLast |= At(each).usesLast;
    }
    expression.usesPosition |= operation == Operation::kPosition;
    expression.usesLast |= operation == Operation::kLast;
    return Add(program_.expressions, expression);
  }
  Expression& At(Index index) { return program_.expressions[index]; }
  Type TypeAt(Index index) { return TypeOf(At(index).operation); }

  // Paths
  Index ParseUnion();
  bool StartsStep() const;
  Index ParsePath(std::uint8_t& length);
  Index ParseStep();
  Index AddStep(Axis axis, NodeTest test);
  bool ParseNodeTest(Step& step);
  bool ResolvePrefix(std::u16string_view prefix, std::u16string_view& uri);
  void ParsePredicates(Index step);
  Index FinishSet(Index firstPath, std::size_t steps);

  // Expressions
  Index ParseOr();
  Index ParseAnd();
  Index ParseComparison();
  Index ParseSum();
  Index ParseProduct();
  Index ParseUnary();
  Index ParseOperand();
  Index ParseCall(std::u16string_view name);
  Index MakeNumber(double value) {
    const Index index = AddExpression(Operation::kNumber);
    if (index != kNone) At(index).number = value;
    return index;
  }
  Index MakeArithmetic(Index first);
  bool IsSingleValue(Index index);
  Index AttributeByName(Index left, Index right);
  std::uint32_t FixedPlace(Index predicate);

  const char16_t* at_;
  const char16_t* const end_;
  xercesc::DOMDocument& document_;
  Program& program_;
  bool failed_ = false;
  int nesting_ = 0;
};

bool Compiler::StartsStep() const {
  const char16_t c = Peek();
  return c == u'.' || c == u'@' || c == u'*' || IsNameStart(c);
}

Index Compiler::ParseUnion() {
  Index first = kNone;
  Index previous = kNone;
  std::size_t steps = 0;
  do {
    std::uint8_t length = 0;
    const Index path = ParsePath(length);
    if (failed_) return kNone;
    if (previous == kNone) {
      first = path;
    } else {
      program_.paths[previous].next = path;
    }
    previous = path;
    steps += length;
  } while (Take(u'|'));
  return failed_ ? kNone : FinishSet(first, steps);
}

Index Compiler::ParsePath(std::uint8_t& length) {
  constexpr std::size_t kMostSteps = 64;
  Path path{};
  path.next = kNone;
  path.first = kNone;
  Index previous = kNone;
  std::size_t count = 0;
  const auto append = [&](Index step) {
    if (previous == kNone) {
      path.first = step;
    } else {
      program_.steps[previous].next = step;
    }
    previous = step;
    ++count;
  };

  SkipBlanks();
  bool expected = true;
  bool abbreviated = false;
  if (Peek() == u'/') {
    path.absolute = true;
    ++at_;
    if (Peek() == u'/') {
      ++at_;
      abbreviated = true;
    } else {
      expected = false;
    }
  }
  for (;;) {
    SkipBlanks();
    if (!StartsStep()) {
      if (expected) return Fail();
      break;
    }
    const Index step = ParseStep();
    if (failed_) return kNone;
    if (abbreviated) {
      // `//x` without a position is one walk over the descendants.
      Step& made = program_.steps[step];
      if (made.axis == Axis::kChild && made.positions == 0) {
        made.axis = Axis::kDescendant;
      } else {
        append(AddStep(Axis::kDescendantOrSelf, NodeTest::kNode));
        if (failed_) return kNone;
      }
    }
    append(step);
    if (count > kMostSteps) return Fail();
    SkipBlanks();
    if (Peek() != u'/') break;
    ++at_;
    abbreviated = Peek() == u'/';
    if (abbreviated) ++at_;
    expected = true;
  }
  path.length = length = static_cast<std::uint8_t>(count);
  return Add(program_.paths, path);
}

Index Compiler::AddStep(Axis axis, NodeTest test) {
  Step step;
  step.axis = axis;
  step.test = test;
  step.positions = 0;
  step.place = 0;
  step.next = kNone;
  step.predicates = kNone;
  step.name.Set({});
  step.uri.Set({});
  return Add(program_.steps, step);
}

Index Compiler::ParseStep() {
  if (Peek() == u'.') {
    const bool parent = Peek(1) == u'.';
    at_ += parent ? 2 : 1;
    SkipBlanks();
    if (Peek() == u'[') return Fail();  // no predicates behind the abbreviations
    return AddStep(parent ? Axis::kParent : Axis::kSelf, NodeTest::kNode);
  }
  Axis axis = Axis::kChild;
  if (Peek() == u'@') {
    ++at_;
    axis = Axis::kAttribute;
    SkipBlanks();
  } else if (IsNameStart(Peek())) {
    const char16_t* const begin = at_;
    const std::u16string_view name = TakeName();
    if (TakeColons()) {
      struct {
        std::u16string_view name;
        Axis axis;
      } static constexpr kAxes[] = {
          {u"child", Axis::kChild},
          {u"descendant", Axis::kDescendant},
          {u"descendant-or-self", Axis::kDescendantOrSelf},
          {u"parent", Axis::kParent},
          {u"ancestor", Axis::kAncestor},
          {u"ancestor-or-self", Axis::kAncestorOrSelf},
          {u"self", Axis::kSelf},
          {u"attribute", Axis::kAttribute},
          {u"following-sibling", Axis::kFollowingSibling},
          {u"preceding-sibling", Axis::kPrecedingSibling},
          {u"following", Axis::kFollowing},
          {u"preceding", Axis::kPreceding},
      };
      bool known = false;
      for (const auto& each : kAxes) {
        if (each.name != name) continue;
        axis = each.axis;
        known = true;
      }
      if (!known) return Fail();
      SkipBlanks();
    } else {
      at_ = begin;
    }
  }
  const Index index = AddStep(axis, NodeTest::kNode);
  if (failed_ || !ParseNodeTest(program_.steps[index])) return Fail();
  ParsePredicates(index);
  return failed_ ? kNone : index;
}

bool Compiler::ParseNodeTest(Step& step) {
  if (Peek() == u'*') {
    ++at_;
    step.test = NodeTest::kAnyName;
    return true;
  }
  const std::u16string_view name = TakeName();
  if (name.empty()) return false;
  if (Peek() == u':') {
    ++at_;
    std::u16string_view uri;
    if (!ResolvePrefix(name, uri)) return false;
    step.uri.Set(uri);
    if (Peek() == u'*') {
      ++at_;
      step.test = NodeTest::kNamespace;
      return true;
    }
    const std::u16string_view local = TakeName();
    if (local.empty() || Peek() == u':') return false;
    SkipBlanks();
    if (Peek() == u'(') return false;
    step.test = NodeTest::kExpandedName;
    step.name.Set(local);
    return true;
  }
  const char16_t* const behind = at_;
  SkipBlanks();
  if (Peek() != u'(') {
    at_ = behind;
    step.test = NodeTest::kLocalName;
    step.name.Set(name);
    return true;
  }
  ++at_;
  SkipBlanks();
  if (name == u"node") {
    step.test = NodeTest::kNode;
  } else if (name == u"text") {
    step.test = NodeTest::kText;
  } else if (name == u"comment") {
    step.test = NodeTest::kComment;
  } else if (name == u"processing-instruction") {
    step.test = NodeTest::kInstruction;
    std::u16string_view target;
    if (TakeLiteral(target)) {
      if (target.empty()) return false;
      step.test = NodeTest::kNamedInstruction;
      step.name.Set(target);
    }
  } else {
    return false;
  }
  return Take(u')');
}

bool Compiler::ResolvePrefix(std::u16string_view prefix, std::u16string_view& uri) {
  constexpr std::u16string_view kDeclaration = u"xmlns:";
  constexpr std::size_t kMostCharacters = 64;
  if (prefix == u"xml") {
    uri = kXmlUri;
    return true;
  }
  const xercesc::DOMElement* const root = document_.getDocumentElement();
  if (root == nullptr || prefix.size() > kMostCharacters || prefix == u"xmlns") return false;
  char16_t name[kDeclaration.size() + kMostCharacters + 1];
  char16_t* end = std::copy(kDeclaration.begin(), kDeclaration.end(), name);
  end = std::copy(prefix.begin(), prefix.end(), end);
  *end = u'\0';
  const xercesc::DOMAttr* const declaration = root->getAttributeNode(name);
  if (declaration == nullptr) return false;
  // A value of several pieces would have to be put together.
  const xercesc::DOMNode* const value = declaration->getFirstChild();
  if (value == nullptr || value->getNodeType() != xercesc::DOMNode::TEXT_NODE ||
      value->getNextSibling() != nullptr) {
    return false;
  }
  uri = value->getNodeValue();
  return !uri.empty();
}

void Compiler::ParsePredicates(Index step) {
  Index previous = kNone;
  while (Take(u'[')) {
    if (++nesting_ > kMaxDirectNesting) {
      Fail();
      return;
    }
    Index predicate = ParseOr();
    if (failed_ || !Take(u']')) {
      Fail();
      return;
    }
    --nesting_;
    if (TypeAt(predicate) == Type::kNumber) {  // [n] is [position() = n]
      const Index position = AddExpression(Operation::kPosition);
      if (failed_) return;
      At(position).next = predicate;
      predicate = AddExpression(Operation::kCompare, position);
      if (failed_) return;
      At(predicate).relation = Relation::kEqual;
    }
    Step& owner = program_.steps[step];
    if (At(predicate).usesPosition || At(predicate).usesLast) {
      if (++owner.positions > kMaxPositionsOfStep) {
        Fail();
        return;
      }
    }
    if (previous == kNone) {
      owner.place = FixedPlace(predicate);
      owner.predicates = predicate;
    } else {
      At(previous).next = predicate;
    }
    previous = predicate;
  }
}

Index Compiler::FinishSet(Index firstPath, std::size_t steps) {
  PathSet set{};
  set.first = firstPath;
  set.steps = static_cast<Index>(program_.walkSteps.size());
  set.walkable = steps <= 64;
  if (program_.walkSteps.size() + steps >= kNone) return Fail();
  bool sameStart = true;
  bool downward = set.walkable;
  std::size_t bit = 0;
  int attributePaths = 0;
  bool attributePositions = false;
  for (Index p = firstPath; p != kNone; p = program_.paths[p].next) {
    Path& path = program_.paths[p];
    sameStart &= path.absolute == program_.paths[firstPath].absolute;
    path.firstBit = static_cast<std::uint8_t>(bit);
    if (path.length == 0) downward = false;
    std::uint8_t number = 0;
    for (Index s = path.first; s != kNone; s = program_.steps[s].next, ++number, ++bit) {
      const Step& step = program_.steps[s];
      program_.walkSteps.push_back(s);
      if (!set.walkable) continue;
      const std::uint64_t mask = std::uint64_t{1} << bit;
      bool leadsDown = false;
      switch (step.axis) {
        case Axis::kSelf:
          set.self |= mask;
          leadsDown = step.positions == 0;
          break;
        case Axis::kChild:
          set.child |= mask;
          leadsDown = true;
          break;
        case Axis::kDescendant:
          set.descendant |= mask;
          leadsDown = step.positions == 0;
          break;
        case Axis::kDescendantOrSelf:
          set.descendantOrSelf |= mask;
          leadsDown = step.positions == 0;
          break;
        case Axis::kAttribute:
          set.attribute |= mask;
          leadsDown = step.next == kNone;
          ++attributePaths;
          attributePositions |= step.positions != 0;
          break;
        default:
          break;
      }
      if (step.next == kNone) set.last |= mask;
      if (!leadsDown) path.downwardFrom = static_cast<std::uint8_t>(number + 1);
      if (number == 0) set.start |= mask;
    }
    downward &= path.downwardFrom == 0;
  }
  set.downward = downward && sameStart && !(attributePaths > 1 && attributePositions);
  return Add(program_.sets, set);
}

Index Compiler::ParseOr() {
  Index first = ParseAnd();
  Index previous = first;
  if (failed_ || !TakeWord(u"or")) return failed_ ? kNone : first;
  do {
    const Index operand = ParseAnd();
    if (failed_) return kNone;
    At(previous).next = operand;
    previous = operand;
  } while (TakeWord(u"or"));
  return AddExpression(Operation::kOr, first);
}

Index Compiler::ParseAnd() {
  Index first = ParseComparison();
  Index previous = first;
  if (failed_ || !TakeWord(u"and")) return failed_ ? kNone : first;
  do {
    const Index operand = ParseComparison();
    if (failed_) return kNone;
    At(previous).next = operand;
    previous = operand;
  } while (TakeWord(u"and"));
  return AddExpression(Operation::kAnd, first);
}

Index Compiler::ParseComparison() {
  const Index left = ParseSum();
  if (failed_) return kNone;
  SkipBlanks();
  Relation relation;
  const char16_t sign = Peek();
  const bool orEqual = Peek(1) == u'=';
  if (sign == u'=') {
    relation = Relation::kEqual;
  } else if (sign == u'!' && orEqual) {
    relation = Relation::kNotEqual;
  } else if (sign == u'<') {
    relation = orEqual ? Relation::kLessEqual : Relation::kLess;
  } else if (sign == u'>') {
    relation = orEqual ? Relation::kGreaterEqual : Relation::kGreater;
  } else {
    return left;
  }
  at_ += sign != u'=' && orEqual ? 2 : 1;
  const Index right = ParseSum();
  if (failed_) return kNone;
  SkipBlanks();
  const char16_t more = Peek();
  if (more == u'=' || more == u'!' || more == u'<' || more == u'>') return Fail();
  // What Xalan-C makes of the order of booleans is nothing to promise.
  const bool equality = relation == Relation::kEqual || relation == Relation::kNotEqual;
  if (!equality && (TypeAt(left) == Type::kBoolean || TypeAt(right) == Type::kBoolean)) {
    return Fail();
  }
  At(left).next = right;
  const Index comparison = AddExpression(Operation::kCompare, left);
  if (failed_) return kNone;
  At(comparison).relation = relation;
  At(comparison).attribute = AttributeByName(left, right);
  return comparison;
}

// The step of a path that is `@name`, compared with a literal as texts; else kNone.
Index Compiler::AttributeByName(Index left, Index right) {
  const Index other = TypeAt(left) == Type::kNodes ? right : left;
  const Index nodes = other == right ? left : right;
  if (At(nodes).operation != Operation::kPath || At(other).operation != Operation::kLiteral) {
    return kNone;
  }
  const Path& path = program_.paths[program_.sets[At(nodes).path].first];
  if (path.length != 1 || path.absolute || path.next != kNone) return kNone;
  const Step& step = program_.steps[path.first];
  const bool isName = step.test == NodeTest::kLocalName || step.test == NodeTest::kExpandedName;
  return step.axis == Axis::kAttribute && isName && step.predicates == kNone ? path.first : kNone;
}

// The n of `position() = n`, n a whole number from 1 on; else 0.
std::uint32_t Compiler::FixedPlace(Index predicate) {
  const Expression& comparison = At(predicate);
  if (comparison.operation != Operation::kCompare || comparison.relation != Relation::kEqual) {
    return 0;
  }
  const Expression& left = At(comparison.first);
  const Expression& right = At(left.next);
  if (left.operation != Operation::kPosition || right.operation != Operation::kNumber) return 0;
  constexpr double kMost = 4294967295.0;
  if (!(right.number >= 1 && right.number <= kMost)) return 0;
  const auto place = static_cast<std::uint32_t>(right.number);
  return place == right.number ? place : 0;
}

// Whether the value is one number or text, or a node set whose first node a walk finds first.
bool Compiler::IsSingleValue(Index index) {
  const Expression& expression = At(index);
  if (expression.operation != Operation::kPath) return true;
  const PathSet& set = program_.sets[expression.path];
  return set.downward;
}

Index Compiler::ParseSum() {
  const Index first = ParseProduct();
  Index previous = first;
  bool sum = false;
  while (!failed_) {
    SkipBlanks();
    const char16_t sign = Peek();
    if (sign != u'+' && sign != u'-') break;
    ++at_;
    const Index operand = ParseProduct();
    if (failed_) break;
    if (!IsSingleValue(operand)) return Fail();
    At(operand).joint = sign;
    At(previous).next = operand;
    previous = operand;
    sum = true;
  }
  if (failed_) return kNone;
  return sum ? MakeArithmetic(first) : first;
}

Index Compiler::MakeArithmetic(Index first) {
  if (!IsSingleValue(first)) return Fail();
  At(first).joint = u'+';
  return AddExpression(Operation::kArithmetic, first);
}

Index Compiler::ParseProduct() {
  const Index first = ParseUnary();
  Index previous = first;
  bool product = false;
  while (!failed_) {
    SkipBlanks();
    char16_t sign = u'*';
    if (Peek() == u'*') {
      ++at_;
    } else if (TakeWord(u"div")) {
      sign = u'd';
    } else if (TakeWord(u"mod")) {
      sign = u'm';
    } else {
      break;
    }
    const Index operand = ParseUnary();
    if (failed_) break;
    if (!IsSingleValue(operand)) return Fail();
    At(operand).joint = sign;
    At(previous).next = operand;
    previous = operand;
    product = true;
  }
  if (failed_) return kNone;
  return product ? MakeArithmetic(first) : first;
}

Index Compiler::ParseUnary() {
  if (!Take(u'-')) return ParseOperand();
  // Xalan-C refuses a second sign.
  SkipBlanks();
  if (Peek() == u'-') return Fail();
  const Index operand = ParseOperand();
  if (failed_ || !IsSingleValue(operand)) return Fail();
  return AddExpression(Operation::kNegate, operand);
}

Index Compiler::ParseOperand() {
  SkipBlanks();
  const char16_t c = Peek();
  std::u16string_view literal;
  if (TakeLiteral(literal)) {
    const Index index = AddExpression(Operation::kLiteral);
    if (!failed_) At(index).text = literal;
    return index;
  }
  if (IsDigit(c) || (c == u'.' && IsDigit(Peek(1)))) {
    const char16_t* const begin = at_;
    while (IsDigit(Peek())) ++at_;
    if (Peek() == u'.') {
      ++at_;
      while (IsDigit(Peek())) ++at_;
    }
    if (IsNameStart(Peek())) return Fail();
    return MakeNumber(NumberOf({begin, static_cast<std::size_t>(at_ - begin)}));
  }
  if (c == u'(') {
    if (++nesting_ > kMaxDirectNesting) return Fail();
    ++at_;
    const Index inner = ParseOr();
    if (failed_ || !Take(u')')) return Fail();
    --nesting_;
    SkipBlanks();
    const char16_t behind = Peek();
    if (behind == u'[' || behind == u'/' || behind == u'|') return Fail();
    return inner;
  }
  if (IsNameStart(c)) {
    const char16_t* const begin = at_;
    const std::u16string_view name = TakeName();
    SkipBlanks();
    if (Peek() == u'(' && name != u"node" && name != u"text" && name != u"comment" &&
        name != u"processing-instruction") {
      ++at_;
      return ParseCall(name);
    }
    at_ = begin;
  }
  if (c != u'/' && !StartsStep()) return Fail();
  const Index set = ParseUnion();
  if (failed_) return kNone;
  const Index index = AddExpression(Operation::kPath);
  if (!failed_) At(index).path = set;
  return index;
}

Index Compiler::ParseCall(std::u16string_view name) {
  struct Function {
    std::u16string_view name;
    Operation operation;
    int least;
    int most;
  };
  static constexpr Function kFunctions[] = {
      {u"position", Operation::kPosition, 0, 0},
      {u"last", Operation::kLast, 0, 0},
      {u"count", Operation::kCount, 1, 1},
      {u"not", Operation::kNot, 1, 1},
      {u"true", Operation::kConstant, 0, 0},
      {u"false", Operation::kConstant, 0, 0},
      {u"name", Operation::kName, 0, 0},
      {u"local-name", Operation::kLocalName, 0, 0},
      {u"namespace-uri", Operation::kNamespaceUri, 0, 0},
      {u"contains", Operation::kContains, 2, 2},
      {u"starts-with", Operation::kStartsWith, 2, 2},
      {u"string", Operation::kStringOf, 0, 1},
      {u"number", Operation::kNumberOf, 0, 1},
      {u"string-length", Operation::kStringLength, 0, 1},
  };
  const Function* function = nullptr;
  for (const Function& each : kFunctions) {
    if (each.name == name) function = &each;
  }
  if (function == nullptr || ++nesting_ > kMaxDirectNesting) return Fail();
  Index first = kNone;
  Index previous = kNone;
  int arguments = 0;
  if (!Take(u')')) {
    do {
      const Index argument = ParseOr();
      if (failed_ || ++arguments > function->most) return Fail();
      if (previous == kNone) {
        first = argument;
      } else {
        At(previous).next = argument;
      }
      previous = argument;
    } while (Take(u','));
    if (!Take(u')')) return Fail();
  }
  --nesting_;
  if (arguments < function->least) return Fail();
  switch (function->operation) {
    case Operation::kCount:
      if (TypeAt(first) != Type::kNodes) return Fail();
      break;
    case Operation::kNot:
      break;
    case Operation::kNumberOf:
      if (first != kNone && !IsSingleValue(first)) return Fail();
      break;
    default:  // arguments are texts; numbers and booleans as text are left to the engine
      for (Index each = first; each != kNone; each = At(each).next) {
        const Type type = TypeAt(each);
        if (type == Type::kBoolean || type == Type::kNumber || !IsSingleValue(each)) return Fail();
      }
      break;
  }
  const Index index = AddExpression(function->operation, first);
  if (!failed_ && function->operation == Operation::kConstant) {
    At(index).number = name == u"true" ? 1 : 0;
  }
  return index;
}

}  // namespace

Index Compile(std::u16string_view text, xercesc::DOMDocument& document, Program& program) {
  if (text.size() > kMaxExpressionLength) return kNone;
  return Compiler(text, document, program).Run();
}

}  // namespace quen::internal
