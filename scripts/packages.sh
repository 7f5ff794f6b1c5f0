# shellcheck shell=bash disable=SC2034
# Packages of Debian 12 that building, running and testing need. Sourced, not run.

packages_build="g++ cmake ninja-build qt6-base-dev libgl1-mesa-dev libsdbus-c++-dev"
packages_display="xvfb weston qt6-wayland openbox dbus-daemon at-spi2-core python3 python3-gi gir1.2-atspi-2.0 imagemagick xdotool x11-utils fonts-noto-core trayer dunst"
packages_bench="libglib2.0-dev"
packages_package="dpkg-dev file gzip zip"
packages_packaged="lintian appstream desktop-file-utils man-db fakeroot binutils unzip"
packages_fuzz="clang libclang-rt-dev llvm"
packages_office="libreoffice-calc-nogui"
packages_library="libgtest-dev libgmock-dev"
packages_lint="clang-format python3"
packages_network="network-manager network-manager-openvpn openvpn dbus-daemon iproute2 openssl procps"
packages_windows="g++-mingw-w64-i686-posix googletest"
packages_wine="debootstrap util-linux xvfb openbox imagemagick xdotool python3 python3-pefile"
packages_test="$packages_library $packages_lint clang-tidy gcovr"

# missing_of PACKAGE...: those that are not installed.
missing_of() {
    local package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
            printf '%s ' "$package"
    done
}

# needs PACKAGE...: false, with a word about it, when one is not installed.
needs() {
    local missing
    missing=$(missing_of "$@")
    [ -z "$missing" ] || { echo "Not installed: $missing" >&2; return 1; }
}

# install_missing PACKAGE...: installs what is not there; 77 when that cannot be done.
install_missing() {
    local missing as_root=()
    missing=$(missing_of "$@")
    [ -z "$missing" ] && return 0
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null || ! { sudo -n true || : </dev/tty; } 2>/dev/null; then
            echo "Only root can install what is missing: $missing" >&2
            return 77
        fi
        as_root=(sudo)
    fi
    echo "Installing: $missing"
    "${as_root[@]}" apt-get update -qq
    # shellcheck disable=SC2086
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends $missing >/dev/null || return 77
}
