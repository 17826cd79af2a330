# What the tool tells of the layouts themselves.
load setup

@test "mapping lists the sections, and how many lines each has" {
    kcnvrt 0 mapping
    [[ $output =~ ^Sections ]]
    [[ $output =~ \ wifi\ +[0-9]+ ]]
}

@test "mapping of a section has its lines, by either name" {
    kcnvrt 0 mapping yandex
    contains "$output" "/yandex/default
    -> /Device/Services/yandex/default
       text"
    kcnvrt 0 mapping NetFilter
    contains "$output" "<-> /Device/NetFilter/"
    kcnvrt 0 mapping Static
    contains "$output" "/route/*/gw"
}

@test "mapping of a place says what becomes of its values, whatever its entry is called" {
    kcnvrt 0 mapping /ifaces/eth9/services/any/auth
    contains "$output" "/ifaces/[ethernet|atm|3g]/services/[ppp]/auth"
    contains "$output" 'becomes its number in 32 bits; others are reported: Invalid field "KEY", is not digit'
    contains "$output" "becomes the first seven of its digits"
    local told=$output
    kcnvrt 0 mapping '/ifaces/*/services/*/auth'
    equal "$output" "$told"
}

@test "mapping keeps to the width of a terminal, and says what messages leave open" {
    script --quiet --return --command "stty cols 60; $KCNVRT mapping /wifi/BandWidth" typescript < /dev/null > shown.txt
    tr -d '\r' < shown.txt > lines.txt
    contains "$(cat lines.txt)" 'zeros becomes "auto", but "1" becomes "below",
             "2" becomes "above"'
    equal "$(grep '^         ' lines.txt | awk 'length > 60')" ""
    contains "$(cat lines.txt)" "In messages KEY is the member's name"
    kcnvrt 0 mapping /wifi/BandWidth
    contains "$output" '"1" becomes "below", "2" becomes "above"; others are reported'
    contains "$output" 'becomes "40MHz", but "0" becomes "20MHz", "4" becomes "80MHz"; others are reported'
    kcnvrt 0 mapping /dmz
    equal "${output/KEY/}" "$output"
}

@test "mapping names the member that gives a value, and shows no value of an example as if it were one of the layout" {
    kcnvrt 0 mapping /wifi/WscDevPin
    contains "$output" 'text becomes what WscDefaultPin gives, but "" becomes ""'
    contains "$output" "absent becomes what WscDefaultPin gives"
    kcnvrt 0 mapping /wifi/WscDevPin --json
    equal "$(jq -c '.[0].default' <<< "$output")" null
    kcnvrt 0 mapping /Device/WiFi/Radio/1/FrequencyBand
    contains "$output" 'text decides, but "5GHz" decides otherwise'
    kcnvrt 0 mapping /Device/WiFi/Radio/1/FrequencyBand --json
    equal "$(jq -c '.[0].default' <<< "$output")" null
}

@test "mapping tells each place that a value becomes" {
    kcnvrt 0 mapping /Device/WiFi/Radio/1/ApCli/DefaultKeyId
    contains "$output" "integer from 0 to 4 becomes its digits, but 0 is dropped"
    contains "$output" 'integer from 0 to 4 is dropped, but 0 becomes ""'
    kcnvrt 0 mapping /ifaces/br0/port
    contains "$output" '"Ports:1,2;WiFi:1" becomes ["Port1","Port2","WiFi1"]'
    kcnvrt 0 mapping /dns/servers
    contains "$output" "text becomes its pieces between |, as entries"
    kcnvrt 0 mapping /Device/Roaming/Port
    contains "$output" "is reported: Expected integer, got TYPE"
    kcnvrt 0 mapping /roaming/portno
    contains "$output" "integer with low 32 bits of at most 65535 becomes its low 32 bits; others are reported"
}

@test "mapping of a container has the lines of all that is in it" {
    kcnvrt 0 mapping /Device/Services/yandex
    contains "$output" "/Device/Services/yandex/enabled"
    contains "$output" "/Device/Services/yandex/default"
}

