#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test. Each stage runs whatever became of
# those that it does not wait for; a stage that cannot run is named as skipped, which CI=true counts as
# a failure.
#
#   test.sh             all stages but those that run only when they are named, in lanes side by side
#   test.sh quick       what tells soon whether a change holds: lint, unit tests, scripted stories
#   test.sh STAGE...    these, and the builds they need, one after the other, in the order of the list
#   test.sh help        what they are called, as --list does
set -uo pipefail
exec </dev/null
cd "$(dirname "$(readlink -f "$0")")" || exit 1
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
# shellcheck source=scripts/folders_and_displays.sh
. scripts/folders_and_displays.sh

# Every test brings a display of its own; the user's stays empty, and need not even answer.
unset DISPLAY WAYLAND_DISPLAY
cannot_run=77 # the status of a stage that cannot run here
results=build/stages # what each stage said and what became of it, for those of other lanes
stages=() lanes=()
declare -A name_of after_of stages_of only_when_named

# stage NAME COMMAND LANE [STAGE...]: declares a stage. Those of one lane take turns, in the order in
# which they stand; each waits for the stages of other lanes that are named after it.
stage() {
    local name=$1 command=$2 lane=$3
    shift 3
    stages+=("$command") name_of[$command]=$name after_of[$command]=$*
    [ -n "${stages_of[$lane]:-}" ] || lanes+=("$lane")
    stages_of[$lane]+=" $command"
}

# only_named NAME COMMAND: declares a stage that runs only when it is named.
only_named() {
    stages+=("$2") name_of[$2]=$1 only_when_named[$2]=1
}

# unless_in_vain COMMAND: runs it, if what it waited for has passed: a test of programs that could not
# be built tells nothing, at length.
unless_in_vain() {
    local earlier
    for earlier in ${after_of[$1]:-}; do
        if ! grep -q ^passed "$results/$earlier"; then
            echo "Waited in vain for: ${name_of[$earlier]}" >&2
            return "$cannot_run"
        fi
    done
    "$1"
}

# run_stage COMMAND: runs it and keeps what became of it, and how long it and its processes took.
run_stage() {
    local status word TIMEFORMAT='%0R s, %0U s of a processor'
    { time unless_in_vain "$1" 2>&3; } 3>&2 2>"$results/$1.time"
    status=$?
    case $status in
    0) word='passed  ' ;;
    "$cannot_run") word=SKIPPED ;;
    *) word='FAILED ' ;;
    esac
    printf '%-8s %s (%s)\n' "$word" "${name_of[$1]}" "$(cat "$results/$1.time")" >"$results/$1.unread"
    mv "$results/$1.unread" "$results/$1"
}

# run_lane STAGE...: one stage after the other; what each one says comes when it is over.
run_lane() {
    local command earlier
    for command in "$@"; do
        for earlier in ${after_of[$command]}; do
            until [ -e "$results/$earlier" ]; do sleep 0.5; done
        done
        echo "begins: ${name_of[$command]}"
        run_stage "$command" >"$results/$command.log" 2>&1
        { flock 9 && printf '\n== %s\n' "${name_of[$command]}" && cat "$results/$command.log"; } 9>"$results/turn"
    done
}

# run_in_view STAGE...: one after the other, seen as they go.
run_in_view() {
    local command
    for command in "$@"; do
        printf '\n== %s\n' "${name_of[$command]}"
        run_stage "$command"
    done
}

# run_lanes: the lanes side by side. The first one, in plain view, comes before: whatever is installed,
# which takes minutes and may ask for a password, is in it. What waits for windows, Wine or the network
# mostly waits; builds and checks take what is left of the processors.
run_lanes() {
    local lane running=()
    # shellcheck disable=SC2086
    run_in_view ${stages_of[first]:-}
    set -m # each lane is a group of processes, which can be ended as one
    trap 'kill -TERM -- "${running[@]/#/-}" 2>/dev/null; exit 130' INT TERM
    for lane in "${lanes[@]}"; do
        [ "$lane" != first ] || continue
        {
            [[ " builds checks kills random " != *" $lane "* ]] || renice -n 10 -p "$BASHPID" >/dev/null
            # shellcheck disable=SC2086
            run_lane ${stages_of[$lane]}
        } &
        running+=($!)
    done
    wait
    trap - INT TERM
    set +m
}

