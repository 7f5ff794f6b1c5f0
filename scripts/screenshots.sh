#!/usr/bin/env bash
# Makes the screenshots of the documents from the built programs.
#
#   screenshots.sh [FOLDER [FACE...]]   FOLDER: docs unless told; FACE: linux, windows, both unless told
#   screenshots.sh check                makes them in a folder that is thrown away and compares them with
#                                    those in docs; names each that the program no longer looks like
#
# The screenshots are the same each time: the demo's line and clock stand still, and everything runs on
# displays of its own, in a network of its own, on a computer called "home". Needs
# build/release/bin/tarvik-demo, build/windows/bin/tarvik-demo.exe and scripts/wine32.sh set up; without
# root a kernel that gives users namespaces of their own.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "$0")")")

if [ "${1:-}" = __inside ]; then
    shift
    # A computer whose name and address are the same everywhere, also for Wine.
    hostname home
    ip link set lo up
    ip address add 192.0.2.2/24 dev lo
    ip route add default via 192.0.2.2 dev lo
    hosts=$(mktemp)
    printf '127.0.0.1\tlocalhost\n192.0.2.2\thome\n' >"$hosts"
    for file in /etc/hosts "${WINE32_ROOT:-/var/cache/velmars-tarvik/wine32}/etc/hosts"; do
        [ ! -f "$file" ] || mount --bind "$hosts" "$file"
    done
    rm "$hosts"
    exec /usr/bin/python3 -B "$root/scripts/take_screenshots.py" "$@"
fi

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(--map-root-user)
folder=$root/docs
check=
if [ "${1:-}" = check ]; then
    check=1
    folder=$(mktemp -d)
    trap 'rm -rf "$folder"' EXIT
elif [ $# -gt 0 ]; then
    mkdir -p "$1"
    folder=$(readlink -f "$1")
fi
[ $# -eq 0 ] || shift

take() {
    unshare "${as_root[@]}" --uts --net --mount --propagation private -- "$0" __inside "$folder" "$@"
}

compare() {
    /usr/bin/python3 -B "$root/scripts/compare_screenshots.py" "$root/docs" "$folder"
}

take "$@"
if [ -n "$check" ] && ! compare; then
    echo "Once more: a busy machine may show a window that is not painted yet."
    take "$@"
    compare
fi
