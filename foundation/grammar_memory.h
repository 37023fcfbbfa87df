// SPDX-License-Identifier: Apache-2.0
//
// Where a parser keeps what is its own, and what a document type declares.
//
// Xerces-C 3.2 loses what it has read of a content model that it refuses, what it has noted
// meanwhile, and with Debian's cure for CVE-2018-1311 a little for each external DTD subset.
// Whoever sends such texts would fill the memory of a service, so that all of it goes here with the
// parser.
#ifndef QUENXML2_FOUNDATION_GRAMMAR_MEMORY_H_
#define QUENXML2_FOUNDATION_GRAMMAR_MEMORY_H_

#include <cstddef>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>

namespace quen::internal {

// The engine's memory, but that what was not given back is freed in the end.
class OwningMemory : public xercesc::MemoryManager {
 public:
  OwningMemory() = default;
  ~OwningMemory() override;
  OwningMemory(const OwningMemory&) = delete;
  OwningMemory& operator=(const OwningMemory&) = delete;

  // Failures outlive the parser.
  xercesc::MemoryManager* getExceptionMemoryManager() override;
  void* allocate(XMLSize_t inSize) override;
  void deallocate(void* inMemory) override;

 private:
  // In front of each block: the ring of all that are out.
  struct Link {
    Link* previous = this;
    Link* next = this;
  };
  static_assert(sizeof(Link) % alignof(std::max_align_t) == 0);
  Link blocks_;
};

// A base in front of the parser, since both outlive its destructor.
class GrammarMemory {
 protected:
  OwningMemory memory_;
  xercesc::XMLGrammarPoolImpl grammars_{&memory_};
};

}  // namespace quen::internal

#endif  // QUENXML2_FOUNDATION_GRAMMAR_MEMORY_H_
