#!/bin/bash
# What is made by asking the conversion: text/layouts.json, and from it docs/mapping and schemas. Writes them, or says
# whether they are what would be written, with the programs of a build:
#     layouts.sh [--check (layouts DESCRIBE | pages KCNVRT)]
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

made=$(mktemp --directory)
trap 'rm -rf "$made"' EXIT

# describe PROGRAM
describe() {
    "$1" "$root/examples" "$root/tests/laws/values.json" "$root/tools/describe/texts.json" "$root/src" \
        > "$made/layouts.json"
}

# pages PROGRAM: docs/mapping as the tool tells it.
pages() {
    local name
    mkdir "$made/mapping"
    "$1" mapping --markdown > "$made/mapping/README.md"
    while read -r name; do
        "$1" mapping "$name" --markdown > "$made/mapping/$name.md"
    done < <(sed -n 's/^| \[\(.*\)\](.*/\1/p' "$made/mapping/README.md")
}

# schemas PROGRAM
schemas() {
    local layout
    mkdir "$made/schemas"
    for layout in old new; do
        "$1" schema "$layout" --indent 1 > "$made/schemas/$layout.schema.json"
    done
}

# compare MADE KEPT
compare() {
    diff --recursive --unified=0 "$2" "$1" | cut -c1-300 && return
    echo "${2#"$root"/} is not what the conversion says: scripts/layouts.sh writes it" >&2
    exit 1
}

case "${1:-}${2:-}" in
    --checklayouts)
        describe "$3"
        compare "$made/layouts.json" "$root/text/layouts.json"
        ;;
    --checkpages)
        pages "$3"
        compare "$made/mapping" "$root/docs/mapping"
        schemas "$3"
        compare "$made/schemas" "$root/schemas"
        ;;
    *)
        need_packages "${build_packages[@]}" libgtest-dev
        lock
        configure release release ON
        build release describe
        describe "$root/build/release/bin/describe"
        cp "$made/layouts.json" "$root/text/layouts.json"
        build release kcnvrt
        pages "$root/build/release/bin/kcnvrt"
        schemas "$root/build/release/bin/kcnvrt"
        rm -rf "$root/docs/mapping" "$root/schemas"
        cp -r "$made/mapping" "$root/docs/mapping"
        cp -r "$made/schemas" "$root/schemas"
        ;;
esac
