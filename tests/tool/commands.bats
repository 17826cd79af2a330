# Commands and options: what is converted.
load setup

@test "to-new converts a file" {
    write old.json '{"lang": "en"}'
    kcnvrt 0 to-new old.json
    contains "$output" '"lang": "en"'
    contains "$output" '"Device"'
    equal "$stderr" ""
}

@test "to-new converts standard input, with and without its name" {
    write old.json '{"lang": "en"}'
    kcnvrt 0 to-new old.json
    local from_file=$output
    kcnvrt 0 to-new < old.json
    equal "$output" "$from_file"
    kcnvrt 0 to-new - < old.json
    equal "$output" "$from_file"
}

@test "to-new --base prints the difference" {
    write old.json '{"lang": "en"}'
    "$KCNVRT" to-new old.json -o base.json
    kcnvrt 0 to-new old.json --base base.json
    equal "$output" "[]"
    kcnvrt 0 to-new old.json --base base.json --merge-patch
    equal "$output" "{}"
    write changed.json '{"lang": "fr"}'
    kcnvrt 0 to-new --compact --base base.json changed.json
    equal "$output" '[{"op":"replace","path":"/Device/DeviceInfo/lang","value":"fr"}]'
    kcnvrt 0 to-new --compact --base base.json --merge-patch changed.json
    equal "$output" '{"Device":{"DeviceInfo":{"lang":"fr"}}}'
}

@test "to-old converts a file and standard input" {
    write new.json '{"Device": {"DeviceInfo": {"lang": "en"}}}'
    kcnvrt 0 to-old new.json
    contains "$output" '"lang": "en"'
    local from_file=$output
    kcnvrt 0 to-old < new.json
    equal "$output" "$from_file"
    equal "$stderr" ""
}

@test "section converts one section both ways" {
    write old.json '{"wan2": 20, "wan1": 10}'
    kcnvrt 0 section wan_pvid --to-new --compact old.json
    equal "$output" '{"1":{"name":"wan1","pvid":10},"2":{"name":"wan2","pvid":20},"max_instance":2}'
    write new.json "$output"
    kcnvrt 0 section wan_pvid --to-old --compact < new.json
    equal "$output" '{"wan1":10,"wan2":20}'
    equal "$stderr" ""
}

@test "section --to-new --base prints the difference" {
    write old.json '{"wan1": 11}'
    write base.json '{"1": {"name": "wan1", "pvid": 10}, "max_instance": 1}'
    kcnvrt 0 section wan_pvid --to-new --base base.json --compact old.json
    equal "$output" '[{"op":"replace","path":"/1/pvid","value":11}]'
    kcnvrt 0 section wan_pvid --to-new --base base.json --merge-patch --compact old.json
    equal "$output" '{"1":{"pvid":11}}'
}

@test "section takes an array" {
    write array.json '[]'
    kcnvrt 0 section wan_pvid --to-new --compact array.json
    equal "$output" '{"max_instance":0}'
}

@test "--dsl-vlan and --merge-patch reach the conversions" {
    write document.json '{"flags": null}'
    flags() { # FLAGS ARGUMENT...
        local expected=$1
        shift
        talkative 0 "$@" --compact document.json
        equal "$output" "{\"flags\":$expected}"
    }
    flags 0 to-new
    flags 1 to-new --dsl-vlan
    flags 2 to-new --base document.json --merge-patch --force
    flags 3 to-new --base document.json --merge-patch --dsl-vlan --force
    flags 0 to-old --force
    flags 1 to-old --dsl-vlan --force
    write base.json '[1]'
    talkative 0 section wan_pvid --to-new --base base.json --merge-patch --compact document.json
    equal "$output" '{"name":"wan_pvid","old":{"flags":null},"base":[1],"flags":2}'
}

@test "sections lists both tables" {
    kcnvrt 0 sections
    contains "$output" $'old\twan_pvid'
    contains "$output" $'old\tdefault_ssid'
    contains "$output" $'new\twan_pvid'
    contains "$output" $'new\tDefault_ssid'
    equal "$(grep -cvE '^(old|new)'$'\t''[A-Za-z0-9_]+$' <<< "$output")" 0
    equal "$stderr" ""
}

@test "sections names what section takes" {
    write empty.json '{}'
    "$KCNVRT" sections > list
    while IFS=$'\t' read -r layout name; do
        status=0
        "$KCNVRT" section "$name" "--to-$layout" empty.json > /dev/null 2> messages || status=$?
        if [ "$status" -gt 1 ]; then cat messages; return 1; fi
    done < list
}

@test "self-check is silent when the tables are sound" {
    kcnvrt 0 self-check
    equal "$output$stderr" ""
}

@test "self-check shows what it finds" {
    talkative 1 self-check
    equal "$output" ""
    equal "$stderr" 'kcnvrt: error: old_config_handler_table, name "vlan" is duplicate! [k_cnvrt_check_valid_hashes]'
}

@test "the result is readable, or compact, or indented as asked for" {
    write old.json '{"wan1": 1}'
    kcnvrt 0 section wan_pvid --to-new old.json
    equal "${lines[1]}" '    "1": {'
    equal "${lines[2]}" '        "name": "wan1",'
    kcnvrt 0 section wan_pvid --to-new --indent 1 old.json
    equal "${lines[2]}" '  "name": "wan1",'
    kcnvrt 0 section wan_pvid --to-new --indent 31 old.json
    equal "${lines[1]}" "$(printf '%31s' '')\"1\": {"
    kcnvrt 0 section wan_pvid --to-new --indent 0 old.json
    equal "$output" '{"1": {"name": "wan1", "pvid": 1}, "max_instance": 1}'
    kcnvrt 0 --compact section wan_pvid --to-new old.json
    equal "$output" '{"1":{"name":"wan1","pvid":1},"max_instance":1}'
}

@test "the result ends with one line break" {
    write old.json '{}'
    equal "$("$KCNVRT" section wan_pvid --to-new --compact old.json | od -An -c | tr -d ' \n')" '{"max_instance":0}\n'
}

@test "numbers and texts pass unchanged" {
    write old.json '{"wan": [9223372036854775807, -9223372036854775808, 1.5, 1e300, "é€😀\u0001\"\\/"]}'
    kcnvrt 0 section wan_pvid --to-new --compact old.json
    contains "$output" '"pvid":[9223372036854775807,-9223372036854775808,1.5,1e300,"é€😀\u0001\"\\/"]'
}

@test "a file may be called like a command, and like an option after --" {
    write sections '{"wan1": 1}'
    kcnvrt 0 section wan_pvid --to-new sections
    write -o '{"wan1": 1}'
    kcnvrt 0 section wan_pvid --to-new -- -o
    write --base= '{"wan1": 1}'
    kcnvrt 0 section wan_pvid --to-new -- --base=
}
