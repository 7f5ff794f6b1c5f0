#!/usr/bin/env bash
# Runs clang-tidy over the program's own sources: tidy.sh BUILD_FOLDER, as that build compiles them,
# which has to take folders as one: what they all include is looked at once. A build for Windows looks
# at what is only compiled there, any other at the rest.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

if grep -q i686-w64-mingw32 "$1/compile_commands.json"; then
    chosen='/tarvik_windows\.dir/Unity/|/app/windows/'
    folders=(platforms/windows app/windows)
    # The cross-compiler knows where its headers are; the checker is told, and takes its own in place
    # of those that only the compiler understands.
    mapfile -t headers < <(i686-w64-mingw32-g++-posix -E -x c++ -v /dev/null 2>&1 |
        sed -n '/^#include </,/^End/ s/^ //p' | grep -vE '/gcc/[^+]*/include(-fixed)?$')
    # The system hands out pointers as numbers everywhere.
    arguments=(--checks=-performance-no-int-to-ptr --extra-arg=--target=i686-w64-mingw32
        "${headers[@]/#/--extra-arg=-isystem}")
else
    chosen='/tarvik_(core|common|scripted|simulated|linux)\.dir/Unity/|/app/'
    folders=(src platforms/common platforms/scripted platforms/simulated platforms/linux app/*.cpp app/linux)
    arguments=()
fi
# The paths through one function that are followed: functions are short here, and what lies behind
# more of them took five sixths of the time and found nothing.
paths=(-Xclang -analyzer-config -Xclang max-nodes=30000)
units=$1/tidy
rm -rf "$units" && mkdir -p "$units"
/usr/bin/python3 scripts/tidy_units.py join "$1" "$units" "$chosen"
missing=$(find "${folders[@]}" -name '*.cpp' -exec sh -c 'grep -q "^#line 1 \".*$1\"" "$2"/*.cpp || echo "$1"' _ {} "$units" \;)
[ -z "$missing" ] || { printf 'In no unit of %s:\n%s\n' "$1" "$missing" >&2; exit 1; }
# The largest first. Its counts of what it does not show, one for each file, go; what it finds stays.
find "$units" -name '*.cpp' -printf '%s %p\0' | sort -zrn | sed -z 's/^[0-9]* //' |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$units" --quiet --extra-arg=-Wno-unknown-warning-option \
        "${paths[@]/#/--extra-arg=}" "${arguments[@]}" --warnings-as-errors='*' \
        2> >(grep -vE '^[0-9]+ warnings? (and [0-9]+ errors? )?(generated|treated as errors?)' >&2) |
    /usr/bin/python3 scripts/tidy_units.py names
echo "clang-tidy: clean"
