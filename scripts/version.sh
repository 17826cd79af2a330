#!/bin/bash
# Prints the version, which no file but CMakeLists.txt says; with --major its first number, which the SONAMEs have.
set -euo pipefail
lists=$(dirname "$(dirname "$(realpath "$0")")")/CMakeLists.txt

version=$(sed -n 's/^project(k_cnvrt VERSION \([0-9.]*\).*/\1/p' "$lists")
[ -n "$version" ] || { echo "$lists says no version" >&2; exit 1; }
case ${1:-} in
    --major) echo "${version%%.*}" ;;
    *) echo "$version" ;;
esac
