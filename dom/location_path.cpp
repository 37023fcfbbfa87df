// SPDX-License-Identifier: Apache-2.0
#include "dom/location_path.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMCharacterData.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include "dom/document_order.h"
#include "dom/node_access.h"
#include "dom/number_value.h"
#include "dom/path_program.h"
#include "dom/prefetch.h"

namespace quen::internal {

using xercesc::DOMNode;
using Nodes = std::vector<DOMNode*>;

bool NameMatcher::Compare(const char16_t* name) {
  std::size_t at = 0;
  const std::size_t length = text_.size();
  if (name != nullptr) {
    while (at < length && name[at] == text_[at]) ++at;
  }
  const bool equal = name != nullptr && at == length && name[at] == u'\0';
  (equal ? hit_ : miss_) = name;
  return equal;
}

namespace {

bool IsEmpty(const char16_t* text) { return text == nullptr || *text == u'\0'; }

bool IsNamespaceDeclaration(const char16_t* name) {
  constexpr std::u16string_view kXmlns = u"xmlns";
  for (const char16_t c : kXmlns) {
    if (*name++ != c) return false;
  }
  return *name == u'\0' || *name == u':';
}

bool HasChildren(int type) {
  return type == DOMNode::ELEMENT_NODE || type == DOMNode::DOCUMENT_NODE;
}

// Nodes of a walk after which looking through the names costs little beside it.
constexpr std::uint32_t kLongWalk = 2048;

// Where a node goes that was found. False ends the search.
class Sink {
 public:
  virtual bool Take(DOMNode* node) = 0;

 protected:
  ~Sink() = default;
};

template <class Function>
class SinkOf final : public Sink {
 public:
  explicit SinkOf(Function function) : function_(function) {}
  bool Take(DOMNode* node) override { return function_(node); }

 private:
  Function function_;
};

// What a predicate is evaluated for. `last` is computed beforehand where the predicate asks for it.
struct Focus {
  DOMNode* node;
  std::uint32_t position;
  std::uint32_t last;
};

// Counters of one step from one origin: for each predicate with a position, the nodes that came to
// it, and one more than the nodes that will, once somebody asked.
struct Counters {
  std::uint32_t reached[kMaxPositionsOfStep];
  std::uint32_t total[kMaxPositionsOfStep];
};

class Evaluator {
 public:
  Evaluator(Program& program, DOMNode& document) : program_(program), document_(document) {}

  void Select(Index set, DOMNode* context, bool firstOnly, Nodes& out);
  bool Declined() const { return declined_; }

 private:
  // Each gives false when the sink has ended the search or the tree is not for this evaluator.
  bool Decline() {
    declined_ = true;
    return false;
  }

  // Steps
  bool Matches(Step& step, DOMNode* node, int type) {
    switch (step.test) {
      case NodeTest::kLocalName:
        if (const xercesc::DOMElementImpl* const element = AsElement(node)) {
          return MatchesLocalName(step, *element);
        }
        if (type == DOMNode::ELEMENT_NODE) {
          return step.name.Matches(node->getNodeName()) && step.axis != Axis::kAttribute &&
                 IsEmpty(node->getNamespaceURI());
        }
        return type == DOMNode::ATTRIBUTE_NODE && step.name.Matches(node->getNodeName()) &&
               IsPrincipal(step, node, type) && IsEmpty(node->getNamespaceURI());
      case NodeTest::kExpandedName:
        if (const xercesc::DOMElementImpl* const element = AsElement(node)) {
          return step.uri.Matches(NamespaceOf::Get(*element)) &&
                 step.name.Matches(NamespaceOf::LocalName(*element)) &&
                 step.axis != Axis::kAttribute;
        }
        if (type == DOMNode::TEXT_NODE) return false;
        return step.name.Matches(node->getLocalName()) &&
               step.uri.Matches(node->getNamespaceURI()) && IsPrincipal(step, node, type);
      case NodeTest::kNamespace:
        return step.uri.Matches(node->getNamespaceURI()) && IsPrincipal(step, node, type);
      case NodeTest::kAnyName:
        return IsPrincipal(step, node, type);
      default:
        return MatchesType(step, node, type);
    }
  }
  static bool MatchesLocalName(Step& step, const xercesc::DOMElementImpl& element) {
    return step.name.Matches(element.fName) && step.axis != Axis::kAttribute &&
           IsEmpty(NamespaceOf::Get(element));
  }
  static bool IsPrincipal(const Step& step, DOMNode* node, int type) {
    if (step.axis != Axis::kAttribute) return type == DOMNode::ELEMENT_NODE;
    return type == DOMNode::ATTRIBUTE_NODE && !IsNamespaceDeclaration(node->getNodeName());
  }
  static bool MatchesType(Step& step, DOMNode* node, int type);

  template <class Visitor>
  bool VisitAxis(Axis axis, DOMNode* origin, Visitor&& visit);
  template <class Visitor>
  bool VisitDescendants(DOMNode* origin, bool withOrigin, Visitor&& visit);
  template <class Visitor>
  bool VisitFollowing(DOMNode* origin, Visitor&& visit);
  template <class Visitor>
  bool VisitPreceding(DOMNode* origin, Visitor&& visit);
  template <class Visitor>
  bool VisitBackwards(DOMNode* origin, Visitor&& visit);
  bool IsForeign(int type) const {
    return type == DOMNode::ENTITY_REFERENCE_NODE || type == DOMNode::DOCUMENT_FRAGMENT_NODE ||
           type == DOMNode::ENTITY_NODE;
  }

  bool Accepts(Step& step, DOMNode* node, DOMNode* origin, Counters& counters) {
    return step.predicates == kNone || PassesPredicates(step, node, origin, counters, kNone);
  }
  bool PassesPredicates(Step& step, DOMNode* node, DOMNode* origin, Counters& counters, Index end);
  std::uint32_t Total(Step& step, DOMNode* origin, const Counters& counters, Index predicate);
  static bool IsExhausted(const Step& step, const Counters& counters);
  template <class Passed>
  DOMNode* SkipToMatch(Step& step, DOMNode* node, Counters& counters, DOMNode*& next,
                       Passed&& passed);
  bool MayExist(const Step& step) const;
  bool MayExist(const PathSet& set) const;
  bool Enumerate(Step& step, DOMNode* origin, Sink& sink);
  bool EnumerateDescendantsByName(Step& step, DOMNode* origin, Sink& sink);

