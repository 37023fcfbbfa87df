// SPDX-License-Identifier: Apache-2.0
// Random trees and random expressions for running the two ways of selection against each other.
#ifndef QUENXML2_TESTS_DOM_RANDOM_TREE_H_
#define QUENXML2_TESTS_DOM_RANDOM_TREE_H_

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include <xercesc/dom/DOM.hpp>

namespace quen::tests {

// Decides by chance, or by bytes that a fuzzer gives; when they are used up every answer is 0.
class Choices {
 public:
  explicit Choices(std::uint64_t seed) : random_(seed) {}
  Choices(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size), fed_(true) {}

  // Below `count`, which is at most 256.
  std::uint32_t Below(std::uint32_t count) {
    if (!fed_) return static_cast<std::uint32_t>(random_() % count);
    if (size_ == 0) return 0;
    --size_;
    return *bytes_++ % count;
  }
  bool OneIn(std::uint32_t count) { return Below(count) == count - 1; }
  template <class T, std::size_t kCount>
  T Of(const T (&choices)[kCount]) {
    return choices[Below(kCount)];
  }

 private:
  std::mt19937_64 random_;
  const std::uint8_t* bytes_ = nullptr;
  std::size_t size_ = 0;
  bool fed_ = false;
};

// A document of up to some tens of nodes of every kind that a parser or a program makes. Its root
// declares p, q (the same namespace as p) and r.
class RandomTree {
 public:
  explicit RandomTree(Choices& choices) : choices_(choices) {}

  xercesc::DOMDocument* Make() {
    auto* const implementation = xercesc::DOMImplementation::getImplementation();
    xercesc::DOMDocument* const document =
        choices_.OneIn(4)
            ? implementation->createDocument(
                  nullptr, u"a", implementation->createDocumentType(u"a", nullptr, nullptr))
            : implementation->createDocument(nullptr, u"a", nullptr);
    document_ = document;
    xercesc::DOMElement* const root = document->getDocumentElement();
    for (const auto& [name, uri] :
         {std::pair{u"xmlns:p", u"urn:1"}, {u"xmlns:q", u"urn:1"}, {u"xmlns:r", u"urn:2"}}) {
      root->setAttributeNS(u"http://www.w3.org/2000/xmlns/", name, uri);
    }
    if (choices_.OneIn(3)) document->insertBefore(document->createComment(u"1"), root);
    if (choices_.OneIn(3)) document->appendChild(document->createProcessingInstruction(u"t", u"2"));
    budget_ = 4 + choices_.Below(40);
    Fill(root, 0);
    return document;
  }

 private:
  void Fill(xercesc::DOMElement* element, int depth) {
    Attributes(element);
    for (std::uint32_t children = choices_.Below(6); children != 0 && budget_ != 0; --children) {
      --budget_;
      if (choices_.Below(3) != 0) {
        xercesc::DOMElement* const child = Element();
        element->appendChild(child);
        if (depth < 6) Fill(child, depth + 1);
      } else {
        element->appendChild(Leaf());
      }
    }
  }
  xercesc::DOMElement* Element() {
    static constexpr const char16_t* kLocal[] = {u"a", u"b", u"c", u"b"};
    const std::u16string local = choices_.Of(kLocal);
    switch (choices_.Below(8)) {
      case 0:
        return document_->createElementNS(u"urn:1", (u"p:" + local).c_str());
      case 1:
        return document_->createElementNS(u"urn:2", (u"r:" + local).c_str());
      case 2:
        return document_->createElementNS(u"urn:1", local.c_str());
      case 3:
        return document_->createElement((u"p:" + local).c_str());
      case 4:
        return document_->createElement(local.c_str());
      default:
        return document_->createElementNS(nullptr, local.c_str());
    }
  }
  void Attributes(xercesc::DOMElement* element) {
    static constexpr const char16_t* kNames[] = {u"b", u"k", u"m"};
    for (std::uint32_t count = choices_.Below(4); count != 0; --count) {
      const std::u16string name = choices_.Of(kNames);
      const char16_t* const value = Value();
      switch (choices_.Below(6)) {
        case 0:
          element->setAttributeNS(u"urn:1", (u"p:" + name).c_str(), value);
          break;
        case 1:
          element->setAttributeNS(u"urn:2", (u"r:" + name).c_str(), value);
          break;
        case 2:
          element->setAttribute((u"p:" + name).c_str(), value);
          break;
        case 3:
          element->setAttribute(u"xmlns", u"");
          break;
        default:
          element->setAttribute(name.c_str(), value);
          break;
      }
    }
  }
  xercesc::DOMNode* Leaf() {
    switch (choices_.Below(6)) {
      case 0:
        return document_->createCDATASection(Value());
      case 1:
        return document_->createComment(Value());
      case 2:
        return document_->createProcessingInstruction(choices_.OneIn(2) ? u"t" : u"b", Value());
      default:
        return document_->createTextNode(Value());
    }
  }
  const char16_t* Value() {
    static constexpr const char16_t* kValues[] = {u"1", u"2", u"3",   u"10", u"-1", u"1.0",
                                                  u"x", u"",  u" 2 ", u"b",  u"1x", u".5"};
    return choices_.Of(kValues);
  }

  Choices& choices_;
  xercesc::DOMDocument* document_ = nullptr;
  std::uint32_t budget_ = 0;
};

// An expression of XPath 1.0, mostly of what the direct evaluator takes.
class RandomExpression {
 public:
  explicit RandomExpression(Choices& choices) : choices_(choices) {}

