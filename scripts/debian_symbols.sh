#!/bin/bash
# Prints the symbols file of the Debian package libk-cnvrt1: the names of abi/, each with the version that brought it.
set -euo pipefail
root=$(dirname "$(dirname "$(realpath "$0")")")

for list in "$root"/abi/*.symbols; do
    library=$(basename "$list" .symbols)
    echo "$library.so.1 libk-cnvrt1 #MINVER#"
    awk -v node="${library#lib}_1" '
        BEGIN { print " " node "@" node " 1.0.0" }
        /^[a-zA-Z]/ { print " " $0 "@" node " 1.0.0" }' "$list" | sort -u
done
