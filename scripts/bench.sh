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
case ${1:-} in
    --instructions)
        counts=$root/build/bench/counts
        rm -rf "$counts"
        mkdir -p "$counts"
        valgrind --tool=callgrind --callgrind-out-file="$counts/out" "$programs/bench_instructions" > "$counts/sizes" 2> "$counts/log"
        awk -f "$root/scripts/bench_table.awk" "$counts/sizes" "$counts"/out*
        ;;
    --memory) exec "$programs/bench_memory" ;;
    *) exec "$programs/bench_time" "$@" ;;
esac
