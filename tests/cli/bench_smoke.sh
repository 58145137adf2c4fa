#!/usr/bin/env bash
# The measuring hooks of the whole-program benchmarks (app/BenchHooks.h)
# keep working: the game started with TESSUMA_BENCH_FIRST_FRAME=1 paints its
# first frame, reports the moment and its memory, and quits by itself; with
# TESSUMA_BENCH_DEAL it deals first and reports the deal. Figures are not
# judged here (bench/run-all.sh measures them); only that they come.
# Skipped when the build has no game (TESSUMA_BUILD_GUI=OFF).
# Called as: bash bench_smoke.sh <tessuma-cli> <source dir>
set -u
cli="$1"
build="$(cd "$(dirname "$cli")" && pwd)"
game="$build/tessuma-measured"
if [ ! -x "$game" ]; then
    echo "SKIP: no game in $build"
    exit 0
fi
fail=0
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
mkdir -p "$tmp/config" "$tmp/runtime"
chmod 700 "$tmp/runtime"

run() {  # run OUTPUT [VAR=VALUE...]
    local out="$1"; shift
    env XDG_CONFIG_HOME="$tmp/config" XDG_RUNTIME_DIR="$tmp/runtime" QT_QPA_PLATFORM=offscreen \
        TESSUMA_BENCH_FIRST_FRAME=1 "$@" timeout 60 "$game" >"$out" 2>"$out.err"
}
has() {  # has FILE PATTERN WHAT
    if ! grep -Eq "$2" "$1"; then
        echo "FAIL: $3"
        echo "  output: $(tr '\n' '|' <"$1")"
        echo "  errors: $(head -c 600 "$1.err" | tr '\n' '|')"
        fail=1
    fi
}

run "$tmp/start"
status=$?
if [ "$status" -eq 124 ]; then
    echo "FAIL: the game did not quit after its first frame (is tessuma-measured built with its hooks?)"
    fail=1
fi
has "$tmp/start" '^tessuma-bench: first-frame-ns [0-9]+$' "the first frame is reported"
has "$tmp/start" '^tessuma-bench: start rss-kb [0-9]+ hwm-kb [0-9]+$' "the memory after start is reported"

run "$tmp/deal" TESSUMA_BENCH_DEAL=2
has "$tmp/deal" '^tessuma-bench: deal-ns [0-9]+$' "the deal is reported"
has "$tmp/deal" '^tessuma-bench: deal rss-kb [0-9]+ hwm-kb [0-9]+$' "the memory after a deal is reported"

exit $fail
