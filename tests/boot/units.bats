# The unit files of the example, as systemd reads them: in a system of their own, with a gateway's program that they are
# made for.
bats_require_minimum_version 1.5.0

setup() {
    umask 022 # a unit file that everyone may write is one more thing to say
    system=$BATS_TEST_TMPDIR/system
    units=$system/etc/systemd/system
    mkdir -p "$units" "$system/usr/sbin" "$system/usr/lib/systemd/system"
    cp /usr/lib/systemd/system/*.target "$system/usr/lib/systemd/system"
    cp "$BATS_TEST_DIRNAME"/../../examples/boot/*.service "$units"
    cp "${CONFIG_AT_BOOT:?}" "$system/usr/sbin/config-at-boot"
    cp /bin/true "$system/usr/sbin/gateway"
    printf '[Unit]\nDescription=Gateway\nOnFailure=config-back.service\n[Service]\nExecStart=/usr/sbin/gateway\n' \
        > "$units/gateway.service"
}

# What systemd ignores it only says.
verify() { run systemd-analyze --man=no --root="$system" verify "${1:-config-at-boot.service}" config-back.service; }

# What it says of the machine that it runs on names no unit.
says_nothing() {
    [ "$status" -eq 0 ] && ! grep --fixed-strings .service <<< "$output" && return
    echo "$output"
    return 1
}

@test "systemd has nothing to say about the units" {
    verify
    says_nothing
    verify gateway.service
    says_nothing
}

@test "it would say what is wrong" {
    sed -i 's/^RemainAfterExit/RemainAfter/' "$units/config-at-boot.service"
    verify
    [[ $output = *"config-at-boot.service"*"Unknown key 'RemainAfter'"* ]]
    rm "$system/usr/sbin/config-at-boot"
    verify
    [ "$status" -eq 1 ]
}

@test "enabled, the conversion is started with the gateway's program and before it" {
    systemctl --quiet --root="$system" enable config-at-boot.service
    [ "$(cd "$units" && echo gateway.service.wants/*)" = gateway.service.wants/config-at-boot.service ]
    grep -q '^Before=gateway.service$' "$units/config-at-boot.service"
}

@test "the program knows the commands that the units give it" {
    local commands command
    commands=$(sed -n 's|^ExecStart=/usr/sbin/config-at-boot \([a-z]*\) /etc/gateway$|\1|p' "$units"/config-*.service)
    [ "$(echo $commands)" = "convert back" ]
    mkdir "$BATS_TEST_TMPDIR/stored"
    for command in $commands; do
        echo '{"lang":"en"}' > "$BATS_TEST_TMPDIR/stored/config.json"
        run "$system/usr/sbin/config-at-boot" "$command" "$BATS_TEST_TMPDIR/stored"
        [[ $output != *[Uu]sage* ]]
    done
}
