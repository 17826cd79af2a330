# Streams that end before their time: whatever happens, every file has whole lines.
load setup

good='{"lang":"en"}'
bad='{"lang":'

setup_file() { export BATS_TEST_TIMEOUT=120; }

# A stream of which every other line is rejected, and what it comes to.
write_stream() { # PAIRS
    for i in $(seq "$1"); do printf '%s\n{"lang":%s\n' "$good" "$i"; done > ../stream
    "$KCNVRT" stream --to-new ../stream --rejects ../rejects --problems ../problems > ../out || [ $? -eq 1 ]
}

command=(stream --to-new ../stream --rejects rejects --problems problems --block 20)

# Of each file there is the beginning, up to the end of a line.
whole_lines() { # WHAT
    local file
    for file in out rejects problems; do
        [ -f "$file" ] || continue
        cmp -s <(head -c "$(stat -c %s "$file")" "../$file") "$file" || { equal "$1: $file" "the beginning"; return 1; }
        [ ! -s "$file" ] || equal "$1: $file: $(tail -c 1 "$file" | od -An -c)" "$1: $file:   \\n"
    done
    equal "$1: $(ls -d .kcnvrt-* 2> ../none)" "$1: "
}

@test "a signal at any moment leaves whole lines, and ends the run as it says" {
    write_stream 4
    local calls call status signal jobs
    for jobs in 1 2; do
        rm -f ../calls
        LD_PRELOAD=$SHIM_LIBRARY SHIM_RECORD=../calls "$KCNVRT" "${command[@]}" --jobs "$jobs" > out || [ $? -eq 1 ]
        calls=$(grep -c -vE '^(alloc|mmap) ' ../calls)
        [ "$calls" -gt 20 ]
        for call in $(seq "$calls"); do
            signal=TERM
            [ $((call % 3)) -ne 0 ] || signal=HUP
            rm -f out rejects problems
            status=0
            env LD_PRELOAD="$SHIM_LIBRARY" SHIM="any:$call=$signal" "$KCNVRT" "${command[@]}" --jobs "$jobs" > out ||
                status=$?
            # With two threads there may be fewer calls than the last time.
            [ "$jobs" -eq 2 ] && [ "$status" -eq 1 ] || equal "$call: $status" "$call: $((128 + $(kill -l $signal)))"
            whole_lines "$call of $jobs"
        done
    done
}

@test "a signal leaves an -o file as it was, and nothing beside it" {
    write_stream 4
    local call status
    for call in $(seq 1 3 30); do
        write new old
        status=0
        env LD_PRELOAD="$SHIM_LIBRARY" SHIM="any:$call=TERM" "$KCNVRT" "${command[@]}" --jobs 1 -o new || status=$?
        equal "$call: $status $(cat new)" "$call: 143 old"
        whole_lines "$call"
    done
}

@test "a signal while the reader of a pipe does not read waits for the rest of the line, and not for more" {
    local line first
    yes "$good" | head -n 20000 > ../many
    mkfifo pipe
    "$KCNVRT" stream --to-new --jobs 1 ../many > pipe &
    line=$!
    exec 5< pipe
    IFS= read -r first <&5
    sleep 0.3 # it waits for room in the pipe
    kill -TERM "$line"
    # Nothing is read before the signal has come.
    while grep -qE '^(Shd|Sig)Pnd:.*[1-9a-f]' "/proc/$line/status"; do sleep 0.01; done
    { echo "$first"; cat <&5; } > out
    exec 5<&-
    status=0
    wait "$line" || status=$?
    equal "$status" 143
    equal "$(tail -n 1 out)" "$(head -n 1 out)"
    equal "$(tail -c 1 out | od -An -c)" "  \\n"
    [ "$(wc -l < out)" -lt 20000 ]
}

# full RULES: the disk is full, as the rules say; status 3, and the message names the file.
full() { # RULES FILE
    local status=0
    rm -f out rejects problems
    env LD_PRELOAD="$SHIM_LIBRARY" SHIM="$1" "$KCNVRT" "${command[@]}" --jobs "$jobs" > out 2> messages || status=$?
    equal "$1: $status $(cat messages)" "$1: 3 $2: error: No space left on device [write]"
    whole_lines "$1"
}

