# Standard error, and input that is refused.
load setup

@test "messages are one a line, between the file and the function" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new old.json
    equal "$output" ""
    equal "${#stderr_lines[@]}" 4
    equal "${stderr_lines[2]}" "old.json: error: Error allocated memory! [parse_one]"
    equal "${stderr_lines[3]}" 'old.json: error: Invalid "field",\nis'$'\t''\u001b[31mnot\ string\r [parse_two]'
}

@test "standard input is shown as -" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new < old.json
    equal "${stderr_lines[2]}" "-: error: Error allocated memory! [parse_one]"
}

@test "--errors json prints an object a line" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new --errors json old.json
    equal "${#stderr_lines[@]}" 4
    equal "${stderr_lines[2]}" '{"file": "old.json", "line": null, "column": null, "pointer": null, "severity": "error", "function": "parse_one", "message": "Error allocated memory!"}'
    equal "${stderr_lines[3]}" '{"file": "old.json", "line": null, "column": null, "pointer": null, "severity": "error", "function": "parse_two", "message": "Invalid \"field\",\nis\u0009\u001b[31mnot\\ string\r"}'
    talkative 1 --errors json to-new old.json
    equal "${stderr_lines[2]}" '{"file": "old.json", "line": null, "column": null, "pointer": null, "severity": "error", "function": "parse_one", "message": "Error allocated memory!"}'
}

@test "--errors json is JSON whatever the file is called" {
    local name=$'caf\xc3\xa9 \xff\xed\xa0\x80 "\n'
    kcnvrt 3 to-new --errors json "$name"
    equal "$stderr" '{"file": "café '$'\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd'' \"\n", "line": null, "column": null, "pointer": null, "severity": "error", "function": "read", "message": "No such file or directory"}'
}

@test "--errors json replaces every byte that is not UTF-8" {
    named() { # BYTES EXPECTED
        kcnvrt 3 to-new --errors json "$1"
        contains "$stderr" "{\"file\": \"$2\", "
    }
    local no=$'\xef\xbf\xbd'
    named $'\xf4\x8f\xbf\xbf' $'\xf4\x8f\xbf\xbf'
    named $'\xf4\x90\x80\x80' "$no$no$no$no"
    named $'\xf5\x80\x80\x80' "$no$no$no$no"
    named $'\xf0\x8f\xbf\xbf' "$no$no$no$no"
    named $'\xc1\xbf' "$no$no"
    named $'\xe2\x82' "$no$no"
}

@test "a control character in a file's name is shown, and not sent to the terminal" {
    kcnvrt 3 to-new $'delete\x7fescape\x1b'
    equal "$stderr" 'delete\u007fescape\u001b: error: No such file or directory [read]'
    kcnvrt 3 to-new --errors json $'delete\x7fescape\x1b'
    contains "$stderr" '{"file": "delete\u007fescape\u001b", '
}

@test "a line break in a file's name stays on the line" {
    kcnvrt 3 to-new $'two\nlines'
    equal "$stderr" 'two\nlines: error: No such file or directory [read]'
}

@test "messages do not keep a result from being printed" {
    write old.json '{"a": 1}'
    talkative 0 to-new --compact old.json
    equal "$output" '{"a":1}'
    equal "${#stderr_lines[@]}" 4
}

@test "with --base a document with bad fields still gives its difference" {
    write old.json '{"rejected": 1}'
    write base.json '{}'
    talkative 0 to-new --compact --base base.json old.json
    equal "$output" '{"rejected":1}'
    contains "$stderr" " [parse_one]"
}

@test "diagnostics of a conversion are kept apart from its result" {
    write old.json '{"a": 1}'
    talkative 0 to-new --compact old.json
    equal "$output" '{"a":1}'
    equal "${stderr_lines[0]}" "old.json:1:1: note: first diagnostic [diagnostic]"
    equal "${stderr_lines[1]}" "old.json:1:1: note: second diagnostic [diagnostic]"
    talkative 0 to-new --errors json --compact old.json
    equal "${stderr_lines[0]}" '{"file": "old.json", "line": 1, "column": 1, "pointer": "", "severity": "note", "function": "diagnostic", "message": "first diagnostic"}'
    "$TALKATIVE_KCNVRT" to-new --compact old.json > result 2> messages
    equal "$(cat result)" '{"a":1}'
}

@test "a file that is missing or a folder cannot be read" {
    kcnvrt 3 to-new missing.json
    equal "$stderr" "missing.json: error: No such file or directory [read]"
    mkdir folder
    kcnvrt 3 to-old folder
    equal "$stderr" "folder: error: Is a directory [read]"
    write old.json '{}'
    kcnvrt 3 to-new --base missing.json old.json
    equal "$stderr" "missing.json: error: No such file or directory [read]"
    equal "$output" ""
}

@test "standard input that is closed cannot be read" {
    "$KCNVRT" to-new <&- 2> messages || status=$?
    equal "$status" 3
    equal "$(cat messages)" "-: error: Bad file descriptor [read]"
}

@test "JSON that does not parse says line and column" {
    write old.json $'{\n  "a": x\n}'
    kcnvrt 3 to-new old.json
    equal "$stderr" "old.json:2:8: error: a text stands in double quotes; only numbers, true, false and null go without [parse]"
    kcnvrt 3 section wan_pvid --to-new - <<< '{} {}'
    equal "$stderr" "-:1:4: error: the JSON text ends before this, and something follows [parse]"
    kcnvrt 3 to-old < /dev/null
    equal "$stderr" "-:1:1: error: there is nothing: the text is empty [parse]"
    kcnvrt 3 diff old.json old.json
    equal "${#stderr_lines[@]}" 2
    contains "${stderr_lines[1]}" "old.json:2:8: error: "
    equal "$output" ""
}

@test "a member given twice is refused" {
    write old.json $'{"a": {"b": 1,\n "b": 1}}'
    kcnvrt 3 to-new old.json
    equal "$stderr" 'old.json:2:2: error: "b" is given twice in the same object [parse]'
    kcnvrt 3 section wan_pvid --to-new old.json
    write base.json '{}'
    kcnvrt 3 to-new --base old.json base.json
    kcnvrt 3 apply base.json old.json
}

@test "a NUL inside a text of a document is refused" {
    write old.json '{"a": "x\u0000y"}'
    kcnvrt 3 to-new old.json
    equal "$stderr" 'old.json:1:7: error: a text with the character \u0000 cannot be converted [parse]'
}

@test "a whole configuration is an object" {
    write array.json '[]'
    write object.json '{}'
    for command in to-new to-old; do
        kcnvrt 3 "$command" array.json
        equal "$stderr" "array.json:1:1: error: a configuration is an object, this is an array [parse]"
        equal "$output" ""
    done
    kcnvrt 3 to-new --base array.json object.json
    equal "$stderr" "array.json:1:1: error: a configuration is an object, this is an array [parse]"
    write text.json '"text"'
    kcnvrt 3 to-new text.json
    kcnvrt 3 section wan_pvid --to-new text.json
}

@test "every line of messages is one write" {
    write old.json '{"rejected": 1}'
    for format in text json; do
        rm -f calls
        export SHIM_RECORD=calls
        ! LD_PRELOAD="$SHIM_LIBRARY" "$TALKATIVE_KCNVRT" to-new --errors "$format" old.json 2> messages || return 1
        equal "$(wc -l < messages)" 4
        equal "$(sed -n 's/^write .*messages = //p' calls)" "$(awk '{ print length($0) + 1 }' messages)"
    done
}
