#!/bin/bash
# What the documents of a tree point to is there: links.sh TREE. Relative links with their headings, and what stands in
# backticks and begins with a folder of the tree; "*" is any name, and <...> stands for one.
set -euo pipefail
shopt -s extglob
cd "$1"
failed=0

complain() {
    echo "$1" >&2
    failed=1
}

documents() {
    find . \( -name build -o -name .git -o -name node_modules \) -prune -o -name '*.md' -print | sed 's|^\./||' | sort
}

# prose FILE: without its code blocks.
prose() { awk '/^ *```/ { is_code = !is_code; next } !is_code' "$1"; }

# headings FILE: as links name them.
headings() {
    prose "$1" | sed -n 's/^##* //p' | tr '[:upper:] ' '[:lower:]-' | sed 's/[^[:alnum:]_-]//g'
}

check_link() { # DOCUMENT LINK
    local file=${2%%#*} heading=
    [[ $2 != *#* ]] || heading=${2#*#}
    file=${file:+$(dirname "$1")/$file}
    file=${file:-$1}
    if [ ! -e "$file" ]; then
        complain "$1 links to $2, which is not there"
    elif [ -n "$heading" ] && ! headings "$file" | grep -qxF -- "$heading"; then
        complain "$1 links to $2, and there is no such heading"
    fi
}

check_path() { # DOCUMENT PATH
    local pattern=${2//<*([^>])>/*}
    compgen -G "$pattern" > /dev/null || complain "$1 names $2, which is not there"
}

folders=$(find . -mindepth 1 -maxdepth 1 -type d ! -name '.*' ! -name build -printf '%f|')
for document in $(documents); do
    while read -r link; do
        check_link "$document" "$link"
    done < <(prose "$document" | { grep -oE '\]\([^):]+\)' || true; } | sed 's/^](\(.*\))$/\1/')
    [ "$document" != CHANGELOG.md ] || continue # what it names was there
    while read -r path; do
        check_path "$document" "$path"
    done < <(prose "$document" | { grep -oE "\`(${folders%|})/[^\` ]*\`" || true; } | tr -d '`')
done
exit "$failed"
