# shellcheck shell=bash
# The trials of bare.sh: each runs as the first process of a bare Debian 12. Sourced, not run.

faults=0

# told SENTENCE: what became of one step.
told() { echo "$1" | tee -a "$BARE_LOG"; }

# expect STATUS PATTERN WHAT COMMAND...: runs the command and looks at its status and, when the pattern
# is not empty, for a line that fits it. What it said is in the log, and its end here when it failed.
expect() {
    local status=0 wanted=$1 pattern=$2 what=$3 said begin=$SECONDS
    shift 3
    said=$(mktemp)
    "$@" >"$said" 2>&1 </dev/null || status=$?
    { echo "-- $what: $*" && cat "$said"; } >>"$BARE_LOG"
    if [ "$status" = "$wanted" ] && { [ -z "$pattern" ] || grep -qE -- "$pattern" "$said"; }; then
        told "ok      $what ($((SECONDS - begin)) s)"
    else
        told "FAILED  $what ($((SECONDS - begin)) s): status $status, wanted $wanted and: $pattern"
        tail -n 15 "$said"
        faults=$((faults + 1))
    fi
    rm -f "$said"
}

# bob COMMAND...: as an ordinary user who has just logged in.
bob() {
    setpriv --reuid=bob --regid=bob --init-groups env -i HOME=~bob USER=bob LOGNAME=bob SHELL=/bin/bash \
        PATH=/usr/local/bin:/usr/bin:/bin ${http_proxy:+http_proxy="$http_proxy"} \
        ${https_proxy:+https_proxy="$https_proxy"} "$@"
}

# unpack FOLDER [OWNER]: the sources, as somebody has unpacked them there.
unpack() {
    mkdir -p "$(dirname "$1")"
    cp -r /mnt/sources "$1"
    chown -R "${2:-root}:" "$1"
}

offline() { unshare --net --mount sh -c 'umount /var/cache/apt/archives; exec "$@"' offline "$@"; }

# allow_sudo RULE: installs sudo where it is missing; the rule is what bob may do.
allow_sudo() {
    command -v sudo >/dev/null || { apt-get update -q && apt-get install -y -q sudo; } >>"$BARE_LOG" 2>&1
    echo "bob ALL=(ALL:ALL) $1" >/etc/sudoers.d/bob
    echo 'bob:einlass' | chpasswd
    usermod -a -G sudo bob
}

# at_terminal PASSWORD COMMAND...: bob at a terminal, who types the password when he is asked; early
# words are lost, so it is typed a few times.
at_terminal() {
    local password=$1
    shift
    for _ in 1 2 3 4 5; do sleep 2 && echo "$password"; done | bob script -qec "${*@Q}" /dev/null
}

# The session that run.sh plays has left its screenshot and its file.
session_left() { [ -s "$1/out/session.png" ] && grep -q '^IsLocked=0' "$1/out/Tarvik.ini"; }

plays='^INI file: '
no_network='^Nothing was installed: the sources in /etc/apt cannot be reached'
only_root='^Only root can install what is missing'

trial_run_root() {
    unpack /root/tarvik
    expect 77 "$no_network" "run.sh as root without a network" offline /root/tarvik/run.sh
    expect 0 "$plays" "run.sh as root" /root/tarvik/run.sh
    expect 0 "" "its screenshot and its file are there" session_left /root/tarvik
    expect 0 "$plays" "run.sh as root again" /root/tarvik/run.sh
}

trial_run_user() {
    unpack ~bob/tarvik bob
    expect 77 "^    su - -c 'apt-get update && apt-get install .*g\+\+ .*xvfb" "run.sh without sudo" bob ~bob/tarvik/run.sh
    allow_sudo ALL
    expect 77 "^    sudo sh -c 'apt-get" "run.sh with sudo that wants a password, no terminal" bob ~bob/tarvik/run.sh
    allow_sudo NOPASSWD:ALL
    expect 0 "$plays" "run.sh with sudo" bob ~bob/tarvik/run.sh
    expect 0 "" "its screenshot and its file are there" session_left ~bob/tarvik
    expect 0 "$plays" "run.sh again, which installs nothing" bob ~bob/tarvik/run.sh
    allow_sudo "NOPASSWD: /usr/bin/apt-get"
    apt-get purge -y -q trayer >>"$BARE_LOG" 2>&1
    expect 0 "^Installing, which can take minutes: trayer" "run.sh with sudo for apt-get alone" bob ~bob/tarvik/run.sh
    apt-get purge -y -q trayer >>"$BARE_LOG" 2>&1
    allow_sudo "NOPASSWD: /usr/bin/id"
    expect 77 "^    sudo sh -c 'apt-get" "run.sh with sudo for something else, no terminal" bob ~bob/tarvik/run.sh
    allow_sudo ALL
    expect 0 "^Installing, which can take minutes: trayer" "run.sh with sudo that wants a password, at a terminal" \
        at_terminal einlass ~bob/tarvik/run.sh
}

