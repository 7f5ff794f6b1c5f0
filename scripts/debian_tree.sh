# shellcheck shell=bash
# Trees of Debian in a folder, made with what this machine's apt knows. Sourced, not run.

# debian_mirror SUITE: the machine's own mirror of the suite, as apt knows it.
debian_mirror() {
    local field mirror
    # shellcheck disable=SC2016 # apt-get fills these in
    for field in '$(CODENAME)' '$(RELEASE)'; do
        mirror=$(apt-get indextargets --format "$field \$(COMPONENT) \$(REPO_URI)" 'Created-By: Packages' |
            awk -v suite="$1" '$1 == suite && $2 == "main" && !found { found = $3 } END { print found }')
        [ -z "$mirror" ] || break
    done
    [ -n "$mirror" ] || { echo "apt knows no mirror for $1 main" >&2; return 1; }
    printf '%s\n' "$mirror"
}

# make_debian ARCHITECTURE SUITE FOLDER [OPTION...]: a tree of the suite's smallest system in the
# folder, which is emptied; what debootstrap says is in FOLDER.log. Needs root.
make_debian() {
    local architecture=$1 suite=$2 folder=$3 mirror proxy=
    shift 3
    mirror=$(debian_mirror "$suite") || return
    eval "$(apt-config shell proxy Acquire::http::Proxy)"
    [ -z "$proxy" ] || export http_proxy=$proxy
    ! mountpoint -q "$folder/proc" 2>/dev/null || umount "$folder/proc"
    rm -rf --one-file-system "$folder"
    mkdir -p "$folder"
    # What debootstrap mounts goes with its own mount namespace.
    unshare --mount --propagation private -- debootstrap "--arch=$architecture" --variant=minbase "$@" \
        "$suite" "$folder" "$mirror" >"$folder.log" 2>&1 ||
        { tail -n 20 "$folder.log" >&2; echo "debootstrap failed, see $folder.log" >&2; return 1; }
    printf '127.0.0.1\tlocalhost\n' >"$folder/etc/hosts" # debootstrap leaves none
}
