# The command line itself: help, version, and wrong usage.
load setup

# The commands, as the tool lists them.
commands() { "$KCNVRT" --help | sed -n '/^Commands:/,/^$/s/^  \([a-z-]*\) .*/\1/p'; }

@test "--version and -V name the tool and its version" {
    kcnvrt 0 --version
    [[ $output =~ ^kcnvrt\ [0-9]+\.[0-9]+\.[0-9]+$ ]]
    local version=$output
    kcnvrt 0 -V
    equal "$output" "$version"
}

@test "help lists every command, and has a page with an example of each" {
    kcnvrt 0 help
    contains "$output" "Example: kcnvrt"
    local page=$output
    kcnvrt 0 --help
    equal "$output" "$page"
    equal "$(commands | tr '\n' ' ')" "to-new to-old convert losses check explain section stream census sections mapping schema example diff apply self-check help "
    for command in $(commands); do
        kcnvrt 0 help "$command"
        contains "$output" "Usage: kcnvrt $command"
        contains "$output" "Example: kcnvrt $command"
        page=$output
        for way in "$command --help" "$command -h" "--help $command" "-h $command" \
            "$command --errors json --help --unknown"; do
            # shellcheck disable=SC2086 # the words of a way
            kcnvrt 0 $way
            equal "$way: $output" "$way: $page"
            equal "$stderr" ""
        done
    done
}

@test "a help page fits 80 columns, and has no empty group" {
    for command in "" $(commands); do
        # shellcheck disable=SC2086 # no argument where there is no command
        "$KCNVRT" help $command > page
        equal "$(grep -nE '.{81}|[[:space:]]$' page)" ""
        awk '/^[A-Z][a-z ]*:$/ { title = $0; next } title != "" && !/^  / { print title } { title = "" }' page > empty
        equal "$(cat empty)" ""
    done
}

@test "without an argument a person at a terminal sees the commands, a program a line" {
    kcnvrt 2
    equal "$output" ""
    equal "$stderr" "kcnvrt: error: a command is required (kcnvrt --help tells more) [usage]"
    "$KCNVRT" --help > page
    status=0
    script --quiet --return --command "$KCNVRT" typescript < /dev/null > shown || status=$?
    equal "$status" 2
    equal "$(tr -d '\r' < shown)" "$(cat page)"
}

# wrong MESSAGE ARGUMENT...: status 2 and one line, which starts with the message and names the help page.
wrong() {
    local message=$1
    shift
    kcnvrt 2 "$@"
    equal "$output" ""
    equal "${stderr%% (kcnvrt *tells more) \[usage\]}" "kcnvrt: error: $message"
}

@test "wrong usage exits with 2 and one line that says what is wrong" {
    write old.json '{}'
    wrong "a command is required" --compact
    wrong "a command is required" -o new.json
    wrong "--unknown is no option of to-new" to-new --unknown old.json
    wrong "--unknown is no option" --unknown to-new old.json
    wrong "-x is no option of to-new" to-new -x old.json
    wrong "-x is no option of to-new" to-new -xo new.json old.json
    wrong "several files need a folder to write to: --output-dir FOLDER" to-new old.json second.json
    wrong '"third.json" is an argument too many' diff old.json second.json third.json
    wrong '"old.json" is an argument too many' sections old.json
    wrong "--merge-patch needs --base" to-new --merge-patch old.json
    wrong "--base is no option of to-old" to-old --base old.json old.json
    wrong "--dsl-vlan is no option of section" section wan_pvid --to-new --dsl-vlan old.json
    wrong "NAME is missing" section --to-new
    wrong "--to-new or --to-old is required" section wan_pvid old.json
    wrong "--to-old excludes --to-new" section wan_pvid --to-new --to-old old.json
    wrong "--base excludes --to-old" section wan_pvid --to-old --base old.json old.json
    wrong "OTHER is missing" diff old.json
    wrong "DIFFERENCE is missing" apply old.json
    wrong "--output is given twice" to-new -o a -o b old.json
    wrong "--output is given twice" --output=a to-new -o b old.json
    wrong "--version is no option of to-new" to-new --version
}

