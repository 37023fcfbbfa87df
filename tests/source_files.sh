#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# source_files.sh SOURCE_DIR VERSION: every file names its license in its first five lines, unless it is of a kind that
# cannot or is no code; THIRD-PARTY.md names what the library links; the changelog has the version.
set -eu
cd "$1"
[ -e .git ] || { echo "no repository here: not tried"; exit 77; }
without='\.md$|\.json$|\.xml$|^LICENSE$|^\.(gitignore|clang-format|clang-tidy)$|^tests/.*\.txt$|^cmake/debian/(copyright|changelog\.in)$|^fuzz/(corpus|seeds)/'
status=0
count=0
for file in $(git ls-files | grep -vE "$without"); do
  [ -f "$file" ] || continue
  count=$((count + 1))
  head -n 5 "$file" | grep -q 'SPDX-License-Identifier: Apache-2\.0' || { echo "$file: no SPDX line"; status=1; }
done
[ $count -gt 100 ] || { echo "only $count files"; status=1; }

# All that is linked stands there, test and benchmark libraries too.
for library in $(grep -rhoE '\b(XercesC|XalanC|OpenSSL|GTest|nlohmann_json|benchmark|pugixml|LibXml2|LibXslt|Boost)\b' \
  --include=CMakeLists.txt --include='*.cmake' . | sort -u); do
  case $library in
    XercesC) name=Xerces ;; XalanC) name=Xalan ;; GTest) name=GoogleTest ;; nlohmann_json) name=nlohmann-json ;;
    benchmark) name='Google Benchmark' ;; *) name=$library ;;
  esac
  grep -qi -- "$name" THIRD-PARTY.md || { echo "THIRD-PARTY.md does not name $library"; status=1; }
done
grep -q "^## \[$(echo "$2" | sed 's/\./\\./g')\] - " CHANGELOG.md || { echo "CHANGELOG.md has no $2"; status=1; }
exit $status
