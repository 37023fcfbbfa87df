// SPDX-License-Identifier: Apache-2.0
//
// The limits of limits.h and the refusal to read what a document names, as the parsers of the
// engine meet them: the one that builds a tree, and those that report events.
#ifndef QUENXML2_FOUNDATION_PARSER_LIMITS_H_
#define QUENXML2_FOUNDATION_PARSER_LIMITS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <quenxml2/types.h>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>

#include "foundation/text_input.h"

XERCES_CPP_NAMESPACE_BEGIN
class DTDAttDef;
class DTDElementDecl;
class DTDEntityDecl;
class Locator;
XERCES_CPP_NAMESPACE_END

namespace quen::internal {

class EntityBudget;

// Ends a parse from inside. No exception of the engine: those it would turn into reports of its
// own.
struct ParseStop {
  InputFailure failure;
};

// Counts different texts. A hash stands for a text: two that collide count as one, which no limit
// minds.
class DistinctCounter {
 public:
  std::size_t Add(std::u16string_view inText) {
    const std::size_t hash = std::hash<std::u16string_view>()(inText);
    std::size_t& recent = recent_[hash % recent_.size()];
    if (recent != hash) {
      recent = hash;
      hashes_.insert(hash);
    }
    return hashes_.size();
  }

 private:
  std::array<std::size_t, 256> recent_{};  // spares the look-up for names that come again and again
  std::unordered_set<std::size_t> hashes_;
};

// What one parse has used up. Every check ends the parse by a ParseStop.
class ParserLimits {
 public:
  // Without a budget the document is the application's own: its DTD may be external, and is taken
  // as it is.
  explicit ParserLimits(const EntityBudget* inEntities) : entities_(inEntities) {}

  // Where the parser stands; it outlives this object, or is null.
  void SetPlace(const xercesc::Locator* inPlace) { place_ = inPlace; }

  void CheckDoctype(const char16_t* inSystemId);
  void CheckEntity(const xercesc::DTDEntityDecl& inEntity, bool inIsParameter) const;
  // The truth about a content model, however its declaration was put together.
  void CheckModel(const xercesc::DTDElementDecl& inElement);
  void CheckAttribute(const xercesc::DTDElementDecl& inElement,
                      const xercesc::DTDAttDef& inAttribute);
  void StartElement(const xercesc::XMLElementDecl& inDeclaration, unsigned int inUri,
                    const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes, XMLSize_t inCount);
  void EndElement() {
    --depth_;
    if (hasDoctype_) namesOfOpen_.pop_back();
  }

  [[noreturn]] void RefuseResource(const wstring& inLocation) const;
  [[noreturn]] void Refuse(wstring inMessage) const;

 private:
  void CheckAttributes(const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                       XMLSize_t inCount);
  // What a DTD declares for an element: the work of its attributes, and the names in its content
  // model. To be asked for when all of the DTD was read.
  struct Declared {
    std::uint64_t attributes = 0;
    std::uint64_t names = 0;
  };
  const Declared& DeclaredFor(const xercesc::DTDElementDecl& inElement);
  void CheckDeclaredWork(const xercesc::XMLElementDecl& inDeclaration,
                         const xercesc::RefVectorOf<xercesc::XMLAttr>& inAttributes,
                         XMLSize_t inCount);
  void AddDeclaredWork(std::uint64_t inWork);
  [[noreturn]] void RefuseNames() const;
  [[noreturn]] void RefuseModel() const;

  const EntityBudget* const entities_;
  const xercesc::Locator* place_ = nullptr;
  std::uint32_t depth_ = 0;
  std::size_t defaulted_ = 0;
  std::size_t attributeDefaults_ = 0;
  // What the defaults of an element add, by its name without a prefix: the tree takes them from the
  // DTD also where a schema declares the element, and the parser does not report them then.
  std::unordered_map<std::u16string, std::size_t> defaultsOf_;
  std::uint64_t attributeWork_ = 0;
  std::uint64_t attributeCount_ = 0;
  std::uint64_t modelWork_ = 0;
  bool hasDoctype_ = false;
  std::unordered_map<const xercesc::DTDElementDecl*, Declared> declared_;  // as far as met
  std::vector<std::uint64_t> namesOfOpen_;  // in the models of the open elements
  std::uint64_t declaredWork_ = 0;
  std::uint64_t declaredNodes_ = 0;
  DistinctCounter attributeNames_;
  DistinctCounter namespaces_;
  DistinctCounter prefixes_;
};

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_PARSER_LIMITS_H_
