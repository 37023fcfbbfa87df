// SPDX-License-Identifier: Apache-2.0
#include "xsl/transformer.h"

#include <cxxabi.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <optional>

#include <xalanc/ICUBridge/ICUBridgeCollationCompareFunctor.hpp>
#include <xalanc/ICUBridge/ICUFormatNumberFunctor.hpp>
#include <xalanc/XPath/XObjectFactoryDefault.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathConstructionContextDefault.hpp>
#include <xalanc/XPath/XPathFactoryBlock.hpp>
#include <xalanc/XPath/XPathProcessorImpl.hpp>
#include <xalanc/XSLT/StylesheetExecutionContextDefault.hpp>
#include <xalanc/XSLT/StylesheetRoot.hpp>
#include <xalanc/XSLT/XSLTEngineImpl.hpp>
#include <xalanc/XSLT/XSLTProcessorEnvSupportDefault.hpp>
#include <xalanc/XSLT/XSLTProcessorException.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDOMSupport.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDocument.hpp>
#include <xalanc/XercesParserLiaison/XercesDOMSupport.hpp>
#include <xalanc/XercesParserLiaison/XercesDocumentWrapper.hpp>
#include <xalanc/XercesParserLiaison/XercesParserLiaison.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dom/modulus.h"
#include "dom/selection_limits.h"
#include "dom/tree_copy.h"
#include "dom/wrapped_document.h"
#include "foundation/failure.h"
#include "xsl/access.h"
#include "xsl/limits.h"
#include "xsl/problems.h"
#include "xsl/style_check.h"
#include "xsl/style_sheet.h"

namespace quen::internal {
namespace {

using xalanc::XalanDOMString;
using xercesc::MemoryManager;

MemoryManager& Memory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

std::u16string_view View(const XalanDOMString& inText) { return {inText.c_str(), inText.length()}; }

XalanDOMString EngineText(const wstring& inText) {
  return XalanDOMString(inText.data(), Memory(), inText.size());
}

[[noreturn]] void ThrowEngineFailure(const char16_t* inMessage) {
  throw xalanc::XSLTProcessorException(Memory(), XalanDOMString(inMessage, Memory()));
}

std::uintptr_t StackNow() { return reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)); }

class TextSource : public Source {
 public:
  TextSource(TextInput& ioInput, const wstring& inLocation)
      : Source(inLocation), document_(Reader().ParseSource(ioInput)) {
    support_.setParserLiaison(&Reader());
  }
  xalanc::XalanDocument& Document() override { return document_; }
  xalanc::DOMSupport& Support() override { return support_; }

 private:
  xalanc::XalanSourceTreeDOMSupport support_;
  xalanc::XalanSourceTreeDocument& document_;
};

class TreeSource : public Source {
 public:
  explicit TreeSource(xercesc::DOMDocument& inDocument)
      : wrappers_(Memory()),
        support_(wrappers_),
        // Built at once: the engine needs the order of the nodes, and searches for it otherwise.
        document_(Wrap(inDocument)) {}
  xalanc::XalanDocument& Document() override { return document_; }
  xalanc::DOMSupport& Support() override { return support_; }

 private:
  xalanc::XalanDocument& Wrap(xercesc::DOMDocument& inDocument) {
    if (inDocument.getDocumentElement() != nullptr)
      return *wrappers_.createDocument(&inDocument, false, true, true);
    return rootless_.emplace(inDocument, true);
  }

  xalanc::XercesParserLiaison wrappers_;
  xalanc::XercesDOMSupport support_;
  std::optional<WrappedDocument> rootless_;
  xalanc::XalanDocument& document_;
};

template <class Opener>
std::unique_ptr<Source> OpenText(const wstring& inLocation, Opener&& inOpener) {
  return Problems().Run([&]() -> std::unique_ptr<Source> {
    std::optional<TextInput> input;
    try {
      input.emplace(inOpener(), inLocation.c_str());
    } catch (const InputFailure& failure) {
      ThrowReadFailure(failure, inLocation.c_str());
    }
    return std::make_unique<TextSource>(*input, inLocation);
  });
}

