#!/usr/bin/env bash
# ./bench.sh [ARGUMENTS...]
#
# Builds the program and its benchmarks, runs them under Wine and prints what
# they measured.
set -euo pipefail
# shellcheck source=tools/lib.sh
source "$(dirname "${BASH_SOURCE[0]}")/tools/lib.sh"

"$KV_PROJECT/tools/prepare"
kv_build win32 || kv_fail "the build failed"
export KESTOVAR_PREFIX=bench
status=0
"$KV_PROJECT/tools/with-display" "$KV_PROJECT/tools/wine" \
    "$KV_PROJECT/build/win32/bench/kestovar_bench.exe" "$@" || status=$?
# Wine's services would hold the output open for some seconds more.
"$KV_PROJECT/tools/wine" wineserver -k || true
exit "$status"
