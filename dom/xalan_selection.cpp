// SPDX-License-Identifier: Apache-2.0
#include "dom/xalan_selection.h"

#include <cstdint>
#include <new>

#include <xalanc/DOMSupport/DOMSupportDefault.hpp>
#include <xalanc/PlatformSupport/PrefixResolver.hpp>
#include <xalanc/XPath/ElementPrefixResolverProxy.hpp>
#include <xalanc/XPath/XObject.hpp>
#include <xalanc/XPath/XObjectFactoryDefault.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathConstructionContextDefault.hpp>
#include <xalanc/XPath/XPathEnvSupportDefault.hpp>
#include <xalanc/XPath/XPathExecutionContextDefault.hpp>
#include <xalanc/XPath/XPathFactoryDefault.hpp>
#include <xalanc/XPath/XPathInit.hpp>
#include <xalanc/XPath/XPathProcessorImpl.hpp>
#include <xalanc/XPath/XalanXPathException.hpp>
#include <xalanc/XalanDOM/XalanElement.hpp>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dom/document_order.h"
#include "dom/expression_units.h"
#include "dom/modulus.h"
#include "dom/selection_limits.h"
#include "dom/wrapped_document.h"

namespace quen::internal {
namespace {

using xalanc::Locator;
using xalanc::XalanDOMString;
using xalanc::XalanNode;
using xercesc::DOMNode;
using xercesc::MemoryManager;

[[noreturn]] void Throw(const XalanDOMString& message) {
  throw xalanc::XalanXPathException(message, *xercesc::XMLPlatformUtils::fgMemoryManager);
}

// The engine's own class prints every problem to the standard error stream.
class SilentConstruction : public xalanc::XPathConstructionContextDefault {
 public:
  void problem(eSource, eClassification classification, const XalanDOMString& message,
               const Locator*, const XalanNode*) override {
    if (classification == eError) Throw(message);
  }
  void problem(eSource, eClassification classification, const XalanDOMString& message,
               const XalanNode*) override {
    if (classification == eError) Throw(message);
  }
};

// No output, no documents, and no extension functions: those that a transformer once installed in
// the process would otherwise appear in paths too, an evaluator of text from the tree among them.
class SealedEnvironment : public xalanc::XPathEnvSupportDefault {
 public:
  void problem(eSource, eClassification classification, const XalanDOMString& message,
               const Locator*, const XalanNode*) override {
    if (classification == eError) Throw(message);
  }
  void problem(eSource, eClassification classification, const XalanDOMString& message,
               const XalanNode*) override {
    if (classification == eError) Throw(message);
  }
  xalanc::XalanDocument* parseXML(MemoryManager&, const XalanDOMString&, const XalanDOMString&,
                                  xalanc::ErrorHandler*) override {
    return nullptr;
  }
  bool functionAvailable(const XalanDOMString&, const XalanDOMString&) const override {
    return false;
  }
  xalanc::XObjectPtr extFunction(xalanc::XPathExecutionContext&, const XalanDOMString&,
                                 const XalanDOMString&, XalanNode*, const XObjectArgVectorType&,
                                 const Locator*) const override {
    Throw(XalanDOMString(u"An extension function can not be called in a path.",
                         *xercesc::XMLPlatformUtils::fgMemoryManager));
  }
};

// The engine's own class remembers the last node whose position it told, whatever list that was:
// in `a[@i][position()>1][position()>1]` a node may keep the position of the predicate before.
class Execution : public xalanc::XPathExecutionContextDefault {
 public:
  using XPathExecutionContextDefault::XPathExecutionContextDefault;

  size_type getContextNodeListPosition(const XalanNode& node) const override {
    const xalanc::NodeRefListBase& nodes = getContextNodeList();
    const size_type length = nodes.getLength();
    // Nodes come one after the other.
    if (next_ < length && nodes.item(next_) == &node) return ++next_;
    if (next_ > 0 && next_ <= length && nodes.item(next_ - 1) == &node) return next_;
    const size_type place = nodes.indexOf(&node);
    if (place == xalanc::NodeRefListBase::npos) return 0;
    return next_ = place + 1;
  }

 private:
  mutable size_type next_ = 0;
};

// The engine's own class uses text objects again and leaves them the number that they had: in
// `a[@k > '1' and @k < '3']` the second literal counts as 1. Text from the cache of strings comes
// in an object of its own.
class Objects : public xalanc::XObjectFactoryDefault {
 public:
  using XObjectFactoryDefault::createString;
  using XObjectFactoryDefault::XObjectFactoryDefault;

