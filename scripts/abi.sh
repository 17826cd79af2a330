#!/bin/bash
# Whether programs that were linked with the libraries of the last release go on to work with these: compares them, and
# the constants that programs have from their headers, with the descriptions in abi/, which are of x86-64.
#   scripts/abi.sh            compares, and says what is to be done
#   scripts/abi.sh --renew    describes the libraries anew, unless that would break what was released
#   scripts/abi.sh --same     fails where the descriptions are not those of the libraries, as for a release
set -euo pipefail
. "$(dirname "$(realpath "$0")")/build.sh"

folder=$root/build/abi
libraries=(libk_support libk_cnvrt libk_cnvrt_text)
declare -A headers=([libk_support]=support/include [libk_cnvrt]=include [libk_cnvrt_text]=text/include)
failed=0

# As they are shipped, but for what tells about types. Two functions of equal code stay two.
build_libraries() {
    local flags="-g -fno-ipa-icf"
    lock
    need_packages "${build_packages[@]}" "${abi_packages[@]}"
    configure abi release OFF -DKCNVRT_TOOL=OFF -DKCNVRT_PYTHON=OFF "-DCMAKE_C_FLAGS=$flags" "-DCMAKE_CXX_FLAGS=$flags"
    build abi k_support k_cnvrt k_cnvrt_text
    unlock
}

describe() {
    local library jansson
    read -ra jansson < <(pkg-config --cflags jansson)
    for library in "${libraries[@]}"; do
        "$root/scripts/abi/describe.sh" "$folder/lib/$library.so" "$folder/$library.abi" \
            "$root/include" "$folder/include" "$root/support/include" "$root/text/include"
        "$root/scripts/abi/constants.sh" "$folder/$library.constants" "$root/${headers[$library]}" \
            -I "$root/support/include" -I "$folder/include" "${jansson[@]}"
    done
}

# compare LIBRARY: status 1 where programs break, 2 where none that was released does.
compare() {
    if [ ! -f "$root/abi/$1.abi" ] || [ ! -f "$root/abi/$1.constants" ]; then
        echo "$1 is in no description: scripts/abi.sh --renew makes one."
        return 2
    fi
    "$root/scripts/abi/compare.sh" "$root/abi/$1.symbols" "$root/abi/$1.abi" "$folder/$1.abi" "$root/CHANGELOG.md"
}

renew() {
    local library status
    for library in "${libraries[@]}"; do
        status=0
        [ ! -f "$root/abi/$library.constants" ] || compare "$library" || status=$?
        [ $status -ne 1 ] || failed=1
    done
    [ $failed -eq 0 ] || return 0
    (cd "$folder" && cp "${libraries[@]/%/.abi}" "${libraries[@]/%/.constants}" "$root/abi")
    say "abi/ describes version $("$root/scripts/version.sh")."
}

case ${1:-} in
    "" | --renew | --same) ;;
    *) say "There is no $1"; exit 2 ;;
esac
[ "$(uname -m)" = x86_64 ] || { say "The descriptions in abi/ are of x86-64, and this is $(uname -m)."; exit 1; }
build_libraries
describe
case ${1:-} in
    "")
        for library in "${libraries[@]}"; do
            compare "$library" || failed=1
        done
        ;;
    --renew) renew ;;
    --same)
        for library in "${libraries[@]}"; do
            cmp "$root/abi/$library.abi" "$folder/$library.abi" || failed=1
            cmp "$root/abi/$library.constants" "$folder/$library.constants" || failed=1
        done
        [ $failed -eq 0 ] || say "abi/ is not what the libraries are: scripts/abi.sh --renew describes them."
        ;;
esac
exit "$failed"
