#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Each stage runs whatever became of
# the others; a stage that cannot run is named as skipped, which CI=true counts as a failure.
set -uo pipefail
cd "$(dirname "$(readlink -f "$0")")" || exit 1
# shellcheck source=scripts/packages.sh
. scripts/packages.sh

summary=()
passed=0 failed=0 skipped=0

# stage NAME COMMAND...: runs one stage; its status 77 means that it cannot run here.
stage() {
    local name=$1 status begin=$SECONDS
    shift
    printf '\n== %s\n' "$name"
    "$@" </dev/null
    status=$?
    local seconds=$((SECONDS - begin))
    if [ $status -eq 0 ]; then
        passed=$((passed + 1)) && summary+=("passed   $name (${seconds} s)")
    elif [ $status -eq 77 ]; then
        skipped=$((skipped + 1)) && summary+=("SKIPPED  $name")
    else
        failed=$((failed + 1)) && summary+=("FAILED   $name (${seconds} s)")
    fi
    return $status
}

# build PRESET TARGET...: configures and builds.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --target "$@"
}

# The packages of the stages that need a display; without them those stages are skipped.
display_ready=77
have_display() { return "$display_ready"; }

unit_sanitized() {
    build sanitizers unit_tests &&
        ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 build/sanitizers/bin/unit_tests --gtest_brief=1
}

system_tests() {
    have_display || return 77
    TARVIK_DEMO="$PWD/build/debug/bin/tarvik-demo" \
        /usr/bin/python3 -m unittest discover -s tests/system -t tests/system
}

headless_session() {
    have_display || return 77
    /usr/bin/python3 scripts/play_session.py build/debug/bin/tarvik-demo build/session
}

# shellcheck disable=SC2086
stage "packages for building and testing" install_missing $packages_build $packages_test
# shellcheck disable=SC2086
install_missing $packages_display && display_ready=0

stage "lint" /usr/bin/python3 tests/lint/lint.py
stage "build, warnings are errors" build debug all
stage "unit tests" build/debug/bin/unit_tests --gtest_brief=1
stage "face and services on Linux" build/debug/bin/linux_tests --gtest_brief=1
stage "user stories on the scripted and the real face" \
    ctest --test-dir build/debug -R '^scenarios' --output-on-failure
stage "unit tests under AddressSanitizer and UBSan" unit_sanitized
stage "the built program from outside" system_tests
stage "a session without a display" headless_session
stage "clang-tidy" scripts/tidy.sh build/debug

printf '\n== Summary\n'
printf '%s\n' "${summary[@]}"
printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[ "$failed" -eq 0 ] && { [ "$skipped" -eq 0 ] || [ "${CI:-}" != true ]; }