# run_named: those that are named, in the order in which they stand, and before each what it waits for:
# nothing is told of what was built before a change.
run_named() {
    local command
    for command in "${stages[@]}"; do
        [[ $named != *" $command "* ]] || named+="${after_of[$command]:-} "
    done
    for command in "${stages[@]}"; do
        [[ $named != *" $command "* ]] || run_in_view "$command"
    done
}

# count WORD: how many stages became that.
count() {
    cat "${told[@]}" /dev/null | grep -c "^$1"
}

# tell_stages: what the stages are called, and what they are; to be named or not.
tell_stages() {
    local command
    for command in "${stages[@]}"; do
        echo "  $command: ${name_of[$command]}${only_when_named[$command]:+ (only when named)}"
    done
}

# build PRESET [-DOPTION...] TARGET...: configures and builds.
build() {
    local preset=$1 options=()
    shift
    while [[ $1 == -D* ]]; do
        options+=("$1")
        shift
    done
    cmake --preset "$preset" "${options[@]}" >/dev/null && cmake --build --preset "$preset" --target "$@"
}

# in_shares PROGRAM: a share of its tests for each processor, side by side; what each share said, in turn.
in_shares() {
    local share shares status=0 running=()
    shares=$(nproc)
    for ((share = 0; share < shares; share++)); do
        GTEST_TOTAL_SHARDS=$shares GTEST_SHARD_INDEX=$share "$1" --gtest_brief=1 >"$1.share$share" 2>&1 &
        running+=($!)
    done
    for ((share = 0; share < shares; share++)); do
        wait "${running[share]}" || status=1
        cat "$1.share$share"
    done
    return $status
}

packages() {
    install_missing "${packages_build[@]}" "${packages_test[@]}" "${packages_sanitizers[@]}" "${packages_display[@]}" "${packages_office[@]}" "${packages_network[@]}" "${packages_windows[@]}" "${packages_wine[@]}" \
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

build_release() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    # What is tested from outside is what the packages hold. The unit and face tests are built once, with
    # sanitizers, and once for Windows, without.
    build release -DTARVIK_TESTS=ON -DTARVIK_BENCH=ON tarvik tarvik-demo documents scenarios_scripted \
        scenarios_qt kill_at_every_step faults years_of_days day_of_ticks empty_window \
        bench_ini bench_history bench_work bench_journal bench_ledger
}

# Each file by itself, so that none leans on what another one includes.
alone() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    build debug all
}

# Every file call of the program fails or is its last, once each; prints the count of cases.
kill_at_every_step() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    build/release/bin/kill_at_every_step
}

stories() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    local status=0 face
    for face in scripted qt; do
        "build/release/bin/scenarios_$face" --gtest_brief=1 || status=1
    done
    return $status
}

build_sanitized() {
    needs "${packages_build[@]}" "${packages_library[@]}" "${packages_sanitizers[@]}" || return $cannot_run
    build sanitizers unit_tests linux_tests soak monkey_scripted monkey_qt fuzz_targets
}

build_windows_checked() {
    needs "${packages_build[@]}" "${packages_windows[@]}" || return $cannot_run
    build windows-checked monkey_win32
}

packages_quick() {
    install_missing "${packages_build[@]}" "${packages_library[@]}" "${packages_lint[@]}"
}

# What a change is checked with while it is made.
unit() {
    needs "${packages_build[@]}" "${packages_library[@]}" || return $cannot_run
    local status=0
    build quick unit_tests scenarios_scripted || return 1
    in_shares build/quick/bin/unit_tests || status=1
    build/quick/bin/scenarios_scripted --gtest_brief=1 || status=1
    return $status
}

tests_sanitized() {
    needs "${packages_build[@]}" "${packages_library[@]}" "${packages_sanitizers[@]}" || return $cannot_run
    export UBSAN_OPTIONS=print_stacktrace=1
    # The toolkit keeps memory of its own until the end, which is no leak of the program's.
    local status=0
    # The years of days take one core meanwhile; nothing in either goes by the clock.
    build/sanitizers/bin/soak &
    ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1 \
        build/sanitizers/bin/unit_tests --gtest_brief=1 || status=1
    wait $! || status=1
    ASAN_OPTIONS=detect_leaks=0 build/sanitizers/bin/linux_tests --gtest_brief=1 || status=1
    return $status
}

