#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# Every exported operation of a wide class has a narrow twin: the symbols of the wide classes,
# written for the narrow ones, must all be among the exported symbols.
#
#   twins.sh NM LIBRARY
set -eu
export LC_ALL=C
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What has no twin by intent, as it reads when written for the narrow classes. A line that matches
# nothing is stale and fails the test.
cat > "$work/without" <<'END'
^quen::CQuenXML(Document|Data)2::(Get|Append)UTF8Subset\(
^quen::CQuenXMLData2::GetCQuenXMLData2wImpl\(
^quen::CQuenXML(Element|Document|Data)2::(.*::)?Impl\(
^quen::CQuenXMLNode2::Release\(
^quen::CQuenXMLMsg2::(Get|Set|GetFormatted)MessageContentsw\(
^quen::CQuenXSL2::Transform\(quen::CQuenXMLDocument2&, quen::CQuenXMLDocument2&, unsigned long\)
END

"$1" -DC --defined-only "$2" | sed -E 's/^[0-9a-f]+ [A-Za-z] //; s/\[abi:cxx11\]//' |
  sort -u > "$work/all"

# An implementation class in a signature marks a constructor or a helper that is no public one. A
# template of the standard library begins with its result and a blank, which no operation does.
grep -E '^((vtable|typeinfo) for )?quen::CQuen[A-Za-z]*2w(::[^ ]*)?(\(|$)|^operator.*2w\b' \
  "$work/all" |
  grep -vE 'Impl2w|_iteratorImpl' |
  sed -E 's/\b(CQuen[A-Za-z]*2)w\b/\1/g
          s/\bCQuenMessagew\b/CQuenMessage/g
          s/char16_t/char/g
          s/std::basic_ostream<char, std::char_traits<char> >/std::ostream/g' |
  sort -u > "$work/expected"

status=0
while IFS= read -r pattern; do
  if ! grep -qE "$pattern" "$work/expected"; then
    echo "nothing matches: $pattern"
    status=1
  fi
done < "$work/without"

grep -vE -f "$work/without" "$work/expected" > "$work/wanted"
count=$(wc -l < "$work/wanted")
if [ "$count" -lt 200 ]; then
  echo "only $count wide symbols: is this the library?"
  status=1
fi

comm -23 "$work/wanted" "$work/all" > "$work/missing"
if [ -s "$work/missing" ]; then
  echo "wide operations without a narrow twin:"
  cat "$work/missing"
  status=1
fi
echo "$count wide symbols have been looked for"
exit $status
