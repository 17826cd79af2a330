# diff and apply.
load setup

@test "diff prints a JSON Patch, or a Merge Patch, and apply undoes it" {
    write base.json '{"a": 1, "b": {"c": [1, 2]}}'
    write other.json '{"a": 2, "b": {"c": [1, 2]}}'
    kcnvrt 0 diff base.json other.json --compact
    equal "$output" '[{"op":"replace","path":"/a","value":2}]'
    write patch.json "$output"
    kcnvrt 0 apply base.json patch.json --compact
    equal "$output" '{"a":2,"b":{"c":[1,2]}}'
    kcnvrt 0 diff base.json other.json --merge-patch --compact
    equal "$output" '{"a":2}'
    kcnvrt 0 apply --compact base.json - <<< "$output"
    equal "$output" '{"a":2,"b":{"c":[1,2]}}'
}

@test "equal documents differ by nothing" {
    write base.json '{"a": 1}'
    kcnvrt 0 diff base.json base.json
    equal "$output" "[]"
    kcnvrt 0 diff --merge-patch base.json - < base.json
    equal "$output" "{}"
}

@test "any JSON value can be compared and changed" {
    write one.json '"text"'
    write two.json 'null'
    kcnvrt 0 diff one.json two.json --compact
    equal "$output" '[{"op":"replace","path":"","value":null}]'
    write patch.json "$output"
    kcnvrt 0 apply one.json patch.json
    equal "$output" "null"
}

@test "a NUL inside a text is carried" {
    write one.json '{"a": "x\u0000y"}'
    write two.json '{"a": "x\u0000z"}'
    kcnvrt 0 diff one.json two.json --compact
    equal "$output" '[{"op":"replace","path":"/a","value":"x\u0000z"}]'
}

@test "a difference that does not fit is rejected, under its own name" {
    write base.json '{"a": 1}'
    write patch.json '[{"op": "remove", "path": "/b"}]'
    kcnvrt 1 apply base.json patch.json
    equal "$output" ""
    equal "$stderr" 'patch.json:1:2: error: /0: Operation 1 at "/b": the path leads nowhere [k_conf_apply]'
}

@test "a value that is no difference is rejected" {
    write base.json '{"a": 1}'
    write patch.json '1'
    kcnvrt 1 apply base.json patch.json
    contains "$stderr" "patch.json:1:1: error: "
    contains "$stderr" " [k_conf_apply]"
}

@test "each file that cannot be read is named" {
    write base.json '{"a": 1}'
    kcnvrt 3 diff missing.json base.json
    equal "$stderr" "missing.json: error: No such file or directory [read]"
    kcnvrt 3 apply base.json missing.json
    equal "$stderr" "missing.json: error: No such file or directory [read]"
}

@test "--exit-code says by the exit status whether there is a difference" {
    write one.json ' {"a": 1}'
    write two.json '{"a": 2}'
    kcnvrt 0 diff one.json one.json --exit-code
    equal "$output" "[]"
    kcnvrt 1 diff one.json two.json --exit-code --compact
    equal "$output" '[{"op":"replace","path":"/a","value":2}]'
    equal "$stderr" ""
    kcnvrt 1 diff one.json two.json --exit-code -o change.json
    equal "$("$KCNVRT" apply one.json change.json --compact)" '{"a":2}'
    kcnvrt 0 diff one.json two.json --compact
    kcnvrt 0 diff --merge-patch one.json one.json --exit-code
    equal "$output" "{}"
    kcnvrt 1 diff --merge-patch one.json two.json --exit-code
    kcnvrt 3 diff missing.json two.json --exit-code
}

@test "--exit-code sees an object in place of another value, which an empty merge patch makes" {
    write array.json ' [1]'
    write object.json '{}'
    kcnvrt 1 diff --merge-patch array.json object.json --exit-code
    equal "$output" "{}"
}
