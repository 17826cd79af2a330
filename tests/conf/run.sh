#!/bin/sh
# run.sh PROGRAM PACKAGES: runs differences.js on the program, with the packages of that folder, which are installed if
# need be. Exits with 77, which CTest takes for skipped, where they cannot be had.
set -eu

source=$(dirname "$(readlink -f "$0")")
"$source/packages.sh" "$2" || exit 77
cp "$source/differences.js" "$2"
exec node "$2/differences.js" "$1"
