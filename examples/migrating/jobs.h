// SPDX-License-Identifier: Apache-2.0
//
// The ten jobs that docs/migrating.md shows with four libraries, one source file each.
#ifndef QUENXML2_EXAMPLES_MIGRATING_JOBS_H_
#define QUENXML2_EXAMPLES_MIGRATING_JOBS_H_

#include <string>

bool IsRefused(const std::string& text);
std::string ReadValue(const std::string& text);
int ReadNumberOr(const std::string& text, int fallback);
int ReadAttribute(const std::string& text);
std::string WalkChildren(const std::string& text);
std::string SelectByCondition(const std::string& text);
std::string Change(const std::string& text);
std::string Add(const std::string& text);
std::string Remove(const std::string& text);
void Write(const std::string& text, const std::string& file);

#endif  // QUENXML2_EXAMPLES_MIGRATING_JOBS_H_