trial_test_root() {
    unpack /root/tarvik
    # shellcheck disable=SC2086
    expect 0 "^[0-9]+ passed, 0 failed, 0 skipped" "test.sh as root" env CI=true /root/tarvik/test.sh ${BARE_STAGES:-}
    sed -n '/^== Summary/,$p' "$BARE_LOG"
}

trial_test_user() {
    unpack ~bob/tarvik bob
    expect 0 "^  lint: lint" "test.sh help" bob ~bob/tarvik/test.sh help
    expect 2 "^No stage is called lnit" "test.sh with a stage that nobody knows" bob ~bob/tarvik/test.sh lnit
    expect 0 "$only_root" "test.sh without sudo" bob ~bob/tarvik/test.sh packages
    allow_sudo NOPASSWD:ALL
    expect 0 "^[0-9]+ passed, 0 failed, 0 skipped" "test.sh with sudo" bob CI=true ~bob/tarvik/test.sh \
        packages lint scripts_tests
    allow_sudo ALL
    apt-get purge -y -q trayer >>"$BARE_LOG" 2>&1
    expect 0 "^Installing, which can take minutes: trayer" "test.sh with sudo that wants a password, at a terminal" \
        at_terminal einlass ~bob/tarvik/test.sh packages wine
    rm -rf /var/lib/sudo/ts /run/sudo/ts
    expect 0 "^2 passed, 0 failed, 0 skipped" "test.sh again, which asks for no password" \
        bob CI=true ~bob/tarvik/test.sh packages wine
    sed -n '/^== Summary/,$p' "$BARE_LOG"
}

