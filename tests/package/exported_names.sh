#!/bin/sh
# Usage: exported_names.sh SOURCE_FOLDER BUILD_FOLDER CC LIBK_SUPPORT LIBK_CNVRT LIBK_CNVRT_TEXT
# The list of names in abi/, the dynamic symbol table and the public headers name the same functions; the first two with
# the same nodes.
set -eu

source=$1
build=$2
cc=$3
libk_support=$4
libk_cnvrt=$5
libk_cnvrt_text=$6
here=$(dirname "$0")
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=0

differ() {
    if ! diff "$1" "$2" > "$scratch/difference"; then
        echo "$3:"
        cat "$scratch/difference"
        failed=1
    fi
}

listed() { awk '/^@/ { node = substr($1, 2) } /^[a-zA-Z]/ { print $0 "@@" node }' "$1" | LC_ALL=C sort; }

# A name defined as anything but a plain function carries its type, so that it equals no listed name.
exported() {
    LC_ALL=C nm -D --defined-only "$1" |
        awk '$2 == "T" { print $3; next } $2 != "A" { print $3 " of type " $2 }' | LC_ALL=C sort
}

check() { # NAME LIBRARY HEADER_FOLDER
    listed "$source/abi/$1.symbols" > "$scratch/listed"
    exported "$2" > "$scratch/exported"
    # shellcheck disable=SC2046 # what pkg-config prints is words
    "$here/declared_functions.sh" \
        "$cc" "$3" "-I$source/support/include" "-I$build/include" $(pkg-config --cflags jansson) |
        cut -d ' ' -f 2 | LC_ALL=C sort > "$scratch/declared"
    differ "$scratch/listed" "$scratch/exported" "$1: listed in abi/ (<) and exported by the library (>)"
    sed 's/@.*//' "$scratch/listed" | LC_ALL=C sort > "$scratch/names"
    differ "$scratch/names" "$scratch/declared" "$1: listed in abi/ (<) and declared in the headers (>)"
    echo "$1 exports $(wc -l < "$scratch/exported") functions"
}

check libk_support "$libk_support" "$source/support/include"
check libk_cnvrt "$libk_cnvrt" "$source/include"
check libk_cnvrt_text "$libk_cnvrt_text" "$source/text/include"
exit $failed
