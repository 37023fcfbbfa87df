#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# abi.sh [PRESET]: compares the binary interface of the library, as PRESET builds it (dev, if none is given; it has to
# have debugging information), with that of the last tag v... before this commit. What a program was built on may only
# grow until the major version changes: a symbol that goes, or a type or a table of virtual operations that changes, is
# a failure. docs/versioning.md has the rules.
set -eu
cd "$(dirname "$0")/.."
preset=${1:-dev}
tag=$(git describe --tags --abbrev=0 --match 'v[0-9]*' 2>/dev/null) || {
  echo "abi: no tag v... yet: compared with nothing"
  exit 0
}
major() { sed -n 's/^project(QuenXML2 VERSION \([0-9]*\)\..*/\1/p' "$@"; }
now=$(major CMakeLists.txt)
then=$(git show "$tag:CMakeLists.txt" | major)
if [ "$now" != "$then" ]; then
  echo "abi: the major version is $now, that of $tag is $then: nothing is promised between them"
  exit 0
fi
work=$(mktemp -d)
trap 'git worktree remove --force "$work/source"; rm -rf "$work"' EXIT
git worktree add --detach "$work/source" "$tag" >/dev/null
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" --target QuenXML2
(cd "$work/source" && cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --target QuenXML2)

# Only what the public headers define is compared; what they hide may change.
library=build/$preset/libQuenXML2.so
if abidiff --no-added-syms --drop-private-types --headers-dir1 "$work/source/include" --headers-dir2 include \
  "$work/source/$library" "$library"; then
  echo "abi: as in $tag, but for additions"
else
  echo "abi: programs built with $tag break. If that is meant, it needs the next major version."
  exit 1
fi
