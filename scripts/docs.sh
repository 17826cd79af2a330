#!/bin/bash
# The pages of docs/ that are made from data: writes them, or with --check says which of them differ from what would be
# written.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

need_packages "${docs_packages[@]}"

# page NAME COMMAND...: docs/NAME is what the command prints.
page() {
    local made
    made=$("${@:2}")
    if $is_check; then
        if ! diff --unified=0 "$root/docs/$1" <(printf '%s\n' "$made"); then
            echo "docs/$1 is not what its data says: scripts/docs.sh writes it" >&2
            differs=1
        fi
    else
        printf '%s\n' "$made" > "$root/docs/$1"
    fi
}

is_check=false
differs=0
[ "${1:-}" != --check ] || is_check=true

page losses.md jq --raw-output --from-file "$root/scripts/docs/losses.jq" "$root/tests/laws/losses.json"
exit $differs
