#!/bin/bash
# Builds for a device as docs/devices.md says, in a copy of the tree: devices.sh TREE FOLDER. The device is this machine
# by another name.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/copy.bash"
page=docs/devices.md
installed=$copy/rootfs

# toolchain NAME: a toolchain file for a device.
toolchain() {
    printf 'set(CMAKE_SYSTEM_NAME Linux)\nset(CMAKE_SYSTEM_PROCESSOR %s)\n' "$1" > "$copy/your-toolchain.cmake"
}

# system_of FOLDER: the name of the machine that it is configured for.
system_of() { sed -n 's/^set(CMAKE_SYSTEM_PROCESSOR "\(.*\)")$/\1/p' "$copy/build/$1"/CMakeFiles/*/CMakeSystem.cmake; }

run() { (cd "$copy" && ./run --version) || fail "./run does not run."; }

# It builds for the device that is asked for, whatever was built before, and leaves what ./run builds to this machine.
restore_all
run
for device in another-device the-device; do
    toolchain "$device"
    rm -rf "$installed"
    commands_of $page "The libraries"
    for command in "$blocks/The libraries"/*.command; do
        run_shown "$command"
    done
    [ "$(system_of device)" = "$device" ] || fail "build/device is for $(system_of device), not for $device."
done
[ "$(system_of release)" = "$(uname -m)" ] || fail "build/release is for $(system_of release)."
run
! said=$(cmake --install "$copy/build/device" 2>&1) || fail "A device's libraries were installed on this machine."
[[ $said = *DESTDIR* ]] || fail "$said"

for library in k_cnvrt k_support; do
    found=$(find "$installed" -name "lib$library.so")
    [ -n "$found" ] || fail "lib$library is not installed for the device."
    needed=$(readelf --dynamic "$found" | sed -n 's/.*NEEDED.*\[\(.*\)\]/\1/p')
    [[ $needed != *stdc++* ]] || fail "lib$library needs" "$needed"
done
