#!/bin/bash
# A compiler that only looks: clang-tidy over a source, called as a compiler is, so that the compiler's cache keeps what
# it had nothing to say of. Of a source with a mistake nothing is kept.
#   tidy.sh ARGUMENT... -c SOURCE -o OBJECT -MD -MF DEPENDENCIES
set -euo pipefail

source=
object=
before=
for argument; do
    case $argument in
        -E) exit 1 ;; # comments and macros count, which preprocessing drops: the cache goes by the files themselves
        *.c | *.cpp) source=$argument ;;
    esac
    [ "$before" != -o ] || object=$argument
    before=$argument
done

clang-tidy-14 --quiet --warnings-as-errors='*' "$source" -- "$@" 2> /dev/null
clang-14 -w -fsyntax-only "$@"
echo "nothing to say" > "$object" # the cache keeps nothing of an empty one
