#!/bin/bash
# What docs/tool.md says of the tool is what the tool does and says: tool.sh TREE FOLDER. The tool is that of a copy of
# the tree.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
page=docs/tool.md

# check_usage COMMAND_FILE: what a usage line shows, which is no command yet, is what the tool's help knows.
check_usage() {
    local name help word
    read -r _ name _ < "$1"
    help=$(kcnvrt "$name" --help) || fail "The tool has no command $name."
    { grep -o -e '--[a-z-]*' "$1" || true; } | while read -r word; do
        [[ $help = *"$word"* ]] || fail "kcnvrt $name has no $word."
    done
}

# check_message MESSAGE_FILE: what the tool prints of such a field that does not fit. Line and column may differ.
check_message() {
    local message path printed
    message=$(< "$1")
    path=${message#*: error: /}
    path=${path%%: *}
    jq --arg path "$path" 'setpath($path / "/"; "x")' \
        "$source_tree/examples/home-gateway.old.json" > "$copy/gateway.old.json"
    printed=$(cd "$copy" && kcnvrt to-new gateway.old.json 2>&1 > /dev/null) || true
    [ "$(without_position "$printed")" = "$(without_position "$message")" ] ||
        fail "Of a bad $path the tool says: $printed"
}

# check_loss MESSAGE_FILE: what the tool prints of the example, which loses that.
check_loss() {
    local message printed
    message=$(without_position "$(< "$1")")
    cp "$source_tree/examples/home-gateway.old.json" "$copy/gateway.old.json"
    printed=$(cd "$copy" && kcnvrt to-new --losses gateway.old.json 2>&1 > /dev/null)
    [[ $(without_position "$printed") = *"$message"* ]] || fail "The tool does not say: $message"
}

without_position() { sed -E 's/:[0-9]+:[0-9]+:/:/' <<< "$1"; }

restore_all
(cd "$copy" && ./run --version) || fail "./run does not run."
export PATH=$copy/build/release/bin:$PATH

for section in "Commands" "Messages" "What is lost"; do
    commands_of $page "$section"
    for command in "$blocks/$section"/*.command; do
        case $(< "$command") in
            "kcnvrt explain examples/"*) run_shown "$command" ;;
            kcnvrt*) check_usage "$command" ;;
            gateway.old.json:*": warning: "*) check_loss "$command" ;;
            gateway.old.json:*) check_message "$command" ;;
            *) fail "Nobody runs this: $(< "$command")" ;;
        esac
    done
done

while read -r name; do
    grep -q "kcnvrt $name\b" "$source_tree/$page" || fail "$page does not name kcnvrt $name."
done < <(kcnvrt --help | sed -n '/^Commands:/,/^$/s/^  \([a-z-]*\) .*/\1/p')
