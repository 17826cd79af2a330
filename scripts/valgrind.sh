#!/bin/bash
# The cases under valgrind: no error and no leak.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${count_packages[@]}"
configure debug debug ON
build debug cases
unlock
valgrind --quiet --error-exitcode=1 --leak-check=full --errors-for-leak-kinds=all --show-leak-kinds=all \
    "$root/build/debug/bin/cases" --gtest_brief=1 "$@"
