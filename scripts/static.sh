#!/bin/bash
# The static libraries (KCNVRT_STATIC): a C program links them without the C++ library and does what the shared ones do,
# and what one converter alone takes of a device's flash stays in its limit.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

installed=$root/build/static/installed
program=$root/build/static/program

# link OPTION... SOURCE PACKAGE: with the C driver, dropping what is not used.
link() {
    local arguments
    read -ra arguments < <(PKG_CONFIG_PATH=$pkgconfig pkg-config --cflags --libs "${@: -1}")
    cc -Os -flto=auto -ffunction-sections -fdata-sections -Wl,--gc-sections -Wl,-z,noseparate-code -o "$program" \
        "${@:1:$#-1}" "${arguments[@]}"
}

fail() {
    say "$@"
    exit 1
}

check_needed() {
    local needed
    needed=$(readelf --dynamic "$program" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | xargs)
    [ "$needed" = "libc.so.6 libjansson.so.4" ] || fail "The program needs $needed"
}

size_with() {
    link "$@" "$root/tests/static/program.c" k_cnvrt
    strip "$program"
    stat -c %s "$program"
}

# figure NAME CONVERT
figure() { echo "static $1, bytes = $(($(size_with "-DCONVERT(source, err)=$2") - without))"; }

figures() {
    local without
    without=$(size_with)
    figure "section wan_pvid" "SECTION(k_cnvrt_get_wan_pvid_from_old, source, err)"
    figure "section rip" "SECTION(k_cnvrt_get_rip_from_old, source, err)"
    figure "whole to-new" "k_cnvrt_to_new(source, NULL, 0, err)"
}

lock
need_packages "${build_packages[@]}"
configure release release OFF
build release kcnvrt
configure static release OFF -DKCNVRT_STATIC=ON -DKCNVRT_WERROR=ON
build static all
quietly cmake --install "$root/build/static" --prefix "$installed"
unlock
pkgconfig=$(dirname "$(find "$installed" -name k_cnvrt.pc)")

document=$root/examples/home-gateway.old.json
expected=$("$root/build/release/bin/kcnvrt" to-new --compact "$document")
link "-DCONVERT(source, err)=k_cnvrt_to_new(source, NULL, 0, err)" "$root/tests/static/program.c" k_cnvrt
check_needed
[ "$("$program" "$document")" = "$expected" ] || fail "The program makes something else of trees than the tool."
link "$root/tests/package/text_consumer/convert.c" k_cnvrt_text
check_needed
[ "$("$program" "$(< "$document")")" = "$expected" ] || fail "The program makes something else of texts than the tool."
[ "$("$installed/bin/kcnvrt" to-new --compact "$document")" = "$expected" ] || fail "The tools disagree."

figures | check_limits static