  void Use(Execution& execution) { execution_ = &execution; }

  const xalanc::XObjectPtr createString(const XalanDOMString& text) override {
    xalanc::XPathExecutionContext::GetCachedString cached(*execution_);
    cached.get().assign(text);
    return createString(cached);
  }
  const xalanc::XObjectPtr createString(const char16_t* text) override {
    xalanc::XPathExecutionContext::GetCachedString cached(*execution_);
    cached.get().assign(text);
    return createString(cached);
  }
  const xalanc::XObjectPtr createString(const char16_t* text, xalanc::XalanSize_t length) override {
    xalanc::XPathExecutionContext::GetCachedString cached(*execution_);
    cached.get().assign(text, length);
    return createString(cached);
  }

 private:
  Execution* execution_ = nullptr;
};

// Prefixes of a document without an element.
class NoPrefixes : public xalanc::PrefixResolver {
 public:
  NoPrefixes() : uri_(*xercesc::XMLPlatformUtils::fgMemoryManager) {}
  const XalanDOMString* getNamespaceForPrefix(const XalanDOMString&) const override {
    return nullptr;
  }
  const XalanDOMString& getURI() const override { return uri_; }

 private:
  XalanDOMString uri_;
};

DOMNode& RootOf(DOMNode& node) {
  DOMNode* root = &node;
  while (DOMNode* const parent = ParentOf(*root)) root = parent;
  return *root;
}

bool IsDeeperThan(std::size_t limit, DOMNode& root) {
  std::vector<DOMNode*> open;
  for (DOMNode* node = root.getFirstChild(); node != nullptr || !open.empty();) {
    if (node == nullptr) {
      node = open.back()->getNextSibling();
      open.pop_back();
    } else if (DOMNode* const child = node->getFirstChild()) {
      if (open.size() == limit) return true;
      open.push_back(node);
      node = child;
    } else {
      node = node->getNextSibling();
    }
  }
  return false;
}

class RefusalScan {
 public:
  explicit RefusalScan(std::u16string_view text) : text_(text) {}
  const char16_t* Run();

 private:
  enum class Call : std::uint8_t { kNone, kBracket, kText, kSubstring, kNumber, kOther };
  // What one argument, or what stands between two brackets, consists of.
  struct Frame {
    Call call = Call::kNone;
    bool takesText = false;  // whether this argument is made a text
    bool arithmetic = false;
    bool data = false;       // a value from the tree
    bool unbounded = false;  // a number from the tree, or a product of such
    bool boolean = false;
    std::size_t arguments = 0;
    std::size_t digits = 0;
    bool IsUnboundedNumber() const {
      return !boolean && (unbounded || (arithmetic && data) || digits > kMaxNumberTextDigits);
    }
  };

  char16_t PeekBehindBlanks(std::size_t at) const {
    while (at < text_.size() && IsBlank(text_[at])) ++at;
    return at < text_.size() ? text_[at] : u'\0';
  }
  bool Open(Call call);
  bool Close();
  bool EndArgument(Frame& frame) const;
  const char16_t* Name();

