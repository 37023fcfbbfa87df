#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# headers.sh CXX HEADERS_DIR...: each public header compiles by itself, without a warning, as C++17 and C++20. It
# brings no header of Xalan-C, of Xerces-C only what declares its namespace, and no macro but the library's.
set -eu
cxx=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
includes=
for folder in "$@"; do includes="$includes -I $folder"; done
light='XercesDefs\|XercesVersion\|Xerces_autoconf_config'
status=0
fail() { echo "$header: $*"; status=1; }

printf '#include <%s>\n' charconv cmath cstddef cstdint exception iosfwd iterator limits memory optional ostream \
  stdexcept string string_view system_error type_traits utility vector \
  xercesc/util/XercesDefs.hpp >"$work/bare.cpp"
"$cxx" -std=c++17 -dM -E "$work/bare.cpp" | awk '{ print $2 }' | sort >"$work/bare"
count=0
for header in $(for folder in "$@"; do (cd "$folder" && find quenxml2 -name '*.h'); done); do
  count=$((count + 1))
  echo "#include <$header>" >"$work/one.cpp"
  for standard in 17 20; do
    "$cxx" -std=c++$standard -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror $includes \
      -fsyntax-only "$work/one.cpp" || fail "does not compile as C++$standard"
  done
  "$cxx" -std=c++17 $includes -M "$work/one.cpp" | tr -s ' \\' '\n' >"$work/brings"
  grep '/xalanc/' "$work/brings" && fail "brings Xalan-C"
  grep '/xercesc/' "$work/brings" | grep -v "/\($light\)\.hpp$" && fail "brings more of Xerces-C"
  "$cxx" -std=c++17 $includes -dM -E "$work/one.cpp" | awk '{ print $2 }' | sort |
    comm -13 "$work/bare" - | grep -v '^QUENXML2_' && fail "defines these macros"
done
[ $count -gt 10 ] || { echo "only $count headers"; status=1; }
exit $status
