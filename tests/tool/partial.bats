# --partial: what can be converted of a document that is rejected.
load setup

broken() { write old.json '{"lang": "en", "max_table_id": "many"}'; }

@test "--partial writes what can be converted, names the rest, and exits with 1" {
    broken
    write whole.json '{"lang": "en"}'
    kcnvrt 0 to-new whole.json
    local expected=$output
    kcnvrt 1 to-new --partial old.json
    equal "$output" "$expected"
    equal "${#stderr_lines[@]}" 2
    equal "${stderr_lines[0]}" 'old.json:1:32: error: /max_table_id: Invalid field "max_table_id", is not digit [k_cnvrt_get_ifaces_from_old]'
    equal "${stderr_lines[1]}" "old.json:1:32: note: /max_table_id: left out of the partial result [partial]"
    kcnvrt 1 to-new --partial old.json -o new.json
    equal "$(cat new.json)" "$expected"
}

@test "without it a rejected document writes nothing" {
    broken
    write new.json before
    kcnvrt 1 to-new old.json -o new.json
    equal "$(cat new.json)" before
}

@test "--partial changes nothing about a document that is converted" {
    write old.json '{"lang": "en"}'
    kcnvrt 0 to-new old.json
    local expected=$output
    kcnvrt 0 to-new --partial old.json
    equal "$output" "$expected"
    equal "$stderr" ""
}

@test "--partial takes the other direction and sections, too" {
    write new.json '{"Device": {"DeviceInfo": {"lang": "en"}, "Ifaces": {"max_table_id": {}}}}'
    write whole.json '{"Device": {"DeviceInfo": {"lang": "en"}, "Ifaces": {}}}'
    kcnvrt 0 to-old whole.json
    local expected=$output
    kcnvrt 1 to-old --partial new.json
    equal "$output" "$expected"
    write wifi.json '{"mbssid": [{"SSID": "x", "AuthMode": 1}]}'
    kcnvrt 1 section WiFi --to-new --partial --compact wifi.json
    contains "$output" '"mbssid":{"1":{"Ssid":"x"},"max_instance":1}'
}

@test "where nothing can be converted nothing is written" {
    write users.json '{}'
    write old.json before
    kcnvrt 1 section users --to-old --partial users.json -o old.json
    equal "$(cat old.json)" before
    contains "$stderr" "users.json: note: there is no part that could be converted [partial]"
}

@test "a difference is never partial" {
    broken
    kcnvrt 2 to-new --partial --base old.json old.json
    contains "$stderr" "--partial excludes --base"
}
