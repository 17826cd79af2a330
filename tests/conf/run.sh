#!/bin/sh
# run.sh BUILD_DIR: runs differences.js on the program built in BUILD_DIR. Exits with 77, which CTest takes for skipped,
# where node or the packages cannot be had. The packages are installed in the build directory.
set -eu

build=$1
source=$(dirname "$(readlink -f "$0")")
place=$build/conf

skip() {
    echo "skipped: $1"
    exit 77
}

command -v node >/dev/null || skip "node is not installed"
command -v npm >/dev/null || skip "npm is not installed"

mkdir -p "$place"
if ! cmp -s "$source/package-lock.json" "$place/installed"; then
    cp "$source/package.json" "$source/package-lock.json" "$source/.npmrc" "$place"
    (cd "$place" && npm ci --silent) || skip "the packages cannot be installed"
    cp "$source/package-lock.json" "$place/installed"
fi
cp "$source/differences.js" "$place"
exec node "$place/differences.js" "$build/bin/conf_differences"
