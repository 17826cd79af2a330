# Many files into a folder.
load setup

good='{"lang":"en"}'
bad='{"ifaces":{"eth4":{"type":"ethernet","services":{"p":{"type":"ppp","auth":"x"}}}}}'

# A folder with files in and below it, of which two are rejected.
fleet() {
    mkdir -p in/a/deep in/b in/.hidden
    write in/1.json "$good"
    write in/a/2.json '{"lang":"de"}'
    write in/a/3.json "$bad"
    write in/a/deep/4.json '{"route":["x"]}'
    write in/b/5.json '{"lang":'
    write in/.hidden/6.json "$good"
    write in/.7.json "$good"
}

# The files below a folder.
files() { (cd "$1" && find . -type f | sort | tr '\n' ' '); }

@test "each file becomes one of its name, in a folder of its name" {
    local jobs file
    fleet
    for jobs in 1 3; do
        rm -rf out
        kcnvrt 1 to-new --output-dir out/new in --jobs "$jobs" --rejects rejects --problems problems --summary json
        equal "$output" ""
        equal "$(files out/new)" "./1.json ./a/2.json ./a/deep/4.json "
        for file in 1 a/2 a/deep/4; do
            "$KCNVRT" to-new "in/$file.json" 2> ../messages | cmp - "out/new/$file.json"
        done
        equal "$(cat rejects)" $'in/a/3.json\nin/b/5.json'
        equal "$(jq -c '[.file, .line, .column, .pointer, .severity]' problems | tr '\n' ' ')" \
'["in/a/3.json",1,75,"/ifaces/eth4/services/p/auth","error"] ["in/a/deep/4.json",1,11,"/route/0","warning"] '\
'["in/b/5.json",1,9,null,"error"] '
        equal "$(jq -c '[.records, .converted, .warned, .rejected, .bytes]' <<< "$stderr")" "[5,3,1,2,131]"
        # The members of a stream's problems, in their order.
        printf '{"lang":' > record
        "$KCNVRT" stream --to-new record --problems problem || [ $? -eq 1 ]
        equal "$(jq -c keys_unsorted problems | sort -u)" "$(jq -c keys_unsorted problem)"
        equal "$(jq -c '[.offset, .id]' problems | sort -u)" '[0,null]'
    done
}

@test "files and folders may be mixed, in the order in which they are named" {
    fleet
    write z.json '{"lang":'
    kcnvrt 1 to-new --output-dir out z.json in/b in/1.json --rejects rejects
    equal "$(files out)" "./1.json "
    equal "$(cat rejects)" $'z.json\nin/b/5.json'
    equal "${stderr_lines[0]%%:*} ${stderr_lines[1]%%:*}" "z.json in/b/5.json"
    kcnvrt 0 convert --compact --output-dir out in/1.json
    equal "$(cat out/1.json)" "$("$KCNVRT" convert --compact in/1.json)"
}

@test "--resume leaves alone what is newer and whole, and nothing else" {
    fleet
    "$KCNVRT" to-new --output-dir out in 2> ../messages || [ $? -eq 1 ]
    resumed() { # FILES LEFT
        kcnvrt 1 to-new --output-dir out in --resume --summary json
        equal "$(tail -n 1 <<< "$stderr" | jq -c '[.records, .left]')" "$1"
        "$KCNVRT" to-new in/1.json | cmp - out/1.json
    }
    resumed "[2,3]"
    touch -d "1 hour" in/1.json
    resumed "[3,2]"
    touch -d "2 hours ago" in/1.json
    resumed "[2,3]"
    touch -r in/1.json out/1.json
    resumed "[3,2]"
    echo more >> out/1.json
    touch -d "1 hour" out/1.json
    resumed "[3,2]"
    truncate -s -1 out/1.json
    touch -d "1 hour" out/1.json
    resumed "[3,2]"
    truncate -s -3 out/1.json
    resumed "[3,2]"
    : > out/1.json
    resumed "[3,2]"
    rm out/1.json
    resumed "[3,2]"
    write in/1.json '{"lang":"other"}'
    touch -d "1 hour" in/1.json
    resumed "[3,2]"
}

@test "--resume does not look for a result in a pipe" {
    fleet
    mkdir out
    mkfifo out/1.json
    touch -d "1 hour" out/1.json
    timeout 60 cat out/1.json > got 3>&- &
    run -1 timeout 60 "$KCNVRT" to-new --output-dir out in --resume
    wait
    "$KCNVRT" to-new in/1.json | cmp - got
}

@test "a budget of rejects ends the run, in order" {
    mkdir in
    for i in $(seq 10 30); do write "in/$i.json" '{"lang":'; done
    for jobs in 1 3; do
        kcnvrt 1 to-new --output-dir out in --jobs "$jobs" --max-rejects 4 --rejects rejects --problems problems
        equal "$(cat rejects | tr '\n' ' ')" "in/10.json in/11.json in/12.json in/13.json in/14.json "
        equal "$(wc -l < problems)" 5
        kcnvrt 0 to-new --output-dir out in --jobs "$jobs" --accept-rejects --problems problems
    done
}

@test "the folder of the results is not read, hidden ones neither" {
    fleet
    "$KCNVRT" to-new --output-dir in/out in 2> ../messages || [ $? -eq 1 ]
    "$KCNVRT" to-new --output-dir in/out in 2> ../messages || [ $? -eq 1 ]
    equal "$(files in/out)" "./1.json ./a/2.json ./a/deep/4.json "
    kcnvrt 0 to-new --output-dir out in/.7.json
    equal "$(files out)" "./.7.json "
}

