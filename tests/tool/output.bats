# Standard output, and files that are replaced whole or not at all.
load setup

@test "-o writes the result and prints nothing" {
    document
    convert 0 old.json -o new.json
    equal "$output$stderr" ""
    equal "$(cat new.json)" "$result"
    convert 0 old.json --output other.json
    equal "$(cat other.json)" "$result"
    only_files new.json old.json other.json
}

@test "-o takes the results of every command that has one" {
    document
    "$KCNVRT" sections -o list
    "$KCNVRT" sections > printed
    cmp list printed
    "$KCNVRT" diff old.json old.json -o difference
    equal "$(cat difference)" "[]"
    "$KCNVRT" apply old.json difference --compact -o applied
    equal "$(cat applied)" '{"wan1":10}'
    "$KCNVRT" -o before to-new old.json
    "$KCNVRT" to-new old.json > printed
    cmp before printed
    convert 0 old.json -o -
    equal "$output" "$result"
}

@test "a reader of the old file goes on reading the old file" {
    document
    write new.json old
    exec 5< new.json
    convert 0 old.json -o new.json
    equal "$(cat <&5)" "old"
    exec 5<&-
    equal "$(cat new.json)" "$result"
}

@test "a file can be replaced by its own conversion" {
    document
    convert 0 old.json -o old.json
    equal "$(cat old.json)" "$result"
}

@test "symbolic links are kept, and what they lead to is replaced" {
    document
    mkdir folder
    write folder/new.json old
    ln -s new.json folder/second
    ln -s folder/second first
    convert 0 old.json -o first
    equal "$(readlink first)" folder/second
    equal "$(readlink folder/second)" new.json
    equal "$(cat folder/new.json)" "$result"
    ln -s "$PWD/folder/fresh.json" dangling
    convert 0 old.json -o dangling
    [ -L dangling ]
    equal "$(cat folder/fresh.json)" "$result"
}

@test "a chain of links is followed as far as the system follows it" {
    document
    chain() { # LENGTH
        write end old
        ln -sf end 1
        for link in $(seq 2 "$1"); do ln -sf $((link - 1)) "$link"; done
    }
    chain 40
    convert 0 old.json -o 40
    equal "$(cat end)" "$result"
    for link in $(seq 2 40); do equal "$(readlink "$link")" $((link - 1)); done
    chain 41
    convert 3 old.json -o 41
    equal "$stderr" "41: error: Too many levels of symbolic links [write]"
    equal "$(cat end)" old
}

@test "a link that leads to itself cannot be written" {
    document
    ln -s round round
    convert 3 old.json -o round
    equal "$stderr" "round: error: Too many levels of symbolic links [write]"
    only_files old.json round
}

@test "a run that fails leaves the old file alone" {
    write new.json old
    write object.json '{}'
    convert 3 missing.json -o new.json
    write patch.json '[{"op": "remove", "path": "/b"}]'
    kcnvrt 1 apply object.json patch.json -o new.json
    kcnvrt 2 section wan_pvid object.json -o new.json
    equal "$(cat new.json)" old
    only_files new.json object.json patch.json
}

@test "a result that cannot be written as JSON leaves the old file alone" {
    write document.json '{"looping": null}'
    write new.json old
    talkative 3 to-new document.json -o new.json
    equal "${#stderr_lines[@]}" 1
    equal "$(cat new.json)" old
    only_files document.json new.json
    talkative 3 to-new document.json
    equal "$output" ""
}

@test "a write that fails half-way leaves the old file alone" {
    write_large old.json
    write new.json old
    write base.json '{}'
    (ulimit -f 64 && "$KCNVRT" diff base.json old.json -o new.json 2> messages) && return 1
    equal "$(cat messages)" "new.json: error: File too large [write]"
    equal "$(cat new.json)" old
    only_files base.json messages new.json old.json
}

@test "a folder that takes no file is reported" {
    document
    convert 3 old.json -o nowhere/new.json
    equal "$stderr" "nowhere/new.json: error: No such file or directory [write]"
    convert 3 old.json -o /proc/new.json
    contains "$stderr" "/proc/new.json: error: "
    contains "$stderr" " [write]"
    convert 3 old.json -o .
    equal "$stderr" ".: error: Is a directory [write]"
    convert 3 old.json -o old.json/new.json
    equal "$stderr" "old.json/new.json: error: Not a directory [write]"
    equal "$output" ""
}

# Only such devices as a tool that is broken, and run by root, cannot replace.
@test "devices and pipes are written directly" {
    document
    ln -s /proc/self/fd/1 printed
    "$KCNVRT" section wan_pvid --to-new --compact old.json -o printed | cat > received
    equal "$(cat received)" "$result"
    [ -L printed ]
    mkfifo pipe
    cat pipe > received &
    convert 0 old.json -o pipe
    wait
    equal "$(cat received)" "$result"
    [ -p pipe ]
}

@test "a file that standard output goes to is standard output" {
    document
    ln -s /proc/self/fd/1 printed
    exec 5> received 6< received
    rm received
    "$KCNVRT" section wan_pvid --to-new --compact old.json -o printed >&5
    equal "$(cat <&6)" "$result"
    exec 5>&- 6<&-
    only_files old.json printed
}

@test "a full device is reported" {
    document
    status=0
    "$KCNVRT" section wan_pvid --to-new old.json > /dev/full 2> messages || status=$?
    equal "$status" 3
    equal "$(cat messages)" "-: error: No space left on device [write]"
    status=0
    "$KCNVRT" --help > /dev/full 2> messages || status=$?
    equal "$status" 3
}

@test "standard output that is closed is reported, and nothing else is written in its stead" {
    document
    status=0
    "$KCNVRT" section wan_pvid --to-new old.json >&- 2> messages || status=$?
    equal "$status" 3
    equal "$(cat messages)" "-: error: Bad file descriptor [write]"
    "$TALKATIVE_KCNVRT" to-new --compact old.json -o new.json >&- 2>&-
    equal "$(cat new.json)" '{"wan1":10}'
    "$TALKATIVE_KCNVRT" to-new --compact old.json -o new.json <&- >&- 2>&-
    equal "$(cat new.json)" '{"wan1":10}'
}

@test "a closed pipe ends the run quietly" {
    write_large old.json
    write base.json '{}'
    {
        "$KCNVRT" diff base.json old.json 2> messages
        echo $? > status
    } | head -c 1 > first
    equal "$(cat first)" "["
    equal "$(cat messages)" ""
    equal "$(cat status)" 0
    { sleep 0.2; "$KCNVRT" --help 2>> messages; echo $? > status; } | true
    equal "$(cat messages)" ""
    equal "$(cat status)" 0
}
