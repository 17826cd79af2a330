# Who may read and write what the tool makes.
load setup

# as_user STATUS ARGUMENT...: the tool as a user for whom permissions count. Root's tests have one of their own, who
# gets the folder, and a copy of the tool, since he may not reach the folder that it was built in.
readonly user=31415 group=27182
as_user() {
    local expected=$1 as=()
    shift
    if [ "$(id -u)" = 0 ]; then
        mkdir -p program
        cp "$KCNVRT" "$(dirname "$KCNVRT")"/../lib/lib*.so.* program
        as=(env LD_LIBRARY_PATH=program setpriv --reuid "$user" --regid "$group" --clear-groups program/kcnvrt)
    else
        as=("$KCNVRT")
    fi
    run --separate-stderr "-$expected" "${as[@]}" "$@"
}

# The folder and everything in it are the user's.
hand_over() { [ "$(id -u)" != 0 ] || chown -R "$user:$group" .; }

permissions_of() { stat -c %a "$1"; }

# A group that is not the one that new files get; empty for a user who is in no second one and cannot give files to it.
other_group() {
    if [ "$(id -u)" = 0 ]; then echo "$group"; else id -G | tr ' ' '\n' | grep -vxm 1 "$(id -g)" || true; fi
}

@test "a new file gets the permissions of its input, less what the umask takes" {
    document
    new_file() { # UMASK PERMISSIONS EXPECTED
        chmod "$2" old.json
        rm -f new.json
        (umask "$1" && "$KCNVRT" "${conversion[@]}" old.json -o new.json)
        equal "umask $1, $2: $(permissions_of new.json)" "umask $1, $2: $3"
        equal "$(cat new.json)" "$result"
    }
    new_file 022 644 644
    new_file 022 600 600
    new_file 022 640 640
    new_file 022 666 644
    new_file 027 644 640
    new_file 077 644 600
    new_file 000 664 664
    new_file 000 604 604
    new_file 077 755 700
}

@test "a new file can be written by its owner" {
    document
    hand_over
    for mode in 400 440 444; do
        chmod "$mode" old.json
        rm -f new.json
        as_user 0 "${conversion[@]}" old.json -o new.json
        equal "$(permissions_of new.json)" "6${mode:1}"
    done
}

@test "what came through a pipe is its owner's alone" {
    document
    # shellcheck disable=SC2002 # the pipe is what is tested
    cat old.json | "$KCNVRT" "${conversion[@]}" -o new.json
    equal "$(permissions_of new.json)" 600
    mkfifo pipe
    cat old.json > pipe &
    convert 0 pipe -o fifo.json
    wait
    equal "$(permissions_of fifo.json)" 600
    chmod 640 old.json
    "$KCNVRT" "${conversion[@]}" -o redirected.json < old.json
    equal "$(permissions_of redirected.json)" 640
}

@test "a new file is open to nobody who may not read one of its inputs" {
    document
    write base.json '{}'
    umask 000
    chmod 644 old.json
    chmod 600 base.json
    convert 0 old.json --base base.json -o one.json
    equal "$(permissions_of one.json)" 600
    kcnvrt 0 diff old.json base.json -o two.json
    equal "$(permissions_of two.json)" 600
    kcnvrt 0 diff base.json old.json -o three.json
    equal "$(permissions_of three.json)" 600
    write change.json '{}'
    chmod 640 change.json
    kcnvrt 0 apply old.json change.json -o four.json
    equal "$(permissions_of four.json)" 640
    chmod 604 change.json
    chmod 640 old.json
    kcnvrt 0 apply old.json change.json -o five.json
    equal "$(permissions_of five.json)" 600
}

@test "a list of sections is no secret" {
    umask 022
    kcnvrt 0 sections -o list
    equal "$(permissions_of list)" 644
}

@test "another group does not get what the group of an input had" {
    local other
    other=$(other_group)
    [ -n "$other" ] || return 0
    document
    umask 000
    with_input() { # PERMISSIONS EXPECTED
        chgrp "$other" old.json
        chmod "$1" old.json
        rm -f new.json
        convert 0 old.json -o new.json
        equal "$1: $(permissions_of new.json)" "$1: $2"
        equal "$(cat new.json)" "$result"
        only_files new.json old.json
    }
    with_input 664 644
    with_input 660 600
    with_input 604 600
    with_input 644 644
    write base.json '{}'
    chmod 660 base.json
    kcnvrt 0 diff base.json old.json -o two.json
    equal "$(permissions_of two.json)" 600
    chgrp "$other" . base.json
    chmod 2777 .
    kcnvrt 0 diff base.json base.json -o same.json
    equal "$(stat -c %a:%g same.json)" "660:$other"
}

@test "an old file keeps its permissions, whatever those of the input and the umask" {
    document
    chmod 600 old.json
    for mode in 400 440 600 640 644 666 755; do
        write new.json old
        chmod "$mode" new.json
        (umask 077 && "$KCNVRT" "${conversion[@]}" old.json -o new.json)
        equal "$(permissions_of new.json)" "$mode"
        equal "$(cat new.json)" "$result"
        rm -f new.json
    done
}

@test "an old file keeps its owner and group where the system lets it" {
    document
    write new.json old
    if [ "$(id -u)" = 0 ]; then chown "$user:$group" new.json; fi
    chmod 664 new.json
    local before
    before=$(stat -c %u:%g:%a new.json)
    recorded calls "${conversion[@]}" old.json -o new.json
    equal "$(stat -c %u:%g:%a new.json)" "$before"
    equal "$(grep ^chown calls)" "chown $PWD/passing ${before%:*} = 0"
}

@test "a group that an old file cannot keep lets nobody else in" {
    local other
    other=$(other_group)
    [ -n "$other" ] || return 0
    document
    write new.json old
    chgrp "$other" new.json
    chmod 660 new.json
    shimmed 0 chown=EPERM "${conversion[@]}" old.json -o new.json
    equal "$(stat -c %a:%g new.json)" "600:$(id -g)"
    equal "$(cat new.json)" "$result"
    write new.json old
    chgrp "$other" new.json
    chmod 660 new.json
    shimmed 0 chown:1=EPERM "${conversion[@]}" old.json -o new.json
    equal "$(stat -c %a:%g new.json)" "660:$other"
}

@test "until it has its permissions an old file's successor is its owner's alone" {
    document
    write new.json old
    chmod 666 new.json
    shimmed 137 chmod=KILL "${conversion[@]}" old.json -o new.json
    equal "$(permissions_of .kcnvrt-*)" 600
    equal "$(cat new.json)" old
}

@test "a folder decides which files can be made in it" {
    document
    mkdir folder
    hand_over
    in_folder() { # STATUS PERMISSIONS
        write folder/new.json old
        hand_over
        chmod "$2" folder
        as_user "$1" "${conversion[@]}" old.json -o folder/new.json
        chmod 755 folder
        equal "$(ls -A folder)" new.json
    }
    in_folder 0 755
    equal "$(cat folder/new.json)" "$result"
    in_folder 0 333
    equal "$(cat folder/new.json)" "$result"
    in_folder 3 555
    equal "$stderr" "folder/new.json: error: Permission denied [write]"
    equal "$(cat folder/new.json)" old
    in_folder 3 666
    equal "$stderr" "folder/new.json: error: Permission denied [write]"
}

@test "an input without permission to read is reported" {
    document
    write new.json old
    chmod 200 old.json
    hand_over
    as_user 3 "${conversion[@]}" old.json -o new.json
    equal "$stderr" "old.json: error: Permission denied [read]"
    equal "$(cat new.json)" old
}
