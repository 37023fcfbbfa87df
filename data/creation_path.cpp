// SPDX-License-Identifier: Apache-2.0
//
// Creation paths: their reading, and the walk that makes what the tree lacks.
#include <quenxml2/data.h>

#include <algorithm>

#include "data/addressing.h"
#include "dom/document_impl.h"

namespace quen {
namespace {

constexpr const char16_t* kCreateContext = u"CQuenXMLDataImpl2w::CreateNodes()";

// Segments that the walk takes one by one as virtual calls; the rest of a longer path it takes in a
// loop, so that no path runs out of stack.
constexpr std::int32_t kMaxNestedCalls = 256;

bool Matches(const CQuenXMLElementImpl2w& inElement, const QuenXMLData2_Node& inSegment) {
  return inElement.IsNamed(inSegment.name) &&
         std::all_of(inSegment.attributes.begin(), inSegment.attributes.end(),
                     [&](const QuenXMLData2_Attr& attribute) {
                       return inElement.HasAttribute(attribute.name, attribute.value);
                     });
}

// The first child element of that name and with those attributes, null if there is none.
CQuenXMLElementImpl2w MatchingChild(const CQuenXMLElementImpl2w& inParent,
                                    const QuenXMLData2_Node& inSegment) {
  CQuenXMLElementImpl2w child = inParent.FirstChildElement();
  while (child.GetDOMNode() != nullptr && !Matches(child, inSegment))
    child = child.NextSiblingElement();
  return child;
}

void SetAttributes(CQuenXMLElementImpl2w& ioElement, const QuenXMLData2_Node& inSegment) {
  for (const QuenXMLData2_Attr& attribute : inSegment.attributes)
    ioElement.SetAttribute(attribute.name, attribute.value);
}

}  // namespace

std::int32_t CQuenXMLDataImpl2w::ParsePath(wstring& inPath, QuenXMLData2_NodePosList& outList) {
  if (inPath.empty()) return 1;
  outList.absolute = inPath.front() == u'/' ? 1 : 0;
  std::size_t begin = static_cast<std::size_t>(outList.absolute);
  for (;;) {
    const std::size_t slash = inPath.find(u'/', begin);
    const std::size_t end = std::min(slash, inPath.size());
    QuenXMLData2_Node node;
    HandleAttributes(&node, inPath.substr(begin, end - begin));
    outList.nodes.push_back(std::move(node));
    if (slash == wstring::npos) return 1;
    begin = slash + 1;
  }
}

void CQuenXMLDataImpl2w::HandleAttributes(QuenXMLData2_Node* outNode, wstring inSegment) {
  const std::size_t firstOpen = inSegment.find(u'[');
  if (firstOpen == wstring::npos) {
    outNode->name = std::move(inSegment);
    return;
  }
  std::size_t open = firstOpen;
  while (open != wstring::npos) {
    const std::size_t close = inSegment.find(u']', open);
    if (close == wstring::npos) break;  // not closed: the predicates so far count
    const wstring predicate = inSegment.substr(open + 1, close - open - 1);
    const std::size_t equals = predicate.find(u'=');
    if (equals != wstring::npos) {
      // The quotes go by position. With nothing behind the '=' there is no such position, and
      // substr raises std::out_of_range.
      const std::size_t length = predicate.size() - equals;
      outNode->attributes.push_back(
          {predicate.substr(0, equals), predicate.substr(equals + 2, length > 3 ? length - 3 : 0)});
    }
    open = inSegment.find(u'[', close);
  }
  outNode->name = inSegment.substr(0, firstOpen);
}

CQuenXMLDataImpl2w& CQuenXMLDataImpl2w::CreateNodes(wstring inPath) {
  if (inPath.empty()) return *this;
  QuenXMLData2_NodePosList list;
  if (ParsePath(inPath, list) == 0) return *this;

  const auto startElement = [&]() -> CQuenXMLElement2w {
    if (list.absolute == 0) {
      if (cursor_ == nullptr) internal::ThrowPathNotFound(kCreateContext);
      return CQuenXMLElement2w(*cursor_);
    }
    if (list.nodes.empty()) return document_.GetDocumentElement();
    const bool isNew = hasRoot_ == 0;
    if (isNew) AddRootNode(list.nodes.front().name);
    const CQuenXMLElement2w root = document_.GetDocumentElement();
    if (!isNew && root.GetName() != list.nodes.front().name)
      ThrowXMLException2w(kCreateContext, kPathNotFound, u"Invalid Path:  Node not found");
    list.nodes.erase(list.nodes.begin());
    return root;
  };
  CQuenXMLElement2w element = startElement();
  if (list.nodes.empty()) return *this;
  if (RecursePath(&element, list, 0) == 0)
    ThrowXMLException2w(kCreateContext, kPathNotFound, u"Invalid Path:  Node not found");
  return *this;
}

std::int32_t CQuenXMLDataImpl2w::RecursePath(CQuenXMLElement2w* ioElement,
                                             const QuenXMLData2_NodePosList& inList,
                                             std::int32_t inIndex) {
  const std::int32_t count = static_cast<std::int32_t>(inList.nodes.size());
  if (inIndex < 0 || inIndex >= count) return 0;
  ioElement->GetImpl()->CheckInitialized(u"CQuenXMLElementImpl2w::begin()");
  CQuenXMLElementImpl2w parent(*ioElement->GetImpl());
  parent.CheckInitialized(u"CQuenXMLElementImpl2w::begin()");
  // A derived class may walk the tree of another document, into which copies go.
  const bool isOurs = internal::DocumentOf(parent.GetDOMNode()) == document_.Impl().Document();

  const bool nests = inIndex < kMaxNestedCalls;
  const std::int32_t end = nests ? inIndex + 1 : count;
  std::int32_t index = inIndex;
  for (; index < end; ++index) {
    const CQuenXMLElementImpl2w child =
        MatchingChild(parent, inList.nodes[static_cast<std::size_t>(index)]);
    if (child.GetDOMNode() == nullptr) break;
    parent = child;
  }
  if (index > inIndex) *ioElement = CQuenXMLElement2w(parent);
  if (index == end) {
    if (index < count) RecursePath(ioElement, inList, index);
    return 1;
  }

  CQuenXMLElementImpl2w made = parent;
  for (; index < end; ++index) {
    const QuenXMLData2_Node& segment = inList.nodes[static_cast<std::size_t>(index)];
    CQuenXMLElementImpl2w child = document_.Impl().CreateElement(segment.name);
    if (isOurs) {
      made.AppendNew(child);
    } else {
      child = CQuenXMLElementImpl2w(made.AppendChild(child));
    }
    SetAttributes(child, segment);
    made = child;
  }
  if (index < count) {
    CQuenXMLElement2w below(made);
    RecursePath(&below, inList, index);
  }
  return 1;
}

}  // namespace quen
