#!/bin/bash
# Makes what a release hands out, in build/release-VERSION: the source archive, the Debian packages, the npm package,
# and SHA256SUMS of all. Publishes nothing. The same commit gives the same bytes, in whatever folder.
#   scripts/release.sh VERSION            first makes sure that everything is ready
#   scripts/release.sh VERSION --check    and does no more than that
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

fail() {
    say "$@"
    exit 1
}

version=${1:-}
[ $# -eq 1 ] || [ "${*:2}" = --check ] || fail "scripts/release.sh VERSION [--check]"
folder=$root/build/release-$version
archive=k_cnvrt-$version.tar.gz

check_version() {
    local said
    said=$("$root/scripts/version.sh")
    [ "$version" = "$said" ] || fail "CMakeLists.txt says version $said, not $version."
}

check_tree() {
    local changed
    [ -e "$root/.git" ] || fail "A release is made of a commit, and git is not here."
    changed=$(git -C "$root" status --porcelain)
    [ -z "$changed" ] || fail "A release is made of a commit, and this is in none:" $'\n'"$changed"
}

# section NAME PATTERN: how many such lines CHANGELOG.md has below a heading that begins so.
section() {
    awk -v name="$1" -v pattern="$2" '
        /^## / { inside = index($0 " ", "## " name " ") == 1; next }
        inside && $0 ~ pattern { ++count }
        END { print count + 0 }' "$root/CHANGELOG.md"
}

check_changelog() {
    local first
    first=$(awk '/^## / && !/^## Unreleased$/ { print; exit }' "$root/CHANGELOG.md")
    [[ "$first" =~ ^"## $version ("20[0-9][0-9]-[01][0-9]-[0-3][0-9]")"$ ]] ||
        fail "The first version in CHANGELOG.md is \"$first\" instead of \"## $version ($(date --utc +%F))\"."
    [ "$(section "$version" '^- ')" -gt 0 ] || fail "CHANGELOG.md says nothing about version $version."
    [ "$(section Unreleased .)" -eq 0 ] || fail "CHANGELOG.md has something left under Unreleased."
}

make_archive() {
    git -C "$root" -c tar.umask=0022 archive --format=tar --prefix="k_cnvrt-$version/" HEAD | gzip -9 --no-name \
        > "$folder/$archive"
}

check_version
check_tree
check_changelog
"$root/scripts/abi.sh" --same
[ $# -eq 1 ] || exit 0

rm -rf "$folder"
mkdir -p "$folder"
make_archive
"$root/scripts/package.sh"
cp "$root"/build/packages/*.{deb,dsc,tar.*} "$folder"
"$root/scripts/wasm.sh"
cp "$root/build/wasm/k-cnvrt-$version.tgz" "$folder"
(cd "$folder" && sha256sum -- * > ../SHA256SUMS && mv ../SHA256SUMS .)
say "Version $version is in $folder:"
cat "$folder/SHA256SUMS"
