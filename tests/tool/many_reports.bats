# What is told of many files, each in a file of its own.
load setup

# Without a word, with a loss, rejected, no JSON, and a hidden one.
fleet() {
    mkdir -p in/a/deep
    write in/1.json '{"ifaces":{},"route":[],"passwd":[]}'
    write in/a/2.json '{"ifaces":{},"route":["x"],"passwd":[]}'
    write in/a/deep/3.json '{"ifaces":{"eth4":{"type":"ethernet","mute":1,"services":{"p":{"type":"ppp","auth":"x"}}}}}'
    write in/b.json '{"lang":'
    write in/.4.json '{}'
}

# The files below a folder.
files() { (cd "$1" && find . -type f | sort | tr '\n' ' '); }

@test "check and losses write what they tell of each file under its name" {
    local command options json file
    fleet
    for command in check losses; do
        for options in --jobs=1 --jobs=3 --json; do
            json=
            [ "$options" != --json ] || json=--json
            rm -rf out
            kcnvrt 1 "$command" --output-dir out/new in "$options" --rejects rejects --problems problems
            equal "$output$stderr" ""
            equal "$(files out/new)" "./1.json ./a/2.json ./a/deep/3.json "
            for file in 1 a/2 a/deep/3; do
                "$KCNVRT" "$command" "in/$file.json" ${json:+"$json"} 2> ../messages > wanted || [ $? -eq 1 ]
                cmp wanted "out/new/$file.json"
            done
            equal "$(cat rejects)" $'in/b.json\nin/a/deep/3.json'
        done
    done
    equal "$(cat out/new/1.json)" ""
    [ -s out/new/a/2.json ]
    contains "$(cat out/new/a/deep/3.json)" '"/ifaces/eth4/mute", "kind": "dropped"'
}

@test "problems have what no report has" {
    fleet
    kcnvrt 1 check --output-dir out in --problems problems
    equal "$(jq -c '[.file, .function]' problems | tr '\n' ' ')" '["in/b.json","parse"] '
    kcnvrt 1 losses --output-dir out in --problems problems
    equal "$(jq -r .file problems | uniq | tr '\n' ' ')" "in/b.json in/a/2.json in/a/deep/3.json "
}

@test "the status of check says whether there is anything to say, that of losses whether anything is rejected" {
    fleet
    kcnvrt 0 check --output-dir out in/1.json
    kcnvrt 1 check --output-dir out in/1.json in/a/2.json
    kcnvrt 0 check --output-dir out in --accept-rejects --problems problems
    kcnvrt 0 losses --output-dir out in/1.json in/a/2.json --problems problems
    kcnvrt 0 losses --exit-code --output-dir out in/1.json --problems problems
    kcnvrt 1 losses --exit-code --output-dir out in/a/2.json --problems problems
    kcnvrt 1 losses --output-dir out in/a --problems problems
    kcnvrt 0 losses --output-dir out in --accept-rejects --problems problems
}

@test "the summary counts places, with a file for example" {
    local command
    fleet
    for command in check losses; do
        kcnvrt 1 "$command" --output-dir out in --problems problems --summary json
        equal "$(jq -c '[.records, .converted, .warned, .lossy, .rejected]' <<< "$stderr")" "[4,2,1,1,2]"
        equal "$(jq -c '.places[] | select(.kind == "error") | [.place, .devices, .example]' <<< "$stderr" | tr '\n' ' ')" \
            '["",1,"in/b.json"] ["/ifaces/*/services/*/auth",1,"in/a/deep/3.json"] '
        contains "$stderr" '{"place": "/ifaces/*/mute", "kind": "dropped", "devices": 1, "example": "in/a/deep/3.json"}'
        kcnvrt 1 "$command" --output-dir out in --problems problems --summary text
        contains "$stderr" "4 files: 2 convertible (1 with warnings, 1 with losses), 2 rejected; "
    done
    kcnvrt 1 convert --losses --output-dir out in --problems problems --summary json
    equal "$(jq -c '[.lossy, (.places[] | select(.kind == "warning") | .place)]' <<< "$stderr")" '[1,"/route/*"]'
    kcnvrt 1 convert --losses --output-dir out in --problems problems
    equal "$stderr" ""
}

@test "--resume leaves reports alone that are newer and whole, and what they say counts" {
    fleet
    rm in/b.json in/a/deep/3.json
    resumed() { # STATUS FILES LEFT
        kcnvrt "$1" check --output-dir out in --resume --summary json
        equal "$(tail -n 1 <<< "$stderr" | jq -c '[.records, .left]')" "$2"
    }
    resumed 1 "[2,null]"
    resumed 1 "[0,2]"
    truncate -s -1 out/a/2.json
    touch -d "1 hour" out/a/2.json
    resumed 1 "[1,1]"
    touch -d "2 hours" in/1.json
    resumed 1 "[1,1]"
    rm in/a/2.json
    touch -d "1 hour ago" in/1.json
    resumed 0 "[0,1]"
}

@test "a budget of rejects ends the run, in order" {
    local i jobs
    mkdir in
    for i in $(seq 10 30); do write "in/$i.json" '{"lang":'; done
    for jobs in 1 3; do
        kcnvrt 1 check --output-dir out in --jobs "$jobs" --max-rejects 4 --rejects rejects --problems problems
        equal "$(tr '\n' ' ' < rejects)" "in/10.json in/11.json in/12.json in/13.json in/14.json "
        contains "$stderr" "more files were rejected than --max-rejects allows"
    done
}

@test "reports have no colours, and are no more open than what they tell of" {
    fleet
    chmod 600 in/a/2.json
    kcnvrt 1 check --color always --output-dir out in/a/2.json
    equal "$(grep -c $'\x1b' out/2.json)" 0
    equal "$(stat -c %a out/2.json)" 600
    equal "$("$KCNVRT" check in/a/2.json)" "$(cat out/2.json)"
}

@test "several files need a folder to write to" {
    fleet
    kcnvrt 2 check in/1.json in/a/2.json
    contains "$stderr" "several files need a folder to write to: --output-dir FOLDER"
    kcnvrt 2 losses in/1.json in/a/2.json
    kcnvrt 2 check --output-dir out -o x in
    kcnvrt 2 check --resume in/1.json
    kcnvrt 2 check --output-dir in in
    [ ! -e out ]
}
