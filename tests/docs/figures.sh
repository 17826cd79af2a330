#!/bin/bash
# The figures of the documents are those that were counted: figures.sh TREE COUNTED. In the folder COUNTED stands what
# the tests printed, under the names of their logs. A figure of a log may be off by a tenth, or by five, since every
# change moves it a little; what has a unit is not compared, and neither is what a thorough run counts. What the page of
# promises says has to stand in the first table of the log that it links to.
set -euo pipefail
tree=$1
counted=$2
failed=0

# compare LOG: with the rows on standard input.
compare() {
    awk -F ' *[|] *' -v log_name="$1" '
        function fail(words) { print log_name ": " words > "/dev/stderr"; failed = 1 }
        !/^\|/ { next }
        FNR == NR { for (i = 3; i < NF; i++) there[$2, i] = $i; known[$2] = 1; next }
        {
            rows++
            if (!($2 in known)) { fail("there is no row \"" $2 "\""); next }
            for (i = 3; i < NF; i++) {
                if ($i !~ /^[0-9]+$/) continue
                off = there[$2, i] - $i
                if (off < 0) off = -off
                if (off > $i / 10 && off > 5) fail("\"" $2 "\" says " there[$2, i] ", and " $i " were counted")
            }
        }
        END { if (!rows) fail("nothing was counted"); exit failed }
    ' "$tree/docs/logs/$1.md" - || failed=1
}

# The numbers of a text, without the commas in them.
numbers() { grep -oE '[0-9][0-9,]*(\.[0-9]+)?' | sed 's/,//g; s/\.$//' || true; }

# first_table LOG: the first one that a script has written.
first_table() { awk '/^<!--/ { is_made = 1 } is_made && /^\|/ { print; was = 1 } was && !/^\|/ { exit }' "$1"; }

# Rows: | promise | figures | [name](log) | ... |
compare_promises() {
    local figures log number
    while IFS='|' read -r _ _ figures log _; do
        log=$(sed -n 's/.*](\(.*\)).*/\1/p' <<< "$log")
        [ -n "$log" ] || continue
        for number in $(numbers <<< "$figures"); do
            first_table "$tree/docs/$log" | numbers | grep -qx "$number" ||
                { echo "trust.md says $number, which is not in $log" >&2; failed=1; }
        done
    done < <(grep '^| [A-Z]' "$tree/docs/trust.md")
}

counted_cases() {
    local folder
    for folder in "$tree"/tests/cases/*/; do
        echo "| $(basename "$folder") | $(cat "$folder"*.json | jq -s 'map(length) | add') |"
    done
}

compare cases < <(counted_cases)
[ -n "${KCNVRT_THOROUGH:-}" ] || for log in laws allocation-failures hostile; do compare "$log" < "$counted/$log"; done
compare_promises
exit "$failed"
