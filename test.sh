#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Each stage runs whatever became of
# the others; a stage that cannot run is named as skipped, which CI=true counts as a failure.
#
#   test.sh             all stages but those that run only when they are named
#   test.sh STAGE...    these, in the order in which they stand at the end of this file
#   test.sh help        what they are called, as --list does
set -uo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")" || exit 1
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
# shellcheck source=scripts/place.sh
. scripts/place.sh

# Every test brings a display of its own; the user's stays empty, and need not even answer.
unset DISPLAY WAYLAND_DISPLAY
cannot_run=77 # the status of a stage that cannot run here
summary=()
passed=0 failed=0 skipped=0

# stage NAME COMMAND: runs one stage, unless others were named, and keeps what became of it.
stage() {
    local name=$1 command=$2 status begin=$SECONDS
    [ -z "$named" ] || [[ $named == *" $command "* ]] || return 0
    printf '\n== %s\n' "$name"
    "$command"
    status=$?
    local seconds=$((SECONDS - begin))
    case $status in
    0) passed=$((passed + 1)) && summary+=("passed   $name (${seconds} s)") ;;
    "$cannot_run") skipped=$((skipped + 1)) && summary+=("SKIPPED  $name (${seconds} s)") ;;
    *) failed=$((failed + 1)) && summary+=("FAILED   $name (${seconds} s)") ;;
    esac
}

# only_named NAME COMMAND: a stage that runs only when it is named.
only_named() {
    [ -z "$named" ] || stage "$@"
}

# tell_stages: what the stages are called, and what they are; to be named or not.
tell_stages() {
    sed -nE 's/^stage "(.*)" (\w+)$/  \2: \1/p; s/^only_named "(.*)" (\w+)$/  \2: \1 (only when named)/p' test.sh
}

# build PRESET TARGET...: configures and builds.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null && cmake --build --preset "$preset" --target "$@"
}

packages() {
    install_missing "${packages_build[@]}" "${packages_test[@]}" "${packages_fuzz[@]}" "${packages_display[@]}" "${packages_office[@]}" "${packages_network[@]}" "${packages_windows[@]}" "${packages_wine[@]}" \
        "${packages_package[@]}" "${packages_packaged[@]}"
}

# What the scripts say and do where something is closed, missing or silent; nothing is built.
scripts_tests() {
    needs "${packages_build[@]}" "${packages_display[@]}" || return $cannot_run
    /usr/bin/python3 -B -m unittest discover -s tests/scripts -t tests/scripts
}

lint() {
    needs "${packages_build[@]}" "${packages_lint[@]}" || return $cannot_run
    /usr/bin/python3 tests/lint/lint.py
}

build_debug() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    # The unit and face tests are built once, with sanitizers, and once for Windows, without.
    build debug tarvik tarvik-demo scenarios_scripted scenarios_qt kill_at_every_step faults \
        years_of_days day_of_ticks empty_window bench_ini bench_history bench_work
}

# Every file call of the program fails or is its last, once each; prints the count of cases.
kill_at_every_step() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    build/debug/bin/kill_at_every_step
}

scenarios() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    local status=0 face
    for face in scripted qt; do
        "build/debug/bin/scenarios_$face" --gtest_brief=1 || status=1
    done
    return $status
}

tests_sanitized() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    export UBSAN_OPTIONS=print_stacktrace=1
    # The toolkit keeps memory of its own until the end, which is no leak of the program's.
    build sanitizers unit_tests linux_tests soak || return 1
    local status=0
    # The years of days take one core meanwhile; nothing in either goes by the clock.
    build/sanitizers/bin/soak &
    ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 \
        build/sanitizers/bin/unit_tests --gtest_brief=1 || status=1
    wait $! || status=1
    ASAN_OPTIONS=detect_leaks=0 build/sanitizers/bin/linux_tests --gtest_brief=1 || status=1
    return $status
}

