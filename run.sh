#!/usr/bin/env bash
# ./run.sh [FILE]
#
# Builds the program and opens FILE (a sample text without one) in it. Where a
# display answers, the program's window comes up there and the script ends with
# it. Elsewhere a picture of the program is taken: build/kestovar.png.
set -euo pipefail
# shellcheck source=tools/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/tools/lib.sh"

file=${1:-$KV_PROJECT/tests/data/sample.txt}
[[ $# -le 1 ]] || kv_fail "usage: ./run.sh [FILE]"
[[ -f $file ]] || kv_fail "no such file: $file"
name=${file##*/}
[[ $file == */* ]] && directory=${file%/*} || directory=.
file=$(cd -P "${directory:-/}" && printf '%s' "${PWD%/}")/$name
program=$KV_PROJECT/build/win32/kestovar.exe
links=

# Called by the trap.
# shellcheck disable=SC2317
remove_links() {
    [[ -z $links ]] || rm -r "$links"
}
trap remove_links EXIT

# Sets `argument` to what the program is given for the file, and `name` to the
# name it then shows. A path with blanks cannot be given on its command line:
# such a file goes in by a link without them.
find_argument() {
    local inside
    inside=$(kv_inside "$file")
    if [[ $inside == *[[:space:]]* ]]; then
        links=$(mktemp -d /tmp/kestovar.XXXXXX)
        name=${name//[[:space:]]/_}
        ln -s "$inside" "$links/$name"
        inside=$links/$name
    fi
    argument="Z:${inside//\//\\}"
}

# Takes the picture once the screen has come to rest: a window that has painted
# is not yet one whose pixels have reached the X server.
take_picture() {
    local target=$1 previous='' current same=0 tries
    for ((tries = 0; tries < 40 && same < 2; tries++)); do
        import -window root -crop 1024x768+0+0 +repage "$target"
        current=$(identify -format '%#' "$target")
        [[ $current == "$previous" ]] && same=$((same + 1)) || same=0
        previous=$current
    done
}

show_in_window() {
    kv_make_prefix window no-desktop
    KESTOVAR_PREFIX=window "$KV_PROJECT/tools/wine" "$program" "$argument"
}

show_as_picture() {
    local picture=$KV_PROJECT/build/kestovar.png running waiting ended=
    export KESTOVAR_PREFIX=run
    local wine=$KV_PROJECT/tools/wine
    # Before two processes at once would make it.
    kv_make_prefix run

    "$wine" "$program" "$argument" &
    running=$!
    "$wine" "$KV_PROJECT/build/win32/wait_window.exe" "Kestovar-${name,,}" 30 &
    waiting=$!
    local status=0
    wait -n -p ended "$running" "$waiting" || status=$?
    if [[ $ended == "$running" ]]; then
        "$wine" wineserver -k || true
        kv_fail "the program ended with status $status before it showed the file"
    fi
    if [[ $status -eq 0 ]]; then
        take_picture "$picture"
    fi
    # Close it as a user would; what does not want to close is stopped.
    "$wine" taskkill /im "${program##*/}" >/dev/null 2>&1 || true
    timeout 5 tail --pid="$running" --sleep-interval=0.05 -f /dev/null || true
    "$wine" wineserver -k || true
    wait "$running" || true
    [[ $status -eq 0 ]] || kv_fail "the program does not show the file"
    echo "No display here. The program's picture: ${picture#"$KV_PROJECT"/}"
}

if [[ -z ${KESTOVAR_OWN_DISPLAY:-} ]]; then
    "$KV_PROJECT/tools/prepare"
    kv_build win32 kestovar wait_window || kv_fail "the build failed"
    if [[ -z ${DISPLAY:-} ]] || ! timeout 5 xdpyinfo >/dev/null 2>&1; then
        # Once more, from here on, with a display of our own.
        KESTOVAR_OWN_DISPLAY=1 exec "$KV_PROJECT/tools/with-display" "$KV_PROJECT/run.sh" "$file"
    fi
    find_argument
    show_in_window
else
    find_argument
    show_as_picture
fi
