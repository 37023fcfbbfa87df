#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# explore_test.sh SOURCE_DIR PROGRAM: the example program on its sample and on files that it cannot take.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Each argument is a line of the output, blanks apart.
expect() {
  for line in "$@"; do
    tr -s ' ' <"$work/out" | grep -qxF -- "$line" || { cat "$work/out"; echo "MISSING: $line"; exit 1; }
  done
}

"$2" "$1/examples/data/orders.xml" "$work/sample.xml" >"$work/out"
# Counted in the sample by hand.
expect ' 3 long /orders/order/@id 40817 to 40819' \
  ' 6 unsigned long /orders/order/item/@qty 1 to 4000000000' \
  ' 6 double /orders/order/item/price 0.0004 to 129.9' \
  ' 3 text /orders/order/customer/name "Schlosserei Grünwald & Söhne"' \
  ' 1 empty /orders/total' \
  ' Three more <item> in /orders/order: 5 child elements before, 8 now.' \
  ' All 5 values written above read back.' \
  'explore: done, all the same.'
# By another parser than the library's.
python3 - "$work/sample.xml" <<'PYTHON'
import sys, xml.etree.ElementTree as tree
root = tree.parse(sys.argv[1]).getroot()
assert root.get("explored") == "1" and root.get("currency") == "EUR (changed)", root.attrib
assert root.find("order/customer/name").text == 'Changed: <5 & "6"'
assert float(root.find("order/item/price").text) == 0.19
assert [item.text for item in root.find("order").findall("item")][3:] == ["1", "2", "3"]
assert root.findall("order")[2].find("note").text == 'Invoice text: if (qty > 1000 && price < 0.01) "bulk"'
PYTHON

# A namespace without a prefix, a document type declaration, numbers that are none.
cat >"$work/in.xml" <<'XML'
<!DOCTYPE list [<!ENTITY unit "mm"> <!ELEMENT list (part*)> <!ATTLIST list xmlns CDATA #REQUIRED>
<!ELEMENT part (len)> <!ATTLIST part size CDATA #REQUIRED> <!ELEMENT len (#PCDATA)>]>
<list xmlns="urn:parts"><part size="12 &unit;"><len>1e3</len></part><part size="-4"><len>-4</len></part></list>
XML
"$2" "$work/in.xml" "$work/out.xml" >"$work/out"
expect ' 2 text /list/part/@size "12 mm"' ' 2 text /list/part/len "1e3"' \
  " Three more <part> in /*[local-name()='list']: 2 child elements before, 5 now." \
  'explore: done, all the same.'

echo '<!DOCTYPE a SYSTEM "a.dtd"><a/>' >"$work/external.xml"
if "$2" "$work/external.xml" "$work/none.xml" >"$work/out" 2>&1; then exit 1; fi
expect 'This library opens nothing that a document names, since documents come from strangers.'
if "$2" "$work/missing.xml" "$work/none.xml" >"$work/out" 2>&1; then exit 1; fi
grep -q 'No such file or directory' "$work/out"
[ ! -e "$work/none.xml" ]
