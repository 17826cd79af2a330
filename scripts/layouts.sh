#!/bin/bash
# What is made by asking the conversion: text/layouts.json. Writes it, or with --check says whether it is what would be
# written: layouts.sh [--check] [PROGRAM], which is build/release/bin/describe unless another one is named.
set -euo pipefail
root=$(dirname "$(dirname "$(realpath "$0")")")

is_check=false
if [ "${1:-}" = --check ]; then
    is_check=true
    shift
fi
program=${1:-$root/build/release/bin/describe}
made=$(mktemp)
trap 'rm -f "$made"' EXIT

"$program" "$root/examples" "$root/tests/laws/values.json" "$root/tools/describe/texts.json" "$root/src" > "$made"
if ! $is_check; then
    cp "$made" "$root/text/layouts.json"
elif ! diff --unified=0 "$root/text/layouts.json" "$made" | cut -c1-300; then
    echo "text/layouts.json is not what the conversion says: scripts/layouts.sh writes it" >&2
    exit 1
fi
