#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# install-packages.sh GROUP...: installs the packages of these groups of debian-packages.txt that are
# missing. Does nothing, and needs no network, where all are there.
set -eu
list=$(dirname "$0")/debian-packages.txt
missing=
for group in "$@"; do
  packages=$(awk -v group="$group" '$1 == group { print $2 }' "$list")
  [ -n "$packages" ] || { echo "install-packages: there is no group '$group' in $list" >&2; exit 2; }
  for package in $packages; do
    dpkg-query -W -f '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
      missing="$missing $package"
  done
done
if [ -z "$missing" ]; then
  echo "Packages ($*): all installed."
  exit 0
fi
command -v apt-get >/dev/null || { echo "install-packages: no apt-get here; needed:$missing" >&2; exit 1; }
asRoot=
if [ "$(id -u)" != 0 ]; then
  command -v sudo >/dev/null || { echo "install-packages: run as root or install sudo; needed:$missing" >&2; exit 1; }
  asRoot=sudo
fi
echo "Packages ($*): installing$missing"
$asRoot apt-get update -qq
$asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
  -o Dpkg::Use-Pty=0 $missing >/dev/null
