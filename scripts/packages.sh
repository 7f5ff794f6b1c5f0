# Packages of Debian 12 that building, running and testing need. Sourced, not run.

packages_build="g++ cmake ninja-build qt6-base-dev libgl1-mesa-dev"
packages_display="xvfb xauth openbox dbus-daemon at-spi2-core python3-gi gir1.2-atspi-2.0 imagemagick xdotool x11-utils fonts-noto-core"
packages_test="libgtest-dev libgmock-dev libbenchmark-dev clang-format clang-tidy gcovr python3"

# install_missing PACKAGE...: installs what is not there; false when that cannot be done.
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null | grep -q '^ii' ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { echo "Missing and not root: ${missing[*]}" >&2; return 1; }
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
