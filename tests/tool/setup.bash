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

# heeding_permissions COMMAND...: root may write everywhere, unless that right is taken from it.
heeding_permissions() {
    [ "$(id -u)" != 0 ] || set -- setpriv --inh-caps=-all --bounding-set=-dac_override,-dac_read_search "$@"
    "$@"
}

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
        for i in $(seq 4000); do printf ', "section%d": "a value that is carried"' "$i"; done
        printf '}'
    } > "$1"
}
