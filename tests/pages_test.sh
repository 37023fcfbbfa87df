#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# pages_test.sh SOURCE_DIR PROGRAM_DIR PAGE...: the pages show every file of examples/cookbook as it is,
# but for its SPDX line, and behind it, after a line "It prints", what its program prints. The programs
# run in a folder that holds the data files.
set -eu
files=$1/examples/cookbook programs=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/shown" "$work/printed" "$work/run"
awk -v work="$work" '
  /\]\(\.\.\/examples\/cookbook\// { name = $0; sub(/.*\/cookbook\//, "", name); sub(/\).*/, "", name); target = "shown/" name }
  /^It prints/ { sub(/\.cpp$/, "", name); target = "printed/" name }
  /^```/ { if (inside || target == "") { inside = 0; target = "" } else inside = 1; next }
  inside { print > (work "/" target) }' "$@"
cp "$files"/*.x* "$work/run"
cd "$work/run"
for file in "$files"/*; do
  name=$(basename "$file")
  grep -v 'SPDX-License-Identifier' "$file" | diff -u "$work/shown/$name" -
  case $name in
    *.cpp) "$programs/${name%.cpp}" 2>&1 | diff -u "$work/printed/${name%.cpp}" - ;;
  esac
done
ls "$work/shown" | wc -l