// The engine's own context prints the fault of an expression to the standard error stream.
class SilentConstruction : public xalanc::XPathConstructionContextDefault {
 public:
  SilentConstruction() : XPathConstructionContextDefault(Memory()) {}
  void problem(eSource, eClassification inClass, const XalanDOMString& inMessage,
               const xercesc::Locator*, const xalanc::XalanNode*) override {
    if (inClass == eError) ThrowEngineFailure(inMessage.c_str());
  }
  void problem(eSource, eClassification inClass, const XalanDOMString& inMessage,
               const xalanc::XalanNode*) override {
    if (inClass == eError) ThrowEngineFailure(inMessage.c_str());
  }
};

// Compiles an expression for its faults alone.
void CheckExpression(const XalanDOMString& inExpression, const xalanc::PrefixResolver& inPrefixes) {
  SilentConstruction construction;
  xalanc::XPathProcessorImpl processor(Memory());
  xalanc::XPath path(Memory());
  processor.initXPath(path, construction, inExpression, inPrefixes, nullptr);
}

// The same for a pattern.
void CheckPattern(const XalanDOMString& inPattern, const xalanc::PrefixResolver& inPrefixes) {
  SilentConstruction construction;
  xalanc::XPathProcessorImpl processor(Memory());
  xalanc::XPath path(Memory());
  processor.initMatchPattern(path, construction, inPattern, inPrefixes, nullptr);
}

// A name that no pattern can be wrong about.
bool IsPlainName(std::u16string_view inText) {
  const auto isLetter = [](char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
  };
  return !inText.empty() && isLetter(inText[0]) &&
         std::all_of(inText.begin(), inText.end(), [&](char16_t unit) {
           return isLetter(unit) || (unit >= u'0' && unit <= u'9') || unit == u'-';
         });
}

// What the engine asks of the world during a run.
class Environment : public xalanc::XSLTProcessorEnvSupportDefault {
 public:
  Environment(const Problems& inProblems, const GivenNames& inStyleSheetNames,
              const StyleSheetParams& inParams)
      : XSLTProcessorEnvSupportDefault(Memory()),
        problems_(inProblems),
        styleSheetNames_(inStyleSheetNames) {
    for (const auto& [name, expression] : inParams) names_.Add(expression);
  }

  // For document(). The engine takes any failure for an empty node set, and swallows whatever is
  // thrown here; it is kept for the next template or the end of the run.
  xalanc::XalanDocument* parseXML(MemoryManager& ioManager, const XalanDOMString& inUrl,
                                  const XalanDOMString& inBase, xercesc::ErrorHandler*) override {
    try {
      return ReadDocument(ioManager, inUrl, inBase);
    } catch (abi::__forced_unwind&) {
      throw;
    } catch (...) {
      if (failure_ == nullptr) failure_ = std::current_exception();
      return nullptr;
    }
  }

  // An expression that is made from data at run time is checked as one of a style sheet is. What is
  // wrong is no exception of the engine's, which takes those of an evaluation for an empty result.
  xalanc::XObjectPtr extFunction(xalanc::XPathExecutionContext& ioContext,
                                 const XalanDOMString& inNamespace, const XalanDOMString& inName,
                                 xalanc::XalanNode* inNode, const XObjectArgVectorType& inArguments,
                                 const xercesc::Locator* inPlace) const override {
    if (View(inName) == u"evaluate" && !inArguments.empty() &&
        ioContext.getPrefixResolver() != nullptr) {
      const XalanDOMString& expression = inArguments.front()->str(ioContext);
      if (!IsBearable(View(expression)))
        throw TransformFailure{wstring(u"The expression to evaluate") + kNotBearable};
      if (evaluations_ == kMaxEvaluationDepth || IsStackTaken())
        throw TransformFailure{u"Texts that are evaluated evaluate each other too deeply"};
      Run([&] { CheckExpression(expression, *ioContext.getPrefixResolver()); });
      struct Level {
        std::size_t& evaluations;
        explicit Level(std::size_t& ioEvaluations) : evaluations(++ioEvaluations) {}
        ~Level() { --evaluations; }
      } const level(evaluations_);
      XObjectArgVectorType arguments(inArguments, Memory());
      arguments.front() = ioContext.getXObjectFactory().createString(
          EngineText(*WithPositiveDivisors(View(expression))));
      return XSLTProcessorEnvSupportDefault::extFunction(ioContext, inNamespace, inName, inNode,
                                                         arguments, inPlace);
    }
    if (View(inName) == u"node-set" && !inArguments.empty() && IsValue(*inArguments.front()))
      throw TransformFailure{u"The function node-set takes no text, number or truth value"};
    return XSLTProcessorEnvSupportDefault::extFunction(ioContext, inNamespace, inName, inNode,
                                                       inArguments, inPlace);
  }