# A random user on the scripted and, fewer steps, on the Linux face; TARVIK_MONKEY_STEPS and
# TARVIK_MONKEY_SEED set how long and which.
monkey() {
    needs "${packages_build[@]}" "${packages_library[@]}" "${packages_sanitizers[@]}" || return $cannot_run
    export UBSAN_OPTIONS=print_stacktrace=1
    ASAN_OPTIONS=detect_leaks=1 build/sanitizers/bin/monkey_scripted &&
        TARVIK_MONKEY_STEPS=${TARVIK_MONKEY_STEPS:-25000} ASAN_OPTIONS=detect_leaks=0 build/sanitizers/bin/monkey_qt
}

# The same on the Windows face, checked as far as that compiler can; boxes take their time there.
monkey_windows() {
    needs "${packages_build[@]}" "${packages_windows[@]}" || return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    TARVIK_MONKEY_STEPS=${TARVIK_MONKEY_STEPS:-5000} WINDOWS_BIN=build/windows-checked/bin \
            WINDOWS_TIMEOUT=1200 on_windows monkey_win32
}

# So many runs of each target, the same ones every time; scripts/fuzz.sh alone searches on.
fuzz() {
    needs "${packages_build[@]}" "${packages_library[@]}" "${packages_sanitizers[@]}" || return $cannot_run
    FUZZ_RUNS=2000 scripts/fuzz.sh
}

outside_tests() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_office[@]}" || return $cannot_run
    TARVIK_DEMO="$PWD/build/release/bin/tarvik-demo" \
        /usr/bin/python3 -B -m unittest discover -s tests/outside/linux -t tests/outside
}

# The same on a Wayland compositor, apart from what only a display of X shows.
outside_tests_wayland() {
    TARVIK_DESKTOP=wayland outside_tests
}

# A world of its own with a real NetworkManager and a real VPN; needs root.
network_tests() {
    local status
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_network[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || { echo "Only root can make the world for these tests." >&2; return $cannot_run; }
    scripts/nm-rig.sh up || return $cannot_run
    scripts/nm-rig.sh run env TARVIK_DEMO="$PWD/build/release/bin/tarvik" \
        /usr/bin/python3 -B -m unittest discover -s tests/outside/network -t tests/outside
    status=$?
    scripts/nm-rig.sh down
    return $status
}

headless_session() {
    needs "${packages_build[@]}" "${packages_display[@]}" || return $cannot_run
    /usr/bin/python3 -B scripts/play_session.py build/release/bin/tarvik-demo build/session
}

tidy() {
    needs clang-tidy || return $cannot_run
    scripts/tidy.sh build/release
}

tidy_windows() {
    needs clang-tidy "${packages_windows[@]}" || return $cannot_run
    cmake --preset windows >/dev/null && scripts/tidy.sh build/windows
}

build_windows() {
    needs "${packages_build[@]}" "${packages_windows[@]}" || return $cannot_run
    build windows all
}

# The tree of 32-bit Wine is made once and kept; only root can make it.
wine() {
    local as_root=()
    needs "${packages_wine[@]}" || return $cannot_run
    scripts/wine32.sh ready && return 0
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
    WINE32_DESKTOP=1 WINE32_TIMEOUT=${WINDOWS_TIMEOUT:-900} scripts/wine32.sh run "$folder/$program.exe" --gtest_brief=1 "$@" |
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
    WINE32_TIMEOUT=2400 scripts/wine32.sh run build/windows/bin/kill_at_every_step.exe
}

stories_windows() {
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

# The screenshots of the documents are made anew and compared with those that are there.
document_screenshots() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_windows[@]}" "${packages_network[@]}" || return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    /usr/bin/python3 -B -m unittest discover -s tests/documents -t tests/documents || return 1
    scripts/screenshots.sh check
}

# The packages are installed, unpacked, started, and made a second time.
made_packages() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_windows[@]}" "${packages_package[@]}" "${packages_packaged[@]}" ||
        return $cannot_run
    scripts/wine32.sh ready || return $cannot_run
    scripts/package.sh && /usr/bin/python3 -B -m unittest discover -s tests/outside/packages -t tests/outside
}

