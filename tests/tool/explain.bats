# What becomes of a member, and what a place of the result is made of.
load setup

text='{"lang": "en",
 "add_sets": {"device_mode": "router"}, "lost": 1, "default_pass": "hunter2"}'

@test "explain names the places that a member makes" {
    write old.json "$text"
    kcnvrt 0 explain old.json /lang
    equal "$output" 'old.json:1:10: /lang is used: one place in the new layout depends on it.

  /Device/DeviceInfo/lang
       with: "en"
    without: nothing'
    equal "$stderr" ""
    kcnvrt 0 explain - /lost < old.json
    equal "$output" "-:2:49: /lost is lost: nothing in the new layout depends on it."
    write new.json '{"Device": {"wan_pvid": {"1": {"name": "w", "pvid": 1}, "max_instance": 7}}}'
    kcnvrt 0 explain new.json /Device/wan_pvid/max_instance
    equal "$output" "new.json:1:73: /Device/wan_pvid/max_instance is regenerated: nothing in the old layout depends on it, and the way back makes it anew."
}

@test "explain --json prints one object" {
    write old.json "$text"
    kcnvrt 0 explain --json old.json /lang
    equal "$output" '{"pointer":"/lang","answer":"used","effects":[{"pointer":"/Device/DeviceInfo/lang","with":"en","without":null}]}'
    kcnvrt 0 explain --json old.json --from-result /Device/DeviceInfo/lang -o out.json
    equal "$(cat out.json)" '{"pointer":"/Device/DeviceInfo/lang","value":"en","sources":[{"pointer":"/lang","value":"en","without":null}]}'
}

@test "explain --from-result names the members that made a place" {
    write old.json "$text"
    kcnvrt 0 explain old.json --from-result /Device/DeviceInfo/lang
    equal "$output" '/Device/DeviceInfo/lang is "en", made of one member.

  old.json:1:10: /lang
       says: "en"
    without: nothing'
    kcnvrt 0 explain old.json --from-result /Device/Customization
    equal "$output" '/Device/Customization is {}, whatever the configuration says.'
}

@test "explain masks secrets unless they are asked for" {
    write old.json "$text"
    for question in "/default_pass" "--from-result /Device/Default_pass"; do
        # shellcheck disable=SC2086 # the words of a question
        kcnvrt 0 explain old.json $question
        contains "$output" '"***"'
        [[ $output != *hunter2* ]]
        # shellcheck disable=SC2086
        kcnvrt 0 explain --show-secrets old.json $question
        contains "$output" '"hunter2"'
    done
}

@test "explain takes the pointer of the whole, and shows twenty places at most" {
    printf '{"wan_pvid": {"w0": 0' > old.json
    for i in $(seq 30); do printf ', "w%d": %d' "$i" "$i" >> old.json; done
    printf '}}' >> old.json
    kcnvrt 0 explain old.json ""
    contains "$output" "old.json:1:1: (the whole) is used: one place"
    kcnvrt 0 explain old.json /wan_pvid/w0
    contains "$output" "... and 12 more, which --json has"
    equal "$(grep -c with: <<< "$output")" 20
    kcnvrt 0 explain old.json --from-result ""
    contains "$output" "(the whole) is {"
}

@test "a pointer to nothing is wrong usage, and so is none" {
    write old.json '{"tr069": {"x": "{\"a\": 1}"}}'
    kcnvrt 2 explain old.json /tr069/y
    equal "$output" ""
    equal "$stderr" "old.json:1:11: error: /tr069: the pointer leads to nothing; this is as far as it goes [explain]"
    kcnvrt 2 explain old.json /tr069/x/a
    equal "$stderr" "old.json:1:17: error: /tr069/x: the pointer leads into a text, which has no members; ask about the text [explain]"
    kcnvrt 2 explain old.json --from-result /Device/x
    equal "$stderr" 'kcnvrt: error: the pointer leads to nothing in the result; it goes as far as "/Device" [explain]'
    kcnvrt 2 explain old.json tr069
    contains "$stderr" "the pointer is no JSON Pointer"
    kcnvrt 2 explain missing.json
    contains "$stderr" "POINTER is missing"
    kcnvrt 2 explain missing.json /a --from-result /b
    contains "$stderr" "--from-result excludes POINTER"
}

@test "a rejected configuration is explained by its partial result" {
    write old.json '{"lang": "en", "max_table_id": "many"}'
    kcnvrt 0 explain old.json /lang
    contains "$output" "/lang is used"
    equal "$stderr" "old.json:1:1: note: the configuration is rejected; this is about what --partial converts of it [explain]"
    kcnvrt 0 explain old.json /max_table_id
    equal "$output" "old.json:1:32: /max_table_id is lost: nothing in the new layout depends on it."
    contains "${stderr_lines[0]}" 'old.json:1:32: error: /max_table_id: Invalid field "max_table_id", is not digit'
}

@test "a configuration of the other layout is explained when it is forced" {
    write new.json '{"Device": {}, "lang": "en"}'
    kcnvrt 1 explain --to-new new.json /lang
    kcnvrt 0 explain --to-new --force new.json /lang
    contains "$output" "/lang is used"
}
