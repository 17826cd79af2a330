# Memory that runs out: the whole result, or a message, status 3, and the old file.
load setup

# whole ARGUMENT...: the run with all the memory that it wants. One that writes nothing leaves the old file.
whole() {
    write ../whole.json old
    whole_status=0
    "$KCNVRT" "$@" -o ../whole.json 2> ../whole_messages || whole_status=$?
}

# What the last run left, which ended with $status, is as it has to be: the new file and the messages whole, or what was
# there before.
whole_or_nothing() { # WHAT
    case $status in
        "$whole_status")
            equal "$1: $(cat new.json)" "$1: $(cat ../whole.json)"
            equal "$1: $(cat ../messages)" "$1: $(cat ../whole_messages)"
            ;;
        3)
            equal "$1: $(cat new.json)" "$1: old"
            equal "$1: $(tail -n 1 ../messages)" "$1: kcnvrt: error: out of memory [memory]"
            ;;
        *) equal "$1: status $status, $(cat ../messages)" "$1: status $whole_status or 3" ;;
    esac
    equal "$1: $(ls -d .kcnvrt-* 2> ../none)" "$1: "
}

# without RULE ARGUMENT...
without() {
    write new.json old
    status=0
    env LD_PRELOAD="$SHIM_LIBRARY" SHIM="$1" "$KCNVRT" "${@:2}" -o new.json 2> ../messages || status=$?
    whole_or_nothing "$1"
}

# every_allocation ARGUMENT...: the run with each allocation failing, alone and with all that follow.
every_allocation() {
    local kind count failed=
    whole "$@"
    rm -f ../calls
    LD_PRELOAD="$SHIM_LIBRARY" SHIM_RECORD=../calls "$KCNVRT" "$@" -o new.json 2> ../messages || true
    for kind in alloc mmap; do
        count=$(grep -c "^$kind " ../calls)
        for call in $(seq "$count"); do
            without "$kind:$call=ENOMEM" "$@"
            without "$kind:$call+=ENOMEM" "$@"
            failed+=$status
        done
    done
    contains "$failed" 333
}

@test "each allocation that fails leaves the whole result or none" {
    document
    every_allocation "${conversion[@]}" old.json
    write deep.json '{"Device": {"WiFi": {"Radio": {"1": {"mbssid": {"1": {"SSID": "a"}}}}}}}'
    every_allocation to-old deep.json
    write base.json '{}'
    every_allocation to-new --base base.json old.json
    every_allocation diff old.json deep.json
}

@test "each allocation that fails leaves the whole list of losses or none" {
    write old.json '{"passwd": [], "x": {"pin": 1}, "max_table_id": "12"}'
    every_allocation losses old.json
    equal "$whole_status" 0
    every_allocation check --json old.json
    equal "$whole_status" 1
    every_allocation to-new --losses old.json
    equal "$whole_status" 0
    every_allocation to-new --strict old.json
    equal "$whole_status" 1
    equal "$(cat ../whole.json)" old
    write new_entries.json '{"Device": {"Ifaces": {"ethernet": {"2": {"ifname_l2": "b"}, "max_instance": 2}}}}'
    every_allocation losses new_entries.json
}

@test "each allocation that fails leaves the whole part of a rejected configuration or none" {
    write old.json '{"passwd": [], "lang": "en", "max_table_id": "many"}'
    every_allocation to-new --partial old.json
    equal "$whole_status" 1
    contains "$(cat ../whole.json)" '"lang": "en"'
    every_allocation check old.json
}

# every_limit ARGUMENT...: the run with less and less memory.
every_limit() {
    local seen=
    whole "$@"
    for limit in $(seq 2000 1000 12000); do
        write new.json old
        status=0
        (ulimit -v "$limit" && exec "$KCNVRT" "$@" -o new.json 2> ../messages) || status=$?
        # The system could not even start it.
        if [ "$status" -gt 3 ]; then continue; fi
        whole_or_nothing "$1 $limit"
        seen+=" $status"
    done
    contains "$seen" " 3"
    contains "$seen" " $whole_status"
}

@test "a limit on memory leaves the whole result or none" {
    [ -z "${ASAN_OPTIONS:-}" ] || return 0 # a sanitizer takes terabytes for itself
    write_large large.json
    write base.json '{}'
    every_limit diff base.json large.json
    local examples=$BATS_TEST_DIRNAME/../../examples
    every_limit to-new "$examples/home-gateway.old.json"
    every_limit to-old "$examples/home-gateway.new.json"
    every_limit losses "$examples/home-gateway.new.json"
    every_limit check "$examples/home-gateway.old.json"
}

@test "the message that memory ran out is JSON where that is asked for" {
    document
    shimmed 3 mmap=ENOMEM --errors json "${conversion[@]}" old.json
    equal "$stderr" '{"file": "kcnvrt", "line": null, "column": null, "pointer": null, "severity": "error", '\
'"function": "memory", "message": "out of memory"}'
}

@test "without memory for an exception, too, nothing is left behind" {
    local count
    document
    whole "${conversion[@]}" old.json
    LD_PRELOAD="$SHIM_LIBRARY" SHIM_RECORD=../calls "$KCNVRT" "${conversion[@]}" old.json -o ../whole.json
    count=$(grep -c "^alloc " ../calls)
    # The first is what the C++ library keeps for exceptions. One is made when the file is there and cannot be written.
    without "alloc:1=ENOMEM alloc:$((count + 1))+=ENOMEM write@.kcnvrt-=ENOSPC" "${conversion[@]}" old.json
    equal "$status" 3
}
