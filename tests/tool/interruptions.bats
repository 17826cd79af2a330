# Signals and power cuts: whenever they come there is the old file or the new one, whole.
load setup

# At the moment of each call the file is what it was (nothing, where it was missing), or new and whole.
# at_every_call ACTION STATUS BEFORE: runs the conversion over and over, with ACTION at another of its calls each time.
# The runs end with STATUS. The states that were met are left in $met.
at_every_call() {
    local action=$1 expected=$2 before=$3 calls call status state
    met=
    restore() { if [ "$before" = missing ]; then rm -f new.json; else write new.json "$before"; fi; }
    restore
    recorded ../calls "${conversion[@]}" old.json -o new.json
    equal "$(cat new.json)" "$result"
    calls=$(wc -l < ../calls)
    for call in $(seq "$calls"); do
        restore
        status=0
        env LD_PRELOAD="$SHIM_LIBRARY" SHIM="any:$call=$action" \
            "$KCNVRT" "${conversion[@]}" old.json -o new.json || status=$?
        state=$(cat new.json 2> ../messages || echo missing)
        case $state in
            "$before") met+=" before" ;;
            "$result") met+=" after" ;;
            *) equal "$(sed -n "${call}p" ../calls) leaves $state" "$before or $result" ;;
        esac
        equal "$(sed -n "${call}p" ../calls): $status" "$(sed -n "${call}p" ../calls): $expected"
        "${@:4}"
    done
}

@test "a signal that ends the run leaves the old file or the new one, and nothing else" {
    document
    ended_by() { # SIGNAL BEFORE
        at_every_call "$1" $((128 + $(kill -l "$1"))) "$2" no_passing_file
        contains "$met" " before before"
        contains "$met" " after"
    }
    for signal in HUP INT QUIT TERM ALRM XCPU; do ended_by "$signal" old; done
    ended_by TERM missing
}
no_passing_file() { equal "$(ls -d .kcnvrt-* 2> ../messages)" ""; }

@test "a pipe that breaks ends no run that writes a file" {
    document
    at_every_call PIPE 0 old no_passing_file
    equal "${met// after/}" ""
}

@test "a signal that the run was started to ignore does not end it" {
    document
    trap '' HUP
    shimmed 0 any:12=HUP "${conversion[@]}" old.json -o new.json
    equal "$(cat new.json)" "$result"
    trap - HUP
}

@test "a power cut leaves the old file or the new one, whole" {
    document
    for before in old missing; do
        at_every_call power-cut 137 "$before" rm -f .kcnvrt-*
        contains "$met" " before before"
        contains "$met" " after"
    done
}
