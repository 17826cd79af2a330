# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by build.sh: the Debian packages that the build and its checks need, installed where they are missing.

build_packages=(g++ cmake ninja-build pkg-config libjansson-dev)
docs_packages=(jq python3 python3-rich)
abi_packages=(abigail-tools)
test_packages=("${build_packages[@]}" "${docs_packages[@]}" "${abi_packages[@]}" libgtest-dev bats python3-jsonschema
    parallel openssh-server mypy python3-dask python3-distributed python3-fsspec zsh fish groff-base
    systemd git)
# Besides those:
lint_packages=(git clang-14 clang-format-14 clang-tidy-14 shellcheck)
clang_packages=(clang-14)
fuzz_packages=(clang-14 libclang-rt-14-dev)
count_packages=(libbenchmark-dev valgrind)
coverage_packages=(gcovr)
package_packages=("${build_packages[@]}" debhelper dh-python dpkg-dev lintian debootstrap git)
cross_packages=(g++-arm-linux-gnueabihf g++-mips-linux-gnu googletest qemu-user-static dpkg-dev)
wasm_packages=(cmake ninja-build pkg-config clang-14 lld-14 llvm-14 wasi-libc libclang-rt-14-dev-wasm32
    libc++-14-dev-wasm32 libc++abi-14-dev-wasm32 binaryen dpkg-dev)
page_test_packages=(chromium fonts-inter fonts-jetbrains-mono) # the fonts of the stored pictures

# installed_packages NAME...: prints those that are.
installed_packages() {
    { dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "$@" 2> /dev/null || true; } |
        sed -n 's/^installed //p'
}

missing_packages() {
    comm -23 <(printf '%s\n' "$@" | sort -u) <(installed_packages "$@" | sort -u)
}

# need_packages NAME...: installs those that are missing. Standard output is left to the caller.
need_packages() {
    local missing as_root=()
    command -v dpkg-query > /dev/null || return 0 # another system, whose owner installs what is missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0

    say "Installing ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo > /dev/null; then
            say "There is neither root nor sudo to install them with."
            exit "$build_failed"
        fi
        as_root=(sudo)
    fi
    quietly "${as_root[@]}" apt-get update
    quietly "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes --no-install-recommends "${missing[@]}"
}

# Where node comes from elsewhere, it has npm and Debian's packages of both are not wanted.
need_npm() { command -v npm > /dev/null || need_packages nodejs npm; }
