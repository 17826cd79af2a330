#!/bin/bash
# What has to hold for every change, step by step. Needs nothing but a Debian 12 machine with root or sudo, and a
# network to install packages from.
#   scripts/ci.sh            every step
#   scripts/ci.sh STEP...    some of them, by their names below
# A step that fails ends nothing: the others are run, and the last lines say which failed and what each took.
set -uo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

chosen=("$@")
known=()
taken=()
failed=()

is_chosen() { [ ${#chosen[@]} -eq 0 ] || [[ " ${chosen[*]} " = *" $1 "* ]]; }

# Puts the CPU seconds, user and system, of what this script has run so far into $cpu. A subshell would count its own.
read_cpu() {
    times > "$root/build/times"
    cpu=$(awk 'NR == 2 { gsub(/[ms]/, " "); printf "%d", $1 * 60 + $2 + $3 * 60 + $4 }' "$root/build/times")
}

# step NAME WORDS COMMAND...
step() {
    local name=$1 words=$2 seconds=$SECONDS cpu cpu_before outcome=passed
    shift 2
    known+=("$name")
    is_chosen "$name" || return 0
    say
    say "== $name: $words"
    read_cpu
    cpu_before=$cpu
    "$@" || { outcome=FAILED; failed+=("$name"); }
    read_cpu
    taken+=("$(printf '%-10s %-6s %5d s, %5d s of CPU' \
        "$name" "$outcome" $((SECONDS - seconds)) $((cpu - cpu_before)))")
}

# Everything at once, which is faster than by the step; the compiler's cache serves builds that share objects.
install_everything() (
    need_packages "${test_packages[@]}" "${lint_packages[@]}" "${clang_packages[@]}" "${fuzz_packages[@]}" \
        "${count_packages[@]}" "${cross_packages[@]}" "${coverage_packages[@]}" "${wasm_packages[@]}" \
        "${package_packages[@]}" "${abi_packages[@]}" "${page_test_packages[@]}" ccache
    need_npm
)

# The release build of a developer lets warnings pass.
test_release() (
    lock
    configure release release ON
    quietly cmake -DKCNVRT_WERROR=ON "$root/build/release"
    unlock
    exec ./test --parallel "$(nproc)"
)

# Where gcc instruments its own library, it takes some of that for uninitialised, and warns.
test_sanitized() { env KCNVRT_WERROR=OFF ./test --sanitize; }

# No more is built than what runs: other tests have one thread.
test_threads() (
    lock
    configure thread thread ON
    build thread threads
    unlock
    run_tests thread -R threads
)

cd "$root" || exit
mkdir -p build
export KCNVRT_WERROR=ON # of every build, so that the compiler's cache serves those that share objects

#    name      what it shows                                                       how
step packages  "What the steps need is installed"                                   install_everything
step lint      "Format, scripts, links, and what clang-tidy takes for mistakes"     ./test --lint
step release   "The tests of the release build, without a warning"                  test_release
step fuzz      "Every fuzz target for a few seconds"                                ./fuzz --seconds 4
step clang     "The same tests built by clang, without a warning"                   ./test --clang
step sanitize  "The same under the address and undefined-behaviour sanitizers"      test_sanitized
step thread    "Conversions in parallel under the thread sanitizer"                 test_threads
step valgrind  "The cases under valgrind"                                           ./test --valgrind
step cross     "The cases on a 32-bit and on a big-endian machine"                  ./test --cross
step wasm      "The WebAssembly module and its npm package"                         ./test --wasm
step page      "The page, in a browser"                                             ./test --page
step variants  "What nothing else builds: without the tool, debugging, fuzzing"          scripts/variants.sh
step abi       "The libraries against descriptions of those that were released"      scripts/abi.sh
step debian    "Debian packages: the same bytes twice, and at work"                 scripts/package.sh --check --test
step static    "Static libraries: no C++ library, the same results, their sizes"    scripts/static.sh
step limits    "Sizes, relocations, allocations and instructions in their limits"   scripts/limits.sh
step coverage  "What the tests reach, in its limits"                                ./test --coverage

for name in "${chosen[@]}"; do
    [[ " ${known[*]} " = *" $name "* ]] || { say "There is no step called $name; there are ${known[*]}"; exit 2; }
done
say
printf '%s\n' "${taken[@]}" >&2
[ ${#failed[@]} -eq 0 ] || { say "Failed: ${failed[*]}"; exit 1; }
