// SPDX-License-Identifier: Apache-2.0
#include "xsl/engine.h"

#include <mutex>

#include <xalanc/XPath/XObjectFactory.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathExecutionContext.hpp>
#include <xalanc/XSLT/FunctionSystemProperty.hpp>
#include <xalanc/XalanTransformer/XalanTransformer.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "dom/xalan_selection.h"

namespace quen::internal {
namespace {

using xercesc::MemoryManager;

// Knows the three properties of XSLT 1.0, 12.4. The engine takes every other name without a colon
// for a variable of the environment; here it is what the recommendation says, the empty text.
class SystemProperty : public xalanc::FunctionSystemProperty {
 public:
  using FunctionSystemProperty::execute;

  explicit SystemProperty(MemoryManager& ioManager) : FunctionSystemProperty(ioManager) {}
  SystemProperty(const SystemProperty& inOther, MemoryManager& ioManager)
      : FunctionSystemProperty(inOther, ioManager) {}

  xalanc::XObjectPtr execute(xalanc::XPathExecutionContext& ioContext, xalanc::XalanNode* inNode,
                             const xalanc::XObjectPtr inName,
                             const xercesc::Locator* inPlace) const override {
    const xalanc::XalanDOMString& name = inName->str(ioContext);
    if (xalanc::indexOf(name, u':') < name.length())
      return FunctionSystemProperty::execute(ioContext, inNode, inName, inPlace);
    return ioContext.getXObjectFactory().createString(u"", 0);
  }

  SystemProperty* clone(MemoryManager& ioManager) const override {
    return xalanc::XalanCopyConstruct(ioManager, *this, ioManager);
  }
};

}  // namespace

void StartXalan() {
  static std::once_flag started;
  std::call_once(started, [] {
    StartXPath();
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale);
    xalanc::XalanTransformer::initialize();
    xalanc::XPath::installFunction(u"system-property",
                                   SystemProperty(*xercesc::XMLPlatformUtils::fgMemoryManager));
  });
}

}  // namespace quen::internal
