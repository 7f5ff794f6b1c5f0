#!/usr/bin/env bash
# Installs what is missing, builds the program and opens it on a simulated dial-up link. Without a
# display it plays one whole session on a virtual one and leaves a screenshot and the INI file in out/.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
# shellcheck source=scripts/packages.sh
. scripts/packages.sh
# shellcheck source=scripts/folders_and_displays.sh
. scripts/folders_and_displays.sh

can_write build out
forget_moved_builds
[ -x build/release/bin/tarvik-demo ] ||
    echo "A first run installs what is missing and builds: 2 to 4 minutes, and 1.6 GB of disk."
find_display_packages
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -z "$(missing_of "${packages_build[@]}")" ]; then
    # What asks the display is worth a try, and no reason to stop.
    install_missing "${display_packages[@]}" 2>/dev/null || true
else
    install_missing "${packages_build[@]}" "${display_packages[@]}"
fi
cmake --preset release -DTARVIK_TESTS=OFF -DTARVIK_BENCH=OFF >/dev/null
cmake --build --preset release --target tarvik-demo tarvik

if choose_display; then
    [ -n "${DISPLAY:-}" ] || install_missing qt6-wayland
    exec build/release/bin/tarvik-demo "$@"
fi
echo "There is no display: a virtual one is used, and the session plays by itself."
install_missing "${packages_display[@]}"
exec /usr/bin/python3 -B scripts/play_session.py build/release/bin/tarvik-demo out
