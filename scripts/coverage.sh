#!/bin/bash
# Which lines and branches of the two libraries the tests reach. Branches that the compiler makes for exceptions, which
# the libraries do not have, are not counted, nor are the copies of inline functions that the tests, which have
# exceptions, compile for themselves. The last lines say what is missing where.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" gcovr
configure coverage debug ON -DKCNVRT_COVERAGE=ON
build coverage all
find "$root/build/coverage" -name '*.gcda' -delete
unlock
run_tests coverage --exclude-regex '^(package|tool)' "$@"
cd "$root/build/coverage"
gcovr --root "$root" --filter "$root/src/" --filter "$root/support/" \
    --exclude-throw-branches --exclude-unreachable-branches --json counts.json --html-details lines.html src support
gcovr --root "$root" --add-tracefile counts.json
gcovr --root "$root" --add-tracefile counts.json --branches --print-summary
