#!/bin/bash
# Usage: versions.sh BUILD_FOLDER SCRATCH_FOLDER
# Wherever a version is said it is the one of CMakeLists.txt, which no other file has, and no release has been of that
# version where there is more to release. Looks at an installed copy.
set -uo pipefail
build=$(realpath "$1")
scratch=$2
root=$(realpath "$(dirname "$0")/../..")
version=$("$root/scripts/version.sh")
major=$("$root/scripts/version.sh" --major)
failed=0
asked=0

fail() {
    echo "$*"
    failed=1
}

expect() { # WHAT EXPECTED GOT
    asked=$((asked + 1))
    [ "$2" = "$3" ] || fail "$1 says \"$3\" instead of \"$2\""
}

rm -rf "$scratch"
mkdir -p "$scratch"
cmake --install "$build" --prefix "$scratch/installed" > "$scratch/install.log" || exit 1
cd "$scratch/installed" || exit 1

said() { # NAME: of a constant of version.h
    sed -n "s/^#define K_CNVRT_$1 //p" include/k_cnvrt/version.h
}
expect "K_CNVRT_VERSION" "\"$version\"" "$(said VERSION)"
expect "the header in three numbers" "$version" "$(said VERSION_MAJOR).$(said VERSION_MINOR).$(said VERSION_PATCH)"
expect "the tool" "kcnvrt $version" "$(bin/kcnvrt --version)"

for library in libk_support libk_cnvrt libk_cnvrt_text; do
    file=$(find . -name "$library.so.*.*")
    expect "the file of $library" "$library.so.$version" "$(basename "$file")"
    expect "the SONAME of $library" "$library.so.$major" \
        "$(LC_ALL=C readelf -d "$file" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')"
done
libraries=$(dirname "$file")
for name in k_cnvrt k_text; do
    file=$(realpath "$libraries/lib${name/k_text/k_cnvrt_text}.so.$major")
    expect "${name}_version()" "$version" "$(python3 -c "
import ctypes, sys
function = ctypes.CDLL(sys.argv[1])[sys.argv[2]]
function.restype = ctypes.c_char_p
print(function().decode())" "$file" "${name}_version")"
done
packages=$(dirname "$(find . -type d -path '*-packages/kcnvrt')")
expect "the Python package" "$version" "$(PYTHONPATH=$packages python3 -B -c 'import kcnvrt; print(kcnvrt.version())')"
expect "the SONAME that the Python package looks for" "libk_cnvrt_text.so.$major" \
    "$(PYTHONPATH=$packages python3 -B -c 'from kcnvrt import _library; print(_library.SONAME)')"
for package in k_cnvrt k_cnvrt_text; do
    expect "$package.pc" "$version" "$(PKG_CONFIG_PATH=$libraries/pkgconfig pkg-config --modversion $package)"
done
expect "the CMake package" "$version" "$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")$/\1/p' \
    "$libraries/cmake/k_cnvrt/k_cnvrtConfigVersion.cmake")"
# A page of other functions is one line that leads to theirs.
for page in "$build"/pages/*.[13]; do
    grep -q '^\.so ' "$page" ||
        expect "the manual page ${page##*/}" "$version" "$(sed -nE 's/^\.TH .* "k_?cnvrt ([^"]*)" .*/\1/p' "$page")"
done

expect "debian/changelog" "k-cnvrt ($version)" "$("$root/scripts/debian_changelog.sh" 0 | sed -n '1s/ unstable.*//p')"
expect "the name of the Debian package of the libraries" "libk-cnvrt$major" \
    "$(sed -n 's/^Package: \(libk-cnvrt[0-9]*\)$/\1/p' "$root/debian/control")"
expect "the file lists of that package" "libk-cnvrt$major.install" \
    "$(cd "$root/debian" && echo libk-cnvrt[0-9]*.install)"
# What is written by hand of the number in SONAMEs. What a release was is said by CHANGELOG.md, and stays.
cd "$root" || exit 1
others=$(grep -rnoEI --exclude-dir=__pycache__ "libk_(support|cnvrt|cnvrt_text)[.]so[.][0-9]+|libk-cnvrt[0-9]+" \
    README.md docs cmake debian python wasm page scripts examples tests/debian tests/guide tests/python tests/wasm |
    grep -vE "[^0-9]$major$")
[ -z "$others" ] || fail "The first number of the version is $major, and not that of:" "$others"

expect "the npm package, whose version the module says," "0.0.0" \
    "$(sed -n 's/^  "version": "\(.*\)",$/\1/p' "$root/wasm/npm/package.json")"

released=$(sed -n 's/^## \([0-9][0-9.]*\).*/\1/p' "$root/CHANGELOG.md" | head -n 1)
new=$(sed -n '/^## Unreleased/,/^## [0-9]/p' "$root/CHANGELOG.md" | grep -c '^- ')
newest=$(printf '%s\n' "$released" "$version" | sort --version-sort | tail -n 1)
expect "CMakeLists.txt, compared with CHANGELOG.md," "$newest" "$version"
[ "$new" -eq 0 ] || [ "$version" != "$released" ] ||
    fail "CHANGELOG.md has what comes after version $version: raise that in CMakeLists.txt."

cd "$root" || exit 1
again=$(grep -rnEI --exclude='*.json' --exclude-dir=__pycache__ --exclude-dir=.mypy_cache \
    "(^|[^0-9.])${version//./\\.}([^0-9.]|[.]([^0-9]|$)|$)" \
    README.md docs cmake debian python wasm page include support src text tools scripts examples)
[ -z "$again" ] || fail "The version stands in CMakeLists.txt and need not stand here:" "$again"

echo "Version $version is said in $asked places."
exit "$failed"
