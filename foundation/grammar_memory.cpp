// SPDX-License-Identifier: Apache-2.0
#include "foundation/grammar_memory.h"

#include <new>

#include <xercesc/util/PlatformUtils.hpp>

namespace quen::internal {
namespace {

xercesc::MemoryManager& EngineMemory() { return *xercesc::XMLPlatformUtils::fgMemoryManager; }

}  // namespace

OwningMemory::~OwningMemory() {
  while (blocks_.next != &blocks_) deallocate(blocks_.next + 1);
}

xercesc::MemoryManager* OwningMemory::getExceptionMemoryManager() { return &EngineMemory(); }

void* OwningMemory::allocate(XMLSize_t inSize) {
  Link* const link = new (EngineMemory().allocate(sizeof(Link) + inSize)) Link;
  link->previous = &blocks_;
  link->next = blocks_.next;
  link->next->previous = link;
  blocks_.next = link;
  return link + 1;
}

void OwningMemory::deallocate(void* inMemory) {
  if (inMemory == nullptr) return;
  Link* const link = static_cast<Link*>(inMemory) - 1;
  link->previous->next = link->next;
  link->next->previous = link->previous;
  EngineMemory().deallocate(link);
}

}  // namespace quen::internal
