#!/bin/bash
# What ten times the entries cost, for every kind of list: instructions per conversion, as callgrind counts them, of the
# examples' lists with a thousand and with ten thousand entries. Nothing is asserted: it prints a table, the steepest
# first. Takes about ten minutes.
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
quietly valgrind --tool=callgrind '--toggle-collect=*counted(*' --callgrind-out-file="$counts/counts" "$root/build/release/bin/list_costs"

echo "| list | instructions, 1,000 entries | 10,000 entries | ratio |"
echo "|---|---:|---:|---:|"
awk '
    /^desc: Trigger: Client Request: / { name = $0; sub(/^desc: Trigger: Client Request: /, "", name) }
    /^(summary|totals): / && name != "" { instructions[name] = $2; name = "" }
    END {
        for (name in instructions) {
            if (name !~ / 10000$/) continue
            list = name
            sub(/ 10000$/, "", list)
            few = instructions[list " 1000"]
            printf "| %s | %d | %d | %.1f |\n", list, few, instructions[name], instructions[name] / few
        }
    }' "$counts"/counts* | sort -t '|' -k 5,5nr -k 2,2