@test "mapping of a list says how its entries are called" {
    kcnvrt 0 mapping /ifaces/eth0/services
    equal "${lines[0]}" "/ifaces/[bridge]/services"
    contains "$output" "
       entries under names of their own

/"
    kcnvrt 0 mapping /Device/Vlan/vlans
    equal "${lines[1]}" \
        "       entries numbered from 1 to 65535; higher ones are reported: Instance number N is above 65535"
    kcnvrt 0 mapping /Device/Services/dns/ipv4/servers
    equal "${lines[1]}" "       entries numbered from 1; the numbers are not kept"
    kcnvrt 0 mapping /Device/wan_pvid
    equal "${lines[1]}" "       entries under any name, which is not kept"
    kcnvrt 0 mapping /tr069/misc/arp
    equal "${lines[1]}" "       entries numbered from 0"
    kcnvrt 0 mapping /vlan
    ! grep -q entries <<< "$output"
}

@test "mapping below a value that is carried whole is told by that value" {
    kcnvrt 0 mapping /dmz/any/thing
    contains "$output" "/dmz/**"
    contains "$output" "any value stays the same"
}

@test "mapping --json is an array with old, new, kind, values and default" {
    kcnvrt 0 mapping /Device/Ifaces/atm/1/services/ppp/1/connection_status --json
    printf '%s\n' "$output" > lines.json
    equal "$(jq -c '[.[] | keys_unsorted] | add | unique' lines.json)" \
        '["default","kind","new","old","old_by_type","values"]'
    equal "$(jq -c 'map(.old) | add | unique | .[0]' lines.json)" '"/ifaces/*/services/*/connection_status"'
    equal "$(jq -c 'map(.kind) | unique' lines.json)" '["status"]'
    equal "$(jq -c 'map(.default | select(. != null)) | .[0]' lines.json)" '{"to_new":"Disconnected"}'
    kcnvrt 0 mapping --json --compact
    printf '%s\n' "$output" > lines.json
    equal "$(jq 'length > 700' lines.json)" true
}

@test "a place that its section does not know would be dropped, or carried with its object" {
    kcnvrt 0 mapping /wifi/unheard
    contains "$output" "it would be dropped without a message"
    printf '{"wifi": {"unheard": 1}}' > old.json
    "$KCNVRT" to-new old.json > new.json
    equal "$(grep -c unheard new.json || true)" 0
    kcnvrt 0 mapping /wifi/unheard --json --compact
    equal "$output" '[{"old":["/wifi/unheard"],"new":[],"kind":"dropped","values":{},"default":null}]'
    kcnvrt 0 mapping /netfilter/unheard
    contains "$output" "its object carries every member"
    printf '{"netfilter": {"unheard": 1}}' > old.json
    "$KCNVRT" to-new old.json > new.json
    equal "$(grep -c unheard new.json)" 1
}

@test "the innermost object that is known says what becomes of a member that is not" {
    # The list carries its length, its entries carry nothing.
    kcnvrt 0 mapping /voip/VoiceService/1/unheard
    contains "$output" "it would be dropped without a message"
    # In an entry that becomes a JSON text.
    kcnvrt 0 mapping /Device/Services/tr069/misc/arp/1/unheard
    contains "$output" "its object carries every member"
}

@test "a place that is not known has the nearest name beside it that is" {
    kcnvrt 0 mapping /wifi/Chanel
    contains "$output" 'dropped without a message, did you mean "/wifi/Channel"?'
    kcnvrt 0 mapping /Device/Ifaces/ethernt/1/mac
    contains "$output" 'did you mean "/Device/Ifaces/ethernet"?'
    kcnvrt 0 mapping '/ifaces/a~1b/servces'
    contains "$output" 'did you mean "/ifaces/a~1b/services"?'
}

# wrong WORDS ARGUMENT...: status 2 and no output.
wrong() {
    kcnvrt 2 "${@:2}"
    equal "$output" ""
    equal "$stderr" "kcnvrt: error: $1 (kcnvrt help $2 tells more) [usage]"
}

@test "an unknown section or place is wrong usage, with the nearest name" {
    wrong 'there is no section "wfi", did you mean "wifi"?' mapping wfi
    wrong 'there is no section "nothing like it"' mapping "nothing like it"
    wrong 'there is no place "/wfi/Channel", did you mean "/wifi"?' mapping /wfi/Channel
    wrong 'there is no place "/Device/WiFy", did you mean "/Device/WiFi"?' mapping /Device/WiFy
    wrong 'there is no place "/Device/Serices/dns", did you mean "/Device/Services"?' mapping /Device/Serices/dns
    wrong 'there is no place "/Device/a~1b"' mapping '/Device/a~1b'
    wrong 'there is no section "wifi/Channel", did you mean "/wifi/Channel"?' mapping wifi/Channel
    wrong 'there is no place "/"' mapping /
    wrong '"/wifi/~2" is no JSON Pointer' mapping "/wifi/~2"
}

