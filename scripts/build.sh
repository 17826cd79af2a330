# shellcheck shell=bash
# Sourced: configuring, building and testing in the folders under build/. Each step that has something to do says so in
# a line of standard error; what compilers and installers print is shown when they fail, and on a terminal while they
# build.

root=$(dirname "$(dirname "$(realpath "${BASH_SOURCE[0]}")")")
. "$root/scripts/packages.sh"

# The compiler's cache takes objects for the same wherever the tree lies, as a copy of it inside of build/ does.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

build_failed=125 # none of the tool's own exit statuses

# say WORD...: standard output is left to the programs that are built.
say() { printf '%s\n' "$*" >&2; }

# quietly COMMAND...: shows what the command printed only when it fails, and ends with it.
quietly() {
    local log=$root/build/last.log
    mkdir -p "$root/build"
    if ! "$@" > "$log" 2>&1 < /dev/null; then
        cat "$log" >&2
        say "$* failed"
        exit "$build_failed"
    fi
}

# wait_for PROCESS...: for all of them, and fails where one did.
wait_for() {
    local process failed=0
    for process; do wait "$process" || failed=1; done
    return "$failed"
}

# One process at a time configures and builds.
lock() {
    mkdir -p "$root/build"
    exec 9> "$root/build/lock"
    flock -n 9 || { say "Waiting for another build"; flock 9; }
}

unlock() { exec 9>&-; }

# configure FOLDER PRESET TESTS [ARGUMENT...]: configures build/FOLDER, unless it has been. TESTS is ON or OFF.
configure() {
    local folder=$root/build/$1
    if [ ! -f "$folder/build.ninja" ] ||
        { [ "$3" = ON ] && ! grep -q '^KCNVRT_TESTS:BOOL=ON$' "$folder/CMakeCache.txt"; }; then
        say "Configuring build/$1"
        quietly cmake -S "$root" --preset "$2" -B "$folder" "-DKCNVRT_TESTS=$3" "${@:4}"
    fi
}

# tell WORDS LOG: reads what ninja prints into LOG, says the words when it has something to do, and shows its last line
# on a terminal.
tell() {
    local line said=no width=
    [ ! -t 2 ] || width=$(tput cols || echo 80)
    while IFS= read -r line; do
        printf '%s\n' "$line"
        [[ $line =~ ^\[[0-9]+/[0-9]+\] && $line != *Re-checking* ]] || continue
        [ $said = yes ] || say "$1"
        said=yes
        [ -z "$width" ] || printf '\r\e[K  %.*s' $((width - 3)) "$line" >&2
    done > "$2"
    [ -z "$width" ] || printf '\r\e[K' >&2
}

# build FOLDER TARGET...
build() {
    local log=$root/build/last.log
    if ! cmake --build "$root/build/$1" --parallel "$(nproc)" --target "${@:2}" 2>&1 < /dev/null |
        tell "Building build/$1" "$log"; then
        cat "$log" >&2
        say "Building build/$1 failed"
        exit "$build_failed"
    fi
}

# Tests that may be skipped without failing a run, by their names: ./test --may-skip adds them.
may_skip=${KCNVRT_MAY_SKIP:-}

# skipped_tests REPORT: the names of the tests that did not run, or that left out a part: GoogleTest and bats let a test
# skip itself and pass. REPORT is CTest's, in JUnit's format.
skipped_tests() {
    awk '
        /<testcase / { name = $0; sub(/.*<testcase name="/, "", name); sub(/".*/, "", name) }
        /<testcase .* status="notrun"/ || /\[  SKIPPED \]/ || /^(<system-out>)?ok [0-9].* # skip/ { print name }
        ' "$1" | sort -u
}

# refuse_skipped REPORT: fails where a test was skipped that was not asked to be.
refuse_skipped() {
    local name refused=0
    for name in $(skipped_tests "$1"); do
        [[ " $may_skip " != *" $name "* ]] || continue
        say "$name was skipped, or a part of it; ./test --may-skip $name lets that pass"
        refused=1
    done
    return "$refused"
}

# check_limits GROUP: compares the figures on standard input with the limits of their group in tests/limits.txt, which
# says what they look like.
check_limits() {
    cat > "$root/build/figures"
    awk -v group="$1" -f "$root/scripts/limits.awk" "$root/tests/limits.txt" "$root/build/figures" | sort
}

# run_tests FOLDER [CTEST_ARGUMENT...]
run_tests() {
    local report=$root/build/$1/tests.xml status=0
    say "Running the tests of build/$1"
    ctest --test-dir "$root/build/$1" --no-tests=error --output-on-failure --output-junit "$report" \
        --test-output-size-passed 10000000 --parallel "$(nproc)" "${@:2}" || status=$?
    refuse_skipped "$report" || status=1
    return "$status"
}

# run_tests_again FOLDER [CTEST_ARGUMENT...]: by another compiler or under a sanitizer. Unless told which, it leaves out
# the tests with the label "once": of documents, scripts and Python, which no compiler makes.
run_tests_again() {
    [ $# -gt 1 ] || set -- "$1" --label-exclude '^once$'
    run_tests "$@"
}

# What the test of differences compares with. Where it cannot be had, that test says so.
fetch_differences() {
    ! cmp -s "$root/tests/conf/package-lock.json" "$root/build/conf/complete" || return 0
    say "Fetching the packages of the test of differences"
    "$root/tests/conf/packages.sh" "$root/build/conf" >&2 || true
}

# test_build FOLDER PRESET [CTEST_ARGUMENT...]: everything from packages to tests. FOLDER is "release" where all of them
# run.
test_build() {
    lock
    need_packages "${test_packages[@]}"
    need_npm
    fetch_differences
    configure "$1" "$2" ON
    build "$1" all
    unlock
    if [ "$1" = release ]; then run_tests "$1" "${@:3}"; else run_tests_again "$1" "${@:3}"; fi
}
