# What the linker is told of a list of names, and lists that make no sense.
bats_require_minimum_version 1.5.0

setup() {
    cd "$BATS_TEST_TMPDIR" || return 1
    mkdir abi
    cat > CMakeLists.txt << END
cmake_minimum_required(VERSION 3.25)
project(thing VERSION 1.1.4 LANGUAGES NONE)
include($(realpath "$BATS_TEST_DIRNAME/../../cmake/version_script.cmake"))
kcnvrt_version_script(thing thing.map)
END
}

# script STATUS LINE...: for a list of these.
script() {
    printf '%s\n' "${@:2}" > abi/libthing.symbols
    run "-$1" cmake -S . -B build
}

# refused WORDS LINE...: CMake breaks its words into lines.
refused() {
    script 1 "${@:2}"
    [[ $(tr -s ' \n' ' ' <<< "$output") = *"$1"* ]]
}

@test "each release has a node, which stands upon that of the one before" {
    script 0 '# Names.' '' '@thing_1 1.0.0' one two '@thing_1.1 1.1.0' three '@thing_1.2 1.1.4' four
    [ "$(tr -s ' \n' ' ' < build/thing.map)" = "thing_1 { global: one; two; }; thing_1.1 { global: three; } thing_1; \
thing_1.2 { global: four; local: *; } thing_1.1; " ]
}

@test "the first one may be that of a later release" {
    script 0 '@thing_1.1 1.1.0' one
    [ "$(tr -s ' \n' ' ' < build/thing.map)" = "thing_1.1 { global: one; local: *; }; " ]
}

@test "another major version begins with one node" {
    sed -i 's/1\.1\.4/2.0.0/' CMakeLists.txt
    refused 'libthing.so.2 cannot have the node "@thing_1 1.0.0": in abi/libthing.symbols all names stand below' \
        '@thing_1 1.0.0' one '@thing_2 2.0.0' two
    script 0 '@thing_2 2.0.0' one two
}

@test "no node is of a version to come" {
    refused 'Version 1.1.4 cannot have the node "@thing_1.2 1.2.0"' '@thing_1 1.0.0' one '@thing_1.2 1.2.0' two
}

@test "a list has nodes and names, and each name a node" {
    refused '"one" is neither a node nor a name below one.' one '@thing_1 1.0.0' two
    refused '"@thing_1" is neither a node nor a name below one.' '@thing_1' one
    refused '"one two" is neither a node nor a name below one.' '@thing_1 1.0.0' 'one two'
}
