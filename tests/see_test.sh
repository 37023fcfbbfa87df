#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# see_test.sh PROGRAM_DIR: xmltree and xmldiff on small documents, and on what they cannot take.
set -eu
programs=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
# expect STATUS COMMAND...: the output is that of the standard input.
expect() {
  cat >expected
  status=$1
  shift
  got=0
  "$@" >got 2>&1 || got=$?
  diff -u expected got && [ "$got" = "$status" ] || { echo "status $got: $*"; exit 1; }
}

printf '%s' '<?xml version="1.0"?><order id="7" xmlns:p="urn:p"><item qty="3">bolt</item><!-- c --><item qty="4">nut
&#x9b;31m</item><p:x><y xmlns="urn:y"/>a<b/>c</p:x></order>' >old.xml
cat >new.xml <<'XML'
<order id="8" xmlns:q="urn:p">
  <item qty="4">nut
&#x9b;31m</item><item qty="3">bolt!</item><note>n</note><q:x><y xmlns="urn:y" k="1"/>a<b/></q:x>
</order>
XML
expect 0 "$programs/xmltree" old.xml <<'TEXT'
order                                               /order
  @id "7"                                           /order/@id
  @xmlns:p "urn:p"
  item "bolt"                                       /order/item[1]
    @qty "3"                                        /order/item[1]/@qty
  comment " c "                                     /order/comment()
  item "nut �31m"                                   /order/item[2]
    @qty "4"                                        /order/item[2]/@qty
  p:x                                               /order/p:x
    y                                               /order/p:x/*[1]
      @xmlns "urn:y"
    text "a"                                        /order/p:x/text()[1]
    b                                               /order/p:x/b
    text "c"                                        /order/p:x/text()[2]
TEXT
expect 1 "$programs/xmldiff" old.xml new.xml <<'TEXT'
~ /order/@id "7" -> "8"
> /order/item[1] -> /order/item[2]
+ /order/note <note> "n"
~ /order/item[1]/text() "bolt" -> "bolt!"
- /order/p:x/text()[2] "c"
+ /order/p:x/*[1]/@k "1"
TEXT
expect 0 "$programs/xmldiff" old.xml old.xml </dev/null
echo '<a/>' >a.xml
echo '<order xmlns="urn:o"/>' >order.xml
expect 1 "$programs/xmldiff" a.xml order.xml <<'TEXT'
- /a <a/>
+ /* <order xmlns="urn:o"/>
TEXT

# Colour: at a terminal, or when it is asked for.
escapes() { "$@" | grep -c "$(printf '\033')" || true; }
[ "$(escapes "$programs/xmltree" a.xml)" = 0 ]
[ "$(escapes "$programs/xmltree" --color a.xml)" = 1 ]
[ "$(escapes env NO_COLOR=1 "$programs/xmltree" --color a.xml)" = 1 ]
[ "$(escapes script -qec "env NO_COLOR= $programs/xmltree a.xml" /dev/null)" = 1 ]
[ "$(escapes script -qec "env NO_COLOR=1 $programs/xmltree a.xml" /dev/null)" = 0 ]

for program in tree diff; do
  "$programs/xml$program" none.xml $([ $program = tree ] || echo a.xml) >got 2>&1 && exit 1 || [ $? = 2 ]
  grep -qF "xml$program: none.xml: Parse error: [unable to open" got || { cat got; exit 1; }
  if "$programs/xml$program" --what >got 2>&1; then exit 1; else [ $? = 2 ]; fi
done
if "$programs/xmltree" a.xml >/dev/full; then exit 1; else [ $? = 2 ]; fi
