#!/bin/bash
# The tests of a release build by the second compiler, whose warnings are errors.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${clang_packages[@]}"
configure clang release ON -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 -DKCNVRT_WERROR=ON
build clang all
unlock
run_tests_again clang "$@"
