#!/bin/bash
# Builds the benchmarks where that is needed, and prints a table: ./bench shows the arguments.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
packages=("${build_packages[@]}" "${count_packages[@]}")
[ "${1:-}" != --plots ] || packages+=(gnuplot-nox jq python3-minimal)
need_packages "${packages[@]}"
configure bench release OFF -DKCNVRT_BENCH=ON
build bench all
unlock

programs=$root/build/bench/bin
documents=$root/build/bench/documents
counts=$root/build/bench/counts
mkdir -p "$documents"

# make_documents SCALE...
make_documents() {
    local layout scale
    for layout in old new; do
        for scale; do "$programs/bench_fixtures" "$layout" "$scale" > "$documents/$layout.$scale.json"; done
    done
}

# processes SCALE...: the tool's whole process beside others.
processes() {
    make_documents "$@"
    "$programs/bench_processes" "$programs" "$documents" "$@"
}

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

# The streams, in time and in instructions.
streams() {
    local layout
    need_packages jq
    make_documents 1 100
    for layout in old new; do
        "$programs/bench_lines" "$documents/$layout.1.json" 400 > "$documents/$layout.ndjson"
        "$programs/bench_lines" "$documents/$layout.1.json" 40 > "$documents/$layout.short.ndjson"
        "$programs/bench_lines" "$documents/$layout.100.json" 1 > "$documents/$layout.long.ndjson"
    done
    "$programs/bench_streams" "$programs" "$documents"
    mkdir -p "$counts"
    compare_streams to-new "$documents/old.short.ndjson"
    compare_streams to-old "$documents/new.short.ndjson"
}

# compare_streams DIRECTION FILE
compare_streams() {
    local tool plain
    tool=$(instructions "$programs/kcnvrt" stream "--$1" --jobs 1 "$2")
    plain=$(instructions "$programs/parse_and_dump_lines" "$2")
    awk -v direction="$1" -v tool="$tool" -v plain="$plain" 'BEGIN {
        printf "%s: %d instructions, %.2f of parsing and dumping lines\n", direction, tool, tool / plain
    }'
}

case ${1:-} in
    --streams) streams ;;
    --instructions)
        rm -rf "$counts"
        mkdir -p "$counts"
        counted "$counts/out" "$programs/bench_instructions" "${@:2}" > "$counts/sizes"
        awk -f "$root/scripts/bench_table.awk" "$counts/sizes" "$counts"/out[.0-9]*
        make_documents 10
        compare_process to-new "$documents/old.10.json"
        compare_process to-old "$documents/new.10.json"
        ;;
    --memory) exec "$programs/bench_memory" "${@:2}" ;;
    --processes) processes 1 10 100 ;;
    --wasm)
        "$root/scripts/wasm.sh"
        make_documents 1 10 100
        node "$root/benchmarks/wasm.js" "$programs" "$documents" "$root/build/wasm/package" 1 10 100
        ;;
    --plots)
        processes 1 3 10 30 100 | tee "$root/build/bench/figures"
        gnuplot -e "figures = '$root/build/bench/figures'; folder = '$root/docs'" "$root/scripts/plots.gp"
        ;;
    *)
        "$programs/bench_time" 100
        processes 1 10 100
        ;;
esac
