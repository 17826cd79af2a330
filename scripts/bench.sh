#!/bin/bash
# Builds the benchmarks where that is needed, and prints a table: ./bench shows the arguments.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${build_packages[@]}" libbenchmark-dev valgrind
configure bench release OFF -DKCNVRT_BENCH=ON
build bench all
unlock

programs=$root/build/bench/bin
documents=$root/build/bench/documents
counts=$root/build/bench/counts
mkdir -p "$documents"
for layout in old new; do "$programs/bench_fixtures" "$layout" 10 > "$documents/$layout.json"; done

# counted FILE COMMAND...: runs it for callgrind, which writes what it counts into FILE.
counted() { valgrind --tool=callgrind --callgrind-out-file="$1" "${@:2}" 2> "$counts/log"; }

# instructions COMMAND...: of the whole process.
instructions() {
    counted "$counts/process" "$@" > "$counts/output"
    awk '/^summary: / { print $2 }' "$counts/process"
}

# The tool against a program that only parses and dumps: compare_process DIRECTION FILE
compare_process() {
    local tool plain
    tool=$(instructions "$programs/kcnvrt" "$1" "$2")
    plain=$(instructions "$programs/parse_and_dump" "$2")
    awk -v direction="$1" -v tool="$tool" -v plain="$plain" 'BEGIN {
        printf "kcnvrt %s: %d instructions of the process, %.2f of parsing and dumping\n", direction, tool, tool / plain
    }'
}

case ${1:-} in
    --instructions)
        rm -rf "$counts"
        mkdir -p "$counts"
        counted "$counts/out" "$programs/bench_instructions" > "$counts/sizes"
        awk -f "$root/scripts/bench_table.awk" "$counts/sizes" "$counts"/out[.0-9]*
        compare_process to-new "$documents/old.json"
        compare_process to-old "$documents/new.json"
        ;;
    --memory) exec "$programs/bench_memory" ;;
    *)
        exec "$programs/bench_time" 100 "$programs/kcnvrt" "$programs/parse_and_dump" \
            "$documents/old.json" "$documents/new.json"
        ;;
esac
