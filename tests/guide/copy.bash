# shellcheck shell=bash
# Sourced: a copy of the tree, to be changed, built and tested. Only what differs is written again, so that only that is
# built again.

source_tree=$1
copy=$2/tree
mkdir -p "$copy"
blocks=$(mktemp -d) # the page's code
trap 'rm -r "$blocks"' EXIT

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

# files FOLDER: the files of a tree that are not made by a build.
files() {
    (cd "$1" && find . \( -name build -o -name .git -o -name node_modules \) -prune -o -type f -print | sort)
}

# restore FILE...: as it is in the tree.
restore() {
    local file
    for file in "$@"; do
        cmp -s "$source_tree/$file" "$copy/$file" && continue
        mkdir -p "$(dirname "$copy/$file")"
        cp "$source_tree/$file" "$copy/$file"
    done
}

restore_all() {
    local file
    mapfile -t file < <(comm -13 <(files "$source_tree") <(files "$copy"))
    (cd "$copy" && rm -f "${file[@]}")
    find "$copy" -type d -empty ! -path "$copy/build/*" -delete
    mapfile -t file < <(files "$source_tree")
    restore "${file[@]}"
}

# commands_of PAGE SECTION: the commands of a section, as files in $blocks/SECTION.
commands_of() {
    mkdir -p "$blocks/$2"
    awk -v heading="$2" -v into="$blocks/$2" -f "$source_tree/tests/guide/commands.awk" "$source_tree/$1"
    compgen -G "$blocks/$2/*.command" > /dev/null || fail "$1 shows no commands in \"$2\"."
}

# code_of PAGE SECTION LANGUAGE: the fenced code of that language in a section.
code_of() {
    local into=$blocks/code
    rm -rf "$into"
    mkdir "$into"
    awk -v heading="$2" -v into="$into" -f "$source_tree/tests/guide/blocks.awk" "$source_tree/$1"
    compgen -G "$into/*.$3" > /dev/null || fail "$1 shows no code in \"$2\"."
    cat "$into"/*."$3"
}

# run_shown COMMAND_FILE: runs it in the copy, or in the folder $shown_in, and what it prints has to be what the page
# shows, where the page shows it.
run_shown() {
    local command printed output=${1%.command}.output
    command=$(< "$1")
    printed=$(cd "${shown_in:-$copy}" && bash -euo pipefail -c "$command" 2> "$blocks/errors") ||
        fail "$printed" "$(< "$blocks/errors")" "This fails: $command"
    [ ! -f "$output" ] || awk -f "$source_tree/tests/guide/shown.awk" "$output" <(printf '%s\n' "$printed") ||
        fail "$(head -n 50 <<< "$printed")" "This prints something else than the page shows: $command"
}
