#!/bin/bash
# The figures that are exact and that a change can move unseen, each within its limit in tests/limits.txt: sizes and
# relocations of the shipped libraries, allocations, and ratios of instructions. Takes about three minutes.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${count_packages[@]}"
configure release release ON
build release all
unlock

failed=0

# Of what is installed, stripped.
library_figures() {
    local library stripped=$root/build/stripped
    for library in "$root"/build/release/lib/libk_*.so; do
        strip -o "$stripped" "$library"
        echo "library $(basename "$library" .so), bytes = $(stat -c %s "$stripped")"
        echo "library $(basename "$library" .so), relocations = $(readelf -rW "$library" | grep -c '_RELATIVE')"
    done
}

# The tool, stripped, and what starting it costs.
tool_figures() {
    local tool=$root/build/release/bin/kcnvrt counts=$root/build/counts.start
    strip -o "$root/build/stripped" "$tool"
    echo "tool kcnvrt, bytes = $(stat -c %s "$root/build/stripped")"
    valgrind --quiet --tool=callgrind --callgrind-out-file="$counts" "$tool" --version > "$root/build/version"
    echo "tool kcnvrt --version, instructions = $(awk '/^summary: / { print $2 }' "$counts")"
}

library_figures | check_limits library || failed=1
tool_figures | check_limits tool || failed=1
"$root/bench" --memory 10 | awk -v table=memory -f "$root/scripts/figures.awk" | check_limits memory || failed=1
"$root/bench" --instructions > "$root/build/instructions"
awk -v table=instructions -f "$root/scripts/figures.awk" "$root/build/instructions" |
    check_limits instructions || failed=1
sed -nE 's/^kcnvrt (to-[a-z]+): .*, ([0-9.]+) of parsing.*$/process \1 \/ parsing and dumping = \2/p' \
    "$root/build/instructions" | check_limits process || failed=1
exit "$failed"
