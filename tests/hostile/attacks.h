// SPDX-License-Identifier: Apache-2.0
//
// Texts that are made to read what is not theirs, or to cost more than they are worth.
#ifndef QUENXML2_TESTS_HOSTILE_ATTACKS_H_
#define QUENXML2_TESTS_HOSTILE_ATTACKS_H_

#include <functional>
#include <string>
#include <vector>

namespace quen::test {

enum class Outcome {
  kRefused,  // 1009, as a source of a transform 1010
  kTaken,    // no failure
  kEither,   // depends on the way that it goes
};

struct Attack {
  const char* name;
  Outcome outcome;
  std::function<std::string()> text;  // UTF-8
  // What the failure says, in the ways where the document is parsed by itself.
  const char* message = "";
};

// Texts that name files and servers: FILE stands for the path of a file, HOST for the address of a
// server.
std::vector<Attack> ReadingAttacks();
// Texts that are cheap to send.
std::vector<Attack> CostlyAttacks();

// `inPiece`, `inCount` times, with the numbers from 0 in the place of each '#'.
std::string Numbered(const std::string& inPiece, int inCount);

}  // namespace quen::test

#endif  // QUENXML2_TESTS_HOSTILE_ATTACKS_H_
