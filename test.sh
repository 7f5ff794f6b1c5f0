#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Each stage runs whatever became of
# the others; a stage that cannot run is named as skipped, which CI=true counts as a failure.
set -uo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")" || exit 1
# shellcheck source=scripts/packages.sh
. scripts/packages.sh

cannot_run=77 # the status of a stage that cannot run here
summary=()
passed=0 failed=0 skipped=0

# stage NAME COMMAND...: runs one stage and keeps what became of it.
stage() {
    local name=$1 status begin=$SECONDS
    shift
    printf '\n== %s\n' "$name"
    "$@"
    status=$?
    local seconds=$((SECONDS - begin))
    case $status in
    0) passed=$((passed + 1)) && summary+=("passed   $name (${seconds} s)") ;;
    "$cannot_run") skipped=$((skipped + 1)) && summary+=("SKIPPED  $name (${seconds} s)") ;;
    *) failed=$((failed + 1)) && summary+=("FAILED   $name (${seconds} s)") ;;
    esac
}

# build PRESET TARGET...: configures and builds.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --target "$@"
}

packages() {
    # shellcheck disable=SC2086
    install_missing $packages_build $packages_test $packages_display
}

lint() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_lint || return $cannot_run
    /usr/bin/python3 tests/lint/lint.py
}

build_debug() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_library || return $cannot_run
    build debug all
}

unit_tests() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_library || return $cannot_run
    build/debug/bin/unit_tests --gtest_brief=1
}

linux_tests() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_library || return $cannot_run
    build/debug/bin/linux_tests --gtest_brief=1
}

scenarios() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_library || return $cannot_run
    local status=0 face
    for face in scripted qt; do
        "build/debug/bin/scenarios_$face" --gtest_brief=1 || status=1
    done
    return $status
}

tests_sanitized() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_library || return $cannot_run
    export UBSAN_OPTIONS=print_stacktrace=1
    # The toolkit keeps memory of its own until the end, which is no leak of the program's.
    build sanitizers unit_tests linux_tests &&
        ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 \
            build/sanitizers/bin/unit_tests --gtest_brief=1 &&
        ASAN_OPTIONS=detect_leaks=0 build/sanitizers/bin/linux_tests --gtest_brief=1
}

system_tests() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_display || return $cannot_run
    TARVIK_DEMO="$PWD/build/debug/bin/tarvik-demo" \
        /usr/bin/python3 -B -m unittest discover -s tests/system -t tests/system
}

headless_session() {
    # shellcheck disable=SC2086
    needs $packages_build $packages_display || return $cannot_run
    /usr/bin/python3 -B scripts/play_session.py build/debug/bin/tarvik-demo build/session
}

tidy() {
    needs clang-tidy || return $cannot_run
    scripts/tidy.sh build/debug
}

stage "packages" packages
stage "lint" lint
stage "build, warnings are errors" build_debug
stage "unit tests" unit_tests
stage "face and services on Linux" linux_tests
stage "user stories on the scripted and the real face" scenarios
stage "the built program from outside" system_tests
stage "a session without a display" headless_session
stage "unit and face tests under AddressSanitizer and UBSan" tests_sanitized
stage "clang-tidy" tidy

printf '\n== Summary\n'
printf '%s\n' "${summary[@]}"
printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[ "$failed" -eq 0 ] && { [ "$skipped" -eq 0 ] || [ "${CI:-}" != true ]; }
