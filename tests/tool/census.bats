# What a fleet would lose: counted, and no value shown.
load setup

# Three devices that lose something, one that is warned of, one without a word, two that are rejected.
fleet() {
    cat > fleet <<'END'
{"serial":"A1","config":{"ifaces":{"eth0":{"type":"ethernet","useipv6":true,"secretive":"sesame-1"}}}}
{"serial":"A2","config":{"ifaces":{"eth7":{"type":"ethernet","useipv6":true,"secretive":"sesame-2"}}}}
{"serial":"A3","config":{"ifaces":{"lan":{"type":"ethernet","useipv6":true}}}}
{"serial":"B1","config":{"lang":"en","route":["x"]}}
{"serial":"B2","config":{"ifaces":{},"route":[],"lang":"en"}}
{"serial":"C1","config":{"lang":
{"serial":"C2"}
END
}

@test "a census counts devices, and places with an example" {
    fleet
    local jobs
    for jobs in 1 3; do
        kcnvrt 0 census fleet --at /config --id /serial --json --jobs "$jobs" --block 20
        equal "$stderr" ""
        equal "$(jq -c '[.records, .lossy, .rejected, .clean + .warned]' <<< "$output")" "[7,5,2,0]"
        equal "$(jq -c '.places[] | select(.kind == "dropped") | [.place, .devices, .example]' <<< "$output" | tr '\n' ' ')" \
            '["/ifaces/*/useipv6",3,"A1"] ["/ifaces/*/secretive",2,"A1"] '
        equal "$(jq -c '.places[] | select(.kind == "error") | [.place, .devices, .example]' <<< "$output")" '["",2,"C1"]'
        equal "$(jq -c '.places[] | select(.kind == "warning") | [.place, .devices, .example]' <<< "$output")" \
            '["/route/*",1,"B1"]'
    done
}

@test "a census says for each device what losses says" {
    fleet
    grep '"A' fleet > devices
    while read -r device; do
        jq -c .config <<< "$device" | "$KCNVRT" losses --json | jq -r '.kind + " " + .pointer' |
            sed -E 's|/ifaces/[a-z0-9]+|/ifaces/*|' | sort -u
    done < devices | sort | uniq -c | awk '{ print $1, $2, $3 }' | sort > expected
    [ "$(wc -l < expected)" -ge 3 ]
    kcnvrt 0 census devices --at /config --json
    jq -r '.places[] | "\(.devices) \(.kind) \(.place)"' <<< "$output" | sed 's/ $/ /' | sort > got
    equal "$(sed 's/ *$//' got)" "$(sed 's/ *$//' expected)"
}

@test "the places of a census are those of mapping" {
    local place places=0
    printf '%s\n' '{"vlan":{"vlans":[{"ports":{"lan7":1}}]},"Links":{"x":1}}' > mine
    cat "$BATS_TEST_DIRNAME"/../../examples/*.old.json mine | jq -c . > fleet
    "$KCNVRT" census fleet --json | jq -r '.places[] | select(.place != "").place' > places
    grep -qF '/vlan/vlans/*/ports/*' places
    while read -r place; do
        kcnvrt 0 mapping "$place"
        places=$((places + 1))
    done < places
    [ "$places" -gt 8 ]
}

@test "the table is for people" {
    fleet
    kcnvrt 0 census fleet --at /config --id /serial
    contains "$output" "           7  devices"
    contains "$output" "           2   28.6 %  are rejected"
    contains "$output" '           3  dropped     /ifaces/*/useipv6'
    kcnvrt 0 census fleet --at /config
    contains "$output" '"fleet:1"'
    : > empty
    kcnvrt 0 census empty
    contains "$output" "           0  devices"
}

@test "no value leaves a census" {
    fleet
    "$KCNVRT" census fleet --at /config --html page.html > table
    "$KCNVRT" census fleet --at /config --json > json
    equal "$(grep -c sesame page.html table json)" $'page.html:0\ntable:0\njson:0'
    contains "$(cat page.html)" '<dt>dropped</dt><dd>nothing uses it</dd>'
    equal "$(grep -c '<dt>cut</dt>' page.html)" 0
    equal "$(grep -ciE 'https?:|<script|<img|<link|url\(' page.html)" 0
    printf '%s\n' '{"serial":"<b>&\"","config":{"<i>x":1,"ifaces":{"a":{"type":"ethernet","<u>&":1}}}}' > odd
    "$KCNVRT" census odd --at /config --id /serial --html page.html > table
    contains "$(cat page.html)" '&lt;u>&amp;'
    contains "$(cat page.html)" '&lt;b>&amp;'
}

@test "in a narrow window a place has a line of its own, and only the bars go" {
    fleet
    "$KCNVRT" census fleet --at /config --html page.html > table
    equal "$(grep -c 'display: none' page.html)" 1
    contains "$(cat page.html)" '  .bar { display: none; }'
    contains "$(cat page.html)" '  .places .place { order: 1; flex: 0 0 100%;'
    equal "$(grep -c '<table class="places">' page.html)" 1
    equal "$(grep -c '<td class="place">' page.html)" "$(grep -c '<td class="id">' page.html)"
}

@test "problems and rejects are kept where that is asked for" {
    fleet
    kcnvrt 0 census fleet --at /config --rejects rejects --problems problems -o table
    equal "$output$stderr" ""
    tail -n 2 fleet | cmp - rejects
    equal "$(jq -c .line problems | tr '\n' ' ')" "4 6 7 "
    contains "$(cat table)" "devices"
}

@test "places without end are counted together" {
    seq -f '{"ifaces":{"e":{"type":"ethernet","unknown%.0f":1}}}' 10050 > many
    kcnvrt 0 census many --json
    equal "$(jq -c '[.records, .lossy]' <<< "$output")" "[10050,10050]"
    contains "$output" '"place": "other places", "kind": "dropped"'
}

@test "stream --losses counts beside the conversion" {
    fleet
    kcnvrt 1 stream --to-new --losses fleet --at /config --id /serial --summary json --problems problems
    equal "$(jq -c '[.records, .converted, .lossy, (.places[] | select(.place == "/ifaces/*/useipv6") | .devices)]' \
        <<< "$stderr")" "[7,5,5,3]"
    equal "${#lines[@]}" 5
    kcnvrt 1 stream --to-new --losses fleet --at /config --problems problems --max-rejects 0 --block 20
    contains "$stderr" "6 records: 5 converted (1 with warnings, 5 with losses), 1 rejected"
    kcnvrt 2 stream --losses fleet
}
