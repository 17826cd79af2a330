# What scripts/release.sh asks for before it makes anything, and what it makes of what others build. They are stand-ins
# here: each takes minutes, and CI runs them.
bats_require_minimum_version 1.5.0

setup() {
    export HOME=$BATS_TEST_TMPDIR GIT_CONFIG_NOSYSTEM=1
    git config --global user.name somebody
    git config --global user.email somebody@example.org
    git config --global init.defaultBranch main
    tree=$BATS_TEST_TMPDIR/tree
    mkdir -p "$tree/scripts"
    cp "$BATS_TEST_DIRNAME"/../../scripts/{release,build,packages,version}.sh "$tree/scripts"
    stand_in abi '[ "$1" = --same ]'
    stand_in package 'cd "$(dirname "$0")/.." && mkdir -p build/packages && cd build/packages
        echo deb > kcnvrt_1.2.3_amd64.deb && echo dsc > k-cnvrt_1.2.3.dsc && echo tar > k-cnvrt_1.2.3.tar.xz
        date > k-cnvrt_1.2.3_amd64.buildinfo'
    stand_in wasm 'cd "$(dirname "$0")/.." && mkdir -p build/wasm && echo npm > build/wasm/k-cnvrt-1.2.3.tgz'
    cd "$tree" || return 1
    echo 'project(k_cnvrt VERSION 1.2.3 LANGUAGES C CXX' > CMakeLists.txt
    printf '# Changelog\n\n## 1.2.3 (2026-01-31)\n\n- Something.\n\n## 1.2.2 (2026-01-01)\n\n- More.\n' > CHANGELOG.md
    echo /build/ > .gitignore
    git init --quiet
    git add .
    committed
}

stand_in() {
    printf '#!/bin/sh\n%s\n' "$2" > "$tree/scripts/$1.sh"
    chmod +x "$tree/scripts/$1.sh"
}

committed() { git commit --quiet --all --message change; }

# refused WORDS ARGUMENT...: it says so, and makes nothing.
refused() {
    run -1 scripts/release.sh "${@:2}"
    [[ $output = *"$1"* ]]
    [ ! -e build/release-1.2.3 ]
}

@test "what is ready is checked without a word, and nothing is made" {
    run -0 scripts/release.sh 1.2.3 --check
    [ "$output" = "" ]
    [ ! -e build/release-1.2.3 ]
}

@test "archive, packages and checksums stand in one folder, which is said at the end" {
    run -0 scripts/release.sh 1.2.3
    [[ $output = *"Version 1.2.3 is in $(pwd -P)/build/release-1.2.3:"* ]]
    cd build/release-1.2.3
    [ "$(echo *)" = "SHA256SUMS k-cnvrt-1.2.3.tgz k-cnvrt_1.2.3.dsc k-cnvrt_1.2.3.tar.xz k_cnvrt-1.2.3.tar.gz \
kcnvrt_1.2.3_amd64.deb" ]
    [ "$(sha256sum --check SHA256SUMS | grep -c ': OK$')" -eq 5 ]
    tar -xzf k_cnvrt-1.2.3.tar.gz
    [ "$(cd k_cnvrt-1.2.3 && find . -type f | sort)" = "$(cd "$tree" && git ls-files | sed 's|^|./|' | sort)" ]
}

@test "the same commit gives the same bytes, in whatever folder, at whatever time, for whomever" {
    scripts/release.sh 1.2.3
    cp build/release-1.2.3/SHA256SUMS ..
    scripts/release.sh 1.2.3
    cmp build/release-1.2.3/SHA256SUMS ../SHA256SUMS
    mkdir ../deeper
    git clone --quiet . ../deeper/elsewhere
    cd ../deeper/elsewhere
    git config tar.umask user
    (umask 077 && TZ=Asia/Tokyo LC_ALL=C scripts/release.sh 1.2.3)
    cmp build/release-1.2.3/SHA256SUMS ../../SHA256SUMS
}

@test "it is asked for the version that CMakeLists.txt says" {
    refused "scripts/release.sh VERSION"
    refused "scripts/release.sh VERSION" 1.2.3 --publish
    refused "CMakeLists.txt says version 1.2.3, not 1.3.0." 1.3.0
}

@test "everything is in a commit" {
    echo more >> CHANGELOG.md
    refused "CHANGELOG.md" 1.2.3
    git checkout --quiet CHANGELOG.md
    touch new
    refused "A release is made of a commit, and this is in none:" 1.2.3
    rm -r new .git
    refused "git is not here" 1.2.3
}

@test "CHANGELOG.md has the version first, with a date" {
    sed -i 's/ (2026-01-31)//' CHANGELOG.md
    committed
    refused 'The first version in CHANGELOG.md is "## 1.2.3" instead of "## 1.2.3 (20' 1.2.3
    sed -i 's/^## 1.2.3$/## Unreleased/' CHANGELOG.md
    committed
    refused 'The first version in CHANGELOG.md is "## 1.2.2 (2026-01-01)" instead of "## 1.2.3 (20' 1.2.3
}

@test "CHANGELOG.md says something about the version, and nothing is left unreleased" {
    sed -i '/Something/d' CHANGELOG.md
    committed
    refused "CHANGELOG.md says nothing about version 1.2.3." 1.2.3
    sed -i 's/^## 1.2.3.*/## Unreleased\n\n- More.\n\n&\n\n- Something./' CHANGELOG.md
    committed
    refused "CHANGELOG.md has something left under Unreleased." 1.2.3
    sed -i '/^- More/d' CHANGELOG.md
    committed
    scripts/release.sh 1.2.3 --check
}

@test "a version may bring much, and much may be left" {
    seq --format '- Something, which is said in many words, the %.0fth of it.' 5000 > much
    sed -i '/Something/r much' CHANGELOG.md
    rm much
    committed
    scripts/release.sh 1.2.3 --check
    sed -i 's/^## 1.2.3.*/## Unreleased/; s/^## 1.2.2.*/## 1.2.3 (2026-01-31)/' CHANGELOG.md
    committed
    refused "CHANGELOG.md has something left under Unreleased." 1.2.3
}

@test "abi/ describes the libraries of the version" {
    stand_in abi 'echo "abi/ is not what the libraries are" && exit 1'
    committed
    refused "abi/ is not what the libraries are" 1.2.3
}
