# The manual pages against the help pages, the headers and what is exported.
load setup

# options_of_page PAGE: those in its section of options.
options_of_page() { sed -n '/^\.SH OPTIONS/,/^\.SH EXIT/p' "$PAGES/$1" | grep -oE '\\fB[^\\]*(\\-[^\\]*)+\\fR' |
    sed 's/\\f[BR]//g; s/\\-/-/g' | sort; }

@test "each command has a page, and no other page is there" {
    local pages
    pages=$(cd "$PAGES" && echo kcnvrt-*.1)
    equal "$(tr ' ' '\n' <<< "$pages")" "$(commands | sort | sed 's/.*/kcnvrt-&.1/')"
}

@test "each page has the options and the synopsis of the help page" {
    local command
    [ "$(commands | wc -l)" -gt 8 ]
    equal "$(options_of_page kcnvrt.1)" "$(options)"
    for command in $(commands); do
        equal "$(options_of_page "kcnvrt-$command.1")" "$(options "$command")"
        [ "$(options "$command" | wc -l)" -gt 2 ]
        equal "$(sed -n '/^\.SH SYNOPSIS/{n;s/\\-/-/g;p}' "$PAGES/kcnvrt-$command.1")" \
            "$("$KCNVRT" help "$command" | sed -n 's/^Usage: //p')"
    done
}

@test "each function of the headers that have a page leads to it" {
    local name page
    for page in k_err k_conf k_cnvrt k_cnvrt_text; do [ -s "$PAGES/$page.3" ]; done
    for name in $(grep ^k_ "$ABI/libk_cnvrt_text.symbols") $(grep -E '^k_(err|conf)_' "$ABI/libk_support.symbols"); do
        read -r page < "$PAGES/$name.3"
        page=${page#.so man3/}
        grep -q "$name" "$PAGES/$page"
    done
}

@test "roff has nothing to say of any page" {
    command -v groff > /dev/null || skip "groff is not installed"
    local page
    for page in "$PAGES"/*.[13]; do
        [[ $(head -c 4 "$page") = ".so " ]] || equal "$(groff -man -Tutf8 -ww -rLL=100n "$page" 2>&1 > /dev/null)" ""
    done
}

# shown PAGE: as on a terminal of 80 columns.
shown() { groff -man -Tascii -rLL=80n -P-cbou "$PAGES/$1"; }

@test "a header's page is named by its first sentence, which is whole" {
    local page purpose
    for page in include/k_cnvrt text/include/k_cnvrt_text support/include/k_conf support/include/k_err; do
        purpose=$(sed -n '/^\.SH NAME/{n;s/.* \\- //;s/\\-/-/g;p}' "$PAGES/${page##*/}.3")
        contains "$(sed -n 's/^ \* //p' "$ABI/../$page.h" | tr '\n' ' ')" "${page##*/}.h: $purpose. "
    done
}

@test "each item of a list begins a line, and no name is broken at a hyphen" {
    command -v groff > /dev/null || skip "groff is not installed"
    shown k_conf.3 > page
    equal "$(sed -nE 's/^ +- +(none|is none|does not fit|would nest).*/\1/p' page | tr '\n' ,)" \
        "is none,does not fit,would nest,"
    shown kcnvrt.1 > page
    for command in $(commands); do grep -qE "(^| )kcnvrt-$command\(1\)" page; done
    ! grep -nE '[a-z]-$' page
}

@test "each page of a header leads to the others" {
    local page other
    for page in k_cnvrt k_cnvrt_text k_conf k_err; do
        for other in k_cnvrt k_cnvrt_text k_conf k_err; do
            [ $page = $other ] || sed -n '/^\.SH SEE ALSO/,$p' "$PAGES/$page.3" | grep -qx "\.BR $other (3),"
        done
    done
}