@test "schema has a layout, or a section by its name there" {
    kcnvrt 0 schema old --compact
    printf '%s\n' "$output" > old.schema.json
    equal "$(jq -r '."$schema"' old.schema.json)" "https://json-schema.org/draft/2020-12/schema"
    equal "$(jq -c '.properties.default_pass | [.writeOnly, .format]' old.schema.json)" '[true,"password"]'
    kcnvrt 0 schema new urlfilter --compact
    contains "$output" '"exclude":'
    kcnvrt 0 schema old users --compact
    contains "$output" '"type":["string","null"]'
}

@test "schema --closed forbids what is not known" {
    kcnvrt 0 schema old yandex --compact
    equal "$(jq -c .additionalProperties <<< "$output")" null
    kcnvrt 0 schema old yandex --compact --closed
    equal "$(jq -c .additionalProperties <<< "$output")" false
    kcnvrt 0 schema old netfilter --compact --closed
    equal "$(jq -c .additionalProperties <<< "$output")" null
}

@test "an unknown layout or section of a schema is wrong usage" {
    wrong '"older" is no layout, but old and new are' schema older
    wrong 'there is no old section "WiFi", did you mean "wifi"?' schema old WiFi
}

@test "an example is converted without a message, in either layout and generation" {
    for layout in old new; do
        "$KCNVRT" example "$layout" > example.json
        kcnvrt 0 convert example.json
        equal "$stderr" ""
        "$KCNVRT" example "$layout" --all > all.json
        equal "$(jq length all.json)" 2
        equal "$(jq -S '.[0]' all.json | cksum)" "$(jq -S . example.json | cksum)"
        jq '.[1]' all.json > example.json
        kcnvrt 0 convert --dsl-vlan example.json
        equal "$stderr" ""
    done
}

@test "an example has a section by its name" {
    kcnvrt 0 example new wan_pvid --compact
    equal "$(jq -c '."1" | keys' <<< "$output")" '["name","pvid"]'
    kcnvrt 0 example old passwd --compact
    equal "$(jq -c '.[0] | keys' <<< "$output")" '["login","pass","pass_cr"]'
    kcnvrt 0 example new QoS --all --compact
    equal "$(jq -c 'map(.QosVersion)' <<< "$output")" '[2,1]'
    wrong 'there is no old section "wfi", did you mean "wifi"?' example old wfi
}

# The members of what a section is converted to that no example of it has; what its names are is anybody's, none. A line
# before them says whether all of these are of one type.
compared() { # EXAMPLES RESULT SCHEMA
    jq -n -r --slurpfile forms "$1" --slurpfile result "$2" --slurpfile schema "$3" '
        ([$forms[0][], $result[0] | type] | unique | length == 1),
        ($result[0] | select(type == "object" and $schema[0].additionalProperties == null)
            | keys - ([$forms[0][] | keys] | add) | .[] | select(test("^[0-9]+$") | not))'
}

@test "every section that is converted alone has a mapping, a schema, and an example of what it is converted to" {
    for layout in old new; do
        "$KCNVRT" example "$layout" > "$layout.json"
        "$KCNVRT" example "$layout" --all | jq '.[1]' > "$layout.dsl.json"
    done
    while read -r layout name; do
        local other=old source
        [ "$layout" = new ] || other=new
        source=$other.json
        case $name in DSL_Vlan | dsl_vlan) source=$other.dsl.json ;; esac
        "$KCNVRT" mapping "$name" > mapping.txt
        "$KCNVRT" schema "$layout" "$name" > schema.json
        "$KCNVRT" example "$layout" "$name" --all > forms.json
        "$KCNVRT" section "$name" "--to-$layout" "$source" > result.json 2> /dev/null
        compared forms.json result.json schema.json > members.txt
        equal "$layout $name $(head -n 1 members.txt)" "$layout $name true"
        # What the other layout is made of, but is not read, is in no example.
        while read -r member; do grep -qE "[/|]$member([/|]|\$)" mapping.txt; done < <(tail -n +2 members.txt)
    done < <("$KCNVRT" sections)
}
