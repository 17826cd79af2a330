#!/bin/bash
# Builds the Debian packages into build/packages, from what git has, or where git is not from what there is.
#   scripts/package.sh            builds them; lintian has nothing to say
#   scripts/package.sh --check    builds them again in another folder and time zone, and compares every byte
#   scripts/package.sh --test     installs them in a Debian of their own, and uses them there; needs root
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

umask 022 # files have the same permissions whoever builds them, and wherever they come from
packages=$root/build/packages
version=$("$root/scripts/version.sh")
fail() {
    say "$@"
    exit 1
}

# The same for every build, whatever is committed meanwhile.
commit=$([ ! -e "$root/.git" ] || git -C "$root" rev-parse HEAD)

# In an unpacked source archive every file has the time of the commit.
committed_at() {
    if [ -n "$commit" ]; then git -C "$root" log -1 --format=%ct "$commit"; else stat -c %Y "$root/CMakeLists.txt"; fi
}

source_files() {
    if [ -n "$commit" ]; then git -C "$root" archive "$commit"; else tar -c -C "$root" --exclude=./build .; fi
}

export SOURCE_DATE_EPOCH
SOURCE_DATE_EPOCH=$(committed_at)

# build_in FOLDER: the packages stand beside its folder "source".
build_in() {
    rm -rf "$1"
    mkdir -p "$1/source"
    source_files | tar -x --no-same-permissions -C "$1/source"
    "$1/source/scripts/debian_changelog.sh" "$SOURCE_DATE_EPOCH" > "$1/source/debian/changelog"
    (cd "$1/source" && quietly env --unset=KCNVRT_WERROR DEB_BUILD_OPTIONS="parallel=$(nproc) nocheck" nice \
        dpkg-buildpackage --build=full --unsigned-source --unsigned-changes --no-check-builddeps)
}

check_lintian() {
    local said
    said=$(lintian --allow-root --fail-on error,warning "$packages"/*.changes 2>&1) || fail "$said"
}

# Everything but .buildinfo and .changes, which say where and when.
compare() {
    local other=$root/build/packages-built-again-elsewhere/deeper file
    TZ=Asia/Tokyo LC_ALL=C build_in "$other"
    for file in "$packages"/*.deb "$packages"/*.dsc "$packages"/*.tar.*; do
        cmp "$file" "$other/$(basename "$file")" || fail "$(basename "$file") is not the same twice."
    done
    rm -rf "${other%/*}"
    say "Every byte is the same twice."
}

need_packages "${package_packages[@]}"
say "Building packages of version $version"
build_in "$packages"
ls "$packages"/*.buildinfo > /dev/null
check_lintian
for wish in "$@"; do
    case $wish in
        --check) compare ;;
        --test) "$root/tests/debian/run.sh" "$packages" ;;
        *) fail "There is no $wish" ;;
    esac
done
