#!/bin/bash
# The WebAssembly module and the npm package around it: build/wasm/package, packed as build/wasm/k-cnvrt-VERSION.tgz.
#   scripts/wasm.sh           builds them where that is needed
#   scripts/wasm.sh --test    and shows that they hold: the module imports nothing, keeps to its size and is the same in
#                             every build, the cases and the text layer's tests hold on its C library, and the package
#                             works where it is installed and answers as this machine's own library does
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"
. "$root/scripts/jansson.sh"

wasm=$root/build/wasm
toolchain=$root/cmake/toolchain-wasm32-wasi.cmake

install_packages() {
    [ ! -f "$wasm/installed/complete" ] || return 0
    say "Building Jansson for WebAssembly"
    install_jansson "$wasm/jansson" "$wasm/installed" "$toolchain" "-DCMAKE_C_FLAGS_RELEASE=-Oz -DNDEBUG" \
        "-DCMAKE_C_FLAGS=-ffunction-sections -fdata-sections -fvisibility=hidden"
    touch "$wasm/installed/complete"
}

# build_programs FOLDER TESTS TARGET...: in build/wasm/FOLDER, and each optimized beside its build.ninja. TESTS is ON or
# OFF.
build_programs() {
    local name passes
    export PKG_CONFIG_LIBDIR=$wasm/installed/lib/pkgconfig
    configure "wasm/$1" wasm "$2" -Wno-dev # CMake says that there are no shared libraries
    build "wasm/$1" "${@:3}"
    unset PKG_CONFIG_LIBDIR
    for name in "${@:3}"; do
        passes=(-Oz)
        [[ $name != *_module ]] || passes+=(--converge) # of what is shipped every byte counts
        [ "$wasm/$1/$name.wasm" -nt "$wasm/$1/bin/$name.wasm" ] ||
            quietly wasm-opt "${passes[@]}" "$wasm/$1/bin/$name.wasm" -o "$wasm/$1/$name.wasm"
    done
}

# What is linked in: Jansson, wasi-libc and, of LLVM, libc++ and what compiled code calls.
licences=("Jansson=$sources/jansson/LICENSE"
    "wasi-libc, and its part of musl=/usr/share/doc/wasi-libc/copyright"
    "libc++ and compiler-rt=/usr/share/doc/libc++-14-dev-wasm32/copyright"
    "The Apache License, version 2.0=/usr/share/common-licenses/Apache-2.0")

make_package() {
    quietly node "$root/wasm/npm/make.js" "$wasm/release/k_cnvrt_module.wasm" "$root/text/include/k_cnvrt_text.h" \
        "$wasm/package" "${licences[@]}"
    rm -f "$wasm"/*.tgz
    (cd "$wasm" && quietly npm pack --offline --ignore-scripts ./package)
}

# A copy of the sources in another folder makes the same package. The compiler runs again for every file, whatever its
# cache has.
check_second_build() {
    local copy=$wasm/again
    rm -rf "$copy"
    mkdir -p "$copy/build"
    tar --directory "$root" --exclude=./build --exclude=./.git -cf - . | tar --directory "$copy" -xf -
    cp -r "$sources" "$copy/build"
    CCACHE_DISABLE=1 "$copy/scripts/wasm.sh"
    cmp "$wasm/package/k_cnvrt.wasm" "$copy/build/wasm/package/k_cnvrt.wasm"
    cmp "$wasm"/*.tgz "$copy"/build/wasm/*.tgz
    rm -rf "$copy"
}

sizes() { echo "wasm module, bytes = $(stat -c %s "$wasm/release/k_cnvrt_module.wasm")"; }

is_test=no
[ "${1:-}" != --test ] || is_test=yes

lock
need_packages "${wasm_packages[@]}"
need_npm
fetch_jansson
install_packages
build_programs release OFF k_cnvrt_module
make_package
if [ $is_test = yes ]; then
    need_packages "${test_packages[@]}" googletest
    build_programs release ON k_cnvrt_small_module cases text_requests text_unit
    configure release release ON
    build release k_cnvrt_text kcnvrt cases
fi
unlock
say "The package is $(echo "$wasm"/*.tgz)"
[ $is_test = yes ] || exit 0

sizes | check_limits wasm
check_second_build
exec "$root/tests/wasm/run.sh" "$wasm"
