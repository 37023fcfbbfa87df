#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# A program that does the ten jobs gives what is expected of all of them.
#
#   output.sh PROGRAM EXPECTED
set -eu
file=$(mktemp)
trap 'rm -f "$file" "$file.out"' EXIT
"$1" "$file" > "$file.out"
diff "$2" "$file.out"
