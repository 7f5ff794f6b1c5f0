#!/usr/bin/env bash
# Runs clang-tidy over the program's own sources: tidy.sh BUILD_FOLDER, as that build compiles them.
# A build for Windows looks at what is only compiled there, any other at the rest.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

only_windows=(-path '*/windows/*')
if grep -q i686-w64-mingw32 "$1/compile_commands.json"; then
    chosen=('(' "${only_windows[@]}" ')')
    # The cross-compiler knows where its headers are; the checker is told, and takes its own in place
    # of those that only the compiler understands.
    mapfile -t headers < <(i686-w64-mingw32-g++-posix -E -x c++ -v /dev/null 2>&1 |
        sed -n '/^#include </,/^End/ s/^ //p' | grep -vE '/gcc/[^+]*/include(-fixed)?$')
    # The system hands out pointers as numbers everywhere.
    arguments=(--checks=-performance-no-int-to-ptr --extra-arg=--target=i686-w64-mingw32
        "${headers[@]/#/--extra-arg=-isystem}")
else
    chosen=(-not '(' "${only_windows[@]}" ')')
    arguments=()
fi
# A flag that only the compiler has would be an error.
mkdir -p "$1/tidy"
sed 's/ -fno-tree-dse / /g' "$1/compile_commands.json" >"$1/tidy/compile_commands.json"
# Its counts of what it does not show, one for each file, go; what it finds stays.
find src platforms app -name '*.cpp' "${chosen[@]}" -print0 |
    xargs -0 -n 4 -P "$(nproc)" clang-tidy -p "$1/tidy" --quiet --extra-arg=-Wno-unknown-warning-option \
        "${arguments[@]}" --warnings-as-errors='*' \
        2> >(grep -vE '^[0-9]+ warnings? (generated|treated as errors?)' >&2)
echo "clang-tidy: clean"
