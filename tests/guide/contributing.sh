#!/bin/bash
# Follows a section of CONTRIBUTING.md to the letter, in a copy of the tree: contributing.sh TREE FOLDER SECTION. With
# each of its steps done, the laws, the cases and the documentation's own tests pass; with one left out they fail, and
# say what the section says that they do.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
section=$3

awk -v heading="$section" -v into="$blocks" -f "$source_tree/tests/guide/blocks.awk" "$source_tree/CONTRIBUTING.md"
mapfile -t steps < <(basename -a "$blocks"/*.diff | sed 's/-.*//' | sort -un)
if [ ${#steps[@]} -lt 2 ] || [ ! -s "$blocks/words" ]; then fail "CONTRIBUTING.md has no steps in \"$section\""; fi

# follow [STEP]: every step but that one.
follow() {
    local block
    restore_all
    for block in "$blocks"/*.diff; do
        [[ $(basename "$block") = "${1:-none}"-* ]] ||
            awk -v root="$copy" -f "$source_tree/tests/guide/apply.awk" "$block"
    done
}

tested='^(laws|case_rows|cases\..*|docs\.(generated|links))$'

# passes: builds the copy, and whether its tests pass. What they say is in $said.
passes() {
    said=$(cmake --build "$copy/build/release" --target laws case_rows cases 2>&1) ||
        fail "$said" "The copy does not build."
    said=$(ctest --test-dir "$copy/build/release" --output-on-failure -R "$tested" 2>&1)
}

restore_all
cd "$copy"
said=$(cmake --preset release -DKCNVRT_TESTS=ON 2>&1) || fail "$said" "The copy cannot be configured."

follow
passes || fail "$said" "The steps of \"$section\" do not suffice."
mapfile -t enforced < <(cut -f 1 "$blocks/words" | sort -un)
for left_out in "${enforced[@]}"; do
    [[ " ${steps[*]} " = *" $left_out "* ]] || fail "\"$section\" has words for step $left_out, which changes nothing."
    follow "$left_out"
    ! passes || fail "Nothing fails without step $left_out of \"$section\"."
    while IFS=$'\t' read -r step words; do
        [ "$step" = "$left_out" ] || continue
        [[ $said = *"$words"* ]] || fail "$said" "Without step $step of \"$section\" these words are missing: $words"
    done < "$blocks/words"
done
