#!/bin/bash
# What ten times the entries cost, for every kind of list: instructions per conversion, as callgrind counts them, of the
# examples' lists with a hundred and with a thousand entries. Nothing is asserted: it prints a table, the steepest first.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" valgrind
configure release release ON
quietly cmake "$root/build/release" # valgrind may be new
build release list_costs
unlock

counts=$(mktemp -d)
trap 'rm -r "$counts"' EXIT
quietly valgrind --tool=callgrind --callgrind-out-file="$counts/counts" "$root/build/release/bin/list_costs"

echo "| list | instructions, 100 entries | 1,000 entries | ratio |"
echo "|---|---:|---:|---:|"
awk '
    /^desc: Trigger: Client Request: / { name = $0; sub(/^desc: Trigger: Client Request: /, "", name) }
    /^(summary|totals): / && name != "" { instructions[name] = $2 }
    END {
        for (name in instructions) {
            if (name !~ / 1000$/) continue
            list = name
            sub(/ 1000$/, "", list)
            few = instructions[list " 100"]
            printf "| %s | %d | %d | %.1f |\n", list, few, instructions[name], instructions[name] / few
        }
    }' "$counts"/counts* | sort -t '|' -k 5,5nr -k 2,2
