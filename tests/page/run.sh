#!/bin/bash
# run.sh FOLDER [PROGRAM]: tests the page that scripts/page.sh has made in FOLDER, in a browser, or runs a program of
# this folder with it.
set -euo pipefail
source=$(dirname "$(realpath "$0")")
page=$1
place=$page/tests

rm -rf "$place"
mkdir "$place"
cp -r "$source"/*.js "$source"/fonts.conf "$place"
ln -s ../tools/node_modules "$place/node_modules"
echo '{"type": "module", "private": true}' > "$place/package.json"

KCNVRT_ROOT=$(realpath "$source/../..")
export KCNVRT_ROOT KCNVRT_PAGE=$page
[ -z "${2:-}" ] || exec node "$place/$2"
exec node --test --test-concurrency="$(nproc)" "$place"/*.test.js
