# A device's stored configuration, whatever happens while it is converted: config.json is the old one or the new one,
# whole, and the next boot ends with what it would have ended with.
load ../tool/setup

# The list is longer than what the library sorts without asking for memory: it would be left out where none is got.
configuration='{
    "lang": "en",
    "wan_pvid": {
        "ppp0": 10, "ppp1": 11, "ppp2": 12, "ppp3": 13, "ppp4": 14, "ppp5": 15, "ppp6": 16, "ppp7": 17,
        "ppp8": 18, "ppp9": 19, "ppp10": 20, "ppp11": 21, "ppp12": 22, "ppp13": 23, "ppp14": 24, "ppp15": 25,
        "ppp16": 26, "ppp17": 27, "ppp18": 28, "ppp19": 29, "ppp20": 30, "ppp21": 31, "ppp22": 32, "ppp23": 33,
        "ppp24": 34, "ppp25": 35, "ppp26": 36, "ppp27": 37, "ppp28": 38, "ppp29": 39, "ppp30": 40, "ppp31": 41,
        "ppp32": 42, "ppp33": 43, "ppp34": 44, "ppp35": 45, "ppp36": 46, "ppp37": 47, "ppp38": 48, "ppp39": 49
    },
    "ifaces": {"eth4": {"type": "ethernet", "services": {
        "ppp0": {"type": "ppp", "connection_status": "", "auth": "0", "password": "Maple-7-kettle"}}}},
    "users": [{"login": "admin", "passwd": "Maple-7-kettle"}]
}'

# boot STATUS COMMAND [SHIM_RULES]: $output holds what it says.
boot() {
    run "-$1" env ${3:+LD_PRELOAD="$SHIM_LIBRARY" SHIM="$3"} "$CONFIG_AT_BOOT" "$2" stored
}

# The contents that a stored file may have.
declare -gA contents=([-]="")
prepare() {
    write old "$configuration"
    contents[old]=$configuration
    contents[new]=$("$KCNVRT" to-new old)
    contents[bad]=${1:-}
}