  void RethrowFailure() const {
    if (failure_ != nullptr) std::rethrow_exception(failure_);
  }
  template <class Operation>
  void Run(Operation&& inOperation) const {
    problems_.Run(std::forward<Operation>(inOperation));
  }
  bool IsStackTaken() const {
    const std::uintptr_t now = StackNow();
    return now < stack_ && stack_ - now > kMaxStackOfRun;
  }

 private:
  // Of a value the engine makes a text node in a document without an element, and ends the process
  // when a path from the root of that is asked for.
  static bool IsValue(const xalanc::XObject& inArgument) {
    const xalanc::XObject::eObjectType type = inArgument.getType();
    return type == xalanc::XObject::eTypeString || type == xalanc::XObject::eTypeNumber ||
           type == xalanc::XObject::eTypeBoolean;
  }

  xalanc::XalanDocument* ReadDocument(MemoryManager& ioManager, const XalanDOMString& inUrl,
                                      const XalanDOMString& inBase) {
    try {
      return problems_.Run([&] {
        // What has no place has no folder: it would be the working directory.
        const bool isBelowOurs = !inBase.empty() && IsOurs(View(inBase)) && StaysBelow(View(inUrl));
        if (!IsOurs(View(inUrl)) && !isBelowOurs) {
          throw TransformFailure{u"its name does not stand in the style sheet or in a parameter"};
        }
        names_.Add(ResolveLocation(wstring(View(inUrl)), wstring(View(inBase))));
        return XSLTProcessorEnvSupportDefault::parseXML(ioManager, inUrl, inBase, nullptr);
      });
    } catch (const TransformFailure& failure) {
      throw TransformFailure{u"The document '" + wstring(View(inUrl)) + u"' can not be read: " +
                             failure.message};
    }
  }
  bool IsOurs(std::u16string_view inName) const {
    return styleSheetNames_.Has(inName) || names_.Has(inName);
  }

  const Problems& problems_;
  const GivenNames& styleSheetNames_;
  GivenNames names_;  // of parameters, and the places of what was read
  std::exception_ptr failure_;
  const std::uintptr_t stack_ = StackNow();  // where the run began; it grows downwards
  mutable std::size_t evaluations_ = 0;
};

constexpr double kNumberLimit = 1e88;
static_assert(kMaxWrittenDigits == 88, "the limit is the least number with more digits");

// Refuses the numbers whose text would end the process, where they become values of their own. What
// arithmetic makes of smaller ones does not pass here.
class Numbers : public xalanc::XObjectFactoryDefault {
 public:
  using XObjectFactoryDefault::createNumber;

  Numbers() : XObjectFactoryDefault(Memory()) {}
  const xalanc::XObjectPtr createNumber(double inValue) override {
    if (std::isfinite(inValue) && std::fabs(inValue) >= kNumberLimit)
      throw TransformFailure{u"A number has more digits than can be written"};
    return XObjectFactoryDefault::createNumber(inValue);
  }
};

}  // namespace

