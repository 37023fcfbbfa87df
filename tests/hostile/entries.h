// SPDX-License-Identifier: Apache-2.0
//
// The ways in which text of a stranger gets into the library.
#ifndef QUENXML2_TESTS_HOSTILE_ENTRIES_H_
#define QUENXML2_TESTS_HOSTILE_ENTRIES_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quen::test {

enum class Enters {
  kText,     // as a document, which is parsed
  kChecked,  // the same, held against a schema in which any element is valid
  kSource,   // as the source of a transform by a style sheet of the application
  kStyle,    // as a style sheet
};

struct Entry {
  std::string name;
  Enters as = Enters::kText;
  bool isWide = false;
  bool isPlain = false;  // one of the few ways that large texts go
  // Hands the text, in UTF-8, to an object that holds something already. Returns the code of the
  // failure, or 0, and what it says. Afterwards the object holds what its contract says, takes a
  // harmless text, and is destroyed; an expectation fails otherwise.
  std::function<std::uint32_t(const std::string& inText, std::string& outMessage)> run;
};

// All of them. `inFolder` is an empty directory for files, which outlives the result.
std::vector<Entry> AllEntries(const std::string& inFolder);

}  // namespace quen::test

#endif  // QUENXML2_TESTS_HOSTILE_ENTRIES_H_
