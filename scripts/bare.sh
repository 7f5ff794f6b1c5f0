#!/usr/bin/env bash
# What a newcomer's computer makes of run.sh, test.sh and the package: tries them on a bare Debian 12, in
# a tree of its own. Needs root. Packages come from where this machine's apt has them.
#
#   bare.sh [WHAT...]   what to try, everything unless told; each trial gets a fresh copy of the tree
#
#     run     run.sh as root, and as a user without sudo, and with one of each kind
#     test    test.sh as root, then what differs for a user who has sudo
#     deb     the package: built, installed, started, removed
#     faults  run.sh in a path with blanks and umlauts, on displays that do not answer, without a
#             network, and where it may not write
#     NAME    one trial alone, as its log is called: run_user, deb_install
#
# Environment:
#   BARE_ROOT    where the tree is made, once, and kept with the fetched packages
#                (default /var/cache/velmars-tarvik/bare)
#   BARE_STAGES  stages of test.sh for `test` (default: all of them)
#
# A trial runs in its own mount, pid and ipc namespaces, with a clean environment, no terminal, no
# display, and the sources as an archive holds them. What it says is in BARE_ROOT/TRIAL.log.
set -euo pipefail
self=$(readlink -f "$0")
root=${BARE_ROOT:-/var/cache/velmars-tarvik/bare}
suite=bookworm
# shellcheck source=scripts/debian_tree.sh
. "${self%/*}/debian_tree.sh"
# shellcheck source=scripts/bare_trials.sh
. "${self%/*}/bare_trials.sh"

# --- the tree ---------------------------------------------------------------------------------

# apt_sources: those of the suite and what follows it, as sources.list has them.
apt_sources() {
    # shellcheck disable=SC2016 # apt-get fills these in
    apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
        awk -v suite="$suite" 'index($3, suite) == 1' | sort -u
}

# give_apt FOLDER: lets the tree's apt have what this machine's has: sources, keys, and how to get there.
give_apt() {
    local etc=$1/etc/apt kind
    apt_sources >"$etc/sources.list"
    apt-config dump Acquire >"$etc/apt.conf.d/90acquire"
    for kind in auth.conf auth.conf.d trusted.gpg trusted.gpg.d keyrings; do
        [ ! -e "/etc/apt/$kind" ] || cp -a "/etc/apt/$kind" "$etc/"
    done
    if grep -q 'https:' "$etc/sources.list"; then
        mkdir -p "$1/etc/ssl"
        cp -rL /etc/ssl/certs "$1/etc/ssl/"
    fi
    cat /etc/hosts >"$1/etc/hosts"
}

setup() {
    local stamp
    stamp="2 $suite $(apt_sources)"
    [ "$(cat "$root/ready" 2>/dev/null)" != "$stamp" ] || return 0
    echo "bare: debootstrap of $suite (takes a minute)"
    rm -f "$root/ready"
    make_debian amd64 "$suite" "$root/tree"
    rm -rf "$root"/tree/var/cache/apt/archives/*.deb "$root"/tree/var/lib/apt/lists/*
    give_apt "$root/tree"
    chroot "$root/tree" useradd -m -s /bin/bash bob
    printf '%s\n' "$stamp" >"$root/ready"
}

# copy_sources FOLDER: the files that are kept, without the repository, as an archive holds them.
copy_sources() {
    cd "${self%/*}/.."
    rm -rf "$1"
    mkdir -p "$1"
    {
        git -c safe.directory='*' ls-files -z --cached --others --exclude-standard 2>/dev/null ||
            find . -path ./build -prune -o -path ./out -prune -o -type f -print0
    } | tar -c --null -T - | tar -x -C "$1" --no-same-owner
}

# --- a trial ----------------------------------------------------------------------------------

# trial NAME: runs the function of that name in a fresh copy of the tree; it ends with this script.
trial() {
    local name=$1 status=0 begin=$SECONDS work=$root/trial
    printf '\n== %s\n' "$name"
    rm -rf --one-file-system "$work"
    mkdir -p "$work"/{up,work,top} "$root"/archives/partial "$root/exchange"
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root BARE_ROOT="$root" ${http_proxy:+http_proxy="$http_proxy"} \
        ${https_proxy:+https_proxy="$https_proxy"} BARE_STAGES="${BARE_STAGES:-}" BARE_LOG="/mnt/$name.log" \
        setsid --wait setpriv --pdeathsig KILL unshare --mount --propagation private --pid --ipc --fork --kill-child \
        "$self" __inside "$name" </dev/null || status=$?
    cp "$root/exchange/$name.log" "$root/$name.log" 2>/dev/null || true
    summary+=("$([ $status = 0 ] && echo 'passed  ' || echo 'FAILED  ') $name ($((SECONDS - begin)) s, $(du -sm "$work/up" | cut -f1) MB more than the bare system)")
    [ $status = 0 ] || failed=1
    rm -rf --one-file-system "$work"
}

# inside NAME: the first process of a trial's namespaces: moves into the tree. A chroot would not do:
# what enters the mount namespace of such a process would be outside.
inside() {
    local top=$root/trial/top
    mount -t overlay overlay -o "lowerdir=$root/tree,upperdir=$root/trial/up,workdir=$root/trial/work" "$top"
    mount -t proc proc "$top/proc"
    mount -t sysfs -o ro sysfs "$top/sys"
    mount --rbind /dev "$top/dev"
    mount -t tmpfs -o mode=1777 tmpfs "$top/dev/shm"
    mount -t tmpfs -o mode=755 tmpfs "$top/run"
    mount --bind "$root/exchange" "$top/mnt"
    mount --bind "$root/archives" "$top/var/cache/apt/archives"
    cat /etc/resolv.conf >"$top/etc/resolv.conf"
    # The tree is thrown away: nothing has to reach the disk before dpkg goes on.
    echo force-unsafe-io >"$top/etc/dpkg/dpkg.cfg.d/thrown-away"
    mkdir "$top/before"
    cd "$top"
    pivot_root . before
    cd /
    umount -l /before
    rmdir /before
    unset BARE_ROOT
    : >"$BARE_LOG"
    "trial_$1"
    [ "$faults" = 0 ]
}

# --- what to try ------------------------------------------------------------------------------

try() {
    case $1 in
    run) trial run_root && trial run_user ;;
    test) trial test_root && trial test_user ;;
    deb) trial deb_build && trial deb_install ;;
    faults) trial faults ;;
    all) try run && try faults && try deb && try test ;;
    *) trial "$1" ;;
    esac
}

if [ "${1:-}" = __inside ]; then
    inside "$2"
    exit
fi
# A function is read as a whole: who edits this file meanwhile does not change what runs.
main() {
    local trials
    trials=$(declare -F | sed -n 's/^declare -f trial_/|/p' | tr -d '\n')
    if [[ ! " ${*:-all} " =~ ^(\ (run|test|deb|all$trials))+\ $ ]]; then
        sed -n '2,/^set -e/{/^set -e/d;s/^# \{0,1\}//;p}' "$self"
        exit 2
    fi
    [ "$(id -u)" = 0 ] || { echo "bare: needs root" >&2; exit 77; }
    mkdir -p "$root"
    exec 9>"$root/lock"
    flock 9
    summary=() failed=0
    setup
    copy_sources "$root/exchange/sources"
    for what in "${@:-all}"; do try "$what"; done
    printf '\n'
    printf '%s\n' "${summary[@]}"
    exit $failed
}
main "$@"
