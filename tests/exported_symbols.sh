#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# exported_symbols.sh LIBRARY LIST [update]: compares what the library exports with the list, or writes the
# list anew. A line that goes is a broken program somewhere; one that comes is a promise.
set -eu
LC_ALL=C
export LC_ALL
symbols() { nm -D --defined-only "$1" | awk '{ print $3 }' | c++filt | sort -u; }
if [ "${3:-}" = update ]; then
  symbols "$1" >"$2"
  exit 0
fi
work=$(mktemp)
trap 'rm -f "$work"' EXIT
symbols "$1" >"$work"
[ -s "$work" ]
diff -u "$2" "$work" && exit 0
echo "The exported symbols have changed. If that is meant: cmake --build BUILD_DIR --target update_exported_symbols"
exit 1
