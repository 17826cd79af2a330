# Newline-delimited JSON: line for line, in order, and what becomes of lines that are rejected.
load setup

good='{"lang":"en"}'
bad='{"ifaces":{"eth4":{"type":"ethernet","services":{"p":{"type":"ppp","auth":"x"}}}}}'

# lines STATUS STREAM ARGUMENT...: the stream, as printf writes it, through the tool.
lines() {
    local expected=$1 text=$2
    shift 2
    # shellcheck disable=SC2059 # the format is the stream
    printf "$text" > ../stream
    run --separate-stderr "-$expected" "$KCNVRT" stream --to-new "$@" < ../stream
}

# What the tool makes of a configuration alone.
alone() { printf '%s' "$1" | "$KCNVRT" to-new --compact; }

members() { jq -c "[$1]" <<< "$stderr" | tr '\n' ' '; }

@test "each line becomes a line, compact and in order" {
    lines 0 '{"lang" : "en"}\n{"lang":"de"}\n'
    equal "$output" "$(alone '{"lang":"en"}')"$'\n'"$(alone '{"lang":"de"}')"
    equal "$stderr" ""
    printf '%s\n' '{"Device":{"wan_pvid":{}}}' > new
    kcnvrt 0 stream --to-old new
    equal "$output" "$("$KCNVRT" to-old --compact new)"
}

@test "--auto finds the direction of each record, and another layout than the one that is read is a reject" {
    printf '%s\n' '{"lang":"en","ifaces":{}}' '{"Device":{"Ifaces":{},"Users":{"version":0}}}' > mixed
    kcnvrt 0 stream --auto mixed
    equal "${lines[0]}" "$(head -n 1 mixed | "$KCNVRT" to-new --compact)"
    equal "${lines[1]}" "$(tail -n 1 mixed | "$KCNVRT" to-old --compact)"
    kcnvrt 1 stream --to-new mixed --rejects rejects
    equal "$output" "$(head -n 1 mixed | "$KCNVRT" to-new --compact)"
    tail -n 1 mixed | cmp - rejects
    kcnvrt 0 stream --to-new --force mixed
}

@test "an empty stream is an empty stream" {
    lines 0 ''
    equal "$output$stderr" ""
    lines 0 '' -o out.ndjson --rejects rejects --problems problems
    equal "$(cat out.ndjson rejects problems)" ""
    only_files out.ndjson problems rejects
}

@test "a blank line is no record, a carriage return is of the line end, and the last line needs no end" {
    lines 0 '\n \t\r\n\r\n{"lang":"en"}\r\n\n{"lang":"de"}' --summary json
    equal "$output" "$(alone '{"lang":"en"}')"$'\n'"$(alone '{"lang":"de"}')"
    equal "$(members '.records, .converted, .warned, .rejected, .bytes')" "[2,2,0,0,36] "
    "$KCNVRT" stream --to-new ../stream | tail -c 1 | od -An -c | grep -q '\\n'
}

@test "a line that is rejected does not stop the others" {
    lines 1 "$good\n$bad\r\nno JSON\n$good"
    equal "$output" "$(alone "$good")"$'\n'"$(alone "$good")"
    equal "$(members '.file, .line, .offset, .column, .id, .pointer, .severity, .function')" \
'["-",2,14,75,null,"/ifaces/eth4/services/p/auth","error","parse_service_ppp"] '\
'["-",3,98,1,null,null,"error","parse"] '
    equal "$(jq -r .message <<< "$stderr" | head -n 1)" 'Invalid field "auth", is not digit'
    lines 1 "$good\n$bad\n$good" --on-reject null
    equal "${lines[1]}" null
    equal "${#lines[@]}" 3
}

@test "rejects are the lines as they came, and can be put in again" {
    lines 1 "$good\n $bad \r\n{\"a\":1\n$bad" --rejects rejects --problems problems
    equal "$stderr" ""
    equal "$(od -An -c rejects)" "$(printf '%s' " $bad "$'\r\n{"a":1\n'"$bad"$'\n' | od -An -c)"
    equal "$(jq -c .line problems | tr '\n' ' ')" "2 3 4 "
    cp rejects again
    run -1 "$KCNVRT" stream --to-new again --rejects rejects --problems problems
    equal "$output" ""
    cmp again rejects
}