Source::~Source() = default;

std::unique_ptr<Source> OpenSource(const wstring& inPath) {
  const wstring location = LocationOf(inPath);
  return OpenText(location, [&] { return OpenLocal(location); });
}

std::unique_ptr<Source> OpenSource(std::istream& ioStream) {
  return OpenText(wstring(), [&] { return ReadStream(ioStream); });
}

std::unique_ptr<Source> WrapSource(xercesc::DOMDocument& inDocument) {
  if (IsDeeperThan(&inDocument, kMaxTreeDepth))
    throw TransformFailure{u"The tree is deeper than the limit of this library"};
  return std::make_unique<TreeSource>(inDocument);
}

// The state of the engine during a run. Making one is costly, so it is used again where a run
// succeeds.
class Transformer::Context : public xalanc::StylesheetExecutionContextDefault {
 public:
  Context()
      : StylesheetExecutionContextDefault(Memory()),
        collation_(Memory(), true),
        numbers_(Memory()) {
    installCollationCompareFunctor(&collation_);
    installFormatNumberFunctor(&numbers_);
  }
  ~Context() override {
    uninstallCollationCompareFunctor();
    uninstallFormatNumberFunctor();
  }

  void pushContextMarker() override {
    if (++templates_ > kMaxTemplateDepth)
      throw TransformFailure{u"The templates nest deeper than the limit of this library"};
    environment_->RethrowFailure();
    StylesheetExecutionContextDefault::pushContextMarker();
  }
  void popContextMarker() override {
    --templates_;
    StylesheetExecutionContextDefault::popContextMarker();
  }
  using StylesheetExecutionContextDefault::cloneToResultTree;
  void startElement(const XMLCh* inName) override {
    EnterElement();
    StylesheetExecutionContextDefault::startElement(inName);
  }
  // xsl:copy begins its element here, and ends it as all others are ended.
  void cloneToResultTree(const xalanc::XalanNode& inNode, xalanc::XalanNode::NodeType inType,
                         bool inOverridesStrip, bool inClonesAttributes,
                         const xercesc::Locator* inPlace) override {
    if (inType == xalanc::XalanNode::ELEMENT_NODE) EnterElement();
    StylesheetExecutionContextDefault::cloneToResultTree(inNode, inType, inOverridesStrip,
                                                         inClonesAttributes, inPlace);
  }
  void endElement(const XMLCh* inName) override {
    if (elements_ > 0) --elements_;
    StylesheetExecutionContextDefault::endElement(inName);
  }

  // For xsl:number without a pattern: one is made of the name of a node. The engine has two of them
  // wrong: "&name" for an attribute, and the target of an instruction without quotes. It prints the
  // fault of a pattern to the standard error stream.
  const xalanc::XPath* createMatchPattern(const XalanDOMString& inText,
                                          const xalanc::PrefixResolver& inPrefixes) override {
    constexpr std::u16string_view kInstruction = u"processing-instruction(";
    const std::u16string_view text = View(inText);
    if (IsPlainName(text))
      return StylesheetExecutionContextDefault::createMatchPattern(inText, inPrefixes);
    wstring pattern(text);
    if (text.substr(0, 1) == u"&") {
      pattern[0] = u'@';
    } else if (text.substr(0, kInstruction.size()) == kInstruction && text.back() == u')') {
      pattern.insert(kInstruction.size(), 1, u'\'');
      pattern.insert(pattern.size() - 1, 1, u'\'');
    }
    const XalanDOMString repaired = EngineText(pattern);
    CheckPattern(repaired, inPrefixes);
    return StylesheetExecutionContextDefault::createMatchPattern(repaired, inPrefixes);
  }

