# Standard error, and input that is refused.
load setup

@test "messages are one a line, behind the file and the function" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new old.json
    equal "$output" ""
    equal "${#stderr_lines[@]}" 4
    equal "${stderr_lines[2]}" "old.json: parse_one: Error allocated memory!"
    equal "${stderr_lines[3]}" 'old.json: parse_two: Invalid "field",\nis'$'\t''\u001b[31mnot\ string\r'
}

@test "standard input is shown as -" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new < old.json
    equal "${stderr_lines[2]}" "-: parse_one: Error allocated memory!"
}

@test "--errors json prints an object a line" {
    write old.json '{"rejected": 1}'
    talkative 1 to-new --errors json old.json
    equal "${#stderr_lines[@]}" 4
    equal "${stderr_lines[2]}" '{"source": "old.json", "function": "parse_one", "message": "Error allocated memory!"}'
    equal "${stderr_lines[3]}" '{"source": "old.json", "function": "parse_two", "message": "Invalid \"field\",\nis\u0009\u001b[31mnot\\ string\r"}'
    talkative 1 --errors json to-new old.json
    equal "${stderr_lines[2]}" '{"source": "old.json", "function": "parse_one", "message": "Error allocated memory!"}'
}

@test "--errors json is JSON whatever the file is called" {
    local name=$'caf\xc3\xa9 \xff\xed\xa0\x80 "\n'
    kcnvrt 3 to-new --errors json "$name"
    equal "$stderr" '{"source": "café '$'\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd'' \"\n", "function": "read", "message": "No such file or directory"}'
}

@test "a line break in a file's name stays on the line" {
    kcnvrt 3 to-new $'two\nlines'
    equal "$stderr" 'two\nlines: read: No such file or directory'
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
    contains "$stderr" "old.json: parse_one: "
}

@test "diagnostics of a conversion are kept apart from its result" {
    write old.json '{"a": 1}'
    talkative 0 to-new --compact old.json
    equal "$output" '{"a":1}'
    equal "${stderr_lines[0]}" "old.json: diagnostic: first diagnostic"
    equal "${stderr_lines[1]}" "old.json: diagnostic: second diagnostic"
    talkative 0 to-new --errors json --compact old.json
    equal "${stderr_lines[0]}" '{"source": "old.json", "function": "diagnostic", "message": "first diagnostic"}'
    "$TALKATIVE_KCNVRT" to-new --compact old.json > result 2> messages
    equal "$(cat result)" '{"a":1}'
}

@test "a file that is missing or a folder cannot be read" {
    kcnvrt 3 to-new missing.json
    equal "$stderr" "missing.json: read: No such file or directory"
    mkdir folder
    kcnvrt 3 to-old folder
    equal "$stderr" "folder: read: Is a directory"
    write old.json '{}'
    kcnvrt 3 to-new --base missing.json old.json
    equal "$stderr" "missing.json: read: No such file or directory"
    equal "$output" ""
}

@test "standard input that is closed cannot be read" {
    "$KCNVRT" to-new <&- 2> messages || status=$?
    equal "$status" 3
    equal "$(cat messages)" "-: read: Bad file descriptor"
}

@test "JSON that does not parse says line and column" {
    write old.json $'{\n  "a": x\n}'
    kcnvrt 3 to-new old.json
    equal "$stderr" "old.json: parse: line 2, column 8: invalid token near 'x'"
    kcnvrt 3 section wan_pvid --to-new - <<< '{} {}'
    contains "$stderr" "-: parse: line 1, column 4: "
    kcnvrt 3 to-old < /dev/null
    contains "$stderr" "-: parse: line 1, column 0: "
    kcnvrt 3 diff old.json old.json
    contains "$stderr" "old.json: parse: line 2, column 8: "
    equal "$output" ""
}

@test "a member given twice is refused" {
    write old.json $'{"a": {"b": 1,\n "b": 1}}'
    kcnvrt 3 to-new old.json
    contains "$stderr" "old.json: parse: line 2, column 4: duplicate object key"
    kcnvrt 3 section wan_pvid --to-new old.json
    write base.json '{}'
    kcnvrt 3 to-new --base old.json base.json
    kcnvrt 3 apply base.json old.json
}

@test "a NUL inside a text of a document is refused" {
    write old.json '{"a": "x\u0000y"}'
    kcnvrt 3 to-new old.json
    contains "$stderr" "old.json: parse: line 1, column "
}

@test "a whole configuration is an object" {
    write array.json '[]'
    write object.json '{}'
    for command in to-new to-old; do
        kcnvrt 3 "$command" array.json
        contains "$stderr" "array.json: parse: "
        equal "$output" ""
    done
    kcnvrt 3 to-new --base array.json object.json
    contains "$stderr" "array.json: parse: "
    write text.json '"text"'
    kcnvrt 3 to-new text.json
    kcnvrt 3 section wan_pvid --to-new text.json
}
