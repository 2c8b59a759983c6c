#!/usr/bin/env bash
# The installed tree as a stranger meets it: install, move the tree elsewhere, run both tools
# from it, and build and run the example against it once with find_package and once with
# pkg-config.
#   installed_tree.sh BUILD_DIR SOURCE_DIR LIBDIR VERSION
set -euo pipefail
build=$1 source=$2 libdir=$3 version=$4
sample=$build/examples/sample-project/sample.corvelle

work=$(mktemp -d "${TMPDIR:-/tmp}/corvelle-install-XXXXXX")
trap 'rm -rf "$work"' EXIT

fail() {
    printf 'installed tree: %s\n' "$*" >&2
    exit 1
}
# expect_output WHAT TEXT COMMAND...: COMMAND succeeds and its output holds TEXT.
expect_output() {
    local what=$1 text=$2 out
    shift 2
    out=$("$@" 2>&1) || fail "$what failed: $out"
    [[ $out == *"$text"* ]] || fail "$what: expected '$text' in: $out"
}

cmake --install "$build" --prefix "$work/installed" >/dev/null
# Installed in one place, used from another: nothing may point back at the first.
mv "$work/installed" "$work/moved"
tree=$work/moved
lib=$tree/$libdir

[ "$(readlink "$lib/libcorvelle.so.1")" = "libcorvelle.so.$version" ] ||
    fail "libcorvelle.so.1 does not point at libcorvelle.so.$version"
readelf -d "$lib/libcorvelle.so.$version" | grep -q 'Library soname: \[libcorvelle.so.1\]' ||
    fail "the module's soname is not libcorvelle.so.1"
exports=$(nm -D --defined-only "$lib/libcorvelle.so.$version" | awk '{print $3}' | sort | tr '\n' ' ')
[ "$exports" = "CreatePackageManager ExitDll GetPluginFactory InitDll " ] ||
    fail "the module exports: $exports"
for program in corvelle corvelle-host; do
    readelf -d "$tree/bin/$program" | grep -q 'RUNPATH.*\[\$ORIGIN/' ||
        fail "$program has no \$ORIGIN-relative RUNPATH"
    expect_output "$program --version" "$program $version (module class version $version." \
        "$tree/bin/$program" --version
done
[ -f "$tree/include/corvelle/version.h" ] && [ -f "$tree/include/corvelle/utf8.h" ] ||
    fail "the public headers are not installed"
expect_output "corvelle info" "Tracks:" "$tree/bin/corvelle" info "$sample"

cmake -S "$source/examples/host-free-caller" -B "$work/with-cmake" -G Ninja \
    -DCMAKE_PREFIX_PATH="$tree" >/dev/null
cmake --build "$work/with-cmake" >/dev/null
expect_output "the example built with find_package" "Corvelle Sample" \
    "$work/with-cmake/read_package" "$sample" "$work/media"
[ -f "$work/media/Audio/tone.wav" ] || fail "the example placed no audio"

export PKG_CONFIG_PATH=$lib/pkgconfig
[ "$(pkg-config --modversion corvelle)" = "$version" ] || fail "corvelle.pc gives another version"
# shellcheck disable=SC2046 # the flags are words
c++ -std=c++17 -Wall -Wextra -Werror -o "$work/with-pkg-config" \
    "$source/examples/host-free-caller/read_package.cpp" $(pkg-config --cflags --libs corvelle) \
    -Wl,-rpath,"$(pkg-config --variable=libdir corvelle)"
expect_output "the example built with pkg-config" "Corvelle Sample" \
    "$work/with-pkg-config" "$sample" "$work/media-again"