@test "an option's value has to fit it" {
    write old.json '{}'
    wrong '--errors takes text or json, not "xml"' to-new --errors xml old.json
    for indent in -1 32 two 1x "1 " +1 0x1 99999999999999999999; do
        wrong "--indent takes a number from 0 to 31, not \"$indent\"" to-new --indent "$indent" old.json
    done
    wrong "--indent excludes --compact" to-new --indent 2 --compact old.json
    wrong "--indent excludes --compact" --indent 2 to-new --compact old.json
    wrong "--compact takes no value" to-new --compact=1 old.json
    wrong "--compact takes no value" to-new --compact= old.json
}

@test "an empty argument or value names nothing" {
    write old.json '{}'
    wrong "argument 1 is empty" ""
    wrong "argument 2 is empty" to-new ""
    wrong "argument 4 is empty" section wan_pvid old.json "" "" --unknown
    wrong "argument 5 is empty" -- section wan_pvid old.json "" --unknown
    wrong "--output= has no value" to-new --output= old.json
    wrong "--base= has no value" to-new --base= old.json
    wrong "--output has no value" to-new --output "" old.json
    wrong "--output has no value" to-new old.json --output
    wrong "-o has no value" to-new old.json -o
    wrong "--output has no value (a file can be called ./--compact)" to-new old.json -o --compact
    wrong "--base has no value (a file can be called ./-o)" to-new old.json --base -o new.json
    [ ! -e new.json ]
}

@test "an option may stand before its command, and not before another" {
    write old.json '{}'
    kcnvrt 0 -o new.json --indent=3 to-new --errors text old.json
    equal "$output" ""
    contains "$(cat new.json)" '   "Device"'
    kcnvrt 0 -onew.json to-old old.json
    wrong "--output is no option of self-check" -o new.json self-check
    wrong "--indent is no option of sections" --indent 3 sections
    wrong "--base is no option" --base old.json to-new old.json
}

@test "an option is written in full" {
    write old.json '{}'
    wrong '--comp is no option of to-new, did you mean "--compact"?' to-new --comp old.json
    wrong '--out is no option of to-new, did you mean "--output"?' to-new --out=new.json old.json
    wrong '--out is no option of to-new, did you mean "--output"?' to-new --out new.json old.json
    [ ! -e new.json ]
}

@test "standard input is read once" {
    wrong "standard input can be read only once" diff - -
    wrong "standard input can be read only once" apply - -
    wrong "standard input can be read only once" to-new --base -
    wrong "standard input can be read only once" section wan_pvid --to-new --base - -
}

@test "an unknown name gets the nearest one, before input is read" {
    wrong '"tonew" is no command, did you mean "to-new"?' tonew missing.json
    wrong '"TO-OLD" is no command, did you mean "to-old"?' TO-OLD missing.json
    wrong '"dfif" is no command, did you mean "diff"?' dfif
    wrong '"self" is no command, did you mean "self-check"?' self
    wrong '"frobnicate" is no command' frobnicate
    wrong '"missing.json" is no command' missing.json
    wrong '"aply" is no command, did you mean "apply"?' help aply
    wrong '--ouput is no option of to-new, did you mean "--output"?' to-new --ouput=new.json missing.json
    wrong '"WAN_PVID" is no section of the old layout, did you mean "wan_pvid"?' section WAN_PVID --to-old missing.json
    wrong '"default_ssid" is no section of the new layout, did you mean "Default_ssid"?' \
        section default_ssid --to-new missing.json
    wrong '"wanpvid" is no section of the new layout, did you mean "wan_pvid"?' section --to-new wanpvid missing.json
    wrong '"x" is no section of the new layout' section x --to-new missing.json
    wrong "\"$(printf 'x%.0s' {1..9999})\" is no command" "$(printf 'x%.0s' {1..9999})"
}