  std::u16string_view text_;
  std::size_t at_ = 0;
  std::size_t depth_ = 0;
  std::size_t operators_ = 0;
  bool operandBefore_ = false;
  Call pendingCall_ = Call::kNone;
  Frame frames_[kMaxExpressionNesting + 1];
};

constexpr char16_t kTooLong[] = u"The expression is too long.";
constexpr char16_t kTooDeep[] = u"The expression is nested too deeply.";
constexpr char16_t kTooMany[] = u"The expression has too many steps and operators.";
constexpr char16_t kTreeTooDeep[] = u"The tree is nested too deeply for this expression.";
constexpr char16_t kNumberText[] =
    u"The expression turns a number without a known bound into text.";
constexpr char16_t kLongNumber[] = u"The expression has a number with too many digits.";
constexpr char16_t kSystemProperty[] = u"The function system-property is not available in a path.";

bool RefusalScan::Open(Call call) {
  if (depth_ == kMaxExpressionNesting) return false;
  frames_[++depth_] = Frame{};
  frames_[depth_].call = call;
  frames_[depth_].takesText = call == Call::kText || call == Call::kSubstring;
  operandBefore_ = false;
  return true;
}

// An argument ends: false if the function makes a text of a number that may be too long.
bool RefusalScan::EndArgument(Frame& frame) const {
  return !frame.takesText || !frame.IsUnboundedNumber();
}

bool RefusalScan::Close() {
  operandBefore_ = true;
  if (depth_ == 0) return true;  // too many closing brackets: the engine says so
  Frame& inner = frames_[depth_];
  if (!EndArgument(inner)) return false;
  Frame& outer = frames_[--depth_];
  switch (inner.call) {
    case Call::kNone:  // plain brackets pass on what they hold
      if (!inner.boolean) {
        outer.arithmetic |= inner.arithmetic;
        outer.data |= inner.data;
        outer.unbounded |= inner.unbounded;
        outer.digits += inner.digits;
      }
      break;
    case Call::kBracket:
    case Call::kText:
    case Call::kSubstring:
      outer.data = true;
      break;
    case Call::kNumber:
      outer.unbounded = true;
      break;
    case Call::kOther:
      outer.digits += 10;
      break;
  }
  return true;
}

const char16_t* RefusalScan::Name() {
  const std::size_t begin = at_;
  while (at_ < text_.size() && IsNameChar(text_[at_])) ++at_;
  const std::u16string_view name = text_.substr(begin, at_ - begin);
  Frame& frame = frames_[depth_];
  const bool prefixed = begin > 0 && text_[begin - 1] == u':';
  if (operandBefore_ && !prefixed) {
    ++operators_;
    operandBefore_ = false;
    if (name == u"div" || name == u"mod") frame.arithmetic = true;
    if (name == u"and" || name == u"or") frame.boolean = true;
    return nullptr;
  }
  operandBefore_ = true;
  if (PeekBehindBlanks(at_) != u'(') {
    frame.data = true;
    return nullptr;
  }
  pendingCall_ = Call::kText;
  if (prefixed) return nullptr;
  if (name == u"system-property") return kSystemProperty;
  constexpr std::u16string_view kNumbers[] = {u"number", u"sum", u"floor", u"ceiling", u"round"};
  constexpr std::u16string_view kOthers[] = {u"count",      u"position",
                                             u"last",       u"boolean",
                                             u"not",        u"true",
                                             u"false",      u"name",
                                             u"local-name", u"namespace-uri",
                                             u"node",       u"text",
                                             u"comment",    u"processing-instruction"};
  if (name == u"substring") pendingCall_ = Call::kSubstring;  // its other arguments are numbers
  for (const auto& each : kNumbers) {
    if (name == each) pendingCall_ = Call::kNumber;
  }
  for (const auto& each : kOthers) {
    if (name == each) pendingCall_ = Call::kOther;
  }
  if (name == u"node" || name == u"text" || name == u"comment" ||
      name == u"processing-instruction") {
    frame.data = true;
  }
  return nullptr;
}

const char16_t* RefusalScan::Run() {
  if (text_.size() > kMaxExpressionLength) return kTooLong;
  while (at_ < text_.size()) {
    Frame& frame = frames_[depth_];
    const char16_t c = text_[at_];
    if (IsBlank(c)) {
      ++at_;
      continue;
    }
    if (operators_ > kMaxExpressionOperators) return kTooMany;
    const Call call = pendingCall_;
    if (c != u'(') pendingCall_ = Call::kNone;
    if (IsNameStart(c)) {
      if (const char16_t* refusal = Name()) return refusal;
      continue;
    }
    if (IsDigit(c) || (c == u'.' && at_ + 1 < text_.size() && IsDigit(text_[at_ + 1]))) {
      std::size_t literal = 0;
      bool fraction = false;
      for (; at_ < text_.size() && (IsDigit(text_[at_]) || text_[at_] == u'.'); ++at_) {
        ++frame.digits;
        fraction |= text_[at_] == u'.';
        literal += !fraction && (literal > 0 || text_[at_] != u'0') ? 1 : 0;
      }
      if (literal > kMaxLiteralDigits) return kLongNumber;
      operandBefore_ = true;
      continue;
    }
    ++at_;
    switch (c) {
      case u'"':
      case u'\'': {
        const std::size_t end = text_.find(c, at_);
        at_ = end == text_.npos ? text_.size() : end + 1;
        frame.data = true;
        operandBefore_ = true;
        break;
      }
      case u'(':
        pendingCall_ = Call::kNone;
        if (!Open(call)) return kTooDeep;
        break;
      case u'[':
        if (!Open(Call::kBracket)) return kTooDeep;
        break;
      case u')':
      case u']':
        if (!Close()) return kNumberText;
        break;
      case u',':
        ++operators_;
        if (!EndArgument(frame)) return kNumberText;
        {
          Frame next;
          next.call = frame.call;
          next.takesText = frame.call == Call::kText;
          frame = next;
        }
        operandBefore_ = false;
        break;
      case u'*':
        if (operandBefore_) {
          ++operators_;
          frame.arithmetic = true;
          operandBefore_ = false;
        } else {
          frame.data = true;
          operandBefore_ = true;
        }
        break;
      case u'+':
      case u'-':
        ++operators_;
        frame.arithmetic = true;
        operandBefore_ = false;
        break;
      case u'=':
      case u'<':
      case u'>':
      case u'!':
        ++operators_;
        frame.boolean = true;
        operandBefore_ = false;
        break;
      case u'/':
      case u'|':
        ++operators_;
        frame.data = true;
        operandBefore_ = false;
        break;
      case u'.':
        frame.data = true;
        operandBefore_ = true;
        break;
      default:  // : @ $ and what XPath does not know
        operandBefore_ = false;
        break;
    }
  }
  return operators_ > kMaxExpressionOperators ? kTooMany : nullptr;
}

// Two node tests of Xalan-C are not XPath's: text() leaves out CDATA sections, and node() takes the
// declarations of namespaces for attributes and the document type for a node. The direct evaluator
// keeps to XPath; so that the answer does not depend on who gives it, the tests are written out
// here.
class Rewriter {
 public:
  Rewriter(std::u16string_view text, bool hasDocumentType)
      : text_(text), hasDocumentType_(hasDocumentType) {}

