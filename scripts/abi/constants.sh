#!/bin/bash
# Usage: constants.sh OUTPUT FOLDER [CFLAG...]
# Writes what a program has compiled into it from the headers in a folder, and no library can tell: their names, and
# enumerators and macros with their values.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
output=$1
folder=$2
shift 2

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

(cd "$folder" && find . -name '*.h' | LC_ALL=C sort | sed 's|^\./\(.*\)|#include "\1"|') > "$scratch/headers.h"
gcc -std=c11 -E -dD "-I$folder" "$@" "$scratch/headers.h" |
    awk -v FOLDER="$folder" -f "$here/constants.awk" > "$scratch/names"
{
    cat "$scratch/headers.h"
    cat << 'END'
#include <stdio.h>
#define PRINT(name) \
    printf(_Generic((name), char *: "%s \"%s\"\n", default: "%s %lld\n"), #name, \
           _Generic((name), char *: (name), default: (long long)(name)))
int main(void) {
END
    sed -n 's/^constant \(.*\)/    PRINT(\1);/p' "$scratch/names"
    echo '}'
} > "$scratch/print.c"
gcc -std=c11 -w "-I$folder" "$@" "$scratch/print.c" -o "$scratch/print"
{
    sed 's/#include "\(.*\)"/<\1>/' "$scratch/headers.h"
    sed -n 's/^macro //p' "$scratch/names"
    "$scratch/print"
} | LC_ALL=C sort > "$output"
