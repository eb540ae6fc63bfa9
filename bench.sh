#!/usr/bin/env bash
# ./bench.sh [ARGUMENTS...]
#
# Builds the program and its benchmarks, runs them under Wine and prints what
# they measured.
set -euo pipefail
# shellcheck source=tools/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/tools/lib.sh"

"$KV_PROJECT/tools/prepare"
kv_build win32 kestovar_bench || kv_fail "the build failed"
# The server is stopped while its display is still there: Wine's services would
# hold the output open for some seconds, and the desktop complain of its loss.
# shellcheck disable=SC2016 # expanded by the inner shell
KESTOVAR_PREFIX=bench exec "$KV_PROJECT/tools/with-display" bash -c '
    wine=$1
    shift
    status=0
    "$wine" "$@" || status=$?
    "$wine" wineserver -k || true
    exit "$status"
' bash "$KV_PROJECT/tools/wine" "$KV_PROJECT/build/win32/bench/kestovar_bench.exe" "$@"
