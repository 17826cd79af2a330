#!/bin/bash
# Which lines and branches of the libraries and the tool the tests reach, in the limits of tests/limits.txt. Branches
# that the compiler makes for exceptions are not counted, nor are the copies of inline functions that the tests compile
# for themselves. What is missing where is listed before the figures.
#   ./test --coverage [CTEST_ARGUMENT...]
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

lock
need_packages "${test_packages[@]}" "${coverage_packages[@]}"
need_npm
fetch_differences
# A test runs the tool as another user, who has to write its counts, too.
umask 0
configure coverage debug ON -DKCNVRT_COVERAGE=ON
build coverage all
find "$root/build/coverage" -name '*.gcda' -delete
unlock
# What counts coverage does not live without memory itself: one test leaves out what takes it away, and of another
# nothing would be left. The lines of the description and the documents of the schemas take minutes here, and reach
# nothing else.
may_skip+=" tool.stream_interruptions"
KCNVRT_SAMPLE=10 run_tests coverage -E 'tool\.memory|describe\.(lines|schemas)' "$@"

# The folders of what is shipped, which have objects of their own in the build; two of tools/ only run in the build.
cd "$root"
folders=()
for folder in src support text tools; do [ ! -d "$folder" ] || folders+=("$folder"); done
say "Counting what the tests reached in ${folders[*]}"
cd "$root/build/coverage"
gcovr --root "$root" --object-directory "$PWD" "${folders[@]/#/--filter=$root/}" --exclude "$root/tools/pages/" \
    --exclude "$root/tools/describe/" --exclude-throw-branches --exclude-unreachable-branches \
    --json counts.json --html-details lines.html "${folders[@]}"
gcovr --root "$root" --add-tracefile counts.json
gcovr --root "$root" --add-tracefile counts.json --branches --json-summary summary.json --print-summary
jq '
    def counted(covered; total):
        {covered: map(covered) | add, total: map(total) | add} |
        .share = (10000 * .covered / ([.total, 1] | max) | floor / 100);
    [.files[] | . + {folder: (.filename | split("/")[0])}] | group_by(.folder) | map({folder: .[0].folder,
        lines: counted(.line_covered; .line_total), branches: counted(.branch_covered; .branch_total)})
    ' summary.json > folders.json
jq -r '.[] | "coverage \(.folder), lines = \(.lines.share)", "coverage \(.folder), branches = \(.branches.share)"' \
    folders.json > figures
[ $# -gt 0 ] || check_limits coverage < figures # some of the tests reach less
