# The completion for bash: what it offers at each place of a line.
load setup

# offers WORD...: what is offered for the last of the words, which may be empty.
offers() {
    PATH=$(dirname "$KCNVRT"):$PATH bash -c '
        . "$PAGES/kcnvrt.bash"
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
        _kcnvrt
        printf "%s\n" "${COMPREPLY[@]}"' bash "$@" | sort
}

@test "it is a script without likely mistakes" {
    bash -n "$PAGES/kcnvrt.bash"
    ! command -v shellcheck > /dev/null || shellcheck "$PAGES/kcnvrt.bash"
}

@test "commands" {
    equal "$(offers kcnvrt '')" "$(commands | sort)"
    equal "$(offers kcnvrt to-)" "$(printf 'to-new\nto-old')"
    equal "$(offers kcnvrt --compact to-n)" to-new
    equal "$(offers kcnvrt -o out to-n)" to-new
    equal "$(offers kcnvrt help self)" self-check
}

@test "the options of each command, and those before it" {
    local command
    equal "$(offers kcnvrt - | LC_ALL=C sort)" "$(options | LC_ALL=C sort)"
    for command in $(commands); do
        equal "$(offers kcnvrt "$command" - | LC_ALL=C sort)" "$(options "$command" | LC_ALL=C sort)"
    done
    equal "$(offers kcnvrt to-new --comp)" --compact
    equal "$(offers kcnvrt to-new file --comp)" --compact
}

@test "the words of an option" {
    equal "$(offers kcnvrt to-new --errors '')" "$(printf 'json\ntext')"
    equal "$(offers kcnvrt to-new --errors j)" json
    equal "$(offers kcnvrt to-new --errors = j)" json
    equal "$(offers kcnvrt to-new --errors =)" "$(printf 'json\ntext')"
    equal "$(offers kcnvrt --color al)" always
    equal "$(offers kcnvrt to-new --indent '')" ""
}

@test "files, those with blanks as well" {
    touch "a file.json" another.json third
    equal "$(offers kcnvrt to-new a)" "$(printf 'a file.json\nanother.json')"
    equal "$(offers kcnvrt to-new --output th)" third
    equal "$(offers kcnvrt to-new -o th)" third
    equal "$(offers kcnvrt to-new --base = th)" third
    equal "$(offers kcnvrt diff third th)" third
    equal "$(offers kcnvrt sections '')" ""
    equal "$(offers kcnvrt to-new third th)" third
}

@test "sections of the layout that is asked for" {
    equal "$(offers kcnvrt section --to-new '')" "$("$KCNVRT" sections | sed -n 's/^new\t//p' | sort)"
    equal "$(offers kcnvrt section --to-old '')" "$("$KCNVRT" sections | sed -n 's/^old\t//p' | sort)"
    equal "$(offers kcnvrt section '')" "$("$KCNVRT" sections | cut -f 2 | sort -u)"
    equal "$(offers kcnvrt section wan_p)" wan_pvid
    touch wan_pvid.json
    equal "$(offers kcnvrt section --to-old wan_pvid wan_)" wan_pvid.json
}

@test "layouts, and the sections of the one before" {
    equal "$(offers kcnvrt schema '')" "$(printf 'new\nold')"
    equal "$(offers kcnvrt example o)" old
    equal "$(offers kcnvrt schema old '')" "$("$KCNVRT" sections | sed -n 's/^old\t//p' | sort)"
    equal "$(offers kcnvrt example new wi)" ""
    equal "$(offers kcnvrt example new Wi)" WiFi
}

@test "places of a file, up to its entries" {
    equal "$(offers kcnvrt explain file /wan_p)" /wan_pvid/
    equal "$(offers kcnvrt explain file /wifi/Chann)" /wifi/Channel
    equal "$(offers kcnvrt explain file /route/)" /route/
    contains "$(offers kcnvrt explain file --from-result /Device/wan_pvid/)" /Device/wan_pvid/
}

@test "places of the layouts" {
    equal "$(offers kcnvrt mapping /wan_p)" /wan_pvid/
    equal "$(offers kcnvrt mapping /Device/wan_p)" /Device/wan_pvid/
    contains "$(offers kcnvrt mapping /wan_pvid/)" '/wan_pvid/*'
    contains "$(offers kcnvrt mapping /Device/wan_pvid/)" '/Device/wan_pvid/*/pvid'
    equal "$(offers kcnvrt mapping wan_p)" wan_pvid
}