# A random user on the scripted and the Linux face; TARVIK_MONKEY_STEPS and TARVIK_MONKEY_SEED set
# how long and which.
monkey() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    export UBSAN_OPTIONS=print_stacktrace=1
    build sanitizers monkey_scripted monkey_qt &&
        ASAN_OPTIONS=detect_leaks=1 build/sanitizers/bin/monkey_scripted &&
        ASAN_OPTIONS=detect_leaks=0 build/sanitizers/bin/monkey_qt
}

# The same on the Windows face, checked as far as that compiler can; boxes take their time there.
monkey_windows() {
    needs "${packages_build[@]}" "${packages_windows[@]}" || return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    build windows-checked monkey_win32 &&
        TARVIK_MONKEY_STEPS=${TARVIK_MONKEY_STEPS:-5000} WINDOWS_BIN=build/windows-checked/bin \
            WINDOWS_TIMEOUT=540 on_windows monkey_win32
}

# So many runs of each target, the same ones every time; scripts/fuzz.sh alone searches on.
fuzz() {
    needs "${packages_build[@]}" "${packages_fuzz[@]}" || return $cannot_run
    FUZZ_RUNS=2000 scripts/fuzz.sh
}

system_tests() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_office[@]}" || return $cannot_run
    TARVIK_DEMO="$PWD/build/debug/bin/tarvik-demo" \
        /usr/bin/python3 -B -m unittest discover -s tests/outside/linux -t tests/outside
}

# The same on a Wayland compositor, apart from what only a display of X shows.
system_tests_wayland() {
    TARVIK_DESKTOP=wayland system_tests
}

