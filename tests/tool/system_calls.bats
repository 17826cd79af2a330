# System calls that fail, are interrupted or do less than they were asked for.
load setup

# A conversion to new.json that fails: one message, the old file, nothing beside it.
fails_with() { # RULES MESSAGE
    document
    write new.json old
    shimmed 3 "$1" "${conversion[@]}" old.json -o new.json
    equal "$output" ""
    equal "$stderr" "$2"
    equal "$(cat new.json)" old
    only_files new.json old.json
}

@test "a write that fails is reported" {
    fails_with write@.kcnvrt-=ENOSPC "new.json: error: No space left on device [write]"
    fails_with write@.kcnvrt-=EIO "new.json: error: Input/output error [write]"
    fails_with "write@.kcnvrt-:1=short write@.kcnvrt-:2=EDQUOT" "new.json: error: Disk quota exceeded [write]"
}

@test "an fsync that fails is reported" {
    fails_with fsync=EIO "new.json: error: Input/output error [write]"
}

@test "a close that fails is reported" {
    fails_with close@.kcnvrt-=EDQUOT "new.json: error: Disk quota exceeded [write]"
}

@test "a rename that fails is reported" {
    fails_with rename=EACCES "new.json: error: Permission denied [write]"
    fails_with rename=EXDEV "new.json: error: Invalid cross-device link [write]"
}

@test "a passing file that cannot be made is reported" {
    fails_with open@.kcnvrt-=EMFILE "new.json: error: Too many open files [write]"
    fails_with open@.kcnvrt-=EROFS "new.json: error: Read-only file system [write]"
    fails_with open@.kcnvrt-=EEXIST "new.json: error: File exists [write]"
}

@test "a passing name that is taken is not used" {
    document
    shimmed 0 open@.kcnvrt-:1=EEXIST "${conversion[@]}" old.json -o new.json
    equal "$(cat new.json)" "$result"
    only_files new.json old.json
}

@test "an input that cannot be opened or read is reported" {
    fails_with open@old.json=EMFILE "old.json: error: Too many open files [read]"
    fails_with read@old.json=EIO "old.json: error: Input/output error [read]"
    fails_with read@old.json:2=EIO "old.json: error: Input/output error [read]"
}

@test "interrupted and short reads and writes go on" {
    document
    go_on() { # RULES
        shimmed 0 "$1" "${conversion[@]}" old.json
        equal "$output" "$result"
        equal "$stderr" ""
        shimmed 0 "$1" "${conversion[@]}" old.json -o new.json
        equal "$(cat new.json)" "$result"
    }
    go_on "read@old.json:1=EINTR"
    go_on "read@old.json:2=EINTR"
    go_on "read@old.json=short"
    go_on "write:1=EINTR"
    go_on "write:1=short write:2=EINTR"
    go_on "write=short"
}

@test "a result is safe on the disk before it takes its name" {
    document
    recorded calls "${conversion[@]}" old.json -o new.json
    # A build that counts coverage writes files of its own.
    equal "$(sed -n -E '/gcda/d; /passing|rename/{s/^([a-z]+).*/\1/;p}' calls | grep -v stat | tr '\n' ' ')" \
        "open write fsync close rename "
}

@test "a full disk is reported" {
    fails_with "write@.kcnvrt-=ENOSPC" "new.json: error: No space left on device [write]"
    unshare --mount true 2> ../messages || return 0 # who may not mount has no disk to fill
    write_large large.json
    mkdir disk
    # shellcheck disable=SC2016 # for the inner shell
    unshare --mount sh -c 'mount -t tmpfs -o size=8k none disk && echo old > disk/new.json || exit
        "$@" -o disk/new.json
        echo $?; cat disk/new.json; ls -A disk' \
        sh "$KCNVRT" diff old.json large.json > ../seen 2> ../messages
    equal "$(cat ../messages)" "disk/new.json: error: No space left on device [write]"
    equal "$(cat ../seen)" $'3\nold\nnew.json'
}

@test "without a file in memory the diagnostics of a check go to standard error" {
    run --separate-stderr -1 env LD_PRELOAD="$SHIM_LIBRARY" SHIM=memfd=ENOSYS "$TALKATIVE_KCNVRT" self-check
    equal "$output" ""
    equal "$stderr" 'old_config_handler_table, name "vlan" is duplicate!'
}