  // Paths
  bool Find(Index set, DOMNode* context, Sink& sink);
  bool Walk(const PathSet& set, std::uint64_t start, DOMNode* origin, Sink& sink);
  bool WalkChildren(const PathSet& set, std::uint64_t start, DOMNode* origin, Sink& sink);
  std::uint64_t Reach(const PathSet& set, std::uint64_t candidates, std::uint64_t ready,
                      DOMNode* node, int type, DOMNode* parent, Counters* counters,
                      std::uint64_t& found);
  bool EmitAttributes(const PathSet& set, std::uint64_t steps, DOMNode* element, Sink& sink);
  void SelectStepwise(const PathSet& set, const Path& path, DOMNode* context, bool firstOnly,
                      Nodes& out);
  void TakeStep(Step& step, const Nodes& from, bool firstOnly, Nodes& to);
  bool TakeSharedStep(Step& step, DOMNode* origin, NodeAddresses& walked, Sink& sink);

  // Expressions
  bool Boolean(Index index, const Focus& focus);
  double Number(Index index, const Focus& focus);
  bool Compare(const Expression& expression, const Focus& focus);
  bool CompareAttribute(const Expression& expression, DOMNode* node);
  bool CompareNodes(Index nodes, Relation relation, Index other, const Focus& focus);
  bool CompareNodeSets(Index left, Relation relation, Index right, const Focus& focus);
  bool Contains(const Expression& expression, const Focus& focus);
  std::u16string_view Text(Index index, const Focus& focus, std::u16string& storage);
  DOMNode* FirstNode(Index index, const Focus& focus);
  std::u16string_view TextOf(DOMNode* node, std::u16string& storage);
  bool TextEquals(DOMNode* node, std::u16string_view text);
  double NumberOfNode(DOMNode* node);
  template <class Visitor>
  bool VisitText(DOMNode* node, Visitor&& visit);