# A world of its own with a real NetworkManager and a real VPN; needs root.
network_tests() {
    local status
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_network[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || { echo "Only root can make the world for these tests." >&2; return $cannot_run; }
    scripts/nm-rig.sh up || return $cannot_run
    scripts/nm-rig.sh run env TARVIK_DEMO="$PWD/build/debug/bin/tarvik" \
        /usr/bin/python3 -B -m unittest discover -s tests/outside/network -t tests/outside
    status=$?
    scripts/nm-rig.sh down
    return $status
}

headless_session() {
    needs "${packages_build[@]}" "${packages_display[@]}" || return $cannot_run
    /usr/bin/python3 -B scripts/play_session.py build/debug/bin/tarvik-demo build/session
}

tidy() {
    needs clang-tidy || return $cannot_run
    scripts/tidy.sh build/debug
}

tidy_windows() {
    needs clang-tidy "${packages_windows[@]}" || return $cannot_run
    scripts/tidy.sh build/windows
}

build_windows() {
    needs "${packages_build[@]}" "${packages_windows[@]}" || return $cannot_run
    build windows all
}

# The tree of 32-bit Wine is made once and kept; only root can make it.
wine() {
    local as_root=()
    needs "${packages_wine[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" scripts/wine32.sh setup && return 0
    echo "32-BIT WINE CANNOT BE SET UP HERE: NO TEST OF THE WINDOWS PROGRAMS RUNS." >&2
    return $cannot_run
}

# on_windows PROGRAM ARGUMENT...: runs a built test program under Wine, in a folder of its own beside
# the other programs. What was exported there is opened in a spreadsheet program afterwards.
on_windows() {
    local folder status program=$1
    shift
    scripts/wine32.sh ready || return $cannot_run
    folder=$(mktemp -d)
    cp "${WINDOWS_BIN:-build/windows/bin}"/*.exe "$folder"
    WINE32_DESKTOP=1 WINE32_TIMEOUT=${WINDOWS_TIMEOUT:-300} scripts/wine32.sh run "$folder/$program.exe" --gtest_brief=1 "$@" |
        tee "$folder/said"
    status=${PIPESTATUS[0]}
    # Whoever breaks down may still end with 0, when the debugger puts it away.
    grep -q '^\[  PASSED  \]' "$folder/said" || status=1
    if [ -e "$folder/exported.csv" ]; then
        /usr/bin/python3 -B tests/support/check_csv.py "$folder"/exported.{ini,csv} || status=1
    fi
    rm -rf "$folder"
    return "$status"
}

unit_windows() {
    on_windows unit_tests
}

# The stand-in for the system's remote access library lies in Wine's system folder meanwhile.
with_stand_in() {
    WINE32_SYSTEM="$PWD/build/windows/bin/standin/rasapi32.dll" WINEDLLOVERRIDES=rasapi32=n \
        on_windows "$@"
}

windows_tests() {
    with_stand_in windows_tests
}

kill_on_windows() {
    scripts/wine32.sh ready || return $cannot_run
    WINE32_TIMEOUT=900 scripts/wine32.sh run build/windows/bin/kill_at_every_step.exe
}

scenarios_windows() {
    on_windows scenarios_win32
}

programs_windows() {
    local status=0 only='WithoutServiceTest.*'
    needs "${packages_office[@]}" || return $cannot_run
    TARVIK_WINDOWS_BIN="$PWD/build/windows/bin" \
        /usr/bin/python3 -B -m unittest discover -s tests/outside/windows -t tests/outside || status=1
    with_stand_in outside_tests "--gtest_filter=-$only" || status=$?
    WINEDLLOVERRIDES='rasapi32=' on_windows outside_tests "--gtest_filter=$only" || status=$?
    return $status
}

# The pictures of the documents are made anew and compared with those that are there.
document_pictures() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_windows[@]}" "${packages_network[@]}" || return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    /usr/bin/python3 -B -m unittest discover -s tests/documents -t tests/documents || return 1
    scripts/pictures.sh check
}

# The packages are installed, unpacked, started, and made a second time.
made_packages() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_windows[@]}" "${packages_package[@]}" "${packages_packaged[@]}" ||
        return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    scripts/package.sh && /usr/bin/python3 -B -m unittest discover -s tests/outside/packages -t tests/outside
}

# A bare Debian 12 in a tree of its own, where run.sh, test.sh and the package meet what a newcomer's
# computer lets them meet; TARVIK_BARE sets what to try. Needs root, and an hour or more.
bare() {
    needs "${packages_bare[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || { echo "Only root can make a tree of Debian." >&2; return $cannot_run; }
    # shellcheck disable=SC2086
    scripts/bare.sh ${TARVIK_BARE:-all}
}

named=${*:+" $* "}
for word in "$@"; do
    case $word in
    help | --help | -h | --list) echo "The stages of test.sh:" && tell_stages && exit ;;
    esac
    tell_stages | grep -q "^  $word:" ||
        { echo "No stage is called $word. The stages of test.sh:" && tell_stages && exit 2; } >&2
done
can_write build || exit 1
forget_moved_builds
[ -n "$named" ] ||
    echo "All stages take 40 minutes or more; a first run also installs what they need: 4.5 GB of disk in all."

stage "packages" packages
stage "lint" lint
stage "the scripts where something is closed, missing or silent" scripts_tests
stage "build, warnings are errors" build_debug
stage "kill at every step" kill_at_every_step
stage "user stories on the scripted and the real face" scenarios
stage "the built program from outside" system_tests
stage "the built program from outside, on Wayland" system_tests_wayland
stage "the program on a real NetworkManager" network_tests
stage "a session without a display" headless_session
stage "unit, face and soak tests under AddressSanitizer and UBSan" tests_sanitized
stage "a random user on the scripted and the Linux face, sanitized" monkey
stage "fuzz targets, a fixed number of runs" fuzz
stage "clang-tidy" tidy
stage "build for Windows, warnings are errors" build_windows
stage "clang-tidy on the code for Windows" tidy_windows
stage "32-bit Wine" wine
stage "unit tests on Windows" unit_windows
stage "face and services on Windows" windows_tests
stage "kill at every step on Windows" kill_on_windows
stage "user stories on Windows" scenarios_windows
stage "the built Windows programs from outside" programs_windows
stage "the pictures of the documents" document_pictures
stage "a random user on the Windows face, checked" monkey_windows
stage "the package for Debian and the archive for Windows" made_packages
only_named "run.sh, test.sh and the package on a bare Debian 12" bare

printf '\n== Summary\n'
printf '%s\n' "${summary[@]}"
printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[ "$failed" -eq 0 ] && { [ "$skipped" -eq 0 ] || [ "${CI:-}" != true ]; }