@test "a disk that is full at any moment leaves whole lines" {
    write_stream 4
    local jobs write
    for jobs in 1 2; do
        for write in 1 2 3 4; do
            for file in rejects problems; do
                full "write@/$file:$write=ENOSPC" "$file"
                full "write@/$file:$write=short write@/$file:$((write + 1))+=ENOSPC" "$file"
            done
            full "write@/out:$write=ENOSPC" -
            full "write@/out:$write=short write@/out:$((write + 1))+=ENOSPC" -
        done
    done
}

@test "a disk that is full under -o leaves the old file" {
    write_stream 4
    write new old
    shimmed 3 "write@.kcnvrt-=ENOSPC" "${command[@]}" -o new
    equal "$stderr" "new: error: No space left on device [write]"
    equal "$(cat new)" old
    whole_lines new
}

@test "short and interrupted reads and writes go on" {
    write_stream 4
    local rules
    for rules in write=short read@/stream=short "write:1=EINTR write:3=EINTR" "read@/stream:1=EINTR"; do
        rm -f rejects problems
        run --separate-stderr -1 env LD_PRELOAD="$SHIM_LIBRARY" SHIM="$rules" "$KCNVRT" "${command[@]}"
        equal "$output" "$(cat ../out)"
        cmp rejects ../rejects
        cmp problems ../problems
    done
}

@test "an input that cannot be read ends the run behind what could" {
    write_stream 40
    run --separate-stderr -3 env LD_PRELOAD="$SHIM_LIBRARY" SHIM="read@/stream:3=EIO" "$KCNVRT" "${command[@]}"
    equal "$stderr" "../stream: error: Input/output error [read]"
    [ -n "$output" ]
    equal "$(head -n "${#lines[@]}" ../out)" "$output"
    run --separate-stderr -3 "$KCNVRT" stream --to-new .
    contains "$stderr" ".: error: Is a directory [read]"
}

@test "who closes the output early has all he wanted" {
    yes "$good" | head -n 20000 > ../many
    local jobs
    for jobs in 1 3; do
        status=0
        { "$KCNVRT" stream --to-new --jobs "$jobs" ../many 2> messages || echo "$?" > status; } | head -n 1 > out
        [ ! -e status ]
        equal "$(cat messages)" ""
        # Also while the input stalls.
        mkfifo "input$jobs"
        { cat ../many || true; exec sleep 60; } > "input$jobs" 2> ../none &
        sleeper=$!
        "$KCNVRT" stream --to-new --jobs "$jobs" < "input$jobs" 2> messages | head -n 1 > out
        kill "$sleeper"
        equal "$(cat messages)" ""
    done
}

@test "lines go out as they are ready, while the input stalls" {
    local jobs line
    for jobs in 1 3; do
        coproc stream { "$KCNVRT" stream --to-new --jobs "$jobs"; }
        pid=$stream_PID # which bash forgets when it ends
        for i in 1 2 3; do
            printf '%s\n%s' "$good" "$good" >&"${stream[1]}"
            IFS= read -r -t 30 line <&"${stream[0]}"
            equal "$line" "$(echo "$good" | "$KCNVRT" to-new --compact)"
            printf '\n' >&"${stream[1]}"
            IFS= read -r -t 30 line <&"${stream[0]}"
            contains "$line" '"en"'
        done
        eval "exec ${stream[1]}>&-" # its input ends
        wait "$pid"
    done
}

@test "memory that runs out ends the run behind whole lines" {
    [ -z "${COUNTS_COVERAGE:-}" ] || skip "what counts coverage does not live without memory itself"
    [ -z "${ASAN_OPTIONS:-}" ] || return 0 # a sanitizer takes terabytes for itself
    write_stream 4
    local kind call calls status failed=
    for kind in alloc mmap; do
        rm -f ../calls
        LD_PRELOAD=$SHIM_LIBRARY SHIM_RECORD=../calls "$KCNVRT" "${command[@]}" --jobs 1 > out || [ $? -eq 1 ]
        calls=$(grep -c "^$kind " ../calls)
        for call in $(seq 1 $((calls / 60 + 1)) "$calls"); do
            rm -f out rejects problems
            status=0
            env LD_PRELOAD="$SHIM_LIBRARY" SHIM="$kind:$call+=ENOMEM" "$KCNVRT" "${command[@]}" --jobs 1 \
                > out 2> messages || status=$?
            [ "$status" -eq 1 ] || equal "$kind:$call: $status $(cat messages)" \
                "$kind:$call: 3 kcnvrt: error: out of memory [memory]"
            [ "$status" -eq 1 ] || failed+=3
            whole_lines "$kind:$call"
        done
    done
    contains "$failed" 333
}
