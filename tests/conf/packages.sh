#!/bin/sh
# packages.sh FOLDER [SOURCE]: installs there what differences.js needs, or what the folder SOURCE says, exactly as
# package-lock.json has it, and runs no script of any package. Does nothing where that is done. Fails, and says why,
# where it cannot be.
set -eu

place=$1
source=${2:-$(dirname "$(readlink -f "$0")")}

for program in node npm; do
    command -v $program > /dev/null || { echo "$program is not installed"; exit 1; }
done
mkdir -p "$place"
exec 8> "$place/lock"
flock 8
! cmp -s "$source/package-lock.json" "$place/complete" || exit 0
cp "$source/package.json" "$source/package-lock.json" "$source/.npmrc" "$place"
if ! (cd "$place" && npm ci --ignore-scripts --silent); then
    echo "npm cannot install the packages"
    exit 1
fi
cp "$source/package-lock.json" "$place/complete"
