// SPDX-License-Identifier: Apache-2.0
// Published XPath 1.0 expectations, over a folder that the environment variable QUENXML2_CORPUS
// names. Skipped without it.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <xercesc/util/TransService.hpp>

#include "tests/dom/xml_fixture.h"

namespace quen::tests {
namespace {

using nlohmann::json;

std::u16string FromUtf8(const std::string& text) {
  StartEngine();
  const xercesc::TranscodeFromStr wide(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                       "UTF-8");
  return {wide.str(), wide.length()};
}

std::string FileText(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// The form of the corpus: every child counts but the document type.
std::string PathOf(const DOMNode& node) {
  if (node.getNodeType() == DOMNode::DOCUMENT_NODE) return "";
  if (node.getNodeType() == DOMNode::ATTRIBUTE_NODE) {
    return PathOf(*static_cast<const xercesc::DOMAttr&>(node).getOwnerElement()) + "/@" +
           Ascii(node.getNodeName());
  }
  int place = 1;
  for (const DOMNode* at = node.getPreviousSibling(); at; at = at->getPreviousSibling()) {
    if (at->getNodeType() != DOMNode::DOCUMENT_TYPE_NODE) ++place;
  }
  return PathOf(*node.getParentNode()) + "/node()[" + std::to_string(place) + "]";
}

// The prefixes of a case become declarations of its root. False if the root uses them otherwise.
bool Declare(xercesc::DOMDocument& document, const json& each) {
  if (!each.contains("ns")) return true;
  xercesc::DOMElement* const root = document.getDocumentElement();
  for (const auto& [prefix, uri] : each["ns"].items()) {
    const std::u16string name = u"xmlns:" + FromUtf8(prefix);
    const std::u16string value = FromUtf8(uri.get<std::string>());
    if (root->hasAttribute(name.c_str()) && root->getAttribute(name.c_str()) != value) return false;
    root->setAttributeNS(xercesc::XMLUni::fgXMLNSURIName, name.c_str(), value.c_str());
  }
  return true;
}

// XPath leaves the order among the attributes of an element open.
std::vector<std::string> WithAttributesSorted(std::vector<std::string> paths) {
  const auto element = [](const std::string& path) {
    const std::size_t at = path.rfind("/@");
    return at == path.npos ? path + '!' : path.substr(0, at);
  };
  for (auto begin = paths.begin(); begin != paths.end();) {
    auto end = begin + 1;
    while (end != paths.end() && element(*end) == element(*begin)) ++end;
    std::sort(begin, end);
    begin = end;
  }
  return paths;
}

struct Answer {
  bool direct = false;
  bool failed = false;
  Nodes nodes;
};

// As the library selects.
Answer Select(DOMNode& context, const std::u16string& expression, bool firstOnly = false) {
  Answer answer;
  answer.direct = internal::SelectDirectly(context, expression, firstOnly, answer.nodes) ==
                  internal::Direct::kDone;
  if (answer.direct) return answer;
  try {
    internal::SelectWithXalan(context, expression, firstOnly, answer.nodes);
  } catch (const xalanc::XSLException&) {
    answer.failed = true;
  } catch (const internal::NotANodeSet&) {
    answer.failed = true;
  } catch (const internal::ExpressionRefused&) {
    answer.failed = true;
  }
  return answer;
}

class Corpus : public testing::Test {
 protected:
  void SetUp() override {
    const char* const folder = std::getenv("QUENXML2_CORPUS");
    if (folder == nullptr) GTEST_SKIP() << "QUENXML2_CORPUS is not set";
    folder_ = std::string(folder) + "/xpath/";
    std::ifstream file(folder_ + "cases.jsonl");
    for (std::string line; std::getline(file, line);) cases_.push_back(json::parse(line));
    ASSERT_FALSE(cases_.empty()) << folder_;
  }

  // The document of a case, or null if our parser refuses it; kept for the cases that follow.
  xercesc::DOMDocument* DocumentOf(const json& each) {
    const std::string text = each.contains("doc")
                                 ? each["doc"].get<std::string>()
                                 : FileText(folder_ + each["docfile"].get<std::string>());
    if (document_ == nullptr || text != text_ || each.contains("ns")) {
      text_ = text;
      document_ = nullptr;
      try {
        document_ = Parse(text);
      } catch (const std::runtime_error&) {
      }
    }
    return document_.get();
  }
  static DOMNode* ContextOf(xercesc::DOMDocument& document, const json& each) {
    DOMNode* context = &document;
    for (const char* const key : {"context", "context2"}) {
      if (!each.contains(key)) continue;
      const Answer answer = Select(*context, FromUtf8(each[key].get<std::string>()), true);
      if (answer.nodes.empty()) return nullptr;
      context = answer.nodes.front();
    }
    return context;
  }

  std::string folder_;
  std::vector<json> cases_;
  std::string text_;
  Document document_;
};

TEST_F(Corpus, NodeSets) {
  int selecting = 0;
  int direct = 0;
  int unusable = 0;
  int namespaces = 0;
  for (const json& each : cases_) {
    const std::string type = each["type"];
    const bool refused = type == "error";
    if (!refused && type != "nodeset" && type != "count" && type != "node-list" &&
        type != "first-node") {
      continue;
    }
    SCOPED_TRACE(each["id"].get<std::string>() + ": " + each["expr"].get<std::string>());
    xercesc::DOMDocument* const document = DocumentOf(each);
    DOMNode* const context =
        document != nullptr && Declare(*document, each) ? ContextOf(*document, each) : nullptr;
    if (context == nullptr) {
      std::printf("not usable: %s\n", each["id"].get<std::string>().c_str());
      ++unusable;
      continue;
    }
    const std::u16string expression = FromUtf8(each["expr"].get<std::string>());
    const Answer answer = Select(*context, expression, type == "first-node");
    if (refused) {
      EXPECT_TRUE(answer.failed);
      continue;
    }
    ++selecting;
    if (answer.direct) ++direct;
    // The DOM has no namespace nodes; Xalan-C gives the declarations on the element for them.
    if (each["expr"].get<std::string>().find("namespace::") != std::string::npos) {
      EXPECT_FALSE(answer.direct);
      ++namespaces;
      continue;
    }
    std::vector<std::string> paths;
    for (const DOMNode* const node : answer.nodes) {
      paths.push_back(node->getParentNode() == nullptr && PathOf(*node).empty() ? "/"
                                                                                : PathOf(*node));
    }
    if (type == "nodeset") {
      EXPECT_EQ(WithAttributesSorted(paths),
                WithAttributesSorted(each["expected"].get<std::vector<std::string>>()))
          << answer.direct;
    } else if (type == "count") {
      EXPECT_EQ(paths.size(), each["expected"].get<std::size_t>()) << answer.direct;
    } else if (type == "node-list") {
      EXPECT_EQ(paths.size(), each["expected"].size()) << answer.direct;
    } else if (each["expected"].is_null()) {
      EXPECT_TRUE(paths.empty());
    } else {
      ASSERT_EQ(paths.size(), 1u);
      EXPECT_EQ(paths.front(), each["expected"].get<std::string>());
    }
  }
  std::printf(
      "%d cases select nodes; the direct evaluator took %d (%.1f %%); %d not usable; "
      "%d on the namespace axis not compared\n",
      selecting, direct, 100.0 * direct / selecting, unusable, namespaces);
  EXPECT_GE(direct * 100, selecting * 80);
}

// Values have no operation of their own, but decide in a predicate.
TEST_F(Corpus, ValuesInPredicates) {
  int taken = 0;
  for (const json& each : cases_) {
    const std::string type = each["type"];
    const bool isBoolean = type == "boolean";
    if (!isBoolean && type != "number" && type != "string") continue;
    if (each["expected"].is_null()) continue;
    SCOPED_TRACE(each["id"].get<std::string>() + ": " + each["expr"].get<std::string>());
    xercesc::DOMDocument* const document = DocumentOf(each);
    DOMNode* const context =
        document != nullptr && Declare(*document, each) ? ContextOf(*document, each) : nullptr;
    if (context == nullptr) continue;
    std::string expression = each["expr"].get<std::string>();
    bool holds = true;
    if (isBoolean) {
      holds = each["expected"].get<bool>();
      expression = "self::node()[not(not(" + expression + "))]";
    } else if (type == "string") {
      const std::string text = each["expected"].get<std::string>();
      if (text.find('\'') != text.npos) continue;
      expression = "self::node()[string(" + expression + ") = '" + text + "']";
    } else if (each["expected"].is_number_integer()) {
      expression = "self::node()[(" + expression + ") = " + each["expected"].dump() + "]";
    } else {
      continue;
    }
    Nodes nodes;
    if (internal::SelectDirectly(*context, FromUtf8(expression), false, nodes) ==
        internal::Direct::kDeclined) {
      continue;
    }
    ++taken;
    EXPECT_EQ(!nodes.empty(), holds) << expression;
  }
  std::printf("%d values compared\n", taken);
  EXPECT_GT(taken, 100);
}

}  // namespace
}  // namespace quen::tests
