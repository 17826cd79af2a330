#!/bin/bash
# The cases on other machines, 32-bit little-endian ARM and 32-bit big-endian MIPS: each has to hold there, and
# everything that they observe has to be what it is here, byte for byte. So has what the tool makes of the examples.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"
. "$root/scripts/jansson.sh"

# Triplets of compilers, and the emulator of each.
declare -A emulators=([arm-linux-gnueabihf]=qemu-arm-static [mips-linux-gnu]=qemu-mips-static)

cross=$root/build/cross

fail() {
    echo "$*" >&2
    exit 1
}

# What the build needs on the other machine, from the same Debian packages as here.
install_packages() {
    local installed=$cross/$1/installed
    [ ! -f "$installed/complete" ] || return 0
    local toolchain=$root/cmake/toolchain-$1.cmake
    install_jansson "$cross/$1/jansson" "$installed" "$toolchain" -DJANSSON_BUILD_SHARED_LIBS=ON
    install_package /usr/src/googletest "$cross/$1/googletest" "$installed" "$toolchain" -DBUILD_GMOCK=OFF
    touch "$installed/complete"
}

build_for() {
    export PKG_CONFIG_LIBDIR=$cross/$1/installed/lib/pkgconfig
    configure "cross/$1/release" release ON "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/toolchain-$1.cmake" \
        "-DCMAKE_PREFIX_PATH=$cross/$1/installed"
    build "cross/$1/release" cases kcnvrt k_cnvrt_text text_requests text_unit
    unset PKG_CONFIG_LIBDIR
}

# outcomes FOLDER COMMAND...: what the cases observe and what the tool makes of the examples, through an emulator if
# any.
outcomes() {
    local folder=$1 example
    shift
    "$@" "$folder/bin/cases" --print
    for example in "$root"/examples/*.json; do
        "$@" "$folder/bin/kcnvrt" convert "$example" 2>&1 || true
    done
}

# The libraries need Jansson, each other and the C library, and nothing else.
check_needed() {
    local needed major
    major=$("$root/scripts/version.sh" --major)
    needed=$("$1-readelf" --dynamic "$cross/$1/release/lib/"lib*.so |
        sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort -u | xargs)
    [ "$needed" = "libc.so.6 libjansson.so.4 libk_cnvrt.so.$major libk_support.so.$major" ] ||
        fail "$1: the libraries need $needed"
}

# What each library takes in the flash of a device.
sizes_on() {
    local library
    for library in "$cross/$1/release/lib/"libk_*.so; do
        "$1-strip" -o "$cross/$1/stripped" "$library"
        echo "cross $1 $(basename "$library" .so), bytes = $(stat -c %s "$cross/$1/stripped")"
    done
}

check_on() {
    local emulator=("${emulators[$1]}" -L "/usr/$1") folder=$cross/$1/release
    check_needed "$1"
    "${emulator[@]}" "$folder/bin/cases" --gtest_brief=1
    "${emulator[@]}" "$folder/bin/text_requests" --gtest_brief=1
    # Reader and writer look at eight bytes at a time; a part of the texts shows whether they do so here.
    KCNVRT_SAMPLE=20 "${emulator[@]}" "$folder/bin/text_unit" --gtest_brief=1
    outcomes "$folder" "${emulator[@]}" > "$cross/$1/outcomes"
    cmp "$cross/outcomes" "$cross/$1/outcomes"
    echo "$1: $(grep -c '^case ' "$cross/$1/outcomes") cases, all as here"
}

lock
need_packages "${test_packages[@]}" "${cross_packages[@]}"
fetch_jansson
configure release release ON
build release cases kcnvrt
for triplet in "${!emulators[@]}"; do
    install_packages "$triplet"
    build_for "$triplet"
done
unlock
outcomes "$root/build/release" > "$cross/outcomes"
# An emulator has one core.
checks=()
for triplet in "${!emulators[@]}"; do
    check_on "$triplet" &
    checks+=($!)
done
wait_for "${checks[@]}"
for triplet in "${!emulators[@]}"; do sizes_on "$triplet"; done > "$cross/figures"
check_limits cross < "$cross/figures"
