#!/usr/bin/env bash
# Builds the measuring programs and prints their figures, each beside a bare floor or the nearest
# peer in the same run; at the end one table of all faces.
#
#   bench.sh            the figures
#   bench.sh --check    fails when one has become a third worse, beside what it stands by, than what is
#                       stored in bench/ratios.txt
#   bench.sh --keep     stores how they compare now
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

ratios=()
case ${1:-} in
--check | --keep) ratios=("$1" bench/ratios.txt) ;;
'') ;;
*)
    echo "usage: bench.sh [--check | --keep]" >&2
    exit 2
    ;;
esac

if [ ${#ratios[@]} -gt 0 ] && [ "$(id -u)" -ne 0 ]; then
    echo "Only root can measure the network, which the stored ratios tell of too." >&2
    exit 1
fi

install_missing "${packages_build[@]}" "${packages_display[@]}" "${packages_bench[@]}"
cmake --preset release -DTARVIK_TESTS=OFF -DTARVIK_BENCH=ON >/dev/null
cmake --build --preset release --target tarvik-demo empty_window bench_ini bench_history bench_work bench_journal \
    bench_ledger
/usr/bin/python3 -B bench/bench_face.py build/release/bin/tarvik-demo build/release/bin/empty_window \
    "$folder/linux"
build/release/bin/bench_work >>"$folder/linux"
build/release/bin/bench_ini
build/release/bin/bench_journal
build/release/bin/bench_ledger
build/release/bin/bench_history 1000000 100000 "$folder/linux"

# Reading a real VPN, beside others that do, in a world of its own.
if [ "$(id -u)" -eq 0 ]; then
    install_missing "${packages_network[@]}" vnstat
    cmake --build --preset release --target tarvik
    scripts/nm-rig.sh up
    scripts/nm-rig.sh run /usr/bin/python3 -B bench/bench_network.py build/release/bin/tarvik \
        build/release/bin/empty_window "$folder/linux" ||
        echo "The network could not be measured." >&2
    scripts/nm-rig.sh down
fi

# The same on Windows, beside an empty window there.
install_missing "${packages_windows[@]}" "${packages_wine[@]}"
cmake --preset windows >/dev/null
cmake --build --preset windows --target tarvik empty_window bench_win32 bench_work rasapi32
scripts/wine32.sh setup
cp build/windows/bin/*.exe "$folder"
export WINE32_SYSTEM="$PWD/build/windows/bin/standin/rasapi32.dll" WINEDLLOVERRIDES=rasapi32=n
export TARVIK_STANDIN_ENTRIES=Line WINE32_TIMEOUT=300
scripts/wine32.sh run "$folder/bench_win32.exe" rows | tr -d '\r' >"$folder/windows"
scripts/wine32.sh run "$folder/bench_work.exe" | tr -d '\r' >>"$folder/windows"

printf '\nThe log has 100,000 records; Windows is Wine here.\n\n'
/usr/bin/python3 -B bench/table.py "${ratios[@]}" "Linux=$folder/linux" "Windows=$folder/windows"
