# Configurations of another layout than a command reads, and the command that finds the way by itself.
load setup

@test "a configuration of the other layout is refused, with status 1 and the command that takes it" {
    write new.json '{"Device": {"DeviceInfo": {"lang": "en"}}}'
    write old.json '{"lang": "en"}'
    write out.json before
    kcnvrt 1 to-new new.json -o out.json
    equal "$stderr" 'new.json:1:12: error: /Device: the configuration is in the new layout already; to-old converts it, or to-new --force [layout]'
    kcnvrt 1 to-old old.json -o out.json
    equal "$stderr" 'old.json:1:1: error: the configuration is not in the new layout, it has no object "Device"; to-new converts it, or to-old --force [layout]'
    kcnvrt 1 to-new old.json --base old.json -o out.json
    contains "$stderr" 'old.json:1:1: error: the base is not in the new layout'
    equal "$(cat out.json)" before
    kcnvrt 1 to-new --partial new.json
    equal "$output" ""
}

@test "--force converts it all the same" {
    write new.json '{"Device": {"DeviceInfo": {"lang": "en"}}}'
    write old.json '{"lang": "en"}'
    kcnvrt 0 to-new --force new.json
    contains "$output" '"Device"'
    kcnvrt 0 to-old --force --compact old.json
    equal "$output" '{"passwd":[]}'
    kcnvrt 0 to-new --force --merge-patch --compact old.json --base old.json
    contains "$output" '"lang":null'
    equal "$stderr" ""
}

@test "an empty configuration is of either layout" {
    write empty.json '{}'
    kcnvrt 0 to-new empty.json --base empty.json
    kcnvrt 0 to-old empty.json
    equal "$stderr" ""
}

@test "VLANs that the device keeps elsewhere are refused, either way" {
    write dsl.json '{"groups": {}}'
    write vlan.json '{"vlan": {}}'
    write both.json '{"groups": {}, "vlan": {}}'
    kcnvrt 1 to-new dsl.json
    contains "$stderr" "dsl.json:1:12: error: /groups: "
    contains "$stderr" "--dsl-vlan"
    kcnvrt 1 to-new --dsl-vlan vlan.json
    contains "$stderr" "vlan.json:1:10: error: /vlan: "
    for way in "dsl.json --dsl-vlan" "vlan.json" "both.json" "both.json --dsl-vlan" "dsl.json --force" \
        "vlan.json --dsl-vlan --force"; do
        # shellcheck disable=SC2086 # the words of a way
        kcnvrt 0 to-new $way
    done
}

@test "convert finds the way by itself, and the VLANs of a DSL device" {
    local examples=$BATS_TEST_DIRNAME/../../examples
    for name in home-gateway dsl-gateway; do
        local flag=()
        [ $name = home-gateway ] || flag=(--dsl-vlan)
        kcnvrt 0 to-new "$examples/$name.old.json" "${flag[@]}"
        local expected=$output
        kcnvrt 0 convert "$examples/$name.old.json"
        equal "$output" "$expected"
        equal "$stderr" ""
        kcnvrt 0 to-old "$examples/$name.new.json" "${flag[@]}"
        expected=$output
        kcnvrt 0 convert "${flag[@]}" "$examples/$name.new.json"
        equal "$output" "$expected"
        equal "$stderr" ""
    done
    kcnvrt 0 convert --compact <<< '{}'
    contains "$output" '"Device"'
    kcnvrt 1 convert --dsl-vlan <<< '{"vlan": {}}'
    kcnvrt 0 convert --dsl-vlan --force <<< '{"vlan": {}}'
}

@test "a section is taken out of a whole configuration, and a note says so" {
    write old.json '{"wifi": {}, "wan_pvid": {"wan1": 10}}'
    kcnvrt 0 section wan_pvid --to-new --compact old.json
    equal "$output" '{"1":{"name":"wan1","pvid":10},"max_instance":1}'
    equal "$stderr" 'old.json:1:26: note: /wan_pvid: this section is taken out of the whole configuration; --as-is takes that for the section [layout]'
    kcnvrt 0 section wan_pvid --to-new --compact --as-is old.json
    equal "$output" '{"1":{"name":"wan_pvid","pvid":{"wan1":10}},"2":{"name":"wifi","pvid":{}},"max_instance":2}'
    equal "$stderr" ""
    write new.json '{"Device": {"wan_pvid": {"1": {"name": "wan1", "pvid": 10}, "max_instance": 1}}}'
    kcnvrt 0 section wan_pvid --to-old --compact new.json
    equal "$output" '{"wan1":10}'
    kcnvrt 1 section voip --to-old new.json
    equal "$stderr" "new.json:1:1: error: the configuration has no /Device/Voip [layout]"
}

@test "a whole configuration of the other layout has no such section" {
    write new.json '{"Device": {"wan_pvid": {}}}'
    kcnvrt 1 section wan_pvid --to-new new.json
    contains "$stderr" "new.json:1:1: error: this is a whole configuration in the new layout; --to-old takes a section out of it"
    kcnvrt 0 section wan_pvid --to-new --force new.json
    kcnvrt 1 section wan_pvid --to-new --base new.json <<< '{"wan1": 10}'
    contains "$stderr" "the base is a whole configuration, and not the section"
}
