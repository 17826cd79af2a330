#!/bin/bash
# The cases under valgrind: no error and no leak.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${count_packages[@]}"
configure debug debug ON
build debug cases
unlock

# shard NUMBER: each core takes its part.
shard() {
    GTEST_SHARD_INDEX=$1 valgrind --quiet --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=all \
        --show-leak-kinds=all "$root/build/debug/bin/cases" --gtest_brief=1 "${@:2}"
}

GTEST_TOTAL_SHARDS=$(nproc)
export GTEST_TOTAL_SHARDS
shards=()
for number in $(seq 0 $((GTEST_TOTAL_SHARDS - 1))); do
    shard "$number" "$@" &
    shards+=($!)
done
wait_for "${shards[@]}"