# store CONTENT...: "stored" has the files CURRENT OLD REJECTED; "-" is none. It is done a thousand
# times, and so starts few processes, as all that follows.
store() {
    local file left=("$1" "$2" "$3")
    mkdir -p stored
    rm -f stored/*
    for file in config.json config.old.json config.rejected.json; do
        [ "${left[0]}" = - ] || write "stored/$file" "${contents[${left[0]}]}"
        left=("${left[@]:1}")
    done
}

# is FILE CONTENT...: the stored file is one of these; "-" is none.
is() {
    local content="" content_name there=no
    if [ -e "stored/$1" ]; then
        there=yes
        IFS= read -r -d '' content < "stored/$1" || true
    fi
    for content_name in "${@:2}"; do
        case $there$content_name in
            no-) return 0 ;;
            yes*) [ "$content" != "${contents[$content_name]}" ] || return 0 ;;
        esac
    done
    echo "stored/$1 is none of ${*:2}: $content"
    return 1
}

# files NAME...: what the folder has in it.
files() {
    local there=(stored/*)
    equal "${there[*]#stored/}" "$*"
}

converted() {
    is config.json new
    is config.old.json old
    is config.rejected.json -
    files config.json config.old.json
}

gone_back() {
    is config.json old
    is config.old.json old
    is config.rejected.json new
    files config.json config.old.json config.rejected.json
}

@test "a configuration is converted once, and the old one is kept" {
    prepare
    before_convert
    chmod 640 stored/config.json
    boot 0 convert
    equal "$output" ""
    converted
    equal "$(stat -c %a stored/*)" "$(printf '640\n640')"
    LD_PRELOAD=$SHIM_LIBRARY SHIM_RECORD=calls "$CONFIG_AT_BOOT" convert stored
    run -1 grep -E '^(write|rename)' calls
    converted
}

@test "a configuration that cannot be converted stays, and says why" {
    prepare '{"wan_pvid": {"ppp0": 10}, "ifaces": {"eth4": {"type": "ethernet", "mac": 5}}}'
    store bad - -
    boot 1 convert
    contains "$output" '/ifaces/eth4/mac'
    is config.json bad
    is config.old.json -
}

@test "what is no JSON stays, and is not shown" {
    prepare '{"passwd": "secret",,'
    store bad - -
    boot 1 convert
    contains "$output" 'config.json:1:21: this is no JSON'
    is config.json bad
    equal "${output//secret/}" "$output"
}

@test "nothing stored is nothing to do" {
    mkdir stored
    boot 0 convert
    boot 0 back
    equal "$(ls -A stored)" ""
}

@test "it goes back to the old one, keeps the rejected one, and converts no more" {
    prepare
    before_back
    boot 0 back
    gone_back
    boot 0 convert
    gone_back
    boot 0 back
    gone_back
    rm stored/config.rejected.json
    boot 0 convert
    converted
}

@test "there is no way back without an old one" {
    prepare
    store new - -
    boot 1 back
    contains "$output" 'there is no config.old.json'
    is config.json new
}

@test "wrong usage and a folder that there is not" {
    run -2 "$CONFIG_AT_BOOT"
    run -2 "$CONFIG_AT_BOOT" forwards stored
    boot 3 convert
    contains "$output" 'stored: No such file'
}

# Each of these starts with its files and ends with its check.
before_convert() { store old - -; }
before_back() { store new old -; }
is_before_convert() { is config.json old && is config.old.json - && files config.json; }
is_before_back() { is config.json new && is config.old.json old && files config.json config.old.json; }
after_convert() { converted; }
after_back() { gone_back; }

# survives COMMAND RULES: the run is stopped or hindered; each file is then whole, and the next boot finishes. Where
# nothing has changed, that is what other tests show.
survives() {
    "is_before_$1" > said || "before_$1"
    LD_PRELOAD=$SHIM_LIBRARY SHIM=$2 "$CONFIG_AT_BOOT" "$1" stored > said 2>&1 || true
    "is_before_$1" > unchanged ||
        if ! { is config.json old new && is config.old.json old - && is config.rejected.json new - &&
            "$CONFIG_AT_BOOT" "$1" stored && "after_$1"; }; then
            echo "$1 with $2: $(< said)"
            return 1
        fi
}

# bats looks at every line that runs, which takes longer than the line.
hurry() { trap - DEBUG; }

# count COMMAND KIND...: how many calls of these kinds it makes.
count() {
    "before_$1"
    rm -f calls
    LD_PRELOAD=$SHIM_LIBRARY SHIM_RECORD=calls "$CONFIG_AT_BOOT" "$1" stored
    grep -cE "^($(IFS='|'; echo "${*:2}")) " calls
}

@test "the power may be cut at every moment, and every call may fail" {
    hurry
    prepare
    local command calls n action
    for command in convert back; do
        calls=$(count "$command" '[a-ln-z][a-z]*' 'memfd')
        calls=$((calls - $(count "$command" alloc)))
        [ "$calls" -gt 20 ]
        for n in $(seq "$calls"); do
            for action in KILL power-cut EIO; do survives "$command" "any:$n=$action"; done
        done
    done
}

@test "writes and reads may be cut short" {
    prepare
    survives convert "write@passing:1=short write:2=EINTR read:1=short read:2=EINTR"
    survives back "write@passing=short"
}

# What the shim takes for safe, a rename, is so only on the folder's word: what the next one builds upon comes after it.
@test "a file is safe before it gets its name, and the name before anything else is written" {
    prepare
    local command order
    for command in convert back; do
        "before_$command"
        rm -f calls
        LD_PRELOAD=$SHIM_LIBRARY SHIM_RECORD=calls "$CONFIG_AT_BOOT" "$command" stored
        order=$(sed -nE 's/^(write|chown|chmod|fsync) .*\.passing .*/\1/p; s/^fsync .*\/stored = 0/folder/p
            s/^(rename) .*/\1/p' calls | xargs)
        equal "$order" 'write chown chmod fsync rename folder write chown chmod fsync rename folder'
    done
}

@test "what was begun is removed where it cannot be finished" {
    prepare
    local rule
    for rule in write=ENOSPC fsync=EIO chmod=EPERM rename=EIO; do
        before_convert
        boot 3 convert "$rule"
        is_before_convert
    done
    before_convert
    boot 3 convert rename:2=EROFS
    is config.json old
    is config.old.json old
    files config.json config.old.json
}

# state PROCESS: T where it is stopped, L where it waits for a lock.
state() {
    if grep -qE -- "-> FLOCK .* $1 " /proc/locks; then echo L; else sed 's/.*) //; s/ .*//' "/proc/$1/stat"; fi
}

# The first is stopped before it renames, the second before it writes: to a file that the first takes for its own.
@test "two at a time do it one after the other" {
    prepare
    before_convert
    LD_PRELOAD=$SHIM_LIBRARY SHIM=rename:1=STOP "$CONFIG_AT_BOOT" convert stored 3>&- &
    local first=$! second
    until [[ $(state $first) = [TZ] ]]; do sleep 0.02; done
    LD_PRELOAD=$SHIM_LIBRARY SHIM=write:1=STOP "$CONFIG_AT_BOOT" convert stored 3>&- &
    second=$!
    until [[ $(state $second) = [TLZ] ]]; do sleep 0.02; done
    kill -CONT $first
    wait $first
    # Without a lock this ends what would write on.
    [ "$(state $second 2> /dev/null)" != T ] || kill -KILL $second
    wait $second
    converted
}

@test "every allocation may fail, once or from then on" {
    hurry
    prepare
    local command allocations n
    for command in convert back; do
        allocations=$(count "$command" alloc)
        [ "$allocations" -gt 50 ]
        for n in $(seq "$allocations"); do
            survives "$command" "alloc:$n=ENOMEM"
            survives "$command" "alloc:$n+=ENOMEM"
        done
    done
}
