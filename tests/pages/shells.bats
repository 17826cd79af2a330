# The completions for zsh and fish, asked as a user's shell asks them.
load setup

@test "zsh offers commands, options, words and sections" {
    command -v zsh > /dev/null || skip "zsh is not installed"
    PATH=$(dirname "$KCNVRT"):$PATH run -0 timeout 120 zsh -f "$BATS_TEST_DIRNAME/ask.zsh" "$PAGES" \
        'kcnvrt self-c' 'kcnvrt to-new --compa' 'kcnvrt to-new --errors=j' 'kcnvrt section --to-new wan_p' \
        'kcnvrt schema o' 'kcnvrt example new DSL' 'kcnvrt mapping /wan_p' \
        'kcnvrt mapping /Device/Default_ssid/Default_ssid_2' 'kcnvrt explain file /default_ssid/default_ssid_2'
    equal "$output" "$(printf '%s\n' 'kcnvrt self-check' 'kcnvrt to-new --compact' 'kcnvrt to-new --errors=json' \
        'kcnvrt section --to-new wan_pvid' 'kcnvrt schema old' 'kcnvrt example new DSL_Vlan' \
        'kcnvrt mapping /wan_pvid/' 'kcnvrt mapping /Device/Default_ssid/Default_ssid_2.4' \
        'kcnvrt explain file /default_ssid/default_ssid_2.4')"
}

# complete LINE: what fish offers, without descriptions.
complete() {
    PATH=$(dirname "$KCNVRT"):$PATH HOME=$PWD fish --no-config -c "source $PAGES/kcnvrt.fish; complete -C '$1'" |
        cut -f 1 | LC_ALL=C sort
}

@test "fish offers commands, options, words and sections" {
    command -v fish > /dev/null || skip "fish is not installed"
    equal "$(complete 'kcnvrt ')" "$(commands | LC_ALL=C sort)"
    equal "$(complete 'kcnvrt to-new --compa')" --compact
    equal "$(complete 'kcnvrt to-new --errors ')" "$(printf 'json\ntext')"
    equal "$(complete 'kcnvrt section wan_p')" wan_pvid
    equal "$(complete 'kcnvrt schema o')" old
    equal "$(complete 'kcnvrt example new DSL')" DSL_Vlan
    equal "$(complete 'kcnvrt example old qu')" queuemanagement
    equal "$(complete 'kcnvrt example new qu')" ""
    equal "$(complete 'kcnvrt example old wan_p')" wan_pvid
    equal "$(complete 'kcnvrt mapping /wan_p')" /wan_pvid/
    contains "$(complete 'kcnvrt mapping /wan_pvid/')" '/wan_pvid/*'
    contains "$(complete 'kcnvrt explain file /default_ssid/')" /default_ssid/default_ssid_2.4
    for command in $(commands); do
        equal "$(complete "kcnvrt $command --" | grep '^--')" "$(options "$command" | grep '^--' | LC_ALL=C sort)"
    done
}
