# shellcheck shell=bash disable=SC2154
# What a run needs around it: folders that may be written to, and a display that answers. Sourced, not run, with the folder of the sources as the current one.

# can_write FOLDER...: false, with the command that mends it, where one of these folders below the
# sources, or anything in it, is closed to the user, or cannot be made.
can_write() {
    local folder foreign user
    user=$(id -u)
    for folder in "$@"; do
        [ -e "$folder" ] || [ ! -w . ] || continue
        foreign=$(find -H "$folder" ! -user "$user" ! -writable -print -quit 2>/dev/null) || true
        if [ -n "$foreign" ] && [ -w . ]; then
            echo "$PWD/$folder belongs to $(stat -L -c %U "$foreign"), as after a run as another user. Type this and start again:" >&2
            by_root "chown -R $(id -un)" "$PWD/$folder" >&2
            return 1
        elif [ -n "$foreign" ] || [ ! -w "$folder" ]; then
            echo "Nothing can be written in $PWD. Copy it and start the copy:" >&2
            printf '    cp -r %s ~/tarvik && cd ~/tarvik\n' "$(quoted "'" "$PWD")" >&2
            return 1
        fi
    done
}

# forget_moved_builds: what was built in another folder, before the sources were moved or copied,
# is built anew.
forget_moved_builds() {
    local cache folder
    for cache in build/*/CMakeCache.txt; do
        [ -f "$cache" ] || continue
        folder=$(sed -n 's/^CMAKE_CACHEFILE_DIR:INTERNAL=//p' "$cache")
        if [ ! "$folder" -ef "${cache%/*}" ]; then
            echo "${cache%/*} was built in another folder and is built anew."
            rm -rf "$cache" "${cache%/*}/CMakeFiles"
        fi
    done
}

# answers WHAT COMMAND...: false, with a word about it, when this question to a display has no answer
# in time. A display may take connections and never speak; where there is nothing to ask it with, it
# is taken at its word.
answers() {
    local what=$1 status=0
    shift
    timeout 5 "$@" >/dev/null 2>&1 || status=$?
    [ $status != 127 ] || echo "The display $what cannot be asked whether it answers: $1 is not installed."
    [ $status != 0 ] && [ $status != 127 ] || return 0
    echo "The display $what does not answer, or does not let $(id -un) in: it is left alone." >&2
    return 1
}

# find_display_packages: sets display_packages to what asking the displays in the environment needs,
# or a display of one's own.
find_display_packages() {
    display_packages=()
    [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || display_packages=("${packages_display[@]}")
    [ -z "${DISPLAY:-}" ] || display_packages+=(x11-utils)
    [ -z "${WAYLAND_DISPLAY:-}" ] || display_packages+=(wayland-utils)
}

# choose_display: leaves in the environment what answers; false when nothing does.
choose_display() {
    if [ -n "${WAYLAND_DISPLAY:-}" ] && ! answers "$WAYLAND_DISPLAY" wayland-info; then
        unset WAYLAND_DISPLAY
        # The toolkit would go to the usual one, unasked.
        export QT_QPA_PLATFORM=xcb
    fi
    if [ -n "${DISPLAY:-}" ] && ! answers "$DISPLAY" xprop -root _NET_SUPPORTED; then
        unset DISPLAY
        export QT_QPA_PLATFORM=wayland
    fi
    [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]
}
