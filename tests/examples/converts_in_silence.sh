#!/bin/sh
# Every example configuration converts without a message, to the other layout and back again.
# Usage: converts_in_silence.sh KCNVRT EXAMPLE_FOLDER
set -u
kcnvrt=$1
examples=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# convert DIRECTION SOURCE RESULT: nothing but the result may come of it.
convert() {
    flags=
    case $2 in *dsl-gateway*) flags=--dsl-vlan ;; esac
    if ! "$kcnvrt" "$1" $flags -o "$3" "$2" >"$work/output" 2>&1 || [ -s "$work/output" ]; then
        echo "$1 $flags $2:"
        cat "$work/output"
        failed=1
    fi
}

for old in "$examples"/*.old.json; do
    name=$(basename "$old" .old.json)
    new=$examples/$name.new.json
    convert to-new "$old" "$work/$name.new.json"
    convert to-old "$work/$name.new.json" "$work/$name.old.json"
    convert to-old "$new" "$work/$name.old.json"
    convert to-new "$work/$name.old.json" "$work/$name.new.json"
done
exit $failed
