#!/bin/bash
# What can be told without running anything: format, width of lines, shell scripts, links between documents, and what
# clang-tidy takes for mistakes. Nothing is left out where a tool is missing: it is installed.
#   ./test --lint             all of it
#   ./test --lint CHECK...    some: format width shell links tidy
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

widest=120
failed=0

complain() {
    say "$@"
    failed=1
}

# files PATTERN...: those of the repository that match, new ones too.
files() { git ls-files --cached --others --exclude-standard -- "$@" | while read -r file; do
    [ ! -f "$file" ] || echo "$file"
done; }

# Files without a suffix whose first line names a shell.
commands() {
    files | grep -E '(^|/)[^./]+$' | while read -r file; do
        ! head -n 1 "$file" | grep -qE '^#!.*sh$' || echo "$file"
    done
}

scripts() {
    files '*.sh'
    commands
}

sources() { files '*.c' '*.cpp' '*.h'; }

check_format() {
    sources | xargs clang-format-14 --dry-run -Werror || complain "clang-format-14 -i puts these files in order"
}

check_width() {
    { sources; scripts; files '*.bash' '*.bats' '*.pl' '*.awk' '*.py' '*.js' '*.cmake' '*CMakeLists.txt'; } |
        xargs perl scripts/long_lines.pl "$widest" || complain "These lines are longer than $widest characters"
}

# bats gives a test its output in variables, and its files share others.
check_shell() {
    scripts | xargs shellcheck || complain "These scripts have likely mistakes"
    files '*.bats' '*.bash' | xargs shellcheck --shell=bats --severity=warning --exclude=SC2034,SC2154 ||
        complain "These tests have likely mistakes"
}

check_links() {
    "$root/tests/docs/links.pl" "$root" || complain "These links lead nowhere"
}

# The command of every object, as arguments: of everything that is compiled but the tests and the benchmarks.
commands_to_tidy() {
    jq -r --arg left_out "^$root/(tests|benchmarks|build)/" '
        .[] | select(.file | test($left_out) | not) |
        (.command | capture(" -o (?<object>[^ ]+) -c ").object | gsub("/"; "_")) as $name |
        (.command | sub("^[^ ]+ "; "") | sub(" -o [^ ]+ -c .*$"; "")) +
            " -c \(.file | @sh) -o tidy/\($name) -MD -MF tidy/\($name).d"
        ' "$root/build/release/compile_commands.json"
}

# A cache that has seen the same files under the same checks has nothing to look at again.
check_tidy() {
    local cache=
    lock
    configure release release ON
    quietly cmake "$root/build/release"
    unlock
    ! command -v ccache > /dev/null || cache=ccache
    mkdir -p "$root/build/release/tidy"
    export CCACHE_COMPILERTYPE=clang CCACHE_DEPEND=1 CCACHE_EXTRAFILES=$root/.clang-tidy:$root/scripts/lint/tidy.sh
    CCACHE_COMPILERCHECK=string:$(clang-tidy-14 --version)
    export CCACHE_COMPILERCHECK
    (cd "$root/build/release" && commands_to_tidy | sed "s|^|$cache '$root/scripts/lint/tidy.sh' |" |
        xargs -d '\n' -P "$(nproc)" -n 1 bash -c) || complain "clang-tidy found these mistakes"
}

need_packages "${test_packages[@]}" "${lint_packages[@]}"
cd "$root"
[ $# -gt 0 ] || set -- format width shell links tidy
for check in "$@"; do
    say "Checking: $check"
    case $check in
        format) check_format ;;
        width) check_width ;;
        shell) check_shell ;;
        links) check_links ;;
        tidy) check_tidy ;;
        *) complain "There is no check of that name" ;;
    esac
done
exit "$failed"
