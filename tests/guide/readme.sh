#!/bin/bash
# Does what README.md shows, line by line, in a copy of the tree: readme.sh TREE FOLDER. What is compiled from C is
# compiled with what it installs for a device. `./test` is not run: this is a part of it.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
installed=$copy/rootfs
readme=$source_tree/README.md

# commands SECTION: the commands of the section, as files in $blocks/SECTION.
commands() {
    mkdir -p "$blocks/$1"
    awk -v heading="$1" -v into="$blocks/$1" -f "$source_tree/tests/guide/commands.awk" "$readme"
    ls "$blocks/$1"/*.command > /dev/null 2>&1 || fail "README.md shows no commands in \"$1\"."
}

run_section() {
    local command
    commands "$1"
    for command in "$blocks/$1"/*.command; do
        [ "$(< "$command")" = ./test ] || run_shown "$command"
    done
}

# check_usage COMMAND_FILE: what a usage line shows, which is no command yet, is what the tool's help knows.
check_usage() {
    local name help word
    read -r _ name _ < "$1"
    help=$(kcnvrt "$name" --help) || fail "The tool has no command $name."
    { grep -o -e '--[a-z-]*' "$1" || true; } | while read -r word; do
        [[ $help = *"$word"* ]] || fail "kcnvrt $name has no $word."
    done
}

# check_message MESSAGE_FILE: what the tool prints of such a field that does not fit. Line and column may differ.
check_message() {
    local message path printed
    message=$(< "$1")
    path=${message#*: error: /}
    path=${path%%: *}
    jq --arg path "$path" 'setpath($path / "/"; "x")' \
        "$source_tree/examples/home-gateway.old.json" > "$copy/gateway.old.json"
    printed=$(cd "$copy" && kcnvrt to-new gateway.old.json 2>&1 > /dev/null) || true
    [ "$(without_position "$printed")" = "$(without_position "$message")" ] ||
        fail "Of a bad $path the tool says: $printed"
}

# check_loss MESSAGE_FILE: what the tool prints of the example, which loses that.
check_loss() {
    local message printed
    message=$(without_position "$(< "$1")")
    cp "$source_tree/examples/home-gateway.old.json" "$copy/gateway.old.json"
    printed=$(cd "$copy" && kcnvrt to-new --losses gateway.old.json 2>&1 > /dev/null)
    [[ $(without_position "$printed") = *"$message"* ]] || fail "The tool does not say: $message"
}

without_position() { sed -E 's/:[0-9]+:[0-9]+:/:/' <<< "$1"; }

restore_all

# The first lines of the page.
run_section ""
export PATH=$copy/build/release/bin:$PATH

# toolchain NAME: a toolchain file for a device, which is the host by another name.
toolchain() {
    printf 'set(CMAKE_SYSTEM_NAME Linux)\nset(CMAKE_SYSTEM_PROCESSOR %s)\n' "$1" > "$copy/your-toolchain.cmake"
}

# system_of FOLDER: the name of the machine that it is configured for.
system_of() { sed -n 's/^set(CMAKE_SYSTEM_PROCESSOR "\(.*\)")$/\1/p' "$copy/build/$1"/CMakeFiles/*/CMakeSystem.cmake; }

# "For a device" comes before "From C", which needs an installed copy. It builds for the device that is asked for,
# whatever was built before, and leaves what ./run builds to this machine.
for device in another-device the-device; do
    toolchain "$device"
    rm -rf "$installed"
    run_section "For a device"
    [ "$(system_of device)" = "$device" ] || fail "build/device is for $(system_of device), not for $device."
done
[ "$(system_of release)" = "$(uname -m)" ] || fail "build/release is for $(system_of release)."
(cd "$copy" && ./run --version) || fail "./run does not run behind a build for a device."
! said=$(cmake --install "$copy/build/device" 2>&1) || fail "A device's libraries were installed on this machine."
[[ $said = *DESTDIR* ]] || fail "$said"

pkgconfig=$(dirname "$(find "$installed" -name k_cnvrt.pc)")
sed "s|^prefix=.*|prefix=$installed/usr|" -i "$pkgconfig"/*.pc
export PKG_CONFIG_PATH=$pkgconfig LD_LIBRARY_PATH=${pkgconfig%/pkgconfig}
awk -v heading="From C" -v into="$blocks" -f "$source_tree/tests/guide/blocks.awk" "$readme"
cp "$blocks"/0-*.c "$copy/main.c"
run_section "From C"

mkdir -p "$copy/configs"
cp "$copy"/examples/*.old.json "$copy/configs"
commands "The tool"
for command in "$blocks/The tool"/*.command; do
    case $(< "$command") in
        "kcnvrt convert configs"* | "kcnvrt explain examples/"*) run_shown "$command" ;;
        kcnvrt*) check_usage "$command" ;;
        gateway.old.json:*": warning: "*) check_loss "$command" ;;
        gateway.old.json:*) check_message "$command" ;;
        *) fail "Nobody runs this: $(< "$command")" ;;
    esac
done
for config in "$copy"/configs/*.json; do
    kcnvrt convert "$config" | cmp - "$copy/converted/${config##*/}" || fail "$config was not converted."
done