@test "--at converts a value, and leaves the rest of the record byte for byte" {
    local record='{ "serial":"\\u0041/1", "n":[1.50,-0], "d":{"config" : {"lang":"en"} ,"x":"]}"},\t"y":1e2 }'
    lines 0 "$record\n" --at /d/config
    equal "$output" "$(printf "${record/'{"lang":"en"}'/%s}" "$(alone "$good")")"
    lines 0 '[7, {"lang":"en"}]\n' --at /1
    equal "$output" "[7, $(alone "$good")]"
    lines 0 '{"a/b":{"m~n":{"lang":"en"}}}\n' --at /a~1b/m~0n
    equal "$output" "{\"a/b\":{\"m~n\":$(alone "$good")}}"
}

@test "--at-text converts what a text holds" {
    lines 0 '{"config":"{\\"lang\\" :\\n \\"\\u00e9\\"}","z":1}\n' --at /config --at-text
    equal "$(jq -r .config <<< "$output")" "$(alone '{"lang":"é"}')"
    equal "$(jq -c .z <<< "$output")" 1
    equal "${#lines[@]}" 1
}

@test "a problem says where in the record it is" {
    local held
    held=$(jq -cn --arg text "$bad" '{config: $text}')
    lines 1 "{\"serial\":\"é\",\"config\":$bad}\n" --at /config --id /serial
    equal "$(members '.column, .id, .pointer, .inner')" '[98,"é","/config/ifaces/eth4/services/p/auth",null] '
    write record "$held"
    kcnvrt 1 stream --to-new record --at /config --at-text --id /config/none
    equal "$(members '.file, .column, .id, .pointer, .inner')" \
        '["record",11,null,"/config","/ifaces/eth4/services/p/auth"] '
}

@test "a record without the value, or with something else there, is a reject" {
    one_reject() { # STREAM MESSAGE ARGUMENT...
        lines 1 "$1\n$good_record\n" --at /config "${@:3}" --rejects rejects
        equal "$(members .message)" "[\"$2\"] "
        equal "${#lines[@]}" 1
        # shellcheck disable=SC2059
        equal "$(cat rejects)" "$(printf "$1")"
    }
    local good_record='{"config":{"lang":"en"}}'
    one_reject '{"other":{}}' "the record has no value at /config"
    one_reject '{"config":[]}' "a configuration is an object, this is an array"
    one_reject '{"config":1}' "a configuration is an object in { }, this is a single value"
    one_reject '{"config":{},"config":{}}' '\"config\" is given twice in the same object'
    one_reject '{"config":{}} x' "the JSON text ends before this, and something follows"
    one_reject '{"config":{},"a":tru}' "a text stands in double quotes; only numbers, true, false and null go without"
    one_reject '{"config":{}' "the text ends in the middle: the rest of it is missing"
    good_record='{"config":"{}"}'
    one_reject '{"config":{}}' "the value at /config is no text" --at-text
}

@test "a text that cannot be read is told of as what it is, and anything else than a text where it is" {
    told() { # RECORD PROBLEM
        lines 1 "$1\n" --at /config --at-text --id /s
        equal "$(members '.column, .id, .pointer, .inner, .function, .message')" "$2 "
    }
    told '{"s":7,"config":"\\ud800"}' \
        '[17,7,null,null,"parse","this \\u is half of a pair whose other half is missing"]'
    told '{"s":7,"config":"\xff"}' \
        '[18,7,null,null,"parse","this is no UTF-8: the text is damaged, or in another encoding"]'
    told '{"s":"é","config": tru}' \
        '[20,"é",null,null,"parse","a text stands in double quotes; only numbers, true, false and null go without"]'
    told '{"s":7,"config":{}}' '[17,7,"/config",null,"stream","the value at /config is no text"]'
    told '{"s":7,"config":12}' '[17,7,"/config",null,"stream","the value at /config is no text"]'
}

@test "the id is what the record says, also in a record that is no JSON" {
    id_of() { # RECORD ID
        lines 1 "$1\n" --at /config --id /id/0
        contains "$stderr" ", \"id\": $2, \"pointer\": "
    }
    id_of '{"id":["A\\u0042"]}' '"AB"'
    id_of '{"id":[1.50]}' 1.50
    id_of '{"id":[true]}' true
    id_of '{"id":[-0]}' -0
    id_of '{"id":[89014103211118510720]}' 89014103211118510720
    id_of '{"id":[-0.25E+4000]}' -0.25E+4000
    id_of '{"id":[89014103211118510720x]}' null
    id_of '{"id":[01]}' null
    id_of '{"id":[1.]}' null
    id_of '{"id":[1e]}' null
    id_of '{"id":[-]}' null
    id_of '{"id":[null]}' null
    id_of '{"id":[{}]}' null
    id_of '{"id":[]}' null
    id_of '{"id":["x"],"config":{"a":]' '"x"'
    id_of '{"id":["x' null
}

