#!/usr/bin/env bash
# ./bench.sh [search]
#
# Builds the program and its benchmarks, runs them under Wine and prints what
# they measured; only those of searching if so asked.
set -euo pipefail
# shellcheck source=tools/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/tools/lib.sh"

"$KV_PROJECT/tools/prepare"
kv_build win32 kestovar_bench || kv_fail "the build failed"
# run_bench ARGUMENTS...: the server is stopped while its display is still
# there: Wine's services would hold the output open for some seconds, and the
# desktop complain of its loss.
run_bench() {
    # shellcheck disable=SC2016 # expanded by the inner shell
    KESTOVAR_PREFIX=bench "$KV_PROJECT/tools/with-display" bash -c '
        wine=$1
        shift
        status=0
        "$wine" "$@" || status=$?
        "$wine" wineserver -k || true
        exit "$status"
    ' bash "$KV_PROJECT/tools/wine" "$KV_PROJECT/build/win32/bench/kestovar_bench.exe" "$@"
}

bench_search() {
    local text=$KV_PROJECT/build/bench-search.txt word=interestate times
    mapfile -t times < <("$KV_PROJECT/bench/grep_times" "$text" "$word")
    [[ ${#times[@]} -eq 2 ]] || kv_fail "grep was not timed"
    run_bench "Z:${text//\//\\}" "$word" "${times[@]}"
    rm "$text"
}

case ${1:-all} in
search) bench_search ;;
all)
    run_bench
    bench_search
    ;;
*) kv_fail "usage: ./bench.sh [search]" ;;
esac
