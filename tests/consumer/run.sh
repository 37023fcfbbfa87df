#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# run.sh WAY SOURCE_DIR BUILD_DIR CXX: builds and runs the consumer project in one of three ways:
#   find_package, pkg-config  against the library of BUILD_DIR, installed in a folder of its own
#   add_subdirectory          with the sources of the library in its own build
set -eu
way=$1 source=$2 build=$3 cxx=$4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
case $way in
  find_package)
    cmake --install "$build" --prefix "$work/prefix" >/dev/null
    cmake -S "$source/tests/consumer/installed" -B "$work/build" -G Ninja \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$work/prefix"
    cmake --build "$work/build"
    "$work/build/consumer"
    ;;
  add_subdirectory)
    # A project around ours gets the library alone. What the tests need is not asked for there.
    if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
    cmake -S "$source/tests/consumer/subdirectory" -B "$work/build" -G Ninja \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=Release
    [ ! -d "$work/build/QuenXML2/tests" ] || { echo "tests were configured"; exit 1; }
    cmake --build "$work/build"
    "$work/build/consumer"
    ;;
  pkg-config)
    cmake --install "$build" --prefix "$work/prefix" >/dev/null
    PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name quenxml2.pc)")
    export PKG_CONFIG_PATH
    # Unquoted: several arguments.
    "$cxx" -std=c++17 "$source/tests/consumer/main.cpp" -o "$work/consumer" \
      $(pkg-config --define-variable=prefix="$work/prefix" --cflags --libs quenxml2)
    LD_LIBRARY_PATH=$(pkg-config --define-variable=prefix="$work/prefix" --variable=libdir quenxml2) \
      "$work/consumer"
    ;;
  *) echo "run.sh: no way '$way'" >&2; exit 2 ;;
esac
