#!/bin/bash
# The Debian packages in a Debian of their own, which has nothing else of ours: run.sh FOLDER. First the tool, Python
# and the libraries alone; then, with a compiler, programs in C and with CMake. Needs root, and says so where it is not.
# shellcheck disable=SC2016 # the shell of that Debian expands it
set -euo pipefail
here=$(dirname "$(realpath "$0")")
packages=$1
debian=$packages/debian

fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

[ "$(id -u)" -eq 0 ] || fail "Only root can make a Debian to test the packages in."

inside() { chroot "$debian" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive "$@"; }

quietly() { "$@" > "$packages/test.log" 2>&1 || fail "$(tail -n 50 "$packages/test.log")" "$* failed"; }

# From where this machine has its packages.
mirror=$(apt-get indextargets --format '$(URI)' 'Created-By: Packages' |
    sed -n 's|/dists/bookworm/main/binary-.*||p' | head -n 1)
[ -n "$mirror" ] || fail "This machine has no packages of Debian 12."
rm -rf "$debian"
quietly debootstrap --variant=minbase bookworm "$debian" "$mirror"
mkdir "$debian/new"
cp "$packages"/*.deb "$debian/new"

expect() { # WHAT EXPECTED GOT
    [ "$2" = "$3" ] || fail "$1: expected $2, got $3"
    echo "$1: $3"
}

# same WHAT: it makes of the example what the tool makes of it.
same() {
    cmp - "$packages/expected" || fail "$1 does not do what the tool does."
    echo "$1 does what the tool does"
}

install() { quietly inside sh -c "apt-get install --yes --no-install-recommends $*"; }

libraries=libk-cnvrt$("$here/../../scripts/version.sh" --major)
version=$(dpkg-deb --field "$packages"/kcnvrt_*.deb Version)
cp -r "$here/../../examples" "$here/../package" "$debian/new"
old=/new/examples/home-gateway.old.json

install "/new/${libraries}_*.deb" /new/kcnvrt_*.deb /new/python3-kcnvrt_*.deb
expect "the tool" "kcnvrt $version" "$(inside kcnvrt --version)"
inside kcnvrt to-new --compact "$old" > "$packages/expected"
[ -s "$packages/expected" ] || fail "The tool converts nothing."
inside sh -c 'kcnvrt schema old --indent 1 | cmp - /usr/share/k_cnvrt/old.schema.json' || fail "There are no schemas."
inside python3 -c 'import kcnvrt, sys; print(kcnvrt.to_new(open(sys.argv[1], "rb").read()).text)' "$old" |
    same "the Python package"

install /new/libk-cnvrt-dev_*.deb gcc g++ cmake make pkg-config libc6-dev
inside sh -c 'cc -Wall -Werror /new/package/text_consumer/convert.c -o /new/texts \
    $(pkg-config --cflags --libs k_cnvrt_text)' ||
    fail "The C program cannot be built."
inside sh -c '/new/texts "$(cat '"$old"')"' | same "the C program"
quietly inside cmake -S /new/package/cpp_consumer -B /new/build
quietly inside cmake --build /new/build
inside sh -c '/new/build/cpp_consumer "$(cat '"$old"')"' | same "the C++ program"

quietly inside apt-get purge --yes kcnvrt python3-kcnvrt libk-cnvrt-dev "$libraries"
expect "left when they are gone" "" "$(find "$debian/usr" -name '*k*cnvrt*' ! -path '*/share/doc/*')"
rm -rf "$debian"
