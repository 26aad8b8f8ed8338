#!/usr/bin/env bash
# Installs the built tree into a temporary prefix and uses it the two ways a
# downstream project would: CMake's find_package(kelm) and pkg-config from a
# C99 program.  The environment names the build and the tools it used:
#   KELM_BUILD_DIR KELM_SOURCE_DIR CMAKE CMAKE_GENERATOR CC CXX CFLAGS
#   KELM_TOOLCHAIN (may be empty) KELM_LIBDIR (relative to the prefix)
set -euo pipefail

work=$(mktemp -d "${TMPDIR:-/tmp}/kelm-install.XXXXXX")
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
libdir=$prefix/$KELM_LIBDIR
fail() { echo "FAIL: $*"; exit 1; }

"$CMAKE" --install "$KELM_BUILD_DIR" --prefix "$prefix" >"$work/install.log" ||
    { cat "$work/install.log"; fail "cmake --install"; }

# The library under its soname, the link-time name pointing at it, and the
# support library found beside it once installed.
lib=$libdir/libkelmv8.so.5.2
[ -f "$lib" ] || fail "$lib not installed"
[ "$(readlink "$libdir/libkelmv8.so")" = libkelmv8.so.5.2 ] || fail "libkelmv8.so does not link to libkelmv8.so.5.2"
[ -e "$libdir/libkelcore.so" ] && [ -e "$libdir/libkelcore.so.5" ] || fail "libkelcore links not installed"
dyn=$(readelf -d "$lib")
grep -q 'Library soname: \[libkelmv8.so.5.2\]' <<<"$dyn" || fail "soname: $(grep SONAME <<<"$dyn")"
grep -q 'R.*PATH.*\[\$ORIGIN\]' <<<"$dyn" || fail "installed library should search \$ORIGIN only: $(grep PATH <<<"$dyn")"

# CMake: a project that knows nothing but find_package(kelm) and kelm::kelm.
toolchain=()
if [ -n "${KELM_TOOLCHAIN:-}" ]; then
    [[ $KELM_TOOLCHAIN = /* ]] || KELM_TOOLCHAIN=$KELM_SOURCE_DIR/$KELM_TOOLCHAIN
    toolchain=(-DCMAKE_TOOLCHAIN_FILE="$KELM_TOOLCHAIN")
fi
"$CMAKE" -S "$KELM_SOURCE_DIR/tests/install" -B "$work/downstream" -G "$CMAKE_GENERATOR" \
    "${toolchain[@]}" -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log" 2>&1 ||
    { cat "$work/configure.log"; fail "configuring the downstream project"; }
"$CMAKE" --build "$work/downstream" >"$work/build.log" 2>&1 ||
    { cat "$work/build.log"; fail "building the downstream project"; }
"$work/downstream/downstream" || fail "the downstream program"

# pkg-config: strict C99 with the same compiler and flags as the build.
export PKG_CONFIG_PATH=$libdir/pkgconfig
flags=$(pkg-config --cflags --libs kelm) || fail "pkg-config does not find kelm"
# shellcheck disable=SC2086  # the flags are words
"$CC" $CFLAGS -std=c99 -pedantic -Wall -Wextra -Werror "$KELM_SOURCE_DIR/tests/install/pkgconfig_user.c" \
    $flags -o "$work/pkgconfig_user" || fail "compiling with pkg-config's flags ($flags)"
LD_LIBRARY_PATH=$libdir "$work/pkgconfig_user" || fail "the pkg-config program"
echo "installed tree works from CMake and pkg-config"