  // The engine's own result for an undefined variable is a text that says so, and that would come
  // out in the result.
  const xalanc::XObjectPtr getVariable(const xalanc::XalanQName& inName,
                                       const xercesc::Locator* inPlace) override {
    if (environment_->IsStackTaken())
      throw TransformFailure{u"Too many variables wait for the values of each other"};
    xalanc::XObjectPtr value = StylesheetExecutionContextDefault::getVariable(inName, inPlace);
    if (value.null() || value->getType() == xalanc::XObject::eTypeUnknown) {
      const wstring message =
          u"The variable '" + wstring(View(inName.getLocalPart())) + u"' is not defined.";
      environment_->Run(
          [&] { problem(eXSLTProcessor, eError, EngineText(message), inPlace, getCurrentNode()); });
    }
    return value;
  }

  void reset() override {
    templates_ = 0;
    elements_ = 0;
    StylesheetExecutionContextDefault::reset();
  }

  void Attach(Environment& inEnvironment, xalanc::DOMSupport& inSupport,
              xalanc::XObjectFactory& inObjects, xalanc::XSLTEngineImpl& inProcessor) {
    environment_ = &inEnvironment;
    setXPathEnvSupport(&inEnvironment);
    setDOMSupport(&inSupport);
    setXObjectFactory(&inObjects);
    setXSLTProcessor(&inProcessor);
  }
  void Detach() {
    reset();
    setXPathEnvSupport(nullptr);
    setDOMSupport(nullptr);
    setXObjectFactory(nullptr);
    setXSLTProcessor(nullptr);
    environment_ = nullptr;
  }

 private:
  void EnterElement() {
    if (++elements_ > kMaxTreeDepth)
      throw TransformFailure{
          u"The elements of the result nest deeper than the limit of this library"};
  }

  xalanc::ICUBridgeCollationCompareFunctor collation_;
  xalanc::ICUFormatNumberFunctor numbers_;
  const Environment* environment_ = nullptr;
  std::size_t templates_ = 0;
  std::size_t elements_ = 0;
};

Transformer::Transformer() = default;
Transformer::~Transformer() = default;
Transformer::Transformer(const Transformer& inOther) : params_(inOther.params_) {}

void Transformer::Run(Source& inSource, const StyleSheet& inStyleSheet,
                      const xalanc::XSLTResultTarget& inTarget) {
  for (const auto& [name, expression] : params_)
    if (!IsBearable(expression))
      throw TransformFailure{u"The parameter '" + name + u"'" + kNotBearable};

  Problems problems;
  Environment environment(problems, inStyleSheet.Names(), params_);
  if (context_ == nullptr) context_ = std::make_unique<Context>();
  problems.Run([&] {
    inSource.Reader().setExecutionContext(*context_);
    const XalanDOMString location = EngineText(inSource.Location());
    if (!location.empty()) environment.setSourceDocument(location, &inSource.Document());

    Numbers objects;
    xalanc::XPathFactoryBlock paths(Memory());
    xalanc::XSLTEngineImpl processor(Memory(), inSource.Reader(), environment, inSource.Support(),
                                     objects, paths);
    processor.setProblemListener(&problems.Listener());
    environment.setProcessor(&processor);
    for (const auto& [name, expression] : params_) {
      CheckExpression(EngineText(expression), *inStyleSheet.Compiled().getStylesheetRoot());
      processor.setStylesheetParam(EngineText(name), EngineText(*WithPositiveDivisors(expression)));
    }

    // What the engine was in the middle of stays in the context when a run fails, and adds up.
    struct Detacher {
      std::unique_ptr<Context>& context;
      const int exceptions = std::uncaught_exceptions();
      ~Detacher() {
        context->Detach();
        if (std::uncaught_exceptions() > exceptions) context.reset();
      }
    };
    context_->Attach(environment, inSource.Support(), objects, processor);
    const Detacher detacher{context_};

    xalanc::XSLTInputSource input(&inSource.Document(), Memory());
    input.setSystemId(location.c_str());
    context_->setStylesheetRoot(inStyleSheet.Compiled().getStylesheetRoot());
    xalanc::XSLTResultTarget target(inTarget, Memory());
    processor.process(input, target, *context_);
  });
  environment.RethrowFailure();
}

}  // namespace quen::internal
