#!/bin/bash
# The pictures of docs/pictures/, drawn from what the tool does: writes them, or says whether they are what would be
# drawn, with the tool of a build:
#     pictures.sh [--check KCNVRT]
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"
kept=$root/docs/pictures

need_packages "${docs_packages[@]}"
made=$(mktemp --directory)
trap 'rm -rf "$made"' EXIT

# draw PROGRAM ARGUMENT...: Debian's Python has the packages.
draw() { /usr/bin/python3 -B "$root/scripts/docs/$1.py" "${@:2}"; }

# make_pictures KCNVRT
make_pictures() {
    draw side_by_side "$1" "$kept/small.old.json" > "$made/side-by-side.svg"
    jq --indent 4 '.max_table_id = "many" | .ifaces.eth4.mac = 5 | .sysusers[0].password = 5' \
        "$root/examples/home-gateway.old.json" > "$made/home.json"
    (cd "$made" && PATH=$(dirname "$1"):$PATH draw terminal "A configuration with mistakes, and what the tool says" \
        "kcnvrt to-new home.json -o new.json") > "$made/mistakes.svg"
}

if [ "${1:-}" = --check ]; then
    make_pictures "$(realpath "$2")"
    for picture in "$made"/*.svg; do
        cmp "$picture" "$kept/${picture##*/}" && continue
        echo "docs/pictures/${picture##*/} is not what the tool does: scripts/pictures.sh draws it" >&2
        exit 1
    done
else
    need_packages "${build_packages[@]}"
    lock
    configure release release OFF
    build release kcnvrt
    make_pictures "$root/build/release/bin/kcnvrt"
    cp "$made"/*.svg "$kept"
fi
