# What the comparison of a library with its description says of changes, each made to a library of its own.
bats_require_minimum_version 1.5.0

setup() {
    scripts=$BATS_TEST_DIRNAME/../../scripts/abi
    cd "$BATS_TEST_TMPDIR" || return 1
    cp "$BATS_TEST_DIRNAME"/abi/thing.? .
    printf '# Changelog\n\n## Unreleased\n\n## 1.0.0\n' > CHANGELOG.md
    printf '@thing_1 1.0.0\nk_hide\nk_number\nk_sum\n\n@thing_1.1 1.1.0\nk_later\n' > thing.symbols
    describe before
}

# describe NAME [SONAME]: what there is now.
describe() {
    awk '
        /^@/ { print end substr($1, 2) " { global:"; end = "};" }
        /^k/ { print $0 ";" }
        END { print "local: *; };" }' thing.symbols > thing.map
    gcc -g -fPIC -shared "-Wl,-soname,${2:-libthing.so.1},--version-script=thing.map" thing.c -o thing.so
    "$scripts/describe.sh" thing.so "$1.abi" .
    "$scripts/constants.sh" "$1.constants" "$PWD"
}

# becomes STATUS [SONAME]: what is said of what there is now.
becomes() {
    describe after "${@:2}"
    run "-$1" "$scripts/compare.sh" thing.symbols before.abi after.abi CHANGELOG.md
}

breaks() {
    becomes 1
    [[ $output = *"Programs that use thing as abi/ describes it would break."*"raise the major version"* ]]
    [[ $output = *"$1"* ]]
}

change() { sed -i "$1" thing.h thing.c; }

@test "what stays the same is no change, wherever it was built" {
    becomes 0
    [ "$output" = "" ]
    mkdir elsewhere
    cp thing.h thing.c thing.symbols elsewhere
    cd elsewhere
    describe after
    cmp ../before.abi after.abi
    run ! grep -F "$BATS_TEST_TMPDIR" after.abi
}

@test "what nobody outside can know may change" {
    change 's/    int what;/    long what, ever;/; s/int more/int another/; s/pair->second + more/another/'
    becomes 0
    [ "$output" = "" ]
}

@test "a name that is exported no longer breaks programs" {
    sed -i '/k_hide/d' thing.symbols
    breaks "[D] 'function k_hidden_t* k_hide()'"
}

@test "a name in another node breaks programs" {
    sed -i '/^k_hide/d; s/^k_later/&\nk_hide/' thing.symbols
    breaks "[D] 'function k_hidden_t* k_hide()'"
}

@test "another parameter breaks programs" {
    change 's/int more/long more/'
    breaks "parameter 2 of type 'int' changed"
}

@test "another result breaks programs" {
    change 's/^long k_sum/int k_sum/'
    breaks "return type changed"
}

@test "a structure's member of another type breaks programs" {
    change 's/    long second;/    short second;/'
    breaks "type of 'long int second' changed"
}

@test "a member more breaks programs where they do not say the size" {
    change 's/    long second;/&\n    long third;/'
    breaks "1 data member insertion"
}

@test "a structure with its size gets members at its end" {
    change 's/    const char\* words;/&\n    long more;/'
    becomes 0
    [ "$output" = "" ]
}

@test "no other change is hidden by one at the end" {
    change 's/    int number;/    long number;/; s/    const char\* words;/&\n    long more;/'
    breaks "k_text_thing_t"
}

@test "a structure with its size gets no members in the middle" {
    change 's/    int number;/&\n    int more;/'
    breaks "k_text_thing_t"
}

@test "with another SONAME everything may change" {
    sed -i '/k_hide/d' thing.symbols
    becomes 0 libthing.so.2
    [[ $output = "libthing.so.2 is another library than libthing.so.1"*"scripts/abi.sh --renew"* ]]
}

@test "more functions break nothing, and are to be described" {
    printf 'int k_more(void);\n' >> thing.h
    printf 'int k_more(void) { return 1; }\n' >> thing.c
    echo k_more >> thing.symbols
    becomes 0
    [[ $output = *"k_more"*"thing has more than abi/ describes"*"scripts/abi.sh --renew"* ]]
}

# constant_breaks LINE: it is no longer what it was.
constant_breaks() {
    becomes 1
    [[ $output = "  [D] $1"*"would break, and the library cannot tell."*"abi/thing.constants first." ]]
    [ "$(grep -cF '[D]' <<< "$output")" -eq 1 ]
}

@test "constants are described with their values, and headers and macros with parameters are, too" {
    [ "$(cat before.constants)" = '<thing.h>
K_BEST 3
K_FAST 1
K_ONE 1
K_TWICE(what) ((what) + (what))
K_TWO 2
K_WORD "thing"' ]
}

@test "a constant of another value breaks programs" {
    change 's/K_FAST ((unsigned)1)/K_FAST ((unsigned)2)/; s/(K_FAST | 2u)/3u/'
    constant_breaks 'K_FAST 1'
}

@test "an enumerator of another value breaks programs, of which the library knows nothing" {
    change 's/    K_ONE = 1,/    K_ONE = 1, K_MORE,/'
    constant_breaks 'K_TWO 2'
}

@test "a constant of another text breaks programs" {
    change 's/K_WORD "thing"/K_WORD "other"/'
    constant_breaks 'K_WORD "thing"'
}

@test "a macro that means something else breaks programs" {
    change 's/((what) + (what))/((what) * 3)/'
    constant_breaks 'K_TWICE(what) ((what) + (what))'
}

@test "a constant that is no longer there breaks programs" {
    change '/K_BEST/d'
    constant_breaks 'K_BEST 3'
}

@test "a header that is no longer there breaks programs" {
    mv thing.h other.h
    sed -i 's/thing\.h/other.h/' thing.c
    constant_breaks '<thing.h>'
}

@test "a constant may be written otherwise" {
    change 's/((unsigned)1)/1u/; s/    K_TWO/    K_TWO = 1 + K_ONE/'
    becomes 0
    [ "$output" = "" ]
}

@test "more constants break nothing, and are to be described" {
    change 's/    K_TWO/    K_TWO, K_MORE/'
    printf '#define K_MOST 4\n' >> thing.h
    becomes 0
    [[ $output = *"[A] K_MORE 3"*"[A] K_MOST 4"*"thing has more than abi/ describes"* ]]
}

@test "with another SONAME constants may change, too" {
    change '/K_BEST/d'
    becomes 0 libthing.so.2
}

@test "what no release has had may be meant to change, but not unseen" {
    change 's/k_later(int/k_later(long/'
    becomes 2
    [[ $output = *"in what no release has had yet"*"scripts/abi.sh --renew describes it anew"* ]]
    printf '\n## 1.1.0\n' >> CHANGELOG.md
    breaks "k_later"
}

@test "a change of both is a break" {
    change 's/k_later(int/k_later(long/; s/int more/long more/'
    breaks "parameter 2 of type 'int' changed"
}

@test "what is no description is no success" {
    describe after
    echo nothing > before.abi
    run -1 "$scripts/compare.sh" thing.symbols before.abi after.abi CHANGELOG.md
    [[ $output = *"abidiff cannot compare"* ]]
}