  Program& program_;
  DOMNode& document_;
  bool declined_ = false;
};

// ---- nodes and axes

bool Evaluator::MatchesType(Step& step, DOMNode* node, int type) {
  switch (step.test) {
    case NodeTest::kText:
      return type == DOMNode::TEXT_NODE || type == DOMNode::CDATA_SECTION_NODE;
    case NodeTest::kComment:
      return type == DOMNode::COMMENT_NODE;
    case NodeTest::kInstruction:
      return type == DOMNode::PROCESSING_INSTRUCTION_NODE;
    case NodeTest::kNamedInstruction:
      return type == DOMNode::PROCESSING_INSTRUCTION_NODE && step.name.Matches(node->getNodeName());
    default:  // node(): all but what the DOM has and XPath has not
      return type != DOMNode::DOCUMENT_TYPE_NODE &&
             (type != DOMNode::ATTRIBUTE_NODE || !IsNamespaceDeclaration(node->getNodeName()));
  }
}

// Calls visit(node, type) for each node of the axis, in the order of the axis.
template <class Visitor>
bool Evaluator::VisitAxis(Axis axis, DOMNode* origin, Visitor&& visit) {
  const auto pass = [&](DOMNode* node) {
    const int type = node->getNodeType();
    return IsForeign(type) ? Decline() : visit(node, type);
  };
  switch (axis) {
    case Axis::kSelf:
      return pass(origin);
    case Axis::kChild:
      for (DOMNode* node = FactsOf(origin).child; node != nullptr;) {
        const NodeFacts facts = FactsOf(node);
        if (IsForeign(facts.type)) return Decline();
        if (!visit(node, facts.type)) return false;
        node = facts.next;
      }
      return true;
    case Axis::kDescendant:
      return VisitDescendants(origin, false, visit);
    case Axis::kDescendantOrSelf:
      return VisitDescendants(origin, true, visit);
    case Axis::kAttribute:
      if (origin->getNodeType() != DOMNode::ELEMENT_NODE || !origin->hasAttributes()) return true;
      {
        const xercesc::DOMNamedNodeMap* const attributes = origin->getAttributes();
        const XMLSize_t length = attributes->getLength();
        for (XMLSize_t at = 0; at != length; ++at) {
          if (!visit(attributes->item(at), int{DOMNode::ATTRIBUTE_NODE})) return false;
        }
      }
      return true;
    case Axis::kFollowingSibling:
      if (origin->getNodeType() == DOMNode::ATTRIBUTE_NODE) return true;
      for (DOMNode* node = origin->getNextSibling(); node; node = node->getNextSibling()) {
        if (!pass(node)) return false;
      }
      return true;
    case Axis::kPrecedingSibling:
      if (origin->getNodeType() == DOMNode::ATTRIBUTE_NODE) return true;
      for (DOMNode* node = origin->getPreviousSibling(); node; node = node->getPreviousSibling()) {
        if (!pass(node)) return false;
      }
      return true;
    case Axis::kParent: {
      DOMNode* const parent = ParentOf(*origin);
      return parent == nullptr || pass(parent);
    }
    case Axis::kAncestor:
    case Axis::kAncestorOrSelf:
      for (DOMNode* node = axis == Axis::kAncestor ? ParentOf(*origin) : origin; node;
           node = ParentOf(*node)) {
        if (!pass(node)) return false;
      }
      return true;
    case Axis::kFollowing:
      return VisitFollowing(origin, visit);
    case Axis::kPreceding:
      return VisitPreceding(origin, visit);
  }
  return true;
}

template <class Visitor>
bool Evaluator::VisitDescendants(DOMNode* origin, bool withOrigin, Visitor&& visit) {
  const NodeFacts start = FactsOf(origin);
  if (withOrigin) {
    if (IsForeign(start.type)) return Decline();
    if (!visit(origin, start.type)) return false;
  }
  PrefetchWalk ahead;
  InlineVector<DOMNode*, 32> rest;  // where to go on when a subtree has ended
  for (DOMNode* node = start.child;;) {
    if (node == nullptr) {
      if (rest.empty()) return true;
      node = rest.back();
      rest.pop_back();
      continue;
    }
    ahead.Pass(node);
    const NodeFacts facts = FactsOf(node);
    if (IsForeign(facts.type)) return Decline();
    if (!visit(node, facts.type)) return false;
    if (facts.child != nullptr) {
      if (facts.next != nullptr) rest.push_back(facts.next);
      node = facts.child;
    } else {
      node = facts.next;
    }
  }
}

// The following axis of an attribute begins with the children of its element.
template <class Visitor>
bool Evaluator::VisitFollowing(DOMNode* origin, Visitor&& visit) {
  DOMNode* at = origin;
  if (origin->getNodeType() == DOMNode::ATTRIBUTE_NODE) {
    at = ParentOf(*origin);
    if (at == nullptr) return true;
    if (!VisitDescendants(at, false, visit)) return false;
  }
  for (; at != nullptr; at = ParentOf(*at)) {
    if (IsForeign(at->getNodeType())) return Decline();
    for (DOMNode* next = at->getNextSibling(); next; next = next->getNextSibling()) {
      if (!VisitDescendants(next, true, visit)) return false;
    }
  }
  return true;
}

// A subtree from its end to its beginning, `origin` last.
template <class Visitor>
bool Evaluator::VisitBackwards(DOMNode* origin, Visitor&& visit) {
  InlineVector<DOMNode*, 32> open;
  const auto descend = [&](DOMNode* node) {
    for (; node != nullptr; node = node->getLastChild()) {
      open.push_back(node);
      if (!HasChildren(node->getNodeType())) break;
    }
  };
  descend(origin);
  while (!open.empty()) {
    DOMNode* const node = open.back();
    open.pop_back();
    const int type = node->getNodeType();
    if (IsForeign(type)) return Decline();
    if (!visit(node, type)) return false;
    if (!open.empty()) descend(node->getPreviousSibling());
  }
  return true;
}

template <class Visitor>
bool Evaluator::VisitPreceding(DOMNode* origin, Visitor&& visit) {
  DOMNode* at = origin;
  if (origin->getNodeType() == DOMNode::ATTRIBUTE_NODE) at = ParentOf(*origin);
  for (; at != nullptr; at = ParentOf(*at)) {
    if (IsForeign(at->getNodeType())) return Decline();
    if (at->getNodeType() == DOMNode::DOCUMENT_NODE) break;
    for (DOMNode* next = at->getPreviousSibling(); next; next = next->getPreviousSibling()) {
      if (!VisitBackwards(next, visit)) return false;
    }
  }
  return true;
}

// ---- one step

// Whether the predicates of the step before `end` hold.
bool Evaluator::PassesPredicates(Step& step, DOMNode* node, DOMNode* origin, Counters& counters,
                                 Index end) {
  std::size_t counter = 0;
  for (Index at = step.predicates; at != end; at = program_.expressions[at].next) {
    const Expression& predicate = program_.expressions[at];
    Focus focus{node, 0, 0};
    if (predicate.usesPosition || predicate.usesLast) {
      focus.position = ++counters.reached[counter];
      if (counter == 0 && step.place != 0 && at == step.predicates) {
        if (focus.position != step.place) return false;
        ++counter;
        continue;
      }
      if (predicate.usesLast) {
        std::uint32_t& total = counters.total[counter];
        if (total == 0) total = Total(step, origin, counters, at) + 1;
        focus.last = total - 1;
      }
      ++counter;
    }
    if (!Boolean(at, focus) || declined_) return false;
  }
  return true;
}

// The nodes that come to `predicate`. The totals of the predicates before it are known.
std::uint32_t Evaluator::Total(Step& step, DOMNode* origin, const Counters& counters,
                               Index predicate) {
  Counters recount{};
  std::copy(std::begin(counters.total), std::end(counters.total), std::begin(recount.total));
  std::uint32_t total = 0;
  VisitAxis(step.axis, origin, [&](DOMNode* node, int type) {
    if (Matches(step, node, type) && PassesPredicates(step, node, origin, recount, predicate)) {
      ++total;
    }
    return !declined_;
  });
  return total;
}

// Whether the first predicate is a position that has been passed: `b[5]` ends at the fifth.
bool Evaluator::IsExhausted(const Step& step, const Counters& counters) {
  return step.place != 0 && counters.reached[0] >= step.place;
}

// `//name`, the walk over most nodes, on its own.
bool Evaluator::EnumerateDescendantsByName(Step& step, DOMNode* origin, Sink& sink) {
  Counters none;
  std::uint32_t untilAsked = kLongWalk;
  PrefetchWalk ahead;
  InlineVector<DOMNode*, 32> rest;
  for (DOMNode* node = FactsOf(origin).child;;) {
    if (node == nullptr) {
      if (rest.empty()) return true;
      node = rest.back();
      rest.pop_back();
    }
    if (--untilAsked == 0 && !MayExist(step)) return true;
    ahead.Pass(node);
    DOMNode* next = nullptr;
    DOMNode* child = nullptr;
    if (const xercesc::DOMElementImpl* const element = AsElement(node)) {
      next = element->fChild.nextSibling;
      child = element->fParent.fFirstChild;
      if (MatchesLocalName(step, *element) && Accepts(step, node, origin, none) &&
          !sink.Take(node)) {
        return false;
      }
    } else if (const xercesc::DOMTextImpl* const text = AsText(node)) {
      next = text->fChild.nextSibling;
    } else {
      const NodeFacts facts = FactsOf(node);
      if (IsForeign(facts.type)) return Decline();
      next = facts.next;
      child = facts.child;
      if (Matches(step, node, facts.type) && Accepts(step, node, origin, none) &&
          !sink.Take(node)) {
        return false;
      }
    }
    if (declined_) return false;
    if (child != nullptr) {
      if (next != nullptr) rest.push_back(next);
      node = child;
    } else {
      node = next;
    }
  }
}

bool Evaluator::Enumerate(Step& step, DOMNode* origin, Sink& sink) {
  if (step.axis == Axis::kDescendant && step.test == NodeTest::kLocalName && step.positions == 0) {
    return EnumerateDescendantsByName(step, origin, sink);
  }
  Counters counters;
  if (step.positions != 0) counters = Counters{};
  bool wanted = true;
  VisitAxis(step.axis, origin, [&](DOMNode* node, int type) {
    if (!Matches(step, node, type)) return true;
    if (Accepts(step, node, origin, counters) && !sink.Take(node)) return wanted = false;
    return !declined_ && !(step.positions != 0 && IsExhausted(step, counters));
  });
  return wanted && !declined_;
}

// The first node from `node` on along its siblings that the step, one to children, may take, and
// the sibling behind it. Nodes before the place of `b[n]` are counted and passed over.
template <class Passed>
DOMNode* Evaluator::SkipToMatch(Step& step, DOMNode* node, Counters& counters, DOMNode*& next,
                                Passed&& passed) {
  const bool byLocalName = step.test == NodeTest::kLocalName;
  while (node != nullptr) {
    bool matches = false;
    passed(node);
    if (const xercesc::DOMElementImpl* const element = AsElement(node)) {
      next = element->fChild.nextSibling;
      matches = byLocalName ? MatchesLocalName(step, *element)
                            : Matches(step, node, int{DOMNode::ELEMENT_NODE});
    } else {
      const NodeFacts facts = FactsOf(node);
      next = facts.next;
      if (IsForeign(facts.type)) {
        Decline();
        return nullptr;
      }
      matches = Matches(step, node, facts.type);
    }
    if (matches) {
      if (step.place == 0 || counters.reached[0] + 1 >= step.place) return node;
      ++counters.reached[0];
    }
    node = next;
  }
  next = nullptr;
  return nullptr;
}

// Whether the document has the names of the step at all.
bool Evaluator::MayExist(const Step& step) const {
  switch (step.test) {
    case NodeTest::kLocalName:
      return NamesOf::MayHave(document_, step.name.Text());
    case NodeTest::kExpandedName:
      return NamesOf::MayHave(document_, step.name.Text()) &&
             NamesOf::MayHave(document_, step.uri.Text());
    default:
      return true;
  }
}

// The same for all steps of any of the paths.
bool Evaluator::MayExist(const PathSet& set) const {
  for (Index path = set.first; path != kNone; path = program_.paths[path].next) {
    Index at = program_.paths[path].first;
    while (at != kNone && MayExist(program_.steps[at])) at = program_.steps[at].next;
    if (at == kNone) return true;
  }
  return false;
}

// ---- downward paths: one walk in document order for all steps of all paths

// The steps that `node` answers. `candidates` come from its ancestors; `found` collects; the result
// is the set of steps that go on from here.
std::uint64_t Evaluator::Reach(const PathSet& set, std::uint64_t candidates, std::uint64_t ready,
                               DOMNode* node, int type, DOMNode* parent, Counters* counters,
                               std::uint64_t& found) {
  const std::uint64_t own = set.self | set.descendantOrSelf;
  std::uint64_t tested = 0;
  candidates |= ready & own;
  while (candidates != 0) {
    const auto bit = static_cast<unsigned>(__builtin_ctzll(candidates));
    const std::uint64_t mask = std::uint64_t{1} << bit;
    candidates &= ~mask;
    tested |= mask;
    Step& step = program_.steps[program_.walkSteps[set.steps + bit]];
    if (!Matches(step, node, type)) continue;
    if (step.predicates != kNone) {
      Counters none;
      if (!PassesPredicates(step, node, parent, step.positions != 0 ? counters[bit] : none,
                            kNone)) {
        continue;
      }
    }
    found |= mask;
    if ((set.last & mask) == 0) {
      ready |= mask << 1;
      candidates |= (mask << 1) & own & ~tested;
    }
  }
  return ready;
}

bool Evaluator::EmitAttributes(const PathSet& set, std::uint64_t steps, DOMNode* element,
                               Sink& sink) {
  if ((steps & (steps - 1)) == 0) {
    const auto bit = static_cast<unsigned>(__builtin_ctzll(steps));
    return Enumerate(program_.steps[program_.walkSteps[set.steps + bit]], element, sink);
  }
  bool wanted = true;
  VisitAxis(Axis::kAttribute, element, [&](DOMNode* node, int type) {
    for (std::uint64_t rest = steps; rest != 0; rest &= rest - 1) {
      const auto bit = static_cast<unsigned>(__builtin_ctzll(rest));
      Step& step = program_.steps[program_.walkSteps[set.steps + bit]];
      Counters none;
      if (!Matches(step, node, type) || !Accepts(step, node, element, none)) continue;
      return wanted = sink.Take(node);
    }
    return !declined_;
  });
  return wanted && !declined_;
}

// A single path of child steps: a walk with one step on each level.
bool Evaluator::WalkChildren(const PathSet& set, std::uint64_t start, DOMNode* origin, Sink& sink) {
  struct Level {
    DOMNode* parent;
    DOMNode* next;
    Counters counters;
    PrefetchRow row;
  };
  if (IsForeign(origin->getNodeType())) return Decline();
  const auto firstBit = static_cast<unsigned>(__builtin_ctzll(start));
  const auto lastBit = static_cast<unsigned>(__builtin_ctzll(set.last));
  PrefetchWalk ahead;
  InlineVector<Level, 6> levels;
  const auto enter = [&](DOMNode* node, DOMNode* child) {
    Level& level = *levels.Extend(1);
    level.parent = node;
    level.next = child;
    level.counters = Counters{};
    level.row = PrefetchRow();
  };
  enter(origin, FactsOf(origin).child);
  while (!levels.empty()) {
    Level& level = levels.back();
    const auto bit = firstBit + static_cast<unsigned>(levels.size()) - 1;
    Step& step = program_.steps[program_.walkSteps[set.steps + bit]];
    DOMNode* const node =
        SkipToMatch(step, level.next, level.counters, level.next, [&](DOMNode* each) {
          if (!level.row.Pass(each)) ahead.PassFar(each);
        });
    if (node == nullptr) {
      if (declined_) return false;
      levels.pop_back();
      continue;
    }
    if (step.predicates != kNone) {
      const bool passes = PassesPredicates(step, node, level.parent, level.counters, kNone);
      if (declined_) return false;
      if (step.positions != 0 && IsExhausted(step, level.counters)) level.next = nullptr;
      if (!passes) continue;
    }
    if (bit == lastBit) {
      if (!sink.Take(node)) return false;
    } else if (DOMNode* const child = FactsOf(node).child) {
      enter(node, child);
    }
  }
  return true;
}

bool Evaluator::Walk(const PathSet& set, std::uint64_t start, DOMNode* origin, Sink& sink) {
  if ((start & set.last & set.descendant) == start && (start & (start - 1)) == 0) {
    const auto bit = static_cast<unsigned>(__builtin_ctzll(start));
    return Enumerate(program_.steps[program_.walkSteps[set.steps + bit]], origin, sink);
  }
  struct Level {
    DOMNode* parent;
    DOMNode* node;
    std::uint64_t child;  // steps that a child may answer
    std::uint64_t below;  // steps that any descendant may answer
  };
  const std::uint64_t anywhere = set.descendant | set.descendantOrSelf;
  if ((anywhere | set.self | set.attribute) == 0 && (start & (start - 1)) == 0 &&
      (set.last & (set.last - 1)) == 0) {
    return WalkChildren(set, start, origin, sink);
  }
  // A walk that has become long asks whether it can find anything.
  std::uint32_t untilAsked = kLongWalk;
  PrefetchWalk ahead;
  InlineVector<Level, 16> levels;
  // Counters of the child steps with positions, one row of them for each level.
  InlineVector<Counters, 4> counters;
  std::uint64_t positional = 0;
  for (std::uint64_t rest = set.child; rest != 0; rest &= rest - 1) {
    const auto bit = static_cast<unsigned>(__builtin_ctzll(rest));
    if (program_.steps[program_.walkSteps[set.steps + bit]].positions != 0) {
      positional |= std::uint64_t{1} << bit;
    }
  }
  const std::size_t row =
      positional == 0 ? 0 : 64 - static_cast<unsigned>(__builtin_clzll(positional));

  const auto enter = [&](DOMNode* node, int type, std::uint64_t found, std::uint64_t ready,
                         std::uint64_t below) {
    if ((found & set.last) != 0 && !sink.Take(node)) return false;
    if (type == DOMNode::ELEMENT_NODE && (ready & set.attribute) != 0 &&
        !EmitAttributes(set, ready & set.attribute, node, sink)) {
      return false;
    }
    const std::uint64_t child = ready & set.child;
    below |= ready & anywhere;
    if ((child | below) == 0 || !HasChildren(type)) return true;
    DOMNode* const first = FactsOf(node).child;
    if (first == nullptr) return true;
    levels.push_back({node, first, child, below});
    if (row != 0) {
      Counters* const fresh = counters.Extend(row);
      std::fill(fresh, fresh + row, Counters{});
    }
    return true;
  };

  const int originType = origin->getNodeType();
  if (IsForeign(originType)) return Decline();
  std::uint64_t found = 0;
  std::uint64_t ready = Reach(set, 0, start, origin, originType, nullptr, nullptr, found);
  if (declined_ || !enter(origin, originType, found, ready, 0)) return false;
  while (!levels.empty()) {
    Level& level = levels.back();
    DOMNode* node = level.node;
    if (node == nullptr || (level.child | level.below) == 0) {
      levels.pop_back();
      counters.Shrink(counters.size() - row);
      continue;
    }
    Counters* const own = row == 0 ? nullptr : counters.end() - row;
    if (level.below == 0 && (level.child & (level.child - 1)) == 0) {
      // One step alone, as on most levels of most paths.
      const std::uint64_t mask = level.child;
      const auto bit = static_cast<unsigned>(__builtin_ctzll(mask));
      Step& step = program_.steps[program_.walkSteps[set.steps + bit]];
      Counters none;
      Counters& counter = step.positions == 0 ? none : own[bit];
      node = SkipToMatch(step, node, counter, level.node, [](DOMNode*) {});
      if (node == nullptr) {
        if (declined_) return false;
        continue;
      }
      const int type = node->getNodeType();
      const bool accepted = Accepts(step, node, level.parent, counter);
      if (declined_) return false;
      if (step.positions != 0 && IsExhausted(step, counter)) level.node = nullptr;
      if (!accepted) continue;
      found = mask;
      ready = 0;
      if ((set.last & mask) == 0) {
        ready = mask << 1;
        if ((ready & (set.self | set.descendantOrSelf)) != 0) {
          ready = Reach(set, 0, ready, node, type, level.parent, own, found);
          if (declined_) return false;
        }
      }
      if (!enter(node, type, found, ready, 0)) return false;
      continue;
    }
    if (--untilAsked == 0 && !MayExist(set)) return true;
    ahead.Pass(node);
    const NodeFacts facts = FactsOf(node);
    level.node = facts.next;
    const int type = facts.type;
    if (IsForeign(type)) return Decline();
    found = 0;
    const std::uint64_t below = level.below;
    const std::uint64_t child = level.child;
    ready = Reach(set, child | below, 0, node, type, level.parent, own, found);
    if (declined_) return false;
    for (std::uint64_t rest = child & positional; rest != 0; rest &= rest - 1) {
      const auto bit = static_cast<unsigned>(__builtin_ctzll(rest));
      if (IsExhausted(program_.steps[program_.walkSteps[set.steps + bit]], own[bit])) {
        level.child &= ~(std::uint64_t{1} << bit);
      }
    }
    if ((found | ready | below) != 0 && !enter(node, type, found, ready, below)) return false;
  }
  return true;
}

// ---- other paths: step by step over sets of nodes

// A step without positions from one of several origins. What the steps from other origins have
// walked already is not walked again, so that all together cost no more than the tree.
bool Evaluator::TakeSharedStep(Step& step, DOMNode* origin, NodeAddresses& walked, Sink& sink) {
  const auto take = [&](DOMNode* node, int type) {
    Counters none;
    if (Matches(step, node, type) && Accepts(step, node, origin, none)) sink.Take(node);
    return !declined_;
  };
  switch (step.axis) {
    case Axis::kAncestor:
    case Axis::kAncestorOrSelf:
    case Axis::kFollowingSibling:
    case Axis::kPrecedingSibling:
      return VisitAxis(step.axis, origin, [&](DOMNode* node, int type) {
        return walked.Insert(node) && take(node, type);
      });
    case Axis::kDescendant:
    case Axis::kDescendantOrSelf: {
      const bool withSelf = step.axis == Axis::kDescendantOrSelf;
      const int type = origin->getNodeType();
      if (withSelf && (IsForeign(type) || !take(origin, type))) {
        return IsForeign(type) ? Decline() : false;
      }
      if (!HasChildren(type) || !walked.Insert(origin)) return true;
      InlineVector<DOMNode*, 32> open;
      DOMNode* node = origin->getFirstChild();
      while (node != nullptr || !open.empty()) {
        if (node == nullptr) {
          node = open.back()->getNextSibling();
          open.pop_back();
          continue;
        }
        const int nodeType = node->getNodeType();
        if (IsForeign(nodeType)) return Decline();
        if (!take(node, nodeType)) return false;
        DOMNode* const child = nodeType == DOMNode::ELEMENT_NODE && walked.Insert(node)
                                   ? node->getFirstChild()
                                   : nullptr;
        if (child != nullptr) {
          open.push_back(node);
          node = child;
        } else {
          node = node->getNextSibling();
        }
      }
      return true;
    }
    default:
      return Enumerate(step, origin, sink);
  }
}

void Evaluator::TakeStep(Step& step, const Nodes& from, bool firstOnly, Nodes& to) {
  if (from.size() == 1) {
    const bool stop = firstOnly && !IsReverse(step.axis);
    SinkOf collect([&](DOMNode* node) {
      to.push_back(node);
      return !stop;
    });
    Enumerate(step, from.front(), collect);
    if (IsReverse(step.axis)) std::reverse(to.begin(), to.end());
    return;
  }
  // Steps from different origins meet on every axis but these.
  const bool disjoint =
      step.axis == Axis::kChild || step.axis == Axis::kAttribute || step.axis == Axis::kSelf;
  NodeAddresses known;
  NodeAddresses walked;
  SinkOf collect([&](DOMNode* node) {
    if (disjoint || known.Insert(node)) to.push_back(node);
    return true;
  });
  for (DOMNode* const origin : from) {
    if (step.positions == 0) {
      TakeSharedStep(step, origin, walked, collect);
    } else {
      Enumerate(step, origin, collect);
    }
    if (declined_) return;
  }
}

// In document order when it begins at one node and keeps to one; else the caller sorts.
void Evaluator::SelectStepwise(const PathSet& set, const Path& path, DOMNode* context,
                               bool firstOnly, Nodes& out) {
  DOMNode* origin = path.absolute ? &document_ : context;
  std::uint8_t number = 0;
  Index at = path.first;
  // `..` and `.` lead from one node to one.
  for (; at != kNone; at = program_.steps[at].next, ++number) {
    Step& step = program_.steps[at];
    if (step.predicates != kNone || (step.axis != Axis::kParent && step.axis != Axis::kSelf)) break;
    if (step.axis == Axis::kParent) origin = ParentOf(*origin);
    if (origin == nullptr) return;
    const int type = origin->getNodeType();
    if (IsForeign(type)) {
      Decline();
      return;
    }
    if (!Matches(step, origin, type)) return;
  }
  const auto walkOn = [&](DOMNode* start) {
    SinkOf collect([&](DOMNode* node) {
      out.push_back(node);
      return !firstOnly;
    });
    Walk(set, std::uint64_t{1} << (path.firstBit + number), start, collect);
  };
  if (at != kNone && set.walkable && number >= path.downwardFrom) return walkOn(origin);
  Nodes from{origin};
  Nodes to;
  bool ordered = true;
  const std::size_t before = out.size();
  for (; at != kNone; at = program_.steps[at].next, ++number) {
    if (from.size() == 1 && set.walkable && number >= path.downwardFrom) {
      return walkOn(from.front());
    }
    to.clear();
    Step& step = program_.steps[at];
    ordered = ordered && (from.size() < 2 || step.axis == Axis::kSelf);
    TakeStep(step, from, firstOnly && step.next == kNone, to);
    if (declined_) return;
    from.swap(to);
    if (from.empty()) return;
    if (from.size() == 1) ordered = true;
  }
  out.insert(out.end(), from.begin(), from.end());
  if (!ordered) SortInDocumentOrder(out, before);
}

void Evaluator::Select(Index setIndex, DOMNode* context, bool firstOnly, Nodes& out) {
  const PathSet& set = program_.sets[setIndex];
  const std::size_t before = out.size();
  if (set.downward) {
    SinkOf collect([&](DOMNode* node) {
      out.push_back(node);
      return !firstOnly;
    });
    const Path& first = program_.paths[set.first];
    Walk(set, set.start, first.absolute ? &document_ : context, collect);
    return;
  }
  for (Index at = set.first; at != kNone && !declined_; at = program_.paths[at].next) {
    SelectStepwise(set, program_.paths[at], context, firstOnly, out);
  }
  if (declined_) return;
  if (program_.paths[set.first].next != kNone) SortInDocumentOrder(out, before);
  if (firstOnly && out.size() > before) out.resize(before + 1);
}

// The nodes in any order, each once.
bool Evaluator::Find(Index setIndex, DOMNode* context, Sink& sink) {
  const PathSet& set = program_.sets[setIndex];
  const Path& first = program_.paths[set.first];
  if (first.next == kNone && first.length == 1) {
    return Enumerate(program_.steps[first.first], first.absolute ? &document_ : context, sink);
  }
  if (set.downward) return Walk(set, set.start, first.absolute ? &document_ : context, sink);
  Nodes nodes;
  Select(setIndex, context, false, nodes);
  for (DOMNode* const node : nodes) {
    if (!sink.Take(node)) return false;
  }
  return !declined_;
}

// ---- values

// Calls visit with the pieces of the string-value, in order.
template <class Visitor>
bool Evaluator::VisitText(DOMNode* node, Visitor&& visit) {
  const auto piece = [&](DOMNode* text) {
    const auto* const data = static_cast<xercesc::DOMCharacterData*>(text);
    return visit(std::u16string_view(data->getData(), data->getLength()));
  };
  switch (node->getNodeType()) {
    case DOMNode::TEXT_NODE:
    case DOMNode::CDATA_SECTION_NODE:
    case DOMNode::COMMENT_NODE:
      return piece(node);
    case DOMNode::PROCESSING_INSTRUCTION_NODE: {
      const char16_t* const data = node->getNodeValue();
      return visit(data == nullptr ? std::u16string_view() : std::u16string_view(data));
    }
    case DOMNode::ATTRIBUTE_NODE:
      for (DOMNode* child = node->getFirstChild(); child; child = child->getNextSibling()) {
        if (child->getNodeType() != DOMNode::TEXT_NODE) return Decline();
        if (!piece(child)) return false;
      }
      return true;
    default:
      return VisitDescendants(node, false, [&](DOMNode* each, int type) {
        return (type != DOMNode::TEXT_NODE && type != DOMNode::CDATA_SECTION_NODE) || piece(each);
      });
  }
}

std::u16string_view Evaluator::TextOf(DOMNode* node, std::u16string& storage) {
  std::u16string_view only;
  std::size_t pieces = 0;
  VisitText(node, [&](std::u16string_view piece) {
    if (++pieces == 1) {
      only = piece;
    } else {
      if (pieces == 2) storage.assign(only);
      storage.append(piece);
    }
    return true;
  });
  return pieces < 2 ? only : std::u16string_view(storage);
}

bool Evaluator::TextEquals(DOMNode* node, std::u16string_view text) {
  const bool same = VisitText(node, [&](std::u16string_view piece) {
    if (text.substr(0, piece.size()) != piece) return false;
    text.remove_prefix(piece.size());
    return true;
  });
  return same && text.empty();
}

double Evaluator::NumberOfNode(DOMNode* node) {
  std::u16string storage;
  return NumberOf(TextOf(node, storage));
}

DOMNode* Evaluator::FirstNode(Index index, const Focus& focus) {
  DOMNode* found = nullptr;
  SinkOf keep([&](DOMNode* node) {
    found = node;
    return false;
  });
  Find(program_.expressions[index].path, focus.node, keep);
  return found;
}

// The value of an expression that is a text or, for a node set that is walked in order, the text of
// its first node.
std::u16string_view Evaluator::Text(Index index, const Focus& focus, std::u16string& storage) {
  const Expression& expression = program_.expressions[index];
  const int type = focus.node->getNodeType();
  const bool named = type == DOMNode::ELEMENT_NODE || type == DOMNode::ATTRIBUTE_NODE;
  const auto view = [](const char16_t* text) {
    return text == nullptr ? std::u16string_view() : std::u16string_view(text);
  };
  switch (expression.operation) {
    case Operation::kLiteral:
      return expression.text;
    case Operation::kName:
    case Operation::kLocalName: {
      if (!named && type != DOMNode::PROCESSING_INSTRUCTION_NODE) return {};
      const char16_t* local = expression.operation == Operation::kLocalName && named
                                  ? focus.node->getLocalName()
                                  : nullptr;
      return view(local != nullptr ? local : focus.node->getNodeName());
    }
    case Operation::kNamespaceUri:
      return named ? view(focus.node->getNamespaceURI()) : view(nullptr);
    case Operation::kStringOf:
      return expression.first == kNone ? TextOf(focus.node, storage)
                                       : Text(expression.first, focus, storage);
    default: {
      DOMNode* const node = FirstNode(index, focus);
      return node == nullptr ? std::u16string_view() : TextOf(node, storage);
    }
  }
}

double Evaluator::Number(Index index, const Focus& focus) {
  const Expression& expression = program_.expressions[index];
  switch (expression.operation) {
    case Operation::kNumber:
      return expression.number;
    case Operation::kPosition:
      return focus.position;
    case Operation::kLast:
      return focus.last;
    case Operation::kCount: {
      std::uint32_t count = 0;
      SinkOf sink([&](DOMNode*) {
        ++count;
        return true;
      });
      Find(program_.expressions[expression.first].path, focus.node, sink);
      return count;
    }
    case Operation::kNegate:
      return -Number(expression.first, focus);
    case Operation::kNumberOf:
      return expression.first == kNone ? NumberOfNode(focus.node) : Number(expression.first, focus);
    case Operation::kStringLength: {
      std::u16string storage;
      const std::u16string_view text = expression.first == kNone
                                           ? TextOf(focus.node, storage)
                                           : Text(expression.first, focus, storage);
      return static_cast<double>(text.size());
    }
    case Operation::kArithmetic: {
      double value = 0;
      bool isFirst = true;
      for (Index at = expression.first; at != kNone; at = program_.expressions[at].next) {
        const double operand = Number(at, focus);
        switch (isFirst ? u'=' : program_.expressions[at].joint) {
          case u'=':
            value = operand;
            break;
          case u'+':
            value += operand;
            break;
          case u'-':
            value -= operand;
            break;
          case u'*':
            value *= operand;
            break;
          case u'd':
            value /= operand;
            break;
          default:
            value = std::fmod(value, operand);
            break;
        }
        isFirst = false;
      }
      return value;
    }
    default:
      break;
  }
  if (TypeOf(expression.operation) == Type::kBoolean) return Boolean(index, focus) ? 1 : 0;
  std::u16string storage;
  return NumberOf(Text(index, focus, storage));
}

bool Evaluator::Boolean(Index index, const Focus& focus) {
  const Expression& expression = program_.expressions[index];
  switch (expression.operation) {
    case Operation::kOr:
      for (Index at = expression.first; at != kNone; at = program_.expressions[at].next) {
        if (Boolean(at, focus)) return true;
      }
      return false;
    case Operation::kAnd:
      for (Index at = expression.first; at != kNone; at = program_.expressions[at].next) {
        if (!Boolean(at, focus)) return false;
      }
      return true;
    case Operation::kNot:
      return !Boolean(expression.first, focus);
    case Operation::kConstant:
      return expression.number != 0;
    case Operation::kCompare:
      return Compare(expression, focus);
    case Operation::kContains:
    case Operation::kStartsWith:
      return Contains(expression, focus);
    case Operation::kPath:
      return FirstNode(index, focus) != nullptr;
    default:
      break;
  }
  if (TypeOf(expression.operation) == Type::kNumber) {
    const double value = Number(index, focus);
    return value < 0 || value > 0;
  }
  std::u16string storage;
  return !Text(index, focus, storage).empty();
}

bool Evaluator::Contains(const Expression& expression, const Focus& focus) {
  std::u16string textStorage;
  std::u16string partStorage;
  const Index second = program_.expressions[expression.first].next;
  const std::u16string_view text = Text(expression.first, focus, textStorage);
  const std::u16string_view part = Text(second, focus, partStorage);
  return expression.operation == Operation::kStartsWith ? text.substr(0, part.size()) == part
                                                        : text.find(part) != text.npos;
}

template <class Value>
bool Holds(Relation relation, const Value& left, const Value& right) {
  switch (relation) {
    case Relation::kEqual:
      return left == right;
    case Relation::kNotEqual:
      return left != right;
    case Relation::kLess:
      return left < right;
    case Relation::kLessEqual:
      return left <= right;
    case Relation::kGreater:
      return left > right;
    case Relation::kGreaterEqual:
      return left >= right;
  }
  return false;
}

Relation Mirrored(Relation relation) {
  switch (relation) {
    case Relation::kLess:
      return Relation::kGreater;
    case Relation::kLessEqual:
      return Relation::kGreaterEqual;
    case Relation::kGreater:
      return Relation::kLess;
    case Relation::kGreaterEqual:
      return Relation::kLessEqual;
    default:
      return relation;
  }
}

bool IsEquality(Relation relation) { return relation <= Relation::kNotEqual; }

// Whether one of the nodes stands in the relation to the value of `other`.
bool Evaluator::CompareNodes(Index nodes, Relation relation, Index other, const Focus& focus) {
  const Type type = TypeOf(program_.expressions[other].operation);
  if (type == Type::kBoolean) {
    const bool left = Boolean(nodes, focus);
    const bool right = Boolean(other, focus);
    return IsEquality(relation) ? Holds(relation, left, right)
                                : Holds(relation, int{left}, int{right});
  }
  bool holds = false;
  if (type == Type::kText && IsEquality(relation)) {
    std::u16string storage;
    const std::u16string_view text = Text(other, focus, storage);
    SinkOf sink([&](DOMNode* node) {
      holds = TextEquals(node, text) == (relation == Relation::kEqual);
      return !holds;
    });
    Find(program_.expressions[nodes].path, focus.node, sink);
  } else {
    const double number = Number(other, focus);
    SinkOf sink([&](DOMNode* node) {
      holds = Holds(relation, NumberOfNode(node), number);
      return !holds;
    });
    Find(program_.expressions[nodes].path, focus.node, sink);
  }
  return holds && !declined_;
}

bool Evaluator::CompareNodeSets(Index left, Relation relation, Index right, const Focus& focus) {
  bool holds = false;
  std::u16string storage;
  SinkOf outer([&](DOMNode* leftNode) {
    const std::u16string_view text = TextOf(leftNode, storage);
    const double number = IsEquality(relation) ? 0 : NumberOf(text);
    SinkOf inner([&](DOMNode* rightNode) {
      holds = IsEquality(relation) ? TextEquals(rightNode, text) == (relation == Relation::kEqual)
                                   : Holds(relation, number, NumberOfNode(rightNode));
      return !holds;
    });
    Find(program_.expressions[right].path, focus.node, inner);
    return !holds && !declined_;
  });
  Find(program_.expressions[left].path, focus.node, outer);
  return holds && !declined_;
}

// `@name = 'text'` and `@name != 'text'`: at most one attribute has the name.
bool Evaluator::CompareAttribute(const Expression& expression, DOMNode* node) {
  if (node->getNodeType() != DOMNode::ELEMENT_NODE) return false;
  const xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
  if (attributes == nullptr) return false;
  Step& step = program_.steps[expression.attribute];
  const Expression& left = program_.expressions[expression.first];
  const std::u16string_view text =
      left.operation == Operation::kLiteral ? left.text : program_.expressions[left.next].text;
  const XMLSize_t length = attributes->getLength();
  for (XMLSize_t at = 0; at != length; ++at) {
    DOMNode* const attribute = attributes->item(at);
    if (Matches(step, attribute, DOMNode::ATTRIBUTE_NODE)) {
      return TextEquals(attribute, text) == (expression.relation == Relation::kEqual) && !declined_;
    }
  }
  return false;
}

bool Evaluator::Compare(const Expression& expression, const Focus& focus) {
  const Index left = expression.first;
  const Index right = program_.expressions[left].next;
  const Relation relation = expression.relation;
  if (expression.attribute != kNone && IsEquality(relation)) {
    return CompareAttribute(expression, focus.node);
  }
  const Type leftType = TypeOf(program_.expressions[left].operation);
  const Type rightType = TypeOf(program_.expressions[right].operation);
  if (leftType == Type::kNodes) {
    return rightType == Type::kNodes ? CompareNodeSets(left, relation, right, focus)
                                     : CompareNodes(left, relation, right, focus);
  }
  if (rightType == Type::kNodes) return CompareNodes(right, Mirrored(relation), left, focus);
  if (IsEquality(relation)) {
    if (leftType == Type::kBoolean || rightType == Type::kBoolean) {
      return Holds(relation, Boolean(left, focus), Boolean(right, focus));
    }
    if (leftType == Type::kText && rightType == Type::kText) {
      std::u16string leftStorage;
      std::u16string rightStorage;
      return Holds(relation, Text(left, focus, leftStorage), Text(right, focus, rightStorage));
    }
  }
  return Holds(relation, Number(left, focus), Number(right, focus));
}

}  // namespace

Direct SelectDirectly(DOMNode& inContext, std::u16string_view inExpression, bool inFirstOnly,
                      std::vector<DOMNode*>& outNodes) {
  DOMNode* document = &inContext;
  switch (inContext.getNodeType()) {
    case DOMNode::DOCUMENT_NODE:
      break;
    case DOMNode::ELEMENT_NODE:
    case DOMNode::ATTRIBUTE_NODE:
    case DOMNode::TEXT_NODE:
    case DOMNode::CDATA_SECTION_NODE:
    case DOMNode::COMMENT_NODE:
    case DOMNode::PROCESSING_INSTRUCTION_NODE:
      document = inContext.getOwnerDocument();
      if (document == nullptr) return Direct::kDeclined;
      break;
    default:
      return Direct::kDeclined;
  }
  Program program;
  const Index set = Compile(inExpression, static_cast<xercesc::DOMDocument&>(*document), program);
  if (set == kNone) return Direct::kDeclined;
  const std::size_t before = outNodes.size();
  Evaluator evaluator(program, *document);
  evaluator.Select(set, &inContext, inFirstOnly, outNodes);
  if (!evaluator.Declined()) return Direct::kDone;
  outNodes.resize(before);
  return Direct::kDeclined;
}

}  // namespace quen::internal
