#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# run.sh WAY SOURCE_DIR BUILD_DIR CXX VERSION: builds and runs the consumer project in one of these ways:
#   find_package, pkg-config  against the library of BUILD_DIR, installed in a folder of its own
#   add_subdirectory          with the sources of the library in its own build
#   static                    find_package and "pkg-config --static", against a static library
#   packages                  find_package and pkg-config, against the library that is installed in BUILD_DIR/usr
set -eu
way=$1 source=$2 build=$3 cxx=$4 version=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi

# by_find_package PREFIX
by_find_package() {
  cmake -S "$source/tests/consumer/installed" -B "$work/build" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" \
    -DCMAKE_PREFIX_PATH="$1"
  cmake --build "$work/build"
  grep -q "QuenXML2_DIR:PATH=$1/" "$work/build/CMakeCache.txt"
  LD_LIBRARY_PATH=$libraries "$work/build/consumer" "$version"
}

# by_pkg_config PREFIX OPTION...
by_pkg_config() {
  PKG_CONFIG_PATH=$(dirname "$(find "$1" -name quenxml2.pc)")
  export PKG_CONFIG_PATH
  shift
  [ "$(pkg-config --modversion quenxml2)" = "$version" ]
  # Unquoted: several arguments.
  "$cxx" -std=c++17 "$source/tests/consumer/main.cpp" -o "$work/consumer" $(pkg-config "$@" --cflags --libs quenxml2)
  LD_LIBRARY_PATH=$libraries "$work/consumer" "$version"
}

prefix=$work/prefix libraries=
case $way in
  find_package)
    cmake --install "$build" --prefix "$prefix" >/dev/null
    by_find_package "$prefix"
    ;;
  pkg-config)
    cmake --install "$build" --prefix "$prefix" >/dev/null
    libraries=$(dirname "$(find "$prefix" -name libQuenXML2.so)")
    by_pkg_config "$prefix"
    ;;
  add_subdirectory)
    # A project around ours gets the library alone. What the tests need is not asked for there.
    cmake -S "$source/tests/consumer/subdirectory" -B "$work/build" -G Ninja \
      -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=Release
    [ ! -d "$work/build/QuenXML2/tests" ] || { echo "tests were configured"; exit 1; }
    cmake --build "$work/build"
    "$work/build/consumer" "$version"
    ;;
  static)
    cmake -S "$source" -B "$work/static" -G Ninja -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=Release \
      -DBUILD_SHARED_LIBS=OFF -DQUENXML2_BUILD_TESTS=OFF -DQUENXML2_BUILD_BENCH=OFF -DQUENXML2_BUILD_EXAMPLES=OFF
    cmake --build "$work/static"
    cmake --install "$work/static" --prefix "$prefix" >/dev/null
    [ -z "$(find "$prefix" -name 'libQuenXML2.so*')" ]
    by_find_package "$prefix"
    by_pkg_config "$prefix" --static
    ;;
  packages)
    # What lies in the system itself is found without a path.
    [ "$build" = / ] || libraries=$(dirname "$(find "$build/usr/lib" -name libQuenXML2.so)")
    by_find_package "${build%/}/usr"
    by_pkg_config "${build%/}/usr/lib"
    ;;
  *) echo "run.sh: no way '$way'" >&2; exit 2 ;;
esac