trial_deb_build() {
    unpack /root/tarvik
    rm -f /mnt/*.deb
    expect 0 "" "package.sh" /root/tarvik/scripts/package.sh
    cp /root/tarvik/build/packages/*.deb /mnt/ || faults=1
}

# starts_and_ends: the installed demo reads a file, is there for ten seconds, and saves when it is asked
# to end.
starts_and_ends() {
    local data=~bob/data/velmars-tarvik
    bob mkdir -p "$data"
    printf '[Settings]\nRefreshInterval=200\n' | bob tee "$data/Tarvik.ini"
    bob XDG_DATA_HOME=~bob/data xvfb-run -a timeout --preserve-status 10 tarvik-demo || return
    cat "$data/Tarvik.ini"
    find ~bob -name '*arvik*' | sort
    grep -q '^IsLocked=0' "$data/Tarvik.ini" && grep -q '^RefreshInterval=200' "$data/Tarvik.ini"
}

nothing_left() {
    find / -xdev -path /mnt -prune -o -path ~bob -prune -o -path /proc -prune -o -name '*tarvik*' -print |
        grep -v '^/var/cache/apt\|^/var/log' >/tmp/left || true
    cat /tmp/left
    [ ! -s /tmp/left ] && ! dpkg -s tarvik && [ -s ~bob/data/velmars-tarvik/Tarvik.ini ]
}

trial_deb_install() {
    local package
    package=$(echo /mnt/tarvik_*.deb)
    apt-get update -q >>"$BARE_LOG" 2>&1
    expect 0 "^Inst (network-manager|qt6-wayland) .*" "what it recommends would come" apt-get install -s "$package"
    expect 0 "" "apt-get install" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "$package" xvfb xauth
    expect 0 "" "every file as in the package" dpkg -V tarvik
    expect 0 "" "the demo starts, and ends when it is asked to" starts_and_ends
    expect 0 "" "apt-get remove" apt-get remove -y -q tarvik
    expect 0 "" "nothing is left but what is the user's" nothing_left
}

# silent SOCKET: takes connections there and never answers.
silent() {
    /usr/bin/python3 /mnt/sources/scripts/silent_socket.py "$1" &
    until [ -S "$1" ]; do sleep 0.1; done
    chmod 777 "$1"
}

# opens COMMAND...: a window of the demo comes up on the display; then the demo is ended.
opens() {
    local window
    "$@" &
    window=$(timeout 120 xdotool search --sync --onlyvisible --name 'Velmars Tarvik' | head -n 1)
    [ -n "$window" ] && kill -KILL "$(xdotool getwindowpid "$window")" && ! wait $!
}

trial_faults() {
    local at=~bob/"Öl und Gas"
    allow_sudo NOPASSWD:ALL
    unpack "$at" bob
    expect 0 "$plays" "a path with blanks and umlauts" bob "$at/run.sh"
    expect 0 "^The display :77 does not answer" "a display that is not there" bob DISPLAY=:77 "$at/run.sh"
    expect 0 "^The display wayland-7 does not answer" "a Wayland display that is not there" \
        bob WAYLAND_DISPLAY=wayland-7 "$at/run.sh"
    mkdir -p /tmp/.X11-unix && chmod 1777 /tmp/.X11-unix
    silent /tmp/.X11-unix/X78
    silent /tmp/wayland-8
    expect 0 "^The display :78 does not answer" "a display that never answers" bob DISPLAY=:78 "$at/run.sh"
    expect 0 "^The display /tmp/wayland-8 does not answer" "a Wayland display that never answers" \
        bob WAYLAND_DISPLAY=/tmp/wayland-8 "$at/run.sh"
    Xvfb :79 -ac -nolisten tcp >/dev/null 2>&1 &
    until [ -S /tmp/.X11-unix/X79 ]; do sleep 0.1; done
    export DISPLAY=:79
    expect 0 "" "a display that answers" opens bob DISPLAY=:79 "$at/run.sh"
    expect 0 "" "a display that answers beside one that does not" \
        opens bob DISPLAY=:79 WAYLAND_DISPLAY=/tmp/wayland-8 "$at/run.sh"
    apt-get purge -y -q x11-utils >>"$BARE_LOG" 2>&1
    rm /etc/sudoers.d/bob
    expect 0 "^The display :79 cannot be asked" "a display that cannot be asked" opens bob DISPLAY=:79 "$at/run.sh"
    unset DISPLAY
    allow_sudo NOPASSWD:ALL
    apt-get install -y -q x11-utils >>"$BARE_LOG" 2>&1

    apt-get purge -y -q trayer >>"$BARE_LOG" 2>&1
    expect 77 "$no_network" "no network" offline setpriv --reuid=bob --regid=bob --init-groups "$at/run.sh"
    apt-get install -y -q trayer >>"$BARE_LOG" 2>&1

    chown -R root: "$at/build"
    expect 1 "belongs to root" "what root has built" bob "$at/run.sh"
    expect 1 "^    sudo sh -c 'chown -R " "the same for test.sh" bob "$at/test.sh" lint
    expect 0 "" "what it tells to type" mended "$at"
    expect 0 "$plays" "run.sh once that was done" bob "$at/run.sh"

    mount --bind "$at" "$at" && mount -o remount,bind,ro "$at"
    expect 1 "^Nothing can be written in $at" "a folder that is read-only" bob "$at/run.sh"
    expect 1 "^Nothing can be written in $at" "the same for root" "$at/run.sh"
    umount "$at"
    unpack /srv/tarvik
    expect 1 "^    cp -r '/srv/tarvik' " "a folder of somebody else" bob /srv/tarvik/run.sh
    mv "$at" ~bob/elsewhere
    expect 0 "is built anew" "a folder that was moved" bob ~bob/elsewhere/run.sh
}

# mended FOLDER: does what run.sh tells bob to type, as root.
mended() {
    local command
    command=$({ bob "$1/run.sh" 2>&1 || true; } | sed -n 's/^    sudo //p')
    [ -n "$command" ] && bash -c "$command"
}
