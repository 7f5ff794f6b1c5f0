# shellcheck shell=bash disable=SC2034
# Packages of Debian 12 that building, running and testing need. Sourced, not run.

packages_build=(g++ cmake ninja-build qt6-base-dev libgl1-mesa-dev libsdbus-c++-dev libxcb1-dev)
packages_display=(xvfb weston qt6-wayland wayland-utils openbox dbus-daemon at-spi2-core python3 python3-gi gir1.2-atspi-2.0 imagemagick xdotool x11-utils fonts-noto-core trayer dunst)
packages_bench=(libglib2.0-dev)
packages_package=(dpkg-dev file gzip zip)
packages_packaged=(lintian appstream desktop-file-utils man-db fakeroot binutils unzip)
packages_sanitizers=(clang libclang-rt-dev llvm)
packages_office=(libreoffice-calc-nogui qt6-gtk-platformtheme)
packages_library=(libgtest-dev libgmock-dev)
packages_lint=(clang-format git python3 shellcheck pyflakes3)
packages_network=(network-manager network-manager-openvpn openvpn dbus-daemon iproute2 openssl procps)
packages_windows=(g++-mingw-w64-i686-posix googletest)
packages_wine=(debootstrap util-linux xvfb openbox imagemagick xdotool python3 python3-pefile)
# Not of this machine, but of the tree of i386 that wine32.sh makes; its order is in the mark of a tree that is there.
packages_wine_tree=(wine32 libwine fonts-wine fonts-liberation libxrender1 libxcursor1 libxfixes3 libxi6 libxrandr2 libxinerama1 libxcomposite1)
packages_bare=(debootstrap util-linux)
packages_test=("${packages_library[@]}" "${packages_lint[@]}" clang-tidy gcovr)

# missing_of PACKAGE...: those that are not installed, a line each.
missing_of() {
    local package known
    known=$(dpkg-query -W -f '\n${Package} ${db:Status-Abbrev}' "$@" 2>/dev/null) || true
    for package in "$@"; do
        [[ $known == *$'\n'"$package ii"* ]] || echo "$package"
    done
}

# needs PACKAGE...: false, with a word about it, when one is not installed.
needs() {
    local missing
    mapfile -t missing < <(missing_of "$@")
    [ ${#missing[@]} -eq 0 ] || { echo "Not installed: ${missing[*]}" >&2; return 1; }
}

# quoted MARK TEXT: the text as a word to be typed, between two such marks where they will do.
quoted() {
    if [[ $2 == *[\"\$\`\\\'\!]* ]]; then printf '%q' "$2"; else printf '%s%s%s' "$1" "$2" "$1"; fi
}

# by_root COMMAND [FILE...]: what somebody types at a terminal to have root do this to the files.
by_root() {
    local as=(su - -c) command=$1 file
    ! command -v sudo >/dev/null || [[ " $(id -nG) " != *" sudo "* ]] || as=(sudo sh -c)
    shift
    for file in "$@"; do command+=" $(quoted '"' "$file")"; done
    [[ $command == *\'* ]] && command=${command@Q} || command="'$command'"
    printf '    %s %s\n' "${as[*]}" "$command"
}

# sudo_lets_install: sets as_root to sudo and what it lets the user say; false where it lets nothing
# be installed, or not without asking. Who may use apt-get alone may not set variables for it.
sudo_lets_install() {
    as_root=(sudo DEBIAN_FRONTEND=noninteractive)
    ! sudo -n "${as_root[1]}" apt-get install --help >/dev/null 2>&1 || return 0
    as_root=(sudo)
    sudo -n apt-get install --help >/dev/null 2>&1
}

# become_root: sets as_root to the words that make apt-get root's; false where they do not help.
become_root() {
    as_root=(env DEBIAN_FRONTEND=noninteractive)
    [ "$(id -u)" -ne 0 ] || return 0
    command -v sudo >/dev/null || return 1
    ! sudo_lets_install || return 0
    { : </dev/tty; } 2>/dev/null || return 1
    echo "sudo may ask for your password: packages have to be installed."
    # Of what it forbids it says nothing; where it forgets the password at once it says so, and asks again.
    sudo -v && { sudo_lets_install || [ -n "$(sudo -n -l apt-get install --help 2>&1)" ]; }
}

# let_root_install PACKAGE...: what somebody who may not install can do about it.
let_root_install() {
    echo "Only root can install what is missing. Type this and start again:" >&2
    by_root "apt-get update && apt-get install -y --no-install-recommends $*" >&2
}

# show_progress: of what apt-get says, how much there is to do and, in steps, how much is done.
show_progress() {
    local line all='?' fetched=0 unpacked=0 done=0
    while IFS= read -r line; do
        case $line in
        *" newly installed,"*) all=${line%% newly installed*} all=${all##* } ;;
        "Need to get "* | "After this operation, "*) echo "  $line" ;;
        "Get:"*) ((++fetched % 100)) || echo "  $fetched of $all fetched" ;;
        "Unpacking "*) ((++unpacked % 100)) || echo "  $unpacked of $all unpacked" ;;
        "Setting up "*) ((++done % 100)) || echo "  $done of $all set up" ;;
        esac
    done
}

# tell_why LOG PACKAGE...: one line about why these were not installed, after apt-get's own.
tell_why() {
    if grep -qE '^Sorry, user|^sudo: (sorry|a (password|terminal) is)' "$1"; then
        let_root_install "${@:2}"
        return
    fi
    sed -nE '/by (glob|regex)/d; s/^E: /  apt-get: /p' "$1" | sort -u | head -n 3 >&2
    if grep -qE 'Unable to locate|Failed to fetch|no installation candidate' "$1"; then
        echo "Nothing was installed: the sources in /etc/apt cannot be reached, or are not those of Debian 12." >&2
    else
        echo "Not everything was installed: see to what apt-get says, and start again." >&2
    fi
}

# install_missing PACKAGE...: installs what is not there; 77 when that cannot be done.
install_missing() {
    local missing log status=0 as_root
    mapfile -t missing < <(missing_of "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    become_root || { let_root_install "${missing[@]}" && return 77; }
    echo "Installing, which can take minutes: ${missing[*]}"
    log=$(mktemp)
    # Without a network, lists from before may still do.
    LC_ALL=C "${as_root[@]}" apt-get update >"$log" 2>&1 </dev/null || true
    # Something else may be installing just now, as after the start of a desktop. Where sudo keeps
    # the word for it from apt-get, a package has nobody to ask for want of a terminal.
    LC_ALL=C TERM=dumb "${as_root[@]}" apt-get install -y -q -o DPkg::Lock::Timeout=300 \
        -o Dpkg::Use-Pty=0 --no-install-recommends "${missing[@]}" 2>&1 </dev/null |
        tee -a "$log" | show_progress || true
    [ -z "$(missing_of "$@")" ] || { status=77 && tell_why "$log" "${missing[@]}"; }
    rm -f "$log"
    return $status
}
