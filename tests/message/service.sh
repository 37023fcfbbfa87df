#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# service.sh CLIENT SERVICE EXPECTED: the two programs of the example come to the expected talk.
set -eu
timeout 60 "$1" "$2" | diff -u "$3" -
