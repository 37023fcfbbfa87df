// SPDX-License-Identifier: Apache-2.0
// The direct evaluator against Xalan-C, on random trees and random expressions.
#include <gtest/gtest.h>

#include "tests/dom/random_tree.h"
#include "tests/dom/xml_fixture.h"

namespace quen::tests {
namespace {

void AllNodes(DOMNode& node, Nodes& nodes) {
  nodes.push_back(&node);
  if (const auto* const attributes = node.getAttributes()) {
    for (XMLSize_t at = 0; at != attributes->getLength(); ++at) {
      const std::string name = Ascii(attributes->item(at)->getNodeName());
      if (name.rfind("xmlns", 0) != 0) nodes.push_back(attributes->item(at));
    }
  }
  for (DOMNode* child = node.getFirstChild(); child; child = child->getNextSibling()) {
    if (child->getNodeType() != DOMNode::DOCUMENT_TYPE_NODE) AllNodes(*child, nodes);
  }
}

TEST(TwoWays, AgreeOnRandomTreesAndExpressions) {
  StartEngine();
  constexpr int kTrees = 1500;
  constexpr int kExpressions = 24;
  int taken = 0;
  int selecting = 0;
  for (int tree = 0; tree != kTrees; ++tree) {
    Choices choices(static_cast<std::uint64_t>(tree) + 1);
    const Document document(RandomTree(choices).Make());
    Nodes contexts;
    AllNodes(*document, contexts);
    for (int number = 0; number != kExpressions; ++number) {
      const std::u16string expression = RandomExpression(choices).Make();
      DOMNode& context = choices.OneIn(2)
                             ? *contexts[choices.Below(static_cast<std::uint32_t>(contexts.size()))]
                             : *document->getDocumentElement();
      Nodes direct;
      if (internal::SelectDirectly(context, expression, false, direct) ==
          internal::Direct::kDeclined) {
        continue;
      }
      ++taken;
      if (!direct.empty()) ++selecting;
      Nodes engine;
      internal::SelectWithXalan(context, expression, false, engine);
      ASSERT_EQ(direct, engine) << "tree " << tree << ", at " << Show(context) << ": "
                                << Ascii(expression.c_str()) << "\n  direct " << Show(direct)
                                << "\n  engine " << Show(engine);
      Nodes first;
      internal::SelectDirectly(context, expression, true, first);
      if (direct.size() > 1) direct.resize(1);
      ASSERT_EQ(first, direct) << "tree " << tree << ", first of " << Ascii(expression.c_str());
    }
  }
  // Else the generators do not test what they are for.
  EXPECT_GT(taken, kTrees * kExpressions * 8 / 10);
  EXPECT_GT(selecting, taken / 5);
  std::printf("%d pairs compared, %d of them select nodes\n", taken, selecting);
}

}  // namespace
}  // namespace quen::tests
