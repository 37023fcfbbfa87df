#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# limits_test.sh SOURCE_DIR: docs/limits.md lists every limit of the headers with its value, and no other.
set -eu
cd "$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Name and value of each constant; products are worked out.
sed -n "s/^inline constexpr [a-z_0-9: ]* \(k[A-Za-z]*\) = \([0-9' *]*\);.*/\1 \2/p" foundation/limits.h dom/selection_limits.h xsl/limits.h |
  tr -d "'" | while read -r name value; do echo "$name $(($value))"; done | sort >"$work/headers"
[ "$(grep -c '^inline constexpr' foundation/limits.h)" -gt 5 ]
[ "$(cat foundation/limits.h dom/selection_limits.h xsl/limits.h | grep -c '^inline constexpr')" = "$(wc -l <"$work/headers")" ]
# The n-th name of a row goes with the n-th number of its second column.
awk -F'|' '/`k[A-Z]/ {
  value = $3
  while (match(value, /[0-9],[0-9][0-9][0-9]/)) value = substr(value, 1, RSTART) substr(value, RSTART + 2)
  gsub(/[^0-9]+/, " ", value); split(value, values, " ")
  gsub(/[^A-Za-z]+/, " ", $4); n = split($4, names, " ")
  for (i = 1; i <= n; ++i) print names[i], values[i]
}' docs/limits.md | sort >"$work/document"
diff -u "$work/headers" "$work/document"
