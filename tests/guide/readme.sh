#!/bin/bash
# Does what README.md and docs/c.md show, line by line, in a copy of the tree: readme.sh TREE FOLDER. It is installed as
# README says, but into a folder: sudo and ldconfig are stand-ins. The packages are tested where they can be installed
# (scripts/package.sh --test), and `./test` is not run: this is a part of it.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
readme=README.md
root=$copy/build/readme # of a system in which it is installed
home=$root/home # where a user tries it
elsewhere=$root/without-sudo # where a user who may not write to the system would have written to it

# stand_in NAME LINE...: a script in place of the system's own program.
stand_in() {
    printf '%s\n' '#!/bin/sh' "${@:2}" > "$root/stand-ins/$1"
    chmod +x "$root/stand-ins/$1"
}

restore_all
rm -rf "$root"
mkdir -p "$root/stand-ins" "$home"
stand_in sudo "DESTDIR='$root/system' exec \"\$@\""
stand_in ldconfig "touch '$root/known-to-the-loader'"
export DESTDIR=$elsewhere PATH=$root/stand-ins:$PATH

# files_of FOLDER: the files that are in it, and the folders that are ours.
files_of() { [ ! -e "$1" ] || find "$1" ! -type d -o -name '*cnvrt*'; }

try_it() {
    local command
    commands_of $readme "Try it"
    for command in "$blocks/Try it"/*.command; do
        [ "$(< "$command")" = ./test ] || run_shown "$command"
    done
}

install_it() {
    local command
    commands_of $readme "Install it"
    for command in "$blocks/Install it"/*.command; do
        case $(< "$command") in
            scripts/package.sh | "sudo apt install "*) ;;
            *) run_shown "$command" ;;
        esac
    done
    prefix=$root/system/usr/local
    [ -x "$prefix/bin/kcnvrt" ] || fail "kcnvrt is not below /usr/local."
    [ -e "$root/known-to-the-loader" ] || fail "The loader does not know the libraries."
    LD_LIBRARY_PATH=$(dirname "$(find "$prefix" -name libk_cnvrt.so)")
    PKG_CONFIG_PATH=$LD_LIBRARY_PATH/pkgconfig
    export LD_LIBRARY_PATH PKG_CONFIG_PATH PATH=$prefix/bin:$PATH
}

check_pages() {
    local page
    for page in man/man1/kcnvrt.1 man/man3/k_cnvrt.3 bash-completion/completions/kcnvrt \
        zsh/vendor-completions/_kcnvrt fish/vendor_completions.d/kcnvrt.fish; do
        [ -s "$prefix/share/$page" ] || fail "share/$page is not installed."
    done
}

same() { cmp "$1" "$2" || fail "$3 does not do what the tool does."; }

link_from_c() {
    code_of $readme "Link it" c > "$home/main.c"
    commands_of $readme "Link it"
    shown_in=$home run_shown "$blocks/Link it/01.command"
    same "$home/expected" <(jq . --indent 4 "$home/gateway.new.json") "The program in C of $readme"
}

link_with_cmake() {
    { printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(yours C)' 'add_executable(your_program main.c)'
        code_of $readme "Link it" cmake; } > "$home/CMakeLists.txt"
    rm -f "$home/gateway.new.json"
    said=$(cd "$home" && cmake -B cmake "-DCMAKE_PREFIX_PATH=$prefix" 2>&1 && cmake --build cmake 2>&1 &&
        cmake/your_program 2>&1) || fail "$said" "The program with CMake does not run."
    same "$home/expected" <(jq . --indent 4 "$home/gateway.new.json") "The program with CMake"
}

link_from_python() {
    local packages
    packages=$(dirname "$(find "$prefix" -name kcnvrt -path '*python*' -type d)")
    code_of $readme "Link it" python > "$home/main.py"
    (cd "$home" && PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=$packages /usr/bin/python3 main.py | jq . --indent 4) |
        cmp - "$home/expected" || fail "The program in Python does not do what the tool does."
}

run_program() { # NAME SECTION
    local command
    code_of docs/c.md "$2" c > "$home/$1.c"
    commands_of docs/c.md "$2"
    for command in "$blocks/$2"/*.command; do
        shown_in=$home run_shown "$command"
    done
}

# What docs/c.md shows: a program for configurations as trees, the lines for CMake, and a program for texts.
follow_the_page_of_c() {
    cp -r "$copy/examples" "$home"
    run_program main "Trees in, trees out"
    "$home/a.out" "$home/gateway.old.json" | jq . --indent 4 | cmp - "$home/expected" ||
        fail "The program of docs/c.md does not do what the tool does."
    run_program text "Texts in, texts out"
    [ "$(code_of docs/c.md "In CMake" cmake)" = "$(code_of $readme "Link it" cmake)" ] ||
        fail "docs/c.md says something else about CMake than $readme."
}

convert_a_fleet() {
    local command config shown_in=$home
    mkdir -p "$home/configs"
    cp "$copy"/examples/*.old.json "$home/configs"
    for config in "$home"/configs/*.json "$home"/configs/*.json; do
        jq --compact-output '{config: .}' "$copy/examples/home-gateway.old.json"
    done > "$home/fleet.ndjson"
    commands_of $readme "Convert a fleet"
    [[ $(< "$blocks/Convert a fleet/01.command") = "kcnvrt convert "*" --output-dir "* ]] ||
        fail "\"Convert a fleet\" begins with something else than a folder of files."
    for command in "$blocks/Convert a fleet"/*.command; do
        run_shown "$command"
    done
    for config in "$home"/configs/*.json; do
        kcnvrt convert "$config" | cmp - "$home/converted/${config##*/}" || fail "$config was not converted."
    done
    [ "$(wc -l < "$home/new.ndjson")" = "$(wc -l < "$home/fleet.ndjson")" ] || fail "The stream has lost a record."
    sort -u "$home/new.ndjson" | jq .config --indent 4 | cmp - "$home/expected" || fail "The stream was not converted."
}

take_it_away() {
    sed -n 's/^.\(sudo .* uninstall\). takes it away again.*/\1/p' "$source_tree/$readme" > "$blocks/uninstall.command"
    [ -s "$blocks/uninstall.command" ] || fail "$readme does not say how to take it away."
    run_shown "$blocks/uninstall.command"
    [ -z "$(files_of "$root/system")" ] || fail "$(files_of "$root/system")" "This is left when it is taken away."
}

try_it
install_it
check_pages
cp "$copy/examples/home-gateway.old.json" "$home/gateway.old.json"
kcnvrt to-new "$home/gateway.old.json" | jq . --indent 4 > "$home/expected"
link_from_c
link_with_cmake
link_from_python
follow_the_page_of_c
convert_a_fleet
take_it_away
[ -z "$(files_of "$elsewhere")" ] || fail "$(files_of "$elsewhere")" "This was installed without sudo."
