#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# packages.sh [BUILD_DIR]: tries the Debian packages that cmake/make-packages has made. Looks at what is in them and
# what they need; installs them, as root into the system and else into a folder; builds and runs the consumer project
# against them; and removes them again without a trace.
set -eu
source=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$source/build/packages}
work=$(mktemp -d)
installed=
leave() {
  status=$?
  [ -z "$installed" ] || dpkg --purge libquenxml2-doc libquenxml2-dev libquenxml2-2 >/dev/null
  rm -rf "$work"
  exit $status
}
trap leave EXIT
fail() { echo "packages: $*"; exit 1; }

version=$(sed -n 's/^project(QuenXML2 VERSION \([0-9.]*\).*/\1/p' "$source/CMakeLists.txt")
architecture=$(dpkg --print-architecture)
library=$build/libquenxml2-2_${version}_$architecture.deb
development=$build/libquenxml2-dev_${version}_$architecture.deb
documentation=$build/libquenxml2-doc_${version}_all.deb

# has PACKAGE PATTERN...: the package has a file for each pattern, counted from the root.
has() {
  dpkg -c "$1" | awk '{ print substr($6, 2) }' >"$work/contents"
  deb=$1
  shift
  for pattern in "$@"; do grep -qx -- "$pattern" "$work/contents" || fail "$(basename "$deb") lacks $pattern"; done
}
lib='/usr/lib/[^/]*'
has "$library" "$lib/libQuenXML2\.so\.2" "$lib/libQuenXML2\.so\.${version}" /usr/share/doc/libquenxml2-2/copyright
[ "$(grep -vc '/$' "$work/contents")" = 4 ] || fail "libquenxml2-2 has more than the library, copyright and changelog"
has "$development" /usr/include/quenxml2/quenxml2.h /usr/include/quenxml2/version.h "$lib/libQuenXML2\.so" \
  "$lib/pkgconfig/quenxml2\.pc" "$lib/cmake/QuenXML2/QuenXML2Config\.cmake"
has "$documentation" /usr/share/doc/libquenxml2-doc/html/index.html /usr/share/doc/libquenxml2-doc/docs/errors.md
depends() { dpkg -f "$1" Depends | tr ',' '\n' | sed 's/^ //; s/ .*//' | sort | tr '\n' ' '; }
[ "$(depends "$library")" = "libc6 libgcc-s1 libssl3 libstdc++6 libxalan-c112 libxerces-c3.2 " ] ||
  fail "libquenxml2-2 depends on $(depends "$library")"
dpkg -f "$development" Depends | grep -q "libquenxml2-2 (= $version)" || fail "libquenxml2-dev does not pin its library"
if command -v lintian >/dev/null; then
  lintian --fail-on error,warning --suppress-tags-from-file "$source/cmake/debian/lintian-suppressed" \
    "$library" "$development" "$documentation"
fi

root=$work/root
if [ "$(id -u)" = 0 ]; then
  ! dpkg -s libquenxml2-2 >/dev/null 2>&1 || fail "libquenxml2-2 is installed here; remove it first"
  root=/
  installed=yes
  dpkg -i "$library" "$development" "$documentation" >/dev/null
else
  for deb in "$library" "$development"; do dpkg -x "$deb" "$root"; done
fi
"$source/tests/consumer/run.sh" packages "$source" "$root" "${CXX:-g++}" "$version"

if [ -n "$installed" ]; then
  for package in libquenxml2-2 libquenxml2-dev libquenxml2-doc; do dpkg -L $package; done | sort -u >"$work/were"
  dpkg --purge libquenxml2-doc libquenxml2-dev libquenxml2-2 >/dev/null
  installed=
  grep -i quenxml2 "$work/were" | while read -r path; do [ ! -e "$path" ] || fail "$path is left"; done
  ! ldconfig -p | grep -q libQuenXML2 || fail "the loader still knows the library"
  echo "packages: PASSED (installed, used, removed)"
else
  echo "packages: PASSED (used from a folder: not root)"
fi
