// SPDX-License-Identifier: Apache-2.0
//
// Messages of other SOAP stacks: each well-formed one opens, is written and opens again as the same
// tree. Runs over the folder "soap" of the one that QUENXML2_CORPUS names, where index.jsonl lists
// the files.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

#include <quenxml2/message.h>

#include "dom/document_impl.h"
#include "foundation/utf.h"

namespace quen::test {
namespace {

std::string Field(const std::string& inLine, const std::string& inName) {
  const std::string key = "\"" + inName + "\": ";
  const std::size_t at = inLine.find(key);
  if (at == std::string::npos) return {};
  std::size_t begin = at + key.size();
  const char end = inLine[begin] == '"' ? '"' : ',';
  if (end == '"') ++begin;
  return inLine.substr(begin, inLine.find_first_of(end == '"' ? "\"" : ",}", begin) - begin);
}

std::string FileText(const std::string& inPath) {
  std::ifstream file(inPath, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

bool SameTree(const CQuenXMLNode2w& inOne, const CQuenXMLNode2w& inOther) {
  return inOne.GetImpl()->GetDOMNode()->isEqualNode(inOther.GetImpl()->GetDOMNode());
}

// What the message holds of the original: all of it, or its body element.
CQuenXMLDocument2w Carried(const CQuenXMLMsg2w& inMessage, bool inIsEnvelope) {
  CQuenXMLDocument2w document;
  if (inIsEnvelope) {
    inMessage.GetMessageContents(document);
  } else {
    inMessage.GetBody(document);
  }
  return document;
}

TEST(Corpus, MessagesOfOtherStacks) {
  const char* const corpus = std::getenv("QUENXML2_CORPUS");
  if (corpus == nullptr) GTEST_SKIP() << "QUENXML2_CORPUS is not set";
  const std::string folder = std::string(corpus) + "/soap/";
  std::ifstream index(folder + "index.jsonl");
  ASSERT_TRUE(index.is_open());

  std::map<std::string, int> table;
  for (std::string line; std::getline(index, line);) {
    const std::string path = Field(line, "path");
    SCOPED_TRACE(path);
    CQuenXMLDocument2w original;
    std::string failure;
    try {
      wstring location;
      ASSERT_EQ(internal::AppendUtf16(folder + path, location), internal::kWellFormed);
      original.Load(location);
    } catch (const CQuenXMLException2w& exception) {
      failure = exception.what();
    }
    if (Field(line, "wellformed") != "true") {
      EXPECT_NE(failure, "");
      EXPECT_THROW(CQuenXMLMsg2w().SetMessageContents(FileText(folder + path)),
                   CQuenXMLException2w);
      ++table["not well-formed: refused"];
      continue;
    }
    if (!failure.empty()) {
      ++table["well-formed, and refused: " + failure.substr(0, 60)];
      std::cout << path << ": " << failure << '\n';
      continue;
    }
    const bool isEnvelope = original.GetDocumentElement().GetName() == u"SOAP-ENV:Envelope";
    EXPECT_EQ(isEnvelope, Field(line, "prefix") == "SOAP-ENV");

    CQuenXMLMsg2w message;
    wstring text;
    const bool isUtf8 =
        internal::AppendUtf16(FileText(folder + path), text) == internal::kWellFormed;
    if (isUtf8) {
      message.SetMessageContentsw(text);
    } else {
      message.SetMessageContents(original);
    }
    EXPECT_TRUE(
        SameTree(Carried(message, isEnvelope).GetDocumentElement(), original.GetDocumentElement()));
    const CQuenXMLMsg2w again(message.GetMessageContentsw());
    EXPECT_TRUE(
        SameTree(Carried(again, isEnvelope).GetDocumentElement(), original.GetDocumentElement()));
    EXPECT_EQ(again.GetMessageContentsw(), message.GetMessageContentsw());
    if (isEnvelope) {
      EXPECT_EQ(message.HasError(), Field(line, "fault") == "true");
    } else {
      EXPECT_EQ(message.GetMessageName(), original.GetDocumentElement().GetName());
    }
    ++table[std::string(isEnvelope ? "SOAP-ENV: read as an envelope"
                                   : "another root: carried as a body") +
            (isUtf8 ? "" : ", from a document that is not UTF-8")];
  }
  for (const auto& [what, count] : table) std::cout << count << "  " << what << '\n';
  EXPECT_GT(table["SOAP-ENV: read as an envelope"], 0);
}

}  // namespace
}  // namespace quen::test
