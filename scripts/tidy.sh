#!/usr/bin/env bash
# Runs clang-tidy over the program's own sources: tidy.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
command -v clang-tidy >/dev/null || exit 77
find src platforms app -name '*.cpp' -print0 |
    xargs -0 -n 4 -P "$(nproc)" clang-tidy -p "$1" --quiet --warnings-as-errors='*'
echo "clang-tidy: clean"