# The code is broken on purpose, in one place at a time; takes some ten minutes.
mutants() {
    needs "${packages_build[@]}" "${packages_library[@]}" git python3 || return $cannot_run
    /usr/bin/python3 -B scripts/mutants.py
}

# What things cost beside what stands there, against the stored ratios; nothing else may run meanwhile.
speed() {
    needs "${packages_build[@]}" "${packages_display[@]}" "${packages_bench[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || { echo "Only root can measure the network." >&2; return $cannot_run; }
    scripts/bench.sh --check
}

# A bare Debian 12 in a tree of its own, where run.sh, test.sh and the package meet what a newcomer's
# computer lets them meet; TARVIK_BARE sets what to try. Needs root, and an hour or more.
bare() {
    needs "${packages_bare[@]}" || return $cannot_run
    [ "$(id -u)" -eq 0 ] || { echo "Only root can make a tree of Debian." >&2; return $cannot_run; }
    # shellcheck disable=SC2086
    scripts/bare.sh ${TARVIK_BARE:-all}
}

only_named "packages for the quick tests" packages_quick
stage "packages" packages first
stage "32-bit Wine" wine first
stage "lint" lint checks
stage "the scripts where something is closed, missing or silent" scripts_tests checks
stage "build for Windows, warnings are errors" build_windows builds
stage "build, warnings are errors" build_release builds
stage "build with AddressSanitizer and UBSan" build_sanitized builds
stage "user stories on the scripted and the real face" stories desktop build_release
stage "the built program from outside" outside_tests desktop build_release
stage "the built program from outside, on Wayland" outside_tests_wayland wayland build_release
stage "the program on a real NetworkManager" network_tests network build_release
stage "a session without a display" headless_session desktop build_release
stage "build for Windows, checked" build_windows_checked builds
stage "clang-tidy" tidy builds build_release
stage "clang-tidy on the code for Windows" tidy_windows builds
stage "kill at every step" kill_at_every_step checks build_release
stage "unit, face and soak tests under AddressSanitizer and UBSan" tests_sanitized checks build_sanitized
stage "a random user on the scripted and the Linux face, sanitized" monkey random build_sanitized
stage "fuzz targets, a fixed number of runs" fuzz random build_sanitized
stage "kill at every step on Windows" kill_on_windows kills build_windows
stage "unit tests on Windows" unit_windows wine build_windows
stage "face and services on Windows" windows_tests wine build_windows
stage "user stories on Windows" stories_windows wine build_windows
stage "the built Windows programs from outside" programs_windows wine build_windows
stage "the screenshots of the documents" document_screenshots wine build_release build_windows
stage "a random user on the Windows face, checked" monkey_windows wine build_windows_checked
stage "the package for Debian and the archive for Windows" made_packages wine build_release
only_named "unit tests and user stories on the scripted face" unit
only_named "build of each file by itself" alone
only_named "costs beside what stands there, against the stored ratios" speed
only_named "breaks of the journal's code, each of which its tests must notice" mutants
only_named "run.sh, test.sh and the package on a bare Debian 12" bare

named=${*:+" $* "}
named=${named/ quick / packages_quick lint unit }
for word in $named; do
    case $word in
    help | --help | -h | --list) echo "The stages of test.sh:" && tell_stages && exit ;;
    esac
    [ -n "${name_of[$word]:-}" ] ||
        { echo "No stage is called $word. The stages of test.sh:" && tell_stages && exit 2; } >&2
done
can_write build || exit 1
forget_moved_builds
rm -rf "$results" && mkdir -p "$results" || exit 1
if [ -n "$named" ]; then
    run_named
else
    echo "All stages take half an hour; a first run also installs what they need: 4.5 GB of disk in all."
    run_lanes
fi

told=()
for command in "${stages[@]}"; do
    [ ! -e "$results/$command" ] || told+=("$results/$command")
done
printf '\n== Summary\n'
cat "${told[@]}" /dev/null
passed=$(count passed) failed=$(count FAILED) skipped=$(count SKIPPED)
printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
[ "$failed" -eq 0 ] && { [ "$skipped" -eq 0 ] || [ "${CI:-}" != true ]; }
