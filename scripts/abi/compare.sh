#!/bin/bash
# Usage: compare.sh LIST BEFORE AFTER CHANGELOG
# Compares two descriptions of a library, NAME.abi and beside it NAME.constants: whatever works with the one has to work
# with the other, unless its SONAME is another one. LIST has its names, by the releases that brought them. Says what is
# different and what is to be done. Status 1: programs break. Status 2: those break that use what no release has had,
# which the CHANGELOG says.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
list=$1
before=$2
after=$3
changelog=$4
name=$(basename "$list" .symbols)
allowed=(--suppressions "$here/sized_structures.ini")

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# differences NAME ARGUMENT...: whether there are any but additions; what they are goes to NAME.
differences() {
    local status=0
    abidiff --no-added-syms "${@:2}" "$before" "$after" > "$scratch/$1" || status=$?
    if [ $((status & 3)) -ne 0 ]; then
        cat "$scratch/$1"
        echo "abidiff cannot compare $before and $after."
        exit 1
    fi
    [ "$status" -ne 0 ]
}

soname() { sed -n "1s/.* soname='\([^']*\)'.*/\1/p" "$1"; }

# lost_constants BEFORE AFTER: what the first has and the second has not, or has otherwise.
lost_constants() { LC_ALL=C comm -23 "${1%.abi}.constants" "${2%.abi}.constants"; }

# Suppresses what belongs to a node of no release.
unreleased() {
    local mark version
    grep '^@' "$list" | while read -r mark version; do
        grep -q "^## $version\b" "$changelog" || printf '[suppress_function]\nsymbol_version = %s\n' "${mark#@}"
    done
}

old=$(soname "$before")
new=$(soname "$after")
if [ -n "$old" ] && [ -n "$new" ] && [ "$old" != "$new" ]; then
    echo "$new is another library than $old, which abi/ describes: no program loads the one for the other."
    echo "For the release scripts/abi.sh --renew describes it."
    exit 0
fi

lost_constants "$before" "$after" > "$scratch/constants"
if [ -s "$scratch/constants" ]; then
    sed 's/^/  [D] /' "$scratch/constants"
    echo "Programs that were compiled with these of $name would break, and the library cannot tell."
    echo "Undo that. Or, if no release has had them, take them out of abi/$name.constants first."
    exit 1
fi
awk -f "$here/sized_structures.awk" "$before" "$after" > "$scratch/structures" || allowed=()
if [ -s "$scratch/structures" ] || differences broken "${allowed[@]}"; then
    differences broken "${allowed[@]}" || cat "$scratch/structures"
    cat "$scratch/broken"
    unreleased > "$scratch/unreleased.ini"
    if differences released "${allowed[@]}" --suppressions "$scratch/unreleased.ini"; then
        echo "Programs that use $name as abi/ describes it would break."
        echo "Undo that. Or, if it is meant, make another library of it: raise the major version in CMakeLists.txt," \
            "and with it the SONAME, and put all names of abi/*.symbols below one node of that version."
        exit 1
    fi
    echo "$name is not what abi/ describes, in what no release has had yet."
    echo "Undo that. Or, if it is meant, scripts/abi.sh --renew describes it anew."
    exit 2
fi
status=0
abidiff "${allowed[@]}" "$before" "$after" > "$scratch/added" || status=$?
lost_constants "$after" "$before" > "$scratch/constants"
if [ "$status" -ne 0 ] || [ -s "$scratch/constants" ]; then
    sed -n '/^  \[A\]/p' "$scratch/added"
    sed 's/^/  [A] /' "$scratch/constants"
    echo "$name has more than abi/ describes, which breaks nothing."
    echo "For the release scripts/abi.sh --renew describes that, too."
fi
