#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# readme_test.sh SOURCE_DIR PROGRAM: the program in the README is the one that was built, and prints what
# the README says.
set -eu
block() { awk -v fence="\`\`\`$1" '$0 == fence { on = 1; next } on && /^```/ { exit } on' "$2"; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
block cpp "$1/README.md" >"$work/shown"
grep -v '^// SPDX' "$1/examples/readme/readme.cpp" >"$work/built"
diff -u "$work/shown" "$work/built"
[ -s "$work/shown" ]
block xml "$1/README.md" >"$work/promised"
"$2" >"$work/printed"
diff -u "$work/promised" "$work/printed"
