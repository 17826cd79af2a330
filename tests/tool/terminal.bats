# What a terminal gets besides the messages: the line of the source, a caret, colours; and what is not shown.
load setup

# on_terminal STATUS COLUMNS ARGUMENT...: standard error is a terminal, standard output is not. Its lines go to $lines.
on_terminal() {
    local expected=$1 columns=$2 command status=0
    shift 2
    printf -v command '%q ' "$KCNVRT" "$@"
    script --quiet --return --command "stty cols $columns 2> stty.log; $command > out" /dev/null > screen < /dev/null ||
        status=$?
    equal "$status" "$expected"
    tr -d '\r' < screen > shown
    mapfile -t lines < shown
}

broken() { write old.json $'{\n    "lang": en,\n    "password": "hunter2"\n}'; }
location='old.json:2:13:'
message='a text stands in double quotes; only numbers, true, false and null go without [parse]'
escape=$'\x1b'

@test "a terminal shows the line of the source, with a caret under the value" {
    broken
    TERM=dumb on_terminal 3 100 to-new old.json
    equal "${lines[0]}" "$location error: $message"
    equal "${lines[1]}" '  2 | "lang": en,'
    equal "${lines[2]}" '    |         ^~'
    equal "${#lines[@]}" 3
}

@test "what is no terminal gets the message alone" {
    broken
    kcnvrt 3 to-new old.json
    equal "$stderr" "$location error: $message"
    kcnvrt 3 to-new --color always old.json
    equal "$stderr" "${escape}[1m$location ${escape}[1;31merror:${escape}[m $message"
}

@test "objects for programs are the same on a terminal" {
    broken
    on_terminal 3 100 to-new --errors json old.json
    equal "${#lines[@]}" 1
    equal "${lines[0]:0:32}" '{"file": "old.json", "line": 2, '
}

@test "a terminal has colours unless it has none or somebody wants none" {
    broken
    unset NO_COLOR
    TERM=xterm on_terminal 3 100 to-new old.json
    equal "${lines[0]}" "${escape}[1m$location ${escape}[1;31merror:${escape}[m $message"
    equal "${lines[2]}" "    |         ${escape}[1;32m^~${escape}[m"
    without_colors() {
        equal "${lines[0]}" "$location error: $message"
        equal "${lines[2]}" '    |         ^~'
    }
    TERM=xterm NO_COLOR=1 on_terminal 3 100 to-new old.json
    without_colors
    TERM=dumb on_terminal 3 100 to-new old.json
    without_colors
    TERM=xterm on_terminal 3 100 to-new --color never old.json
    without_colors
    TERM=xterm NO_COLOR='' on_terminal 3 100 to-new --color auto old.json
    equal "${lines[2]}" "    |         ${escape}[1;32m^~${escape}[m"
    TERM=dumb NO_COLOR=1 on_terminal 3 100 to-new --color always old.json
    equal "${lines[2]}" "    |         ${escape}[1;32m^~${escape}[m"
}

@test "warnings and notes have a colour of their own" {
    write new.json '{"Device": {"Roaming": {}}}'
    kcnvrt 0 to-old --color always new.json
    contains "$stderr" "${escape}[1;36mnote:${escape}[m /Device/Roaming: "
    TERM=dumb on_terminal 0 100 to-old new.json
    equal "${lines[1]}" '  1 | {"Device": {"Roaming": {}}}'
    equal "${lines[2]}" '    |                        ^'
}

@test "a line that is too long is shortened around the value" {
    write base.json '{}'
    write change.json '[{"op": "test", "path": "/a", "value": 1}, {"op": "test", "path": "/b"}]'
    TERM=dumb on_terminal 1 60 apply base.json change.json
    equal "${lines[1]}" '  1 | [{"op": "test", "path": "/a", "value": ***}, {"op":...'
    equal "${lines[2]}" '    |  ^'
    write change.json '[{"op": "remove", "path": "/b", "from": "a longer name"}, {"op": "remove", "path": "/b"}]'
    write base.json '{"b": 1}'
    TERM=dumb on_terminal 1 46 apply base.json change.json
    equal "${lines[1]}" '  1 | ...r name"}, {"op": "remove", "path":...'
    equal "${lines[2]}" '    |              ^'
}

@test "wide characters take two columns" {
    write old.json '{"日本語": "日本語", "lang": en, "日本語日本語": 1}'
    TERM=dumb on_terminal 3 100 to-new old.json
    equal "${lines[1]}" '  1 | {"日本語": "日本語", "lang": en, "日本語日本語": 1}'
    equal "${lines[2]}" '    |                              ^~'
    TERM=dumb on_terminal 3 50 to-new old.json
    equal "${lines[1]}" '  1 | ... "日本語", "lang": en, "日本語日本語": 1}'
    equal "${lines[2]}" '    |                       ^~'
}

@test "a place is shown once, whatever is said of it" {
    write old.json '{"max_table_id": "many"}'
    TERM=dumb on_terminal 1 120 to-new --partial old.json
    equal "${#lines[@]}" 4
    equal "${lines[1]}" '  1 | {"max_table_id": "many"}'
    equal "${lines[3]}" "old.json:1:18: note: /max_table_id: left out of the partial result [partial]"
}

@test "a file that is no text shows no line" {
    printf '\x1f\x8b\x08' > old.json
    TERM=dumb on_terminal 3 120 to-new old.json
    equal "${#lines[@]}" 1
    equal "${lines[0]}" "old.json: error: this is compressed (gzip): unpack it first [parse]"
}

@test "secrets are masked in the line unless they are asked for" {
    write old.json '{"password": "hunter2", "lang": en}'
    TERM=dumb on_terminal 3 100 to-new old.json
    equal "${lines[1]}" '  1 | {"password": ***, "lang": en}'
    equal "${lines[2]}" '    |                           ^~'
    TERM=dumb on_terminal 3 100 to-new --show-secrets old.json
    equal "${lines[1]}" '  1 | {"password": "hunter2", "lang": en}'
    TERM=dumb on_terminal 3 100 --show-secrets to-new old.json
    equal "${lines[1]}" '  1 | {"password": "hunter2", "lang": en}'
}
