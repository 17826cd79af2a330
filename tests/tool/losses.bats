# losses, check, --losses and --strict: what of a configuration the other layout will not hold.
load setup

# It loses nothing.
whole() { write old.json '{"passwd": [], "route": [], "ifaces": {}}'; }
lossy() {
    write old.json '{"passwd": [], "route": [],
 "ifaces": {"eth4": {"type": "ethernett"}},
 "max_table_id": "12", "x": {"password": "hunter2"}}'
}
# It has a warning beside.
warned() { write old.json '{"passwd": [], "ifaces": {}, "route": [{"gw": "10.0.0.1"}]}'; }
rejected() { write old.json '{"passwd": [], "route": [], "ifaces": {}, "macfilter": ["x"], "y": 1}'; }

in_lines='old.json:2:21: warning: /ifaces/eth4: lost: dropped {"type": "ethernett"} [losses]
old.json:3:18: warning: /max_table_id: lost: changed "12" to 12 [losses]
old.json:3:29: warning: /x: lost: dropped {"password": "***"} [losses]'

@test "losses lists what is lost, in the order of the file, and exits with 0" {
    lossy
    kcnvrt 0 losses old.json
    equal "$output" "$in_lines"
    equal "$stderr" ""
    kcnvrt 0 losses --to-new < old.json
    equal "$output" "${in_lines//old.json/-}"
}

@test "losses prints nothing where nothing is lost" {
    whole
    kcnvrt 0 losses old.json
    equal "$output" ""
    kcnvrt 0 losses --exit-code --json old.json
    equal "$output" ""
    kcnvrt 0 check old.json
    equal "$output" ""
    kcnvrt 0 to-new --losses --strict old.json
    equal "$stderr" ""
    contains "$output" '"Device"'
}

@test "losses --exit-code says by its status whether anything is lost" {
    lossy
    kcnvrt 1 losses --exit-code old.json
    equal "$output" "$in_lines"
}

@test "losses --json has an object a line" {
    lossy
    kcnvrt 0 losses --json old.json
    equal "${#lines[@]}" 3
    equal "${lines[0]}" '{"file": "old.json", "line": 2, "column": 21, "pointer": "/ifaces/eth4", "kind": "dropped", "before": {"type": "ethernett"}, "after": null}'
    equal "${lines[1]}" '{"file": "old.json", "line": 3, "column": 18, "pointer": "/max_table_id", "kind": "changed", "before": "12", "after": 12}'
    kcnvrt 0 losses --json --show-secrets old.json
    equal "${lines[2]}" '{"file": "old.json", "line": 3, "column": 29, "pointer": "/x", "kind": "dropped", "before": {"password": "hunter2"}, "after": null}'
}

@test "losses finds the direction out, unless it is told" {
    write new.json '{"Device": {"DeviceInfo": {"ModelName": "HG"}}}'
    kcnvrt 0 losses new.json
    contains "$output" '/Device/DeviceInfo: lost: changed {"ModelName": "HG"}, which is used but does not come back'
    kcnvrt 1 losses --to-new new.json
    contains "$stderr" "[layout]"
    kcnvrt 0 losses --to-new --force new.json
    contains "$output" '/Device: lost: dropped {"DeviceInfo": {"ModelName": "HG"}}'
    kcnvrt 2 losses --to-new --to-old new.json
    contains "$stderr" "--to-old excludes --to-new"
}

@test "a rejected configuration is asked about in part" {
    rejected
    kcnvrt 0 losses old.json
    contains "$stderr" 'old.json:1:57: error: /macfilter/0: Invalid field "id", is not integer'
    contains "$stderr" "old.json:1:57: note: /macfilter/0: left out of the partial result [partial]"
    contains "$output" "old.json:1:68: warning: /y: lost: dropped 1 [losses]"
    kcnvrt 1 check old.json
    equal "$stderr" ""
    contains "$output" "error: /macfilter/0"
    contains "$output" "lost: dropped 1"
}

@test "check has problems and losses on standard output, and its status" {
    lossy
    kcnvrt 1 check old.json
    equal "$output" "$in_lines"
    warned
    kcnvrt 1 check old.json
    contains "${lines[0]}" "old.json:1:"
    contains "${lines[0]}" "warning: /route/0: Invalid field ip!"
    kcnvrt 1 check --json old.json
    contains "${lines[0]}" '"pointer": "/route/0", "severity": "warning"'
    contains "${lines[1]}" '"pointer": "/route/0", "kind": "changed"'
    equal "$stderr" ""
}

@test "a file that cannot be read cannot be asked about" {
    write old.json '{"a": '
    for command in losses check; do
        kcnvrt 3 "$command" old.json
        equal "$output" ""
        contains "$stderr" "[parse]"
        kcnvrt 3 "$command" nosuch.json
        equal "$output" ""
    done
}

@test "-o writes the list to a file that nobody else may read" {
    lossy
    chmod 600 old.json
    kcnvrt 0 losses old.json -o losses.txt
    equal "$(cat losses.txt)" "$in_lines"
    equal "$(stat -c %a losses.txt)" 600
}

@test "--losses warns beside the result" {
    lossy
    kcnvrt 0 to-new --compact old.json
    local expected=$output
    for command in to-new convert; do
        kcnvrt 0 "$command" --compact --losses old.json
        equal "$output" "$expected"
        equal "$stderr" "$in_lines"
    done
    kcnvrt 0 to-new --losses --errors json old.json
    equal "${stderr_lines[1]}" '{"file": "old.json", "line": 3, "column": 18, "pointer": "/max_table_id", "severity": "warning", "function": "losses", "message": "lost: changed \"12\" to 12"}'
    write new.json '{"Device": {"x": 1}}'
    kcnvrt 0 to-old --losses new.json
    contains "$stderr" "new.json:1:18: warning: /Device/x: lost: dropped 1 [losses]"
}

@test "--strict writes nothing when there is a warning or a loss" {
    lossy
    write new.json before
    for command in to-new convert; do
        kcnvrt 1 "$command" --strict old.json -o new.json
        equal "$stderr" "$in_lines"
        equal "$(cat new.json)" before
    done
    warned
    kcnvrt 1 to-new --strict old.json -o new.json
    contains "$stderr" "Invalid field ip!"
    equal "$(cat new.json)" before
    printf '{"Device": {}}' > base.json
    kcnvrt 1 to-new --strict --base base.json old.json -o new.json
    equal "$(cat new.json)" before
    kcnvrt 2 to-new --strict --partial old.json
    contains "$stderr" "--strict excludes --partial"
    only_files base.json new.json old.json
}

@test "long values are said by their beginning and their end" {
    local long
    long=$(printf '\xc3\xa4%.0s' {1..40})$(printf 'x%.0s' {1..40})
    write old.json "{\"passwd\": [], \"route\": [], \"ifaces\": {}, \"x\": \"$long\"}"
    kcnvrt 0 losses old.json
    equal "$output" "old.json:1:48: warning: /x: lost: dropped \"$(printf '\xc3\xa4%.0s' {1..37})...$(printf 'x%.0s' {1..18})\" [losses]"
    kcnvrt 0 losses --json old.json
    contains "$output" "\"before\": \"$long\""
}

@test "control characters of values and names stay on the line" {
    write old.json '{"passwd": [], "route": [], "ifaces": {}, "a\nb": "c\u001b\u0085d"}'
    kcnvrt 0 losses old.json
    equal "${#lines[@]}" 1
    contains "$output" '/a\nb: lost: dropped "c\u001B'
    [[ $output != *$'\x1b'* ]]
}