@test "a NUL, bytes that are no UTF-8, and nesting without end are rejects" {
    { printf '{"a":"\0"}\n{"a":"\xff"}\n'; head -c 5000 /dev/zero | tr '\0' '['; printf '\n%s\n' "$good"; } > stream
    kcnvrt 1 stream --to-new stream --rejects rejects
    equal "$output" "$(alone "$good")"
    equal "$(jq -c .line <<< "$stderr" | tr '\n' ' ')" "1 2 3 "
    head -n 3 stream | cmp - rejects
}

@test "a record may be as deep as any JSON text, what is around its configuration included" {
    deep() { # LEVELS AROUND INNERMOST: so many objects and arrays inside one another, of which AROUND are of the record
        local level=$2 around=$2 text='{"unknown":'
        for ((; level > 0; --level)); do printf '{"a":'; done
        printf '%s' "$text"
        head -c $(($1 - around - 1)) /dev/zero | tr '\0' '['
        printf '%s' "$3"
        head -c $(($1 - around - 1)) /dev/zero | tr '\0' ']'
        head -c $((around + 1)) /dev/zero | tr '\0' '}'
        echo
    }
    local around pointer
    for around in 1 2 40; do
        pointer=$(printf '/a%.0s' $(seq "$around"))
        # Empty arrays may be one deeper than what holds a value, and brackets in texts count nothing.
        { deep 2048 "$around"; deep 2047 "$around" '"[[[[{{{{"'; } > stream
        kcnvrt 0 stream --to-new stream --at "$pointer"
        equal "${#lines[@]}" 2
        { deep 2049 "$around"; deep 2048 "$around" 1; } > stream
        kcnvrt 1 stream --to-new stream --at "$pointer" --rejects rejects
        equal "$output" ""
        equal "$(members '.line, .pointer, .function')" '[1,null,"parse"] [2,null,"parse"] '
        cmp stream rejects
    done
    deep 2048 0 > stream
    kcnvrt 0 stream --to-new stream
    deep 2049 0 > stream
    kcnvrt 1 stream --to-new stream
}

@test "a record that is too long is a reject, whatever it takes" {
    local long
    long=$(head -c 100000 /dev/zero | tr '\0' x)
    printf '%s\n%s\n%s\r\n%s\n%s' "$good" "$long" "$long" "$good" "$long" > stream
    for options in "1000" "1000 --block 1" "1000 --block 4096 --jobs 3" "99999" "99999 --block 1M"; do
        # shellcheck disable=SC2086 # the words of the options
        kcnvrt 1 stream --to-new --max-record $options stream --rejects rejects --on-reject null
        equal "$output" "$(alone "$good")"$'\nnull\nnull\n'"$(alone "$good")"$'\nnull'
        equal "$(jq -c '[.line, .offset, .column]' <<< "$stderr" | tr '\n' ' ')" "[2,14,1] [3,100015,1] [5,200031,1] "
        { tail -n +2 stream | head -n 2; printf '%s\n' "$long"; } | cmp - rejects
    done
    lines 1 '{"serial":1,"lang":"en"}\n' --max-record 12 --id /serial
    equal "$(members .id)" "[null] "
    lines 0 "$good\r\n" --max-record 13
    lines 1 "$good\n" --max-record 12
    equal "$(members .message)" '["the record is longer than 12 bytes"] '
}

@test "a record of 64 MiB is converted, one byte more is a reject" {
    local size=$((64 * 1024 * 1024))
    record() { printf '{"lang":"'; head -c "$1" /dev/zero | tr '\0' x; printf '"}\n'; }
    { record $((size - 11)); record $((size - 10)); echo "$good"; } > stream
    "$KCNVRT" stream --to-new --jobs 2 stream --on-reject null --problems problems > out || [ $? -eq 1 ]
    equal "$(wc -l < out)" 3
    head -n 1 out | cmp - <(head -n 1 stream | "$KCNVRT" to-new --compact)
    equal "$(tail -n 2 out)" $'null\n'"$(alone "$good")"
    equal "$(jq -r .message problems)" "the record is longer than $size bytes"
}

@test "--max-rejects counts exactly, and in order" {
    local stream
    stream=$(for i in 1 2 3 4 5 6; do printf '{"lang":"%s"}\\n{"lang":%s\\n' "$i" "$i"; done)
    for jobs in 1 3; do
        lines 1 "$stream" --jobs "$jobs" --block 1 --max-rejects 3 --summary json --problems problems --rejects rejects
        equal "${#lines[@]}" 4
        equal "$(wc -l < rejects) $(wc -l < problems)" "4 4"
        equal "$(tail -n 1 <<< "$stderr" | jq -c '[.records, .converted, .rejected]')" "[8,4,4]"
        contains "$stderr" "more records were rejected than --max-rejects allows"
        lines 1 "$stream" --jobs "$jobs" --max-rejects 6
        equal "${#lines[@]}" 6
        lines 1 "$stream" --jobs "$jobs" --max-rejects 0 --accept-rejects
        equal "${#lines[@]}" 1
    done
    lines 0 "$stream" --accept-rejects --max-rejects 6
}

