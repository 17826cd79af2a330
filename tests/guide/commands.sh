#!/bin/bash
# Runs the commands that a section of a page shows, in a copy of the tree: commands.sh TREE FOLDER PAGE SECTION. They
# print what the page says that they print.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"

awk -v heading="$4" -v into="$blocks" -f "$source_tree/tests/guide/commands.awk" "$source_tree/$3"
restore_all
ran=0
for command in "$blocks"/*.command; do
    [ -f "${command%.command}.output" ] || continue # nothing is shown of it
    run_shown "$command"
    ran=1
done
[ $ran = 1 ] || fail "$3 shows no commands in \"$4\""