  // False if there is nothing to write out.
  bool Run(std::u16string& out);

 private:
  static constexpr std::u16string_view kText =
      u"node()[parent::* or ../..]"
      u"[not(self::*|self::comment()|self::processing-instruction()|node())]";
  // All but the document type: the one child of the root that is nothing else.
  static constexpr std::u16string_view kNode =
      u"node()[self::*|self::comment()|self::processing-instruction() or parent::* or ../.. "
      u"or not(..)]";
  // On an axis that may hold an attribute.
  static constexpr std::u16string_view kNoAttribute = u"[count(.|../@*)!=count(../@*)]";

  std::size_t BehindBlanks(std::size_t at) const {
    while (at < text_.size() && IsBlank(text_[at])) ++at;
    return at;
  }
  // The end of "( )" that begins at or behind `at`, or npos.
  std::size_t BehindEmptyBrackets(std::size_t at) const {
    at = BehindBlanks(at);
    if (at == text_.size() || text_[at] != u'(') return text_.npos;
    at = BehindBlanks(at + 1);
    return at == text_.size() || text_[at] != u')' ? text_.npos : at + 1;
  }

  std::u16string_view text_;
  bool hasDocumentType_;
};

bool Rewriter::Run(std::u16string& out) {
  std::size_t copied = 0;
  std::u16string_view axis;  // the name before ::
  std::u16string_view name;
  char16_t before = u'\0';
  for (std::size_t at = 0; at < text_.size();) {
    const char16_t c = text_[at];
    if (c == u'"' || c == u'\'') {
      const std::size_t end = text_.find(c, at + 1);
      if (end == text_.npos) break;
      at = end + 1;
      before = c;
    } else if (IsNameStart(c)) {
      const std::size_t begin = at;
      while (at < text_.size() && IsNameChar(text_[at])) ++at;
      axis = before == u':' ? name : std::u16string_view();
      name = text_.substr(begin, at - begin);
      const std::size_t end =
          name == u"text" || name == u"node" ? BehindEmptyBrackets(at) : text_.npos;
      const bool attributes = before == u'@' || (before == u':' && axis == u"attribute");
      if (end != text_.npos && (name == u"text" || attributes || hasDocumentType_)) {
        out.append(text_.substr(copied, begin - copied));
        if (attributes) {
          out.append(name == u"node" ? u"*" : u"*[false()]");
        } else if (name == u"node") {
          out.append(kNode);
        } else {
          out.append(kText);
          if (before == u':') out.append(kNoAttribute);
        }
        copied = at = end;
      }
      before = u'a';
    } else if (hasDocumentType_ && text_.substr(at, 2) == u"//") {
      out.append(text_.substr(copied, at - copied));
      out.append(u"/descendant-or-self::").append(kNode).append(u"/");
      copied = at += 2;
      before = u'/';
    } else {
      if (!IsBlank(c)) before = c;
      ++at;
    }
  }
  if (copied == 0) return false;
  out.append(text_.substr(copied));
  return true;
}

}  // namespace

void StartXPath() {
  // Never destroyed: trees may be used while static objects of other libraries end. The language
  // runs this once, whichever thread comes first. (A pointer that nobody reads is optimised away,
  // and what it points to counts as lost.)
  alignas(xalanc::XPathInit) static unsigned char place[sizeof(xalanc::XPathInit)];
  [[maybe_unused]] static const auto* const init = new (place) xalanc::XPathInit;
}

void SelectWithXalan(DOMNode& inContext, const std::u16string& inExpression, bool inFirstOnly,
                     std::vector<DOMNode*>& outNodes) {
  if (const char16_t* message = RefusalScan(inExpression).Run()) throw ExpressionRefused{message};
  StartXPath();

  MemoryManager& memory = *xercesc::XMLPlatformUtils::fgMemoryManager;
  const bool isDocument = inContext.getNodeType() == DOMNode::DOCUMENT_NODE;
  xercesc::DOMDocument& document =
      isDocument ? static_cast<xercesc::DOMDocument&>(inContext) : *inContext.getOwnerDocument();
  // A wrapper built at once numbers the nodes in document order. Without the numbers each insertion
  // into a node set searches for the order, and n nodes cost n cubed. It knows nothing of a subtree
  // that hangs nowhere in the document; such a subtree has to do without.
  DOMNode& root = RootOf(inContext);
  const bool build = &root == &document;
  if (IsDeeperThan(kMaxTreeDepth, root) || (!build && IsDeeperThan(kMaxTreeDepth, document))) {
    throw ExpressionRefused{kTreeTooDeep};
  }
  xalanc::DOMSupportDefault domSupport;
  WrappedDocument wrapper(document, build);
  SealedEnvironment environment;
  Objects objects(memory, 10, 10, 10, 5);
  Execution execution(environment, domSupport, objects);
  objects.Use(execution);
  xalanc::XPathFactoryDefault factory(memory);
  xalanc::XPathProcessorImpl processor(memory);
  SilentConstruction construction;

  XalanNode* const context = isDocument ? &wrapper : wrapper.mapNode(&inContext);
  // From an attribute on, the engine takes its element for granted on this axis.
  const bool isLost = inContext.getNodeType() == DOMNode::ATTRIBUTE_NODE &&
                      ParentOf(inContext) == nullptr &&
                      inExpression.find(u"following") != inExpression.npos;
  if (context == nullptr || isLost) {
    throw xercesc::DOMException(xercesc::DOMException::NOT_SUPPORTED_ERR, 0, &memory);
  }
  const NoPrefixes noPrefixes;
  const xalanc::ElementPrefixResolverProxy rootPrefixes(wrapper.getDocumentElement(), environment,
                                                        domSupport, memory);
  const xalanc::PrefixResolver& prefixes =
      wrapper.HasElement() ? rootPrefixes : static_cast<const xalanc::PrefixResolver&>(noPrefixes);

  const auto compile = [&](const std::u16string& expression) -> const xalanc::XPath& {
    xalanc::XPath& path = *factory.create();
    processor.initXPath(path, construction,
                        XalanDOMString(expression.data(), memory, expression.size()), prefixes,
                        nullptr);
    return path;
  };
  // A wrong expression fails as it was written, and says so.
  const xalanc::XPath* path = &compile(inExpression);
  const std::optional<std::u16string> safe = WithPositiveDivisors(inExpression);
  if (!safe) throw ExpressionRefused{kTooDeep};
  std::u16string rewritten;
  const bool hasDocumentType = document.getDoctype() != nullptr;
  if (Rewriter(*safe, hasDocumentType).Run(rewritten)) {
    path = &compile(rewritten);
  } else if (*safe != inExpression) {
    path = &compile(*safe);
  }
  const xalanc::XObjectPtr result = path->execute(context, prefixes, execution);
  if (result.null() || result->getType() != xalanc::XObject::eTypeNodeSet) throw NotANodeSet{};

  const xalanc::NodeRefListBase& nodes = result->nodeset();
  const auto length = nodes.getLength();
  const std::size_t before = outNodes.size();
  bool hasRoot = false;
  for (xalanc::NodeRefListBase::size_type at = 0; at < length; ++at) {
    const DOMNode* const node = wrapper.mapNode(nodes.item(at));
    // XPath has no node for the document type.
    if (node->getNodeType() == DOMNode::DOCUMENT_TYPE_NODE) continue;
    hasRoot |= node == &document;
    outNodes.push_back(const_cast<DOMNode*>(node));
  }
  // A union that holds the root comes with duplicates and out of order, and so does what hangs
  // nowhere in the document.
  if (hasRoot || !build) SortInDocumentOrder(outNodes, before);
  if (inFirstOnly && outNodes.size() > before) outNodes.resize(before + 1);
}

}  // namespace quen::internal