@test "-o is replaced at the end, or not at all" {
    lines 1 "$good\n$bad\n" -o out
    equal "$(cat out)" "$(alone "$good")"
    lines 1 "$bad\n$good\n" -o out --max-rejects 0
    equal "$(cat out)" "$(alone "$good")"
    only_files out
}

@test "files follow one another, each with lines of its own" {
    printf '%s\n%s' "$good" "$bad" > a
    printf '%s\n%s\n' "$bad" "$good" > b
    : > empty
    kcnvrt 1 stream --to-new a empty b --problems problems
    equal "${#lines[@]}" 2
    equal "$(jq -c '[.file, .line, .offset]' problems | tr '\n' ' ')" '["a",2,14] ["b",1,0] '
    run --separate-stderr -0 "$KCNVRT" stream --to-new - <<< "$good"
    equal "$output" "$(alone "$good")"
}

@test "warnings do not reject, and are counted" {
    lines 0 '{"route":["x"]}\n{}\n' --summary json
    equal "$output" "$(alone '{"route":["x"]}' 2> ../messages)"$'\n'"$(alone '{}')"
    equal "$(jq -c '[.severity, .pointer, .warned, .converted]' <<< "$stderr" | tr '\n' ' ')" \
        '["warning","/route/0",null,null] [null,null,1,2] '
}

@test "wrong usage is refused before anything is read" {
    wrong() { # MESSAGE ARGUMENT...
        kcnvrt 2 stream "${@:2}"
        equal "$output" ""
        contains "$stderr" "$1"
        equal "$(cat in)" "$good"
    }
    write in "$good"
    ln in same
    wrong "--to-new or --to-old or --auto is required" in
    wrong "--auto excludes --to-old" --auto --to-old in
    wrong "--to-old excludes --to-new" --to-new --to-old in
    wrong "--at takes a JSON Pointer" --to-new --at config in
    wrong "--id takes a JSON Pointer" --to-new --id /a~2 in
    wrong "--at-text needs --at" --to-new --at-text in
    wrong "--jobs takes a number from 1 to 1024" --to-new --jobs 0 in
    wrong "--max-record takes a size" --to-new --max-record 1T in
    wrong "--block takes a size from 1 to 1M" --to-new --block 2M in
    wrong "--on-reject takes skip or null" --to-new --on-reject stop in
    wrong '"same" is read, so it cannot be written too' --to-new in -o same
    wrong '"in" is read, so it cannot be written too' --to-new same --rejects in
    wrong '"in" is read, so it cannot be written too' --to-new in --problems in
    wrong '"out" is to be written twice' --to-new in --problems out --rejects out
    wrong '"./out" and "out" are the same file, and both are written' --to-new in -o out --rejects ./out
    ln -s out link
    wrong '"out" and "link" are the same file, and both are written' --to-new in -o link --problems out
    rm link
    wrong "only the output can go to -" --to-new in --rejects -
    run --separate-stderr -2 sh -c '"$1" stream --to-new in >> same' sh "$KCNVRT"
    equal "$(cat in)" "$good"
    only_files in same
}

@test "a device may be written twice" {
    kcnvrt 1 stream --to-new - -o /dev/null --rejects /dev/null --problems /dev/null --summary json <<< "$bad"
    equal "$(jq -c .rejected <<< "$stderr")" 1
}

@test "a file that is missing is refused before anything is written" {
    write in "$good"
    write out old
    kcnvrt 3 stream --to-new in missing -o out --rejects rejects
    equal "$stderr" "missing: error: No such file or directory [read]"
    equal "$(cat out)" old
    only_files in out
}

@test "the summary is printed where it is asked for, or somebody looks" {
    lines 0 "$good\n" --summary text
    contains "$stderr" "1 record: 1 converted (0 with warnings), 0 rejected; 14 bytes in 0."
    lines 0 "$good\n" --progress
    contains "$stderr" "1 record: 1 converted"
    on_terminal() { script --quiet --return --command "$KCNVRT stream $*" typescript < /dev/null > shown; }
    on_terminal --to-new ../stream -o out
    contains "$(cat shown)" "1 record: 1 converted"
    on_terminal --to-new ../stream -o out --summary none
    equal "$(cat shown)" ""
}
