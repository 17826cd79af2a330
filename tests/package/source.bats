# What scripts/package.sh builds the Debian packages from: the same files with the same permissions, whoever does it,
# and also where git is not. A stand-in builds them.
bats_require_minimum_version 1.5.0

setup() {
    export HOME=$BATS_TEST_TMPDIR GIT_CONFIG_NOSYSTEM=1 PATH=$BATS_TEST_TMPDIR/bin:$PATH
    git config --global user.name somebody
    git config --global user.email somebody@example.org
    tree=$BATS_TEST_TMPDIR/tree
    mkdir -p "$tree/scripts" "$tree/debian" "$BATS_TEST_TMPDIR/bin"
    cp "$BATS_TEST_DIRNAME"/../../scripts/{package,build,version,debian_changelog}.sh "$tree/scripts"
    echo 'need_packages() { :; }' > "$tree/scripts/packages.sh"
    echo 'Maintainer: Somebody <somebody@example.org>' > "$tree/debian/control"
    echo 'project(k_cnvrt VERSION 1.2.3 LANGUAGES C CXX' > "$tree/CMakeLists.txt"
    echo /build/ > "$tree/.gitignore"
    stand_in dpkg-buildpackage 'tar -c --sort=name --mtime=@$SOURCE_DATE_EPOCH --owner=0 --group=0 --numeric-owner -f \
        ../source.tar . && touch ../k.buildinfo ../k.changes'
    stand_in lintian true
    cd "$tree" || return 1
    git init --quiet
    git add .
    GIT_COMMITTER_DATE='2026-01-31T12:00:00Z' git commit --quiet --message all
}

stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" > "$BATS_TEST_TMPDIR/bin/$1"
    chmod +x "$BATS_TEST_TMPDIR/bin/$1"
}

# source_of FOLDER: what was built from in that tree, a file a line.
source_of() { tar -tvf "$1/build/packages/source.tar"; }

@test "it is what is committed, and the changelog of the package" {
    touch unknown
    scripts/package.sh
    [ "$(source_of . | grep -c unknown)" -eq 0 ]
    [[ $(source_of .) = *"-rw-r--r-- 0/0 "*" ./CMakeLists.txt"*"-rwxr-xr-x 0/0 "*" ./scripts/package.sh"* ]]
    tar -xOf build/packages/source.tar ./debian/changelog | grep -q 'Sat, 31 Jan 2026 12:00:00 +0000'
}

@test "it is the same for whoever shows files to nobody" {
    scripts/package.sh
    cp build/packages/source.tar ..
    git config tar.umask user
    (umask 077 && scripts/package.sh)
    cmp build/packages/source.tar ../source.tar
}

@test "it is the same in an unpacked source archive, without git" {
    scripts/package.sh
    git archive --prefix=unpacked/ HEAD | tar -x -C ..
    cd ../unpacked
    mkdir build
    touch build/something
    scripts/package.sh
    cmp build/packages/source.tar ../tree/build/packages/source.tar
}
