# The stream under GNU Parallel, as docs/fleet.md shows it: on one machine, and over ssh to two hosts, which are two
# servers of the test's own on ports of this machine.
load setup

setup_file() { export BATS_TEST_TIMEOUT=280 PARALLEL_HOME=$BATS_FILE_TMPDIR/parallel; mkdir "$PARALLEL_HOME"; }

# Records of which every tenth is rejected, and what one run makes of them.
write_fleet() { # RECORDS
    for i in $(seq "$1"); do
        if [ $((i % 10)) -eq 7 ]; then echo "{\"serial\":$i,\"config\":{\"lang\":}}"
        else echo "{\"serial\":$i,\"config\":{\"lang\":\"en-$i\",\"route\":[]}}"; fi
    done > fleet.ndjson
    stream=("$KCNVRT" stream --to-new --at /config --jobs 1 --accept-rejects)
    "${stream[@]}" fleet.ndjson > one 2> ../messages
    "${stream[@]}" --on-reject null fleet.ndjson > one-with-nulls 2> ../messages
}

parallel() { command parallel --will-cite "$@"; }

@test "parts on one machine are the single run, byte for byte" {
    write_fleet 6000
    parallel --pipe --block 30k --keep-order "${stream[@]}" < fleet.ndjson > new 2> problems
    cmp one new
    equal "$(grep -c '"severity": "error"' problems)" 600
    parallel --pipe-part -a fleet.ndjson --block 30k --keep-order "${stream[@]}" > new 2> ../messages
    cmp one new
    parallel --pipe --block 30k --keep-order "${stream[@]}" --on-reject null < fleet.ndjson > new 2> ../messages
    cmp one-with-nulls new
    parallel --pipe --block 30k --keep-order "${stream[@]}" --rejects 'rejects.{#}' < fleet.ndjson > new 2> ../messages
    cmp one new
    sort rejects.* | cmp - <(grep '"lang":}' fleet.ndjson | sort)
}

@test "with --retries nothing is lost" {
    write_fleet 6000
    parallel --pipe --block 30k --keep-order --retries 3 "${stream[@]}" < fleet.ndjson > new 2> ../messages
    cmp one new
}

@test "a part that failed is made again by --resume-failed, and the set of lines is that of one run" {
    write_fleet 6000
    # A filter that fails in one part, once.
    cat > flaky <<'END'
#!/bin/bash
[ "$1" != 4 ] || [ -e failed ] || { touch failed; head -n 5; exit 9; }
exec "${@:2}"
END
    chmod +x flaky
    resume() {
        parallel --pipe --block 30k --joblog log --resume-failed --results "parts/{#}/" ./flaky '{#}' "${stream[@]}" \
            < fleet.ndjson > ../shown 2> ../messages
    }
    resume || [ $? -eq 1 ]
    [ -e failed ]
    resume
    cat parts/*/stdout | sort | cmp - <(sort one)
}

# serve NAME: an ssh server of its own, that the host NAME of ssh_config is. Its sessions have a home of their own: what
# a user's shell does at its start may take minutes where it is killed and started again, as here.
serve() {
    local port
    port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
    cat > "$1.conf" <<END
ListenAddress 127.0.0.1:$port
HostKey $PWD/host_key
AuthorizedKeysFile $PWD/user_key.pub
PidFile none
StrictModes no
UsePAM no
PermitRootLogin yes
SetEnv HOME=$PWD
MaxStartups 100
END
    cat >> ssh_config <<END
Host $1
    HostName 127.0.0.1
    Port $port
    User $(id -un)
    IdentityFile $PWD/user_key
    UserKnownHostsFile /dev/null
    StrictHostKeyChecking no
    LogLevel ERROR
END
    /usr/sbin/sshd -D -e -f "$PWD/$1.conf" 2> "$1.log" 3>&- &
    servers+=($!)
    for _ in $(seq 100); do
        ssh -F ssh_config "$1" true 2> ../messages && return
        sleep 0.1
    done
    cat "$1.log" ../messages
    return 1
}

serve_hosts() {
    [ "$(id -u)" -ne 0 ] || mkdir -p /run/sshd
    ssh-keygen -q -t ed25519 -N '' -f host_key
    ssh-keygen -q -t ed25519 -N '' -f user_key
    chmod 600 user_key.pub
    servers=()
    serve one
    serve two
    export PARALLEL_SSH="ssh -F $PWD/ssh_config"
}

# end_tree PID: the process and all that it started.
end_tree() {
    local child
    for child in $(ps -o pid= --ppid "$1"); do end_tree "$child"; done
    kill -KILL "$1" 2> /dev/null || true
}

teardown() {
    local server
    for server in "${servers[@]}"; do end_tree "$server"; done
}

@test "parts on two hosts are the single run, byte for byte" {
    write_fleet 3000
    serve_hosts
    parallel --pipe --block 30k --keep-order --sshlogin 2/one,2/two --retries 3 "${stream[@]}" \
        < fleet.ndjson > new 2> problems
    cmp one new
    equal "$(grep -c '"severity": "error"' problems)" 300
}

@test "a host that goes away in the middle costs nothing" {
    write_fleet 3000
    serve_hosts
    # Parts that take their time, so that there is a middle.
    cat > slowly <<'END'
#!/bin/bash
"$@"
sleep 0.2
END
    chmod +x slowly
    parallel --pipe --block 8k --keep-order --sshlogin 2/one,2/two --retries 3 "$PWD/slowly" "${stream[@]}" \
        < fleet.ndjson > new 2> ../messages &
    run=$!
    for _ in $(seq 200); do [ ! -s new ] || break; sleep 0.05; done
    kill -0 "$run" # it has not ended yet
    end_tree "${servers[1]}" 2> ../messages
    wait "$run"
    cmp one new
}