@test "links to files are followed, links to folders are not" {
    fleet
    ln -s ../1.json in/b/link.json
    ln -s .. in/b/up
    rm in/b/5.json in/a/3.json
    kcnvrt 0 to-new --output-dir out in
    equal "$(files out)" "./1.json ./a/2.json ./a/deep/4.json ./b/link.json "
}

@test "a file that cannot be read is a reject, and the others go on" {
    fleet
    run --separate-stderr -1 env LD_PRELOAD="$SHIM_LIBRARY" SHIM="open@in/1.json=EACCES" \
        "$KCNVRT" to-new --output-dir out in/1.json in/a/2.json --rejects rejects
    equal "$stderr" "in/1.json: error: Permission denied [read]"
    equal "$(cat rejects)" in/1.json
    equal "$(files out)" "./2.json "
}

@test "a result that cannot be written ends the run, and leaves whole files" {
    fleet
    run --separate-stderr -3 env LD_PRELOAD="$SHIM_LIBRARY" SHIM="write@.kcnvrt-:2=ENOSPC" \
        "$KCNVRT" to-new --output-dir out --jobs 1 in/1.json in/a/2.json
    equal "$stderr" "out/2.json: error: No space left on device [write]"
    equal "$(files out)" "./1.json "
    write file ""
    kcnvrt 3 to-new --output-dir file/out in/1.json
    contains "$stderr" "error: Not a directory [write]"
}

@test "a signal leaves whole files, and no others" {
    fleet
    local call status file
    for call in $(seq 1 3 600); do
        rm -rf out
        status=0
        env LD_PRELOAD="$SHIM_LIBRARY" SHIM="any:$call=TERM" "$KCNVRT" to-new --output-dir out --jobs 2 in \
            2> ../messages || status=$?
        [ "$status" -eq 1 ] || equal "$call: $status" "$call: 143"
        [ -d out ] || continue
        equal "$(find out -name '.*')" ""
        for file in $(files out); do "$KCNVRT" to-new "in/$file" 2> ../messages | cmp - "out/$file"; done
        [ "$status" -ne 1 ] || break # no call is left
    done
    equal "$status" 1
}

@test "without a folder to write to, several files are told what to use" {
    fleet
    refused() { # MESSAGE ARGUMENT...
        kcnvrt 2 "${@:2}"
        contains "$stderr" "$1"
        [ ! -e out ]
    }
    refused "several files need a folder to write to: --output-dir FOLDER" to-new in/1.json in/a/2.json
    refused "--resume needs --output-dir" to-new --resume in/1.json
    refused "--jobs needs --output-dir" to-old --jobs 2 in/1.json
    refused "--output-dir excludes --output" to-new --output-dir out -o x in
    refused "--output-dir excludes --base" to-new --output-dir out --base in/1.json in
    refused "--output-dir needs files or folders" to-new --output-dir out
    refused "standard input has no name" to-new --output-dir out -
    refused "in/1.json would be replaced by what it becomes" to-new --output-dir in in
    mkdir other
    write other/1.json "$good"
    refused "in/1.json and other/1.json would both become out/1.json" to-new --output-dir out in other
    kcnvrt 3 to-new --output-dir out in missing
    equal "$stderr" "missing: error: No such file or directory [read]"
    [ ! -e out ]
}

@test "what else is written takes the place of no input and of no result" {
    fleet
    refused() { # MESSAGE ARGUMENT...
        kcnvrt 2 to-new in "${@:2}"
        contains "$stderr" "$1"
        equal "$(cat in/1.json)" "$good"
    }
    ln in/1.json same
    refused '"in/1.json" is read, so it cannot be written too' --output-dir out --rejects in/1.json
    refused '"same" is read, so it cannot be written too' --output-dir out --problems same
    refused '"./rejects" and "rejects" are the same file' --output-dir out --rejects rejects --problems ./rejects
    refused '"out/a/2.json" is to be written twice' --output-dir out --problems out/a/2.json
    [ ! -e out ]
    mkdir out
    refused '"./out//1.json" is to be written twice' --output-dir out --rejects ./out//1.json
    equal "$(files out)" ""
    write out/1.json old
    refused '"out/1.json" is to be written twice' --output-dir out --rejects out/1.json
    equal "$(cat out/1.json)" old
    rm out/1.json
    kcnvrt 1 to-new in --output-dir out --rejects out/rejects --problems in/.problems
    equal "$(files out)" "./1.json ./a/2.json ./a/deep/4.json ./rejects "
}

@test "a folder is as open as the one that it is made of" {
    fleet
    chmod 750 in/a
    chmod 640 in/a/2.json
    (umask 022 && "$KCNVRT" to-new --output-dir out in 2> ../messages) || [ $? -eq 1 ]
    equal "$(stat -c %a out/a out/a/2.json | tr '\n' ' ')" "750 640 "
}

@test "a folder that is made can be written, also where the one that it is made of cannot" {
    fleet
    chmod 550 in/a
    "$KCNVRT" to-new --output-dir out in 2> ../messages || [ $? -eq 1 ]
    equal "$(stat -c %a out/a)" 750
    chmod 750 in/a
}
