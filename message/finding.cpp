// SPDX-License-Identifier: Apache-2.0
//
// How the parts of a message are found.
//
// The paths begin with "//SOAP-ENV:Envelope", and so they search the whole tree for envelopes when
// a part is absent from the outermost one, and for those that stand in front of the part. Where no
// envelope stands inside of another, "/SOAP-ENV:Envelope" selects the same nodes and looks at
// nothing but the children on the way. Whether it is so is counted by the parser; when other trees
// have come in since, one search finds it out for all later look-ups.
#include <algorithm>
#include <optional>

#include "dom/clauses.h"
#include "dom/location_path.h"
#include "foundation/failure.h"
#include "foundation/tree_links.h"
#include "message/message_format.h"
#include "message/message_impl.h"

namespace quen {

using internal::Guarded;
namespace format = message_format;

namespace {

// The first node that the direct evaluator finds, null if there is none; nothing where it leaves
// the decision to the engine.
std::optional<CQuenXMLNodeImpl2w> DirectlySelected(const CQuenXMLDocumentImpl2w& inDocument,
                                                   std::u16string_view inPath) {
  return Guarded<internal::SelectClauses>(
      u"CQuenXMLNodeImpl2w::SelectNodes()", [&]() -> std::optional<CQuenXMLNodeImpl2w> {
        std::vector<xercesc::DOMNode*> nodes;
        if (internal::SelectDirectly(*inDocument.Document(), inPath, true, nodes) ==
            internal::Direct::kDeclined) {
          return std::nullopt;
        }
        return nodes.empty() ? CQuenXMLNodeImpl2w() : CQuenXMLNodeImpl2w(nodes.front());
      });
}

// A step of a path that needs no evaluator.
struct PlainStep {
  enum Kind { kPart, kName, kBodyElement } kind;
  std::u16string_view name;  // of a part its local name
};

std::optional<PlainStep> PlainStepOf(std::u16string_view inStep) {
  if (inStep == format::kBodyElementStep) return PlainStep{PlainStep::kBodyElement, {}};
  const bool isPart = inStep.substr(0, format::kPrefix.size()) == format::kPrefix;
  if (isPart) inStep.remove_prefix(format::kPrefix.size());
  const auto isLetter = [](char16_t inUnit) {
    return (inUnit >= u'A' && inUnit <= u'Z') || (inUnit >= u'a' && inUnit <= u'z');
  };
  if (inStep.empty() || !std::all_of(inStep.begin(), inStep.end(), isLetter)) return std::nullopt;
  return PlainStep{isPart ? PlainStep::kPart : PlainStep::kName, inStep};
}

bool Matches(const xercesc::DOMElement* inElement, const PlainStep& inStep,
             std::u16string_view inNamespace) {
  const auto view = [](const char16_t* inText) {
    return inText != nullptr ? std::u16string_view(inText) : std::u16string_view();
  };
  switch (inStep.kind) {
    case PlainStep::kPart:
      return view(inElement->getLocalName()) == inStep.name &&
             view(inElement->getNamespaceURI()) == inNamespace;
    case PlainStep::kName:
      return view(inElement->getNodeName()) == inStep.name &&
             view(inElement->getNamespaceURI()).empty();
    default:
      return view(inElement->getNodeName()) != format::kFault;
  }
}

// The end of the first of the steps "/a/b".
std::size_t EndOfStep(std::u16string_view inSteps) {
  return std::min(inSteps.find(u'/', 1), inSteps.size());
}

// No more of them than a path may have for the evaluator, since each takes some stack.
bool ArePlain(std::u16string_view inSteps) {
  constexpr std::size_t kMostSteps = 64;
  if (std::count(inSteps.begin(), inSteps.end(), u'/') > std::ptrdiff_t{kMostSteps}) return false;
  while (!inSteps.empty()) {
    const std::size_t end = EndOfStep(inSteps);
    if (!PlainStepOf(inSteps.substr(1, end - 1))) return false;
    inSteps.remove_prefix(end);
  }
  return true;
}

// The first element below `inParent` that the plain steps "/a/b" lead to.
CQuenXMLNodeImpl2w FirstBelow(const xercesc::DOMNode* inParent, std::u16string_view inSteps,
                              std::u16string_view inNamespace) {
  const std::size_t end = EndOfStep(inSteps);
  const PlainStep step = *PlainStepOf(inSteps.substr(1, end - 1));
  const std::u16string_view rest = inSteps.substr(end);
  for (xercesc::DOMElement* child = internal::FirstChildElement(inParent); child != nullptr;
       child = internal::NextSiblingElement(child)) {
    if (!Matches(child, step, inNamespace)) continue;
    if (rest.empty()) return CQuenXMLNodeImpl2w(child);
    const CQuenXMLNodeImpl2w below = FirstBelow(child, rest, inNamespace);
    if (below.GetDOMNode() != nullptr) return below;
  }
  return CQuenXMLNodeImpl2w();
}

// What "/SOAP-ENV:Envelope" and the steps select, without compiling an expression, which would be
// most of the cost. Nothing for a tree or a path that is in any way special.
std::optional<CQuenXMLNodeImpl2w> PlainPart(const CQuenXMLDocumentImpl2w& inDocument,
                                            std::u16string_view inSteps) {
  const xercesc::DOMDocument* const document = inDocument.Document();
  const xercesc::DOMElement* const envelope = document->getDocumentElement();
  if (document->getDoctype() != nullptr || envelope == nullptr) return std::nullopt;
  const char16_t* const uri = envelope->getNamespaceURI();
  // The prefix means what the envelope declares, and has to be the envelope's own.
  const xercesc::DOMAttr* const declaration = envelope->getAttributeNode(format::kDeclaration);
  const bool isRegular = uri != nullptr && declaration != nullptr &&
                         std::u16string_view(envelope->getNodeName()) == format::kEnvelope &&
                         std::u16string_view(internal::ValueOf(declaration)) == uri;
  // A step that is wrong is told of also where one before it finds nothing.
  return isRegular && ArePlain(inSteps) ? std::optional(FirstBelow(envelope, inSteps, uri))
                                        : std::nullopt;
}

}  // namespace

CQuenXMLNodeImpl2w CQuenXMLMsgImpl2::Find(std::u16string_view inPath) const {
  if (!MayNest()) {
    std::optional<CQuenXMLNodeImpl2w> node =
        PlainPart(Document(), inPath.substr(format::kEnvelopePath.size()));
    if (!node) node = DirectlySelected(Document(), inPath.substr(1));
    if (node) return node->GetDOMNode() != nullptr ? *node : FindOwnPart(inPath);
  }
  // What is wrong is reported as the whole path reports it.
  const CQuenXMLNodeImpl2w node = Document().SelectFirst(wstring(inPath));
  return node.GetDOMNode() != nullptr ? node : FindOwnPart(inPath);
}

// An envelope may have come in with another namespace name, while the parts that the library makes
// have its own. As text they are one; so a part that was made is found by its name, rather than
// made a second time.
CQuenXMLNodeImpl2w CQuenXMLMsgImpl2::FindOwnPart(std::u16string_view inPath) const {
  const CQuenXMLElementImpl2w envelope = Document().GetDocumentElement();
  if (envelope.GetDOMNode() == nullptr || envelope.GetNamespaceURI() == format::kNamespace)
    return CQuenXMLNodeImpl2w();
  wstring path = u"/*";
  std::u16string_view rest = inPath.substr(format::kEnvelopePath.size());
  while (rest.substr(0, 1) == u"/" && rest.substr(1, format::kPrefix.size()) == format::kPrefix) {
    const std::size_t end = std::min(rest.find(u'/', 1), rest.size());
    path.append(u"/*[name()='").append(rest.substr(1, end - 1));
    path.append(u"' and namespace-uri()='").append(format::kNamespace).append(u"']");
    rest.remove_prefix(end);
  }
  path += rest;
  return DirectlySelected(Document(), path).value_or(CQuenXMLNodeImpl2w());
}

bool CQuenXMLMsgImpl2::MayNest() const {
  if (nesting_ == Nesting::kUnknown) {
    const std::optional<CQuenXMLNodeImpl2w> nested =
        DirectlySelected(Document(), format::kNestedEnvelopePath);
    nesting_ = nested && nested->GetDOMNode() == nullptr ? Nesting::kNone : Nesting::kSome;
  }
  return nesting_ != Nesting::kNone;
}

void CQuenXMLMsgImpl2::TreeHasGrown() {
  if (nesting_ == Nesting::kNone) nesting_ = Nesting::kUnknown;
}

}  // namespace quen
