#!/usr/bin/env bash
# Runs every fuzz target for a bounded time.
#
#   fuzz/run.sh [SECONDS] [TARGET...]
#
# SECONDS per target (default 60); without TARGET names, all targets of
# fuzz/targets.list. Builds build-fuzz first (clang, libFuzzer, ASan, UBSan).
# New inputs go to build-fuzz/fuzz-work/<target>/, findings to
# build-fuzz/fuzz-work/<target>-crash-* (or -leak-, -timeout-, -oom-).
# With FUZZ_MERGE=1 the inputs that add coverage are merged into the
# committed seed corpus fuzz/corpus/<target>/ afterwards; keep it small.
# FUZZ_BUILD overrides the build folder.
#
# Exit status: 0 when no target found anything, 1 otherwise.
set -euo pipefail
cd "$(dirname "$0")/.."
SRC="$PWD"
SECONDS_PER_TARGET="${1:-60}"
shift || true
BUILD="${FUZZ_BUILD:-$SRC/build-fuzz}"
JOBS="${FUZZ_JOBS:-2}"

case "$SECONDS_PER_TARGET" in
  ''|*[!0-9]*) echo "usage: fuzz/run.sh [SECONDS] [TARGET...]" >&2; exit 2 ;;
esac

if [ ! -f "$BUILD/build.ninja" ]; then
  cmake -S "$SRC" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DTESSUMA_FUZZ=ON \
    -DTESSUMA_BUILD_GUI=OFF -DTESSUMA_BUILD_TESTS=OFF -DTESSUMA_BUILD_BENCH=OFF >/dev/null
fi
cmake --build "$BUILD" --target fuzz -j "$JOBS"

declare -A MAXLEN
ALL=()
while read -r name len _; do
  case "$name" in ''|'#'*) continue ;; esac
  MAXLEN[$name]=$len
  ALL+=("$name")
done <"$SRC/fuzz/targets.list"
TARGETS=("$@")
[ ${#TARGETS[@]} -eq 0 ] && TARGETS=("${ALL[@]}")

WORK="$BUILD/fuzz-work"
mkdir -p "$WORK/tmp"
export TMPDIR="$WORK/tmp"
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"

failed=()
for t in "${TARGETS[@]}"; do
  if [ -z "${MAXLEN[$t]:-}" ]; then
    echo "fuzz/run.sh: no target \"$t\" in fuzz/targets.list" >&2
    exit 2
  fi
  mkdir -p "$WORK/$t"
  echo "=== $t: ${SECONDS_PER_TARGET}s"
  log="$WORK/$t.log"
  if "$BUILD/fuzz_$t" -max_total_time="$SECONDS_PER_TARGET" -max_len="${MAXLEN[$t]}" \
      -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$WORK/$t-" "$WORK/$t" "$SRC/fuzz/corpus/$t" >"$log" 2>&1; then
    grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|stat::peak_rss_mb)' "$log" | tr '\n' ' '
    echo
  else
    failed+=("$t")
    echo "FOUND: $t (log $log)"
    grep -E 'ERROR|SUMMARY|property broken|Test unit written' "$log" | head -20 || true
  fi
  if [ "${FUZZ_MERGE:-0}" = 1 ]; then
    "$BUILD/fuzz_$t" -merge=1 -max_len="${MAXLEN[$t]}" "$SRC/fuzz/corpus/$t" "$WORK/$t" >/dev/null 2>&1 || true
  fi
  # Sandboxes of a target that stopped in the middle of an input.
  rm -rf "$WORK/tmp/"tessuma-* 2>/dev/null || true
done

if [ ${#failed[@]} -ne 0 ]; then
  echo "fuzz/run.sh: findings in: ${failed[*]}"
  exit 1
fi
echo "fuzz/run.sh: no findings"
