#!/usr/bin/env bash
# Prints the line coverage of src/ by the unit tests; fails under 95 per cent.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
install_missing "${packages_build[@]}" "${packages_library[@]}" gcovr
cmake --preset coverage >/dev/null
cmake --build --preset coverage --target unit_tests
find build/coverage -name '*.gcda' -delete
build/coverage/bin/unit_tests --gtest_brief=1
gcovr --root . --filter 'src/' --object-directory build/coverage --exclude-throw-branches \
    -j "$(nproc)" --print-summary --fail-under-line 95
