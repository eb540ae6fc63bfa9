#!/usr/bin/env bash
# ./test.sh
#
# Builds every preset, runs all tests and closes with one line:
# "N passed, M failed", with ", K skipped" when K is not zero. The status is 0
# only if nothing failed and something passed. The logs stay in build/.
set -euo pipefail
# shellcheck source=tools/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/tools/lib.sh"
[[ $# -eq 0 ]] || kv_fail "usage: ./test.sh"
cd "$KV_PROJECT"

# The tests' Wine prefix exists once per work tree: a second run waits here.
if [[ -z ${KESTOVAR_TEST_LOCKED:-} ]]; then
    mkdir -p build
    KESTOVAR_TEST_LOCKED=1 exec flock --close build/.test.lock ./test.sh
fi

# A line "PASSED FAILED SKIPPED" for each build and test run.
counts=build/test-counts
: >"$counts"

# count LOG: reads the log of a verbose ctest run, prints
# "CASES PASSED FAILED SKIPPED" and, on the standard error, what the failed
# tests had to say. A CTest case is a GoogleTest program, counted by what it
# says at its end, or something else, counted as one test. A program that ends
# badly without a list of failed tests (a crash, a time-out) is one failure.
count() {
    awk '
        { sub(/\r$/, "") }
        /^[0-9]+: / {
            id = $0; sub(/:.*/, "", id)
            text = substr($0, length(id) + 3)
            if (text ~ /^\[  PASSED  \] [0-9]+ tests?\./) {
                split(text, word, " "); good[id] += word[4]; totals[id] = 1
            } else if (text ~ /^\[  SKIPPED \] [0-9]+ tests?, /) {
                split(text, word, " "); left[id] += word[4]
            } else if (text ~ /^\[  FAILED  \] [0-9]+ tests?, /) {
                split(text, word, " "); bad[id] += word[4]; totals[id] = 1
            } else if (text ~ /^\[ AGAIN    \]/) {
                # A few that failed are run once more, alone; that counts.
                again[id] = said[id]; said[id] = ""; bad[id] = 0
            } else if (text ~ /^\[ RUN      \]/) {
                pending[id] = text "\n"
            } else if (text ~ /^\[       OK \]/ || text ~ /^\[  SKIPPED \]/) {
                pending[id] = ""
            } else if (text ~ /^\[  FAILED  \].* \([0-9]+ ms\)$/) {
                said[id] = said[id] pending[id] text "\n"; pending[id] = ""
            } else if (text !~ /^\[[-=]+\]|^\[  FAILED  \]|^ *[0-9]+ FAILED TESTS?$/ &&
                       text !~ /^(Test command|Working Directory|Test timeout computed to be): /) {
                # What stands between two tests belongs to a crash as well.
                pending[id] = pending[id] text "\n"
            }
        }
        /^ *[0-9]+\/[0-9]+ +Test +#[0-9]+: / {
            cases++
            id = $0; sub(/^[^#]*#/, "", id); sub(/:.*/, "", id)
            passed += good[id]; failed += bad[id]; skipped += left[id]
            if (again[id] && !bad[id]) {
                printf "\n%s\nRun once more, alone, these passed:\n%s", $0, again[id] > "/dev/stderr"
            }
            if ($0 ~ /\*\*\*Skipped/ || $0 ~ /Not Run \(Disabled\)/) {
                if (!totals[id]) skipped++
            } else if ($0 ~ / Passed +[0-9.]+ sec/) {
                if (!totals[id]) passed++
            } else {
                if (!bad[id]) failed++
                printf "\n%s\n%s%s", $0, said[id], pending[id] > "/dev/stderr"
            }
        }
        END { print cases + 0, passed + 0, failed + 0, skipped + 0 }
    ' "$1"
}

# run_tests PRESET COMMAND...: COMMAND runs ctest on the preset.
run_tests() {
    local preset=$1 log=build/test-$1.log status=0 result cases good bad left
    shift
    "$@" >"$log" 2>&1 </dev/null || status=$?
    result=$(count "$log")
    read -r cases good bad left <<<"$result"
    if [[ $cases -eq 0 || ($status -ne 0 && $bad -eq 0) ]]; then
        tail -n 40 "$log" >&2
        bad=$((bad + 1))
    fi
    echo "$preset: $good passed, $bad failed, $left skipped"
    echo "$good $bad $left" >>"$counts"
}

# build PRESET [TARGET...]: a build that fails counts as one failed test.
build() {
    if ! kv_build "$@"; then
        echo "$1: the build failed" >&2
        echo "0 1 0" >>"$counts"
        return 1
    fi
}

background=

# Called by the trap.
# shellcheck disable=SC2317
stop() {
    [[ -z $background ]] || kill "$background" 2>/dev/null || true
    kv_drop_prefix test
}
trap stop EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# Each preset gets a fresh prefix, and a server that stays from one program to
# the next: to start one takes longer than most tests. The desktop is started
# here for one more reason: it and Wine's services inherit the output of the
# program that starts them, and ctest would wait for them to close it.
run_wine_tests() {
    export KESTOVAR_PREFIX=test KESTOVAR_SECOND_TRY=1
    kv_drop_prefix test
    tools/wine wineserver -p
    # shellcheck disable=SC2016 # expanded by the inner shell
    run_tests "$1" tools/with-display bash -c '
        tools/wine explorer /desktop=Default,1024x768 </dev/null >/dev/null 2>&1 &
        timeout 30 xdotool search --sync --onlyvisible --name "^Wine Desktop" >/dev/null
        exec ctest --preset "$1" --verbose
    ' bash "$1"
    kv_drop_prefix test
}

tools/prepare --tests

# What needs no Wine, beside what does: the tests under Wine mostly wait, for
# windows and messages, and it does not get in their way. Two Wines at a time
# would: keys and mouse of the one come late where the other has the processor.
# Notes on descriptor 3 whether the hardened program is built, as soon as that
# is known, and at last that all is done.
in_background() {
    local preset built=true
    renice -n 10 "$BASHPID" >/dev/null
    build win32-debug || built=false
    echo "$built" >&3
    for preset in native fuzz; do
        if build "$preset"; then
            run_tests "$preset" ctest --preset "$preset" --verbose
        fi
    done
    build win64 kestovar || true # only to see that it builds: nothing here runs it
    echo end >&3
}

built=true
build win32 || built=false
exec {screen}>&1
exec {notes}< <(in_background 3>&1 >&"$screen")
background=$!
if $built; then
    run_wine_tests win32
fi
read -r -u "$notes" built || built=false
if $built; then
    run_wine_tests win32-debug
fi
read -r -u "$notes" note && [[ $note == end ]] || echo "0 1 0" >>"$counts" # it ended before its tests did

read -r passed failed skipped < <(awk '{ p += $1; f += $2; s += $3 } END { print p + 0, f + 0, s + 0 }' "$counts")
summary="$passed passed, $failed failed"
[[ $skipped -eq 0 ]] || summary+=", $skipped skipped"
echo "$summary"
[[ $failed -eq 0 && $passed -gt 0 ]]
