#!/bin/bash
# What ten times the entries cost, for every kind of list: instructions per conversion, as callgrind counts them, of the
# examples' lists with a thousand and with ten thousand entries. Nothing is asserted: it prints a summary, a table of
# the lists that are read entry by entry, the steepest first, and one of those that cost the same whatever they hold.
# Takes about ten minutes.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${count_packages[@]}"
configure release release ON
quietly cmake "$root/build/release" # valgrind may be new
build release list_costs
unlock

counts=$(mktemp -d)
trap 'rm -r "$counts"' EXIT
valgrind --tool=callgrind --instr-atstart=no --callgrind-out-file="$counts/counts" \
    "$root/build/release/bin/list_costs" > "$counts/treatments" 2> "$counts/log" || { cat "$counts/log" >&2; exit 1; }

# A line for each list: its name, what becomes of it, instructions for few and for many entries, and their ratio.
awk -F '\t' '
    FILENAME ~ /treatments$/ { treatment[$1] = $2 }
    /^desc: Trigger: Client Request: / { name = $0; sub(/^desc: Trigger: Client Request: /, "", name) }
    /^totals: / && name != "" { split($0, words, " "); instructions[name] = words[2]; name = "" }
    END {
        for (list in treatment) {
            few = instructions[list " 1000"]
            many = instructions[list " 10000"]
            if (few == 0 || many == 0) { print list ": not counted" > "/dev/stderr"; exit 1 }
            printf "%s|%s|%d|%d|%.1f\n", list, treatment[list], few, many, many / few
        }
    }' "$counts/treatments" "$counts"/counts* > "$counts/lists"

sort -t '|' -k 5,5n "$counts/lists" | awk -F '|' '
    $5 >= 2 { ratio[++count] = $5 }
    $5 < 2 { same++ }
    END {
        print "| lists | count | ratio at least | of half of them at most | at most |"
        print "|---|---:|---:|---:|---:|"
        printf "| read entry by entry | %d | %.1f | %.1f | %.1f |\n", count,
            ratio[1], ratio[int((count + 1) / 2)], ratio[count]
        printf "| that cost the same whatever they hold | %d | | | |\n", same
    }'
echo
echo "| list | instructions, 1,000 entries | 10,000 entries | ratio |"
echo "|---|---:|---:|---:|"
sort -t '|' -k 5,5nr -k 1,1 "$counts/lists" |
    awk -F '|' '$5 >= 2 { printf "| %s | %d | %d | %.1f |\n", $1, $3, $4, $5 }'
echo
echo "| list | what becomes of it | instructions, 10,000 entries |"
echo "|---|---|---:|"
sort -t '|' -k 2,2r -k 1,1 "$counts/lists" | awk -F '|' '$5 < 2 { printf "| %s | %s | %d |\n", $1, $2, $4 }'
