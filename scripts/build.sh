# Sourced: configuring, building and testing in the folders under build/, in silence unless something fails.

root=$(dirname "$(dirname "$(realpath "${BASH_SOURCE[0]}")")")
. "$root/scripts/packages.sh"

build_failed=125 # none of the tool's own exit statuses

# quietly COMMAND...: shows what the command printed only when it fails, and ends with it.
quietly() {
    local log=$root/build/last.log
    mkdir -p "$root/build"
    if ! "$@" > "$log" 2>&1 < /dev/null; then
        cat "$log" >&2
        echo "$* failed" >&2
        exit "$build_failed"
    fi
}

# One process at a time configures and builds.
lock() {
    mkdir -p "$root/build"
    exec 9> "$root/build/lock"
    flock 9
}

unlock() { exec 9>&-; }

# configure FOLDER PRESET TESTS [ARGUMENT...]: configures build/FOLDER, unless it has been. TESTS is ON or OFF.
configure() {
    local folder=$root/build/$1
    if [ ! -f "$folder/build.ninja" ] || { [ "$3" = ON ] && ! grep -q '^KCNVRT_TESTS:BOOL=ON$' "$folder/CMakeCache.txt"; }; then
        quietly cmake -S "$root" --preset "$2" -B "$folder" "-DKCNVRT_TESTS=$3" "${@:4}"
    fi
}

# build FOLDER [TARGET...]
build() {
    quietly cmake --build "$root/build/$1" --parallel "$(nproc)" --target "${@:2}"
}

# run_tests FOLDER [CTEST_ARGUMENT...]
run_tests() {
    ctest --test-dir "$root/build/$1" --output-on-failure --parallel "$(nproc)" "${@:2}"
}

# test_build FOLDER PRESET [CTEST_ARGUMENT...]: everything from packages to tests.
test_build() {
    lock
    need_packages "${test_packages[@]}"
    configure "$1" "$2" ON
    build "$1" all
    unlock
    run_tests "$1" "${@:3}"
}
