#!/bin/sh
# Usage: consumers.sh BUILD_FOLDER SCRATCH_FOLDER CC CXX GENERATOR
# Installs a copy, moves it, and builds and runs programs against it: two in C11 found through pkg-config, of which one
# knows texts only, and two in C++ found through the CMake package. All must print what the installed tool prints.
# In the end what was installed is removed.
# shellcheck disable=SC2046 # what pkg-config prints is words
set -eu

build=$(realpath "$1")
mkdir -p "$2"
scratch=$(realpath "$2")
cc=$3
cxx=$4
generator=$5
here=$(cd "$(dirname "$0")" && pwd)

rm -rf "$scratch"
mkdir -p "$scratch"
cmake --install "$build" --prefix "$scratch/first" > "$scratch/install.log"
mv "$scratch/first" "$scratch/moved"
prefix=$scratch/moved

fail() {
    echo "$*"
    exit 1
}

expect() { # WHAT EXPECTED GOT
    [ "$2" = "$3" ] || fail "$1: expected $2, got $3"
    echo "$1: $3"
}

pkgconfig=$(find "$prefix" -name k_cnvrt.pc)
libraries=$(dirname "$(dirname "$pkgconfig")")
PKG_CONFIG_PATH=$(dirname "$pkgconfig")${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}
export PKG_CONFIG_PATH

document='{"lang": "en", "wan_pvid": {"ppp0": 10}}'
printf '%s' "$document" > "$scratch/old.json"
loaded=$(ldd "$prefix/bin/kcnvrt" | sed -n 's/.*libk_support.* => \(.*\) (.*/\1/p')
expect "the installed tool loads libk_support from" \
    "$(readlink -f "$libraries")" "$(dirname "$(readlink -f "$loaded")")"
"$prefix/bin/kcnvrt" to-new --compact "$scratch/old.json" > "$scratch/new.json"
new=$(cat "$scratch/new.json")
case $new in
    *'"lang":"en"'*'"pvid":10'* | *'"pvid":10'*'"lang":"en"'*) ;;
    *) fail "the installed tool prints $new" ;;
esac

"$here/declared_functions.sh" "$cc" "$prefix/include" $(pkg-config --cflags jansson) > "$scratch/declared"
sed 's/\(.*\) \(.*\)/\1(\2)/' "$scratch/declared" > "$scratch/functions.inc"
"$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror "-I$scratch" $(pkg-config --cflags k_cnvrt k_cnvrt_text) \
    "$here"/c_consumer/*.c \
    -o "$scratch/c_consumer" $(pkg-config --libs k_cnvrt k_cnvrt_text) "-Wl,-rpath,$libraries"
# Some conversions print lines of their own before it.
known=$("$scratch/c_consumer" functions | tail -n 1)
expect "functions that the C program knows" "$(wc -l < "$scratch/declared")" "$known"
expect "the library says its version" "$(pkg-config --modversion k_cnvrt)" "$("$scratch/c_consumer" version)"
expect "the C program converts" "$new" "$("$scratch/c_consumer" convert "$document")"

# Jansson's header is none of its business.
"$cc" -std=c11 -Wall -Wextra -Wpedantic -Werror $(pkg-config --cflags k_cnvrt_text) "$here/text_consumer/convert.c" \
    -o "$scratch/text_consumer" $(pkg-config --libs k_cnvrt_text) "-Wl,-rpath,$libraries"
expect "the C program converts texts" "$new" "$("$scratch/text_consumer" "$document")"
expect "the C program names the version" "kcnvrt $("$scratch/text_consumer")" "$("$prefix/bin/kcnvrt" --version)"

cmake -S "$here/cpp_consumer" -B "$scratch/cpp" -G "$generator" \
    "-DCMAKE_CXX_COMPILER=$cxx" "-DCMAKE_PREFIX_PATH=$prefix" \
    > "$scratch/cpp.log" 2>&1 || { cat "$scratch/cpp.log"; exit 1; }
cmake --build "$scratch/cpp" > "$scratch/cpp.log" 2>&1 || { cat "$scratch/cpp.log"; exit 1; }
expect "the C++ program converts" "$new" "$("$scratch/cpp/cpp_consumer" "$document")"
expect "the C++ program converts texts" "$new" "$("$scratch/cpp/text_consumer" "$document")"

# left NAME: what is below $scratch/NAME.
left() { find "$scratch/$1" ! -type d -o -name '*cnvrt*'; }

# From a folder, and with paths, that mean nothing where the list of files is read.
remove() { cmake --build "$build" --target uninstall > "$scratch/uninstall.log" 2>&1; }
cd "$scratch"
cmake --install "$build" --prefix removed > install.log
[ ! -e "$build/python/library-path" ] || fail "A file of one user is left where another one may install next."
grep -qx "$(pwd -P)/removed/bin/kcnvrt" "$build/install_manifest.txt" || fail "The list of files has no whole paths."
remove
expect "what is installed can be removed; left are" "" "$(left removed)"

cmake --install "$build" --prefix kept > install.log
cp "$build/install_manifest.txt" manifest.kept
DESTDIR=other-root cmake --install "$build" --prefix "$scratch/kept" > install.log
grep -qx "$(pwd -P)/other-root$(pwd -P)/kept/bin/kcnvrt" "$build/install_manifest.txt" ||
    fail "The list of files does not say where DESTDIR has put them."
remove
expect "what DESTDIR has put elsewhere can be removed; left are" "" "$(left other-root)"
[ -x kept/bin/kcnvrt ] || fail "What was installed elsewhere is removed, too."

# A file that cannot be removed is a folder here, so that root cannot either; the list stays for who can.
cp manifest.kept "$build/install_manifest.txt"
rm kept/bin/kcnvrt
mkdir -p kept/bin/kcnvrt/full
! remove || fail "What cannot be removed is not told."
grep -q '^  *[^ ].*/kept/bin/kcnvrt$' uninstall.log || fail "$(cat uninstall.log)"
rmdir kept/bin/kcnvrt/full kept/bin/kcnvrt
remove
expect "what could not be removed can be later; left are" "" "$(left kept)"
