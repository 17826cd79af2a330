#!/bin/sh
# editors.sh TREE PACKAGES: runs editors.js with the packages of that folder, which are installed if need be. Exits with
# 77, which CTest takes for skipped, where they cannot be had.
set -eu

"$1/tests/conf/packages.sh" "$2" || exit 77
cp "$1/tests/docs/editors.js" "$2"
exec node "$2/editors.js" "$1"
