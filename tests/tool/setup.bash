# What the test files share. Each test runs in a folder of its own.
bats_require_minimum_version 1.5.0

setup() {
    mkdir "$BATS_TEST_TMPDIR/work"
    cd "$BATS_TEST_TMPDIR/work" || return 1
}

# kcnvrt STATUS ARGUMENT...: runs the tool and checks its exit status. $output and $stderr hold what it wrote.
kcnvrt() {
    local expected=$1
    shift
    run --separate-stderr "-$expected" "${KCNVRT:?}" "$@"
}

# The same for the tool whose conversions talk.
talkative() {
    local expected=$1
    shift
    run --separate-stderr "-$expected" "${TALKATIVE_KCNVRT:?}" "$@"
}

# shimmed STATUS RULES ARGUMENT...: the tool behind the shim, whose rules shim/calls.c describes.
shimmed() {
    local expected=$1 rules=$2
    shift 2
    run --separate-stderr "-$expected" env LD_PRELOAD="${SHIM_LIBRARY:?}" SHIM="$rules" "$KCNVRT" "$@"
}

# recorded FILE ARGUMENT...: the calls that the tool makes, one a line. A passing file is called "passing", as its name
# is never the same.
recorded() {
    local file=$1
    shift
    rm -f "$file"
    LD_PRELOAD="$SHIM_LIBRARY" SHIM_RECORD=$file "$KCNVRT" "$@"
    sed -i -E '/^(alloc|mmap) /d; s/\.kcnvrt-[0-9-]+/passing/g' "$file"
}

# A document, what becomes of it, and the conversion with any other arguments.
document() { write old.json '{"wan1": 10}'; }
result='{"1":{"name":"wan1","pvid":10},"max_instance":1}'
conversion=(section wan_pvid --to-new --compact)
convert() { kcnvrt "$1" "${conversion[@]}" "${@:2}"; }

# No passing file is left behind.
only_files() { equal "$(ls -A | tr '\n' ' ')" "$* "; }

equal() {
    if [ "$1" != "$2" ]; then
        printf 'expected: %s\n     got: %s\n' "$2" "$1"
        return 1
    fi
}

contains() {
    case $1 in
        *"$2"*) ;;
        *)
            printf '%s\nis not in: %s\n' "$2" "$1"
            return 1
            ;;
    esac
}

# write FILE TEXT
write() { printf '%s' "$2" > "$1"; }

# Any document of more than a hundred kilobytes.
write_large() {
    {
        printf '{"lang": "en"'
        seq -f ', "section%.0f": "a value that is carried"' 4000 | tr -d '\n'
        printf '}'
    } > "$1"
}
