#!/bin/bash
# run.sh FOLDER: runs the tests of the package that scripts/wasm.sh has made in FOLDER. It is installed from its
# archive, in a folder that has nothing else, and the tests run there.
set -euo pipefail
source=$(dirname "$(realpath "$0")")
built=$1
installed=$built/installed_package

"$source/../conf/packages.sh" "$built/tools" "$source"
rm -rf "$installed"
mkdir "$installed"
cp "$source"/*.js "$source"/*.ts "$source"/tsconfig*.json "$installed"
echo '{"type": "module", "private": true}' > "$installed/package.json"
(cd "$installed" && npm install --offline --ignore-scripts --no-save --no-package-lock --silent "$built"/*.tgz)

export KCNVRT_ROOT=$source/../.. KCNVRT_WASM=$built
exec node --test "$installed"/*.test.js
