#!/bin/bash
# Prints the symbols file of the Debian package of the libraries: the nodes and names of abi/, each with the version
# that brought it.
set -euo pipefail
root=$(dirname "$(dirname "$(realpath "$0")")")
major=$("$root/scripts/version.sh" --major)

for list in "$root"/abi/*.symbols; do
    echo "$(basename "$list" .symbols).so.$major libk-cnvrt$major #MINVER#"
    awk '
        /^@/ { node = substr($1, 2); version = $2; print " " node "@" node " " version }
        /^[a-zA-Z]/ { print " " $0 "@" node " " version }' "$list" | LC_ALL=C sort -u
done
