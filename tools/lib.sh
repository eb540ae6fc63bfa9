# shellcheck shell=bash
# What the scripts share: where things lie and how a program gets into the
# Wine root. To be sourced; sets variables and functions, runs nothing costly.

# Physical paths throughout: bind mounts and Wine's own idea of the current
# directory know nothing of the symbolic links somebody came in by.
KV_PROJECT=$(cd -P "$(dirname "${BASH_SOURCE[0]}")/.." && printf '%s' "$PWD")
KV_CACHE=${KESTOVAR_CACHE:-${HOME:-/root}/.cache/kestovar}
KV_ROOT=$KV_CACHE/wine-root
# The prefixes belong to the work tree, so that two trees never share one
# Wine server: a server sees only what was mounted when it was started.
KV_PREFIXES=$KV_PROJECT/build/wine
# To be raised whenever the recipe of the Wine root or of the template prefix
# changes; tools/prepare then makes both anew.
KV_ROOT_VERSION=3
# As seen from inside the root; complete when the root's stamp is there.
KV_TEMPLATE=/kestovar-template
KV_STAMP=$KV_ROOT/.kestovar-root

kv_fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# kv_root_ready: whether tools/prepare has finished its work on the root.
kv_root_ready() {
    local version=
    [[ -r $KV_STAMP ]] && read -r version <"$KV_STAMP"
    [[ $version == "$KV_ROOT_VERSION" ]]
}

# kv_inside PATH: prints the absolute PATH as a program in the root sees it.
# The project and /tmp keep their own paths, all else lies below /host.
kv_inside() {
    case $1 in
    "$KV_PROJECT" | "$KV_PROJECT"/* | /tmp | /tmp/*) printf '%s' "$1" ;;
    *) printf '/host%s' "$1" ;;
    esac
}

# kv_chroot ROOT DIRECTORY NAME=VALUE... PROGRAM ARGUMENTS...: replaces this
# shell by PROGRAM, run in ROOT from DIRECTORY (a path inside) with nothing in
# its environment but what is named. The mounts live in a namespace of their
# own and go away with its last process.
kv_chroot() {
    local root=$1
    shift
    [[ $EUID -eq 0 ]] || kv_fail "the Wine root can be entered by root only"
    # shellcheck disable=SC2016 # expanded by the inner shell
    exec unshare --mount /bin/sh -c '
        set -e
        root=$1 project=$2 directory=$3
        shift 3
        mount --rbind / "$root/host"
        mount --rbind /proc "$root/proc"
        mount --rbind /dev "$root/dev"
        mount --bind /tmp "$root/tmp"
        case $project in
        /tmp/*) ;;
        *)
            [ -d "$root$project" ] || mkdir -p "$root$project"
            mount --bind "$project" "$root$project"
            ;;
        esac
        exec chroot "$root" /usr/bin/env -i -C "$directory" "$@"
    ' sh "$root" "$KV_PROJECT" "$@"
}

# kv_copy_template TARGET: copies the template prefix. Its system directory is
# nine tenths of it and holds Wine's own modules only, which nobody writes to;
# those are linked where the file system allows it. What Wine and programs
# change in place (registry, win.ini, ...) is copied.
kv_copy_template() {
    local template=$KV_ROOT$KV_TEMPLATE windows=drive_c/windows
    mkdir -p "$1"
    tar -C "$template" --exclude="./$windows/system32" -cf - . | tar -C "$1" -xf -
    cp -al "$template/$windows/system32" "$1/$windows/" 2>/dev/null ||
        cp -a "$template/$windows/system32" "$1/$windows/"
}

# kv_make_prefix NAME [no-desktop]: makes the prefix NAME as a copy of the
# template unless it is there. It appears under its name only when complete.
# With no-desktop the windows come up on the X screen itself.
kv_make_prefix() {
    local prefix=$KV_PREFIXES/$1 lock
    [[ -d $prefix ]] && return
    kv_root_ready || kv_fail "no Wine root; run tools/prepare first"
    mkdir -p "$KV_PREFIXES"
    exec {lock}>"$KV_PREFIXES/.$1.lock"
    flock "$lock"
    if [[ ! -d $prefix ]]; then
        rm -rf "$prefix.partial"
        kv_copy_template "$prefix.partial"
        if [[ ${2:-} == no-desktop ]]; then
            sed -i '/^"Desktop"="Default"$/d' "$prefix.partial/user.reg"
        fi
        mv -T "$prefix.partial" "$prefix"
    fi
    exec {lock}>&-
}

# kv_drop_prefix NAME: stops whatever runs in the prefix NAME and removes it.
kv_drop_prefix() {
    [[ -d $KV_PREFIXES/$1 ]] || return 0
    KESTOVAR_PREFIX=$1 "$KV_PROJECT/tools/wine" wineserver -k || true
    rm -rf "${KV_PREFIXES:?}/$1"
}

# kv_build PRESET [TARGET...]: configures PRESET and builds it, or the named
# targets of it; shows the output, kept in build/build-PRESET.log, only when
# that fails. Two builds of one tree at once
# would spoil each other, hence the lock.
kv_build() {
    local preset=$1
    shift
    local log=$KV_PROJECT/build/build-$preset.log
    mkdir -p "$KV_PROJECT/build"
    if ! (
        cd "$KV_PROJECT"
        # shellcheck disable=SC2016 # expanded by the inner shell
        exec flock --close build/.build.lock \
            sh -c 'preset=$1
                shift
                cmake --preset "$preset" && cmake --build --preset "$preset" "$@"' \
            sh "$preset" ${1:+--target "$@"}
    ) >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}
