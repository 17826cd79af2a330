#!/bin/bash
# The fuzz targets, one after the other, each for so long: ./fuzz shows the arguments.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

targets=(document_to_new document_to_old section difference tool stream text request)

usage() {
    echo "usage: ./fuzz MINUTES [TARGET...], or ./fuzz --seconds SECONDS [TARGET...]; the targets: ${targets[*]}" >&2
    exit 2
}

# The value that libFuzzer prints at the end under a name.
final() { sed -n "s/^stat::$1: *//p" "$log"; }

# run TARGET: the number of runs and the lines of the libraries that they reached, or what was found.
run() {
    local seeds=$root/build/fuzz/tests/fuzz/seeds/$1 learned=$root/build/fuzz/learned/$1 found=$root/build/fuzz/found/$1
    mkdir -p "$learned" "$found"
    log=$found/last.log
    # The tool has a standard error of its own.
    if ! "$root/build/fuzz/bin/fuzz_$1" -max_total_time="$seconds" -max_len=65536 -timeout=30 -rss_limit_mb=2048 \
        -close_fd_mask=2 -print_final_stats=1 -artifact_prefix="$found/" "$learned" "$seeds" > "$log" 2>&1; then
        tail -n 100 "$log" >&2
        echo "$1: found something; $found/ has it" >&2
        exit 1
    fi
    printf '%-16s %10d runs in %5d s, %6d edges reached\n' "$1" "$(final number_of_executed_units)" "$seconds" \
        "$(grep -o 'cov: [0-9]*' "$log" | tail -n 1 | cut -d ' ' -f 2)"
}

unit=60
if [ "${1:-}" = --seconds ]; then
    unit=1
    shift
fi
[[ ${1:-} =~ ^[1-9][0-9]*$ ]] || usage
seconds=$(($1 * unit))
shift
[ $# -eq 0 ] || targets=("$@")

lock
need_packages "${test_packages[@]}" "${fuzz_packages[@]}"
configure fuzz fuzz OFF
build fuzz "${targets[@]/#/fuzz_}"
unlock
for target in "${targets[@]}"; do run "$target"; done
