#!/bin/sh
# Usage: declared_functions.sh CC FOLDER [CFLAGS...]
# Prints "handler NAME" or "function NAME" for each function that the headers in FOLDER declare, sorted by name.
set -eu

cc=$1
folder=$2
shift 2
here=$(dirname "$0")

(cd "$folder" && find . -name '*.h' | LC_ALL=C sort | sed 's|^\./\(.*\)|#include "\1"|') |
    "$cc" -std=c11 -E "-I$folder" "$@" -x c - |
    awk -v FOLDER="$folder" -f "$here/declared_functions.awk" |
    LC_ALL=C sort -u -k 2
