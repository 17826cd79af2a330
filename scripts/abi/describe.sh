#!/bin/bash
# Usage: describe.sh LIBRARY OUTPUT FOLDER...
# Writes what a program depends on that is linked with a library: its exported functions, their parameters and results,
# and the types in these that the headers in the folders define. The library has to be built with -g; where it was built
# makes no difference.
set -euo pipefail
library=$1
output=$2
shift 2

headers=()
for folder in "$@"; do
    headers+=(--headers-dir "$folder")
done
abidw --no-show-locs --no-comp-dir-path --no-corpus-path --no-elf-needed --exported-interfaces-only \
    --drop-private-types --drop-undefined-syms --type-id-style hash "${headers[@]}" "$library" |
    sed -E "s|^(  <abi-instr .* path=')[^']*/|\\1|" > "$output"