  std::u16string Make() {
    out_.clear();
    depth_ = 0;
    Path();
    while (choices_.OneIn(6)) {
      out_ += u" | ";
      Path();
    }
    return out_;
  }

 private:
  void Path() {
    const std::uint32_t start = choices_.Below(8);
    if (start == 0) out_ += u"/";
    if (start >= 1 && start <= 3) out_ += u"//";
    if (start == 4) out_ += u"/*/";
    Step();
    for (std::uint32_t more = choices_.Below(depth_ == 0 ? 3 : 2); more != 0; --more) {
      out_ += choices_.OneIn(4) ? u"//" : u"/";
      Step();
    }
  }
  void Step() {
    static constexpr const char16_t* kAxes[] = {u"child::",
                                                u"descendant::",
                                                u"descendant-or-self::",
                                                u"parent::",
                                                u"ancestor::",
                                                u"ancestor-or-self::",
                                                u"self::",
                                                u"attribute::",
                                                u"following-sibling::",
                                                u"preceding-sibling::",
                                                u"following::",
                                                u"preceding::"};
    switch (choices_.Below(10)) {
      case 0:
        out_ += u".";
        return;
      case 1:
        out_ += u"..";
        return;
      case 2:
      case 3:
        out_ += u"@";
        break;
      case 4:
      case 5:
      case 6:
        out_ += choices_.Of(kAxes);
        break;
      default:
        break;
    }
    Test();
    if (depth_ >= 3) return;
    for (std::uint32_t count = choices_.OneIn(3) ? 1 + choices_.Below(2) : 0; count != 0; --count) {
      out_ += u"[";
      ++depth_;
      Condition();
      --depth_;
      out_ += u"]";
    }
  }
  void Test() {
    static constexpr const char16_t* kTests[] = {u"b",
                                                 u"b",
                                                 u"a",
                                                 u"c",
                                                 u"k",
                                                 u"*",
                                                 u"*",
                                                 u"*",
                                                 u"p:b",
                                                 u"q:b",
                                                 u"p:*",
                                                 u"node()",
                                                 u"text()",
                                                 u"comment()",
                                                 u"m",
                                                 u"r:b",
                                                 u"q:*",
                                                 u"node()",
                                                 u"p:m",
                                                 u"processing-instruction()",
                                                 u"processing-instruction('t')"};
    out_ += choices_.Of(kTests);
  }
  void Condition() {
    static constexpr const char16_t* kRelations[] = {u" = ",  u" != ", u" < ",
                                                     u" <= ", u" > ",  u" >= "};
    switch (choices_.Below(12)) {
      case 0:
        out_ += choices_.Of(kPositions);
        return;
      case 1:
        out_ += u"position()";
        out_ += choices_.Of(kRelations);
        out_ += choices_.Of(kPositions);
        return;
      case 2:
        out_ += u"not(";
        Condition();
        out_ += u")";
        return;
      case 3:
        if (depth_ < 4) {
          ++depth_;
          out_ += u"(";
          Condition();
          out_ += choices_.OneIn(2) ? u" and " : u" or ";
          Condition();
          out_ += u")";
          --depth_;
          return;
        }
        [[fallthrough]];
      case 4:
      case 5:
        Operand();
        return;
      case 6:
        out_ += u"count(";
        Path();
        out_ += u")";
        out_ += choices_.Of(kRelations);
        out_ += choices_.Of(kPositions);
        return;
      case 7:
        BooleanCall();
        return;
      default:
        Comparison();
        return;
    }
  }
  void Operand() {
    static constexpr const char16_t* kTexts[] = {
        u"'1'",          u"'b'",   u"''",         u"'x'", u"name()",
        u"local-name()", u"'p:b'", u"string(@k)", u"'2'", u"namespace-uri()"};
    static constexpr const char16_t* kNumbers[] = {
        u"2", u"1", u"1.0", u"-1", u"@k + 1", u"number(.)", u"string-length()", u"10 div 4"};
    static constexpr const char16_t* kNodes[] = {u"@k", u"@*",     u".",  u"b",
                                                 u"@b", u"text()", u"..", u".//b"};
    if (depth_ < 3 && choices_.OneIn(4)) {
      ++depth_;
      Path();
      --depth_;
      return;
    }
    switch (choices_.Below(3)) {
      case 0:
        out_ += choices_.Of(kTexts);
        return;
      case 1:
        out_ += choices_.Of(kNumbers);
        return;
      default:
        out_ += choices_.Of(kNodes);
        return;
    }
  }
  void Comparison() {
    static constexpr const char16_t* kRelations[] = {u" = ",  u" != ", u" < ",
                                                     u" <= ", u" > ",  u" >= "};
    Operand();
    out_ += choices_.Of(kRelations);
    Operand();
  }
  void BooleanCall() {
    static constexpr const char16_t* kTests[] = {u"contains(., '1')", u"starts-with(name(), 'p')",
                                                 u"true()", u"@* = true()", u"contains(@k, @m)"};
    out_ += choices_.Of(kTests);
  }

  static constexpr const char16_t* kPositions[] = {u"1", u"2",          u"3",          u"last()",
                                                   u"0", u"last() - 1", u"position()", u"2.5"};
  Choices& choices_;
  std::u16string out_;
  int depth_ = 0;
};

}  // namespace quen::tests

#endif  // QUENXML2_TESTS_DOM_RANDOM_TREE_H_
