#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# The page shows code that is compiled: each of its blocks stands, but for the indentation, in one of
# the sources.
#
#   page.sh PAGE SOURCE...
set -eu
awk '
  function trimmed(line) { sub(/^[ \t]+/, "", line); return line }
  FNR == 1 { ++file }
  file > 1 { sources = sources "\n" trimmed($0); next }
  /^```cpp/ { block = ""; inside = 1; start = FNR; next }
  /^```/ { if (inside) { blocks[++count] = block "\n"; lines[count] = start; inside = 0 } next }
  inside { block = block "\n" trimmed($0) }
  END {
    sources = sources "\n"
    if (count < 40) { print "only " count " blocks of code"; exit 1 }
    for (i = 1; i <= count; ++i)
      if (index(sources, blocks[i]) == 0) { print "line " lines[i] ": not in the sources:" blocks[i]; bad = 1 }
    print count " blocks compared"
    exit bad
  }' "$@"
