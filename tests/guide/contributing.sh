#!/bin/bash
# Follows a section of CONTRIBUTING.md to the letter, in a copy of the tree: contributing.sh TREE FOLDER SECTION. With
# each of its steps done, the laws, the cases and the documentation's own tests pass; with any one left out they fail,
# and say what the section says that they do.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
section=$3

awk -v heading="$section" -v into="$blocks" -f "$source_tree/tests/guide/blocks.awk" "$source_tree/CONTRIBUTING.md"
mapfile -t steps < <(find "$blocks" -name '*-*' -printf '%f\n' | sed 's/-.*//' | sort -un)
[ ${#steps[@]} -ge 2 ] || fail "CONTRIBUTING.md has no steps in \"$section\"."
diff <(printf '%s\n' "${steps[@]}") <(cut -f 1 "$blocks/words" | sort -un) ||
    fail "\"$section\" does not say of every step, and of no other, what fails without it."

# change [STEP]: what every step but that one changes by hand.
change() {
    local block
    restore_all
    for block in "$blocks"/*.diff; do
        [[ $(basename "$block") = "${1:-none}"-* ]] ||
            awk -v root="$copy" -f "$source_tree/tests/guide/apply.awk" "$block"
    done
}

# The steps that are a command.
run_commands() {
    local block
    for block in "$blocks"/*.sh; do
        run_shown "$block"
    done
}

tested='^(laws|case_rows|cases\..*|docs\.(generated|links))$'

# passes: builds the copy, and whether its tests pass. What they say is in $said.
passes() {
    said=$(cmake --build "$copy/build/release" --target laws case_rows cases 2>&1) ||
        fail "$said" "The copy does not build."
    said=$(ctest --test-dir "$copy/build/release" --output-on-failure --parallel "$(nproc)" -R "$tested" 2>&1)
}

restore_all
cd "$copy"
said=$(cmake --preset release -DKCNVRT_TESTS=ON 2>&1) || fail "$said" "The copy cannot be configured."

change
run_commands
passes || fail "$said" "The steps of \"$section\" do not suffice."

# check_without STEP: what fails, and with which words. The commands are left out with every step: they take long, and
# the words of the step say that it is missed.
check_without() {
    local step words
    change "$1"
    ! passes || fail "Nothing fails without step $1 of \"$section\"."
    while IFS=$'\t' read -r step words; do
        [ "$step" != "$1" ] || [[ $said = *"$words"* ]] ||
            fail "$said" "Without step $step of \"$section\" these words are missing: $words"
    done < "$blocks/words"
}

# What changes the code comes last, so that it is compiled once.
changes_code() { grep -qx 'src/.*' "$blocks/$1"-*; }
for step in "${steps[@]}"; do changes_code "$step" || check_without "$step"; done
for step in "${steps[@]}"; do ! changes_code "$step" || check_without "$step"; done
