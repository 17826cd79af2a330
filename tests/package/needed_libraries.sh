#!/bin/sh
# Usage: needed_libraries.sh LIBK_SUPPORT LIBK_CNVRT LIBK_CNVRT_TEXT
# Each library loads Jansson, libc and what is ours, and nothing of the C++ run-time libraries.
set -eu

check() {
    needed=$(LC_ALL=C readelf -d "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | sort | tr '\n' ' ')
    if [ "$needed" != "$2 " ]; then
        echo "$1 needs $needed"
        echo "instead of $2"
        exit 1
    fi
    soname=$(LC_ALL=C readelf -d "$1" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
    if [ "$soname" != "$3" ]; then
        echo "$1 is called $soname instead of $3"
        exit 1
    fi
    echo "$soname needs $needed"
}

major=$("$(dirname "$0")/../../scripts/version.sh" --major)
check "$1" "libc.so.6 libjansson.so.4" "libk_support.so.$major"
check "$2" "libc.so.6 libjansson.so.4 libk_support.so.$major" "libk_cnvrt.so.$major"
check "$3" "libc.so.6 libjansson.so.4 libk_cnvrt.so.$major libk_support.so.$major" "libk_cnvrt_text.so.$major"
