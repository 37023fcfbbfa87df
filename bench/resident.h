// SPDX-License-Identifier: Apache-2.0
#ifndef QUENXML2_BENCH_RESIDENT_H_
#define QUENXML2_BENCH_RESIDENT_H_

#include <unistd.h>

#include <fstream>

// The resident memory of this process.
inline long ResidentKibibytes() {
  std::ifstream file("/proc/self/statm");
  long size = 0;
  long resident = 0;
  file >> size >> resident;
  return resident * (::sysconf(_SC_PAGESIZE) / 1024);
}

#endif  // QUENXML2_BENCH_RESIDENT_H_
