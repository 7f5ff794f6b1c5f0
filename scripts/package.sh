#!/usr/bin/env bash
# Makes the packages in build/packages, or in the folder that is named: a .deb of what is built for
# Linux and a .zip of what is built for Windows. The same sources give the same files, byte by byte.
#
#   package.sh [FOLDER]
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh

install_missing "${packages_build[@]}" "${packages_windows[@]}" "${packages_package[@]}"
folder=$(mkdir -p "${1:-build/packages}" && readlink -f "${1:-build/packages}")
# The time that stands in the packages is that of the last change.
[ -n "${SOURCE_DATE_EPOCH:-}" ] ||
    SOURCE_DATE_EPOCH=$(git -c safe.directory='*' log -1 --format=%ct 2>/dev/null || stat -c %Y CHANGELOG.md)
export SOURCE_DATE_EPOCH
umask 022

cmake --preset release -DTARVIK_TESTS=OFF -DTARVIK_BENCH=OFF >/dev/null
cmake --build --preset release --target tarvik tarvik-demo documents
cmake --preset windows >/dev/null
cmake --build --preset windows --target tarvik tarvik-demo

rm -f "$folder"/tarvik_*.deb "$folder"/tarvik-*.zip
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack --config build/release/CPackConfig.cmake -B "$work"
mv "$work"/tarvik_*.deb "$folder"

# The archive holds one folder; neither the order of its files nor what the system notes beside their
# times and names is left to chance.
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/windows/CMakeCache.txt)
name=tarvik-$version-windows
cmake --install build/windows --prefix "$work/$name" >/dev/null
find "$work/$name" -exec touch -d "@$SOURCE_DATE_EPOCH" {} +
(cd "$work" && find "$name" -type f | LC_ALL=C sort | TZ=UTC zip -X -q "$folder/$name.zip" -@)
ls -l "$folder"
