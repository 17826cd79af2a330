#!/bin/bash
# Writes the logs in docs/logs/ anew, each below its own head: what the tests and measurements count.
#   scripts/logs.sh            what the tests count: cases, laws, allocation-failures, hostile (three minutes)
#   scripts/logs.sh NAME...    some, also list-costs (ten minutes), coverage, fuzzing (two hours)
# A test compares the first four with what the tests count, and docs/trust.md with all of them.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

mark="<!-- scripts/logs.sh writes what follows. -->"

# rows PROGRAM: the rows of a table that a test prints.
rows() {
    lock
    need_packages "${test_packages[@]}"
    configure release release ON
    build release "$1"
    unlock
    "$root/build/release/bin/$1" --gtest_brief=1 | grep '^|'
}

# counted_cases: the cases of each folder.
counted_cases() {
    local folder
    for folder in "$root"/tests/cases/*/; do
        printf '| %s | %d |\n' "$(basename "$folder")" "$(cat "$folder"*.json | jq -s 'map(length) | add')"
    done | awk -F '|' '{ print; sum += $3 } END { print "| all | " sum " |" }'
}

cases() {
    printf '%s\n' "| folder | cases |" "|---|---:|"
    counted_cases
}

laws() {
    printf '%s\n' "| what | visited |" "|---|---:|"
    rows laws
}

allocation-failures() {
    printf '%s\n' "| conversions | of | allocations | points of failure | complete all the same |" \
        "|---|---:|---:|---:|---:|"
    rows allocation_failures
}

hostile() {
    printf '%s\n' "| kind of document | documents | rejected | longest time | most memory |" "|---|---:|---:|---:|---:|"
    rows hostile
}

list-costs() { "$root/scripts/costs.sh"; }

coverage() {
    printf '%s\n' "| folder | lines reached | of | | branches reached | of | |" "|---|---:|---:|---:|---:|---:|---:|"
    "$root/scripts/coverage.sh" > "$root/build/coverage.log"
    jq -r '
        def row: "\(.covered) | \(.total) | \(.share) %";
        .[] | "| \(.folder) | \(.lines | row) | \(.branches | row) |"
        ' "$root/build/coverage/folders.json"
}

fuzzing() {
    printf '%s\n' "| target | seconds | runs | edges reached |" "|---|---:|---:|---:|"
    "$root/fuzz" 20 | awk '{ printf "| %s | %d | %d | %d |\n", $1, $5, $2, $7 }'
}

[ $# -gt 0 ] || set -- cases laws allocation-failures hostile
for name in "$@"; do
    log=$root/docs/logs/$name.md
    [ -f "$log" ] || { say "There is no log of that name: $name"; exit 2; }
    made=$("$name")
    head=$(sed "\|^$mark|q" "$log")
    printf '%s\n\n%s\n' "$head" "$made" > "$log"
done
