#!/bin/sh
# suites.sh KCNVRT PACKAGES: runs suites.js on the tool, with the packages of that folder, which are installed if need
# be. Exits with 77, which CTest takes for skipped, where they cannot be had.
set -eu

source=$(dirname "$(readlink -f "$0")")
"$source/../conf/packages.sh" "$2" || exit 77
cp "$source/suites.js" "$2"
exec node "$2/suites.js" "$1"
