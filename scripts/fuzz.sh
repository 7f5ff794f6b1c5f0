#!/usr/bin/env bash
# Builds the fuzz targets and runs them: fuzz.sh [seconds for each, 180 unless told [target ...]]. They
# begin with the seeds and, where tests/fuzz/corpus is there, with what earlier searches have kept in it;
# what is found stays in build/fuzz/corpus for the next time, and for an input that breaks something the
# command that shows it again is printed. With FUZZ_RUNS set, instead, so many runs of each target from
# what is checked in, the same ones every time. "fuzz.sh keep [target ...]" searches nothing: the fewest
# inputs that reach all that was reached go into tests/fuzz/corpus, which is made if it is not there.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."
# shellcheck source=scripts/packages.sh
. scripts/packages.sh

seconds=${1:-180}
shift || true
corpus=tests/fuzz/corpus
install_missing "${packages_build[@]}" "${packages_library[@]}" "${packages_sanitizers[@]}"
cmake --preset sanitizers >/dev/null
cmake --build --preset sanitizers --target fuzz_targets

chosen=("$@")
[ ${#chosen[@]} -gt 0 ] || mapfile -t chosen < <(basename -a tests/fuzz/target_*.cpp | sed 's/^target_//; s/\.cpp$//')
limits=(-rss_limit_mb=1024 -malloc_limit_mb=512 -timeout=10 -dict=tests/fuzz/tarvik.dict)
mkdir -p build/fuzz
status=0
summary=()

# longest TARGET: of its inputs; a journal has three places of 4 KiB, behind one byte.
longest() {
    [ "$1" = journal ] && echo -max_len=12289 || echo -max_len=4096
}

# fuzz TARGET ARGUMENT...: one target; keeps the line for the summary, or shows what broke.
fuzz() {
    local target=$1 log=build/fuzz/$1.log
    shift
    if "build/sanitizers/bin/fuzz_$target" "${limits[@]}" "$(longest "$target")" -print_final_stats=1 \
        "-artifact_prefix=build/fuzz/$target-" "$@" >"$log" 2>&1; then
        summary+=("$(printf '%-10s %9s runs, %s' "$target" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
            "$(grep -o 'cov: [0-9]*' "$log" | tail -n 1)")")
    else
        status=1
        summary+=("$(printf '%-10s BROKEN' "$target")")
        tail -n 40 "$log" >&2
        printf 'Again: build/sanitizers/bin/fuzz_%s %s\n' "$target" \
            "$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)" >&2
    fi
}

# found TARGET: what earlier searches have kept of it, as files in build/fuzz/found; none if none did.
found() {
    rm -rf "build/fuzz/found/$1" && mkdir -p "build/fuzz/found/$1"
    [ ! -e "$corpus/$1.tar.gz" ] || tar -xzf "$corpus/$1.tar.gz" -C "build/fuzz/found/$1"
}

# keep TARGET: puts what was found into the archive that is checked in, the same bytes for the same files.
keep() {
    local least=build/fuzz/least/$1
    rm -rf "$least" && mkdir -p "$least" "build/fuzz/corpus/$1" "$corpus"
    "build/sanitizers/bin/fuzz_$1" "${limits[@]}" "$(longest "$1")" -set_cover_merge=1 "$least" "build/fuzz/corpus/$1" \
        "build/fuzz/found/$1" "tests/fuzz/seeds/$1" >"build/fuzz/$1.log" 2>&1 || return
    tar --sort=name --mtime=@0 --owner=0 --group=0 --numeric-owner -C "$least" -cf - . | gzip -n9 >"$corpus/$1.tar.gz"
    summary+=("$(printf '%-10s %4d inputs, %d bytes' "$1" "$(find "$least" -type f | wc -l)" "$(wc -c <"$corpus/$1.tar.gz")")")
}

for target in "${chosen[@]}"; do
    found "$target"
    if [ "$seconds" = keep ]; then
        keep "$target" || { status=1 && summary+=("$(printf '%-10s NOT KEPT: build/fuzz/%s.log' "$target" "$target")"); }
    elif [ -n "${FUZZ_RUNS:-}" ]; then
        # What it finds new goes into the first folder.
        rm -rf "build/fuzz/fixed/$target" && mkdir -p "build/fuzz/fixed/$target"
        fuzz "$target" -seed=1 "-runs=$FUZZ_RUNS" -reload=0 "build/fuzz/fixed/$target" \
            "tests/fuzz/seeds/$target" "build/fuzz/found/$target"
    else
        mkdir -p "build/fuzz/corpus/$target"
        fuzz "$target" "-max_total_time=$seconds" "build/fuzz/corpus/$target" "tests/fuzz/seeds/$target" \
            "build/fuzz/found/$target"
    fi
done
printf '%s\n' "${summary[@]}"
exit $status
