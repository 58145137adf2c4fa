#!/usr/bin/env bash
# Runs every benchmark and prints one table of the figures that matter.
#
#   bench/run-all.sh [--quick]
#
# Builds build-bench (the game as a player builds it, RelWithDebInfo, with
# the benchmarks), starts a private Xvfb for the whole-program figures, runs
# bench_program (first frame, memory, deal to paint) and bench_solver over
# the 4,800 puzzles of the four banks (tessuma-cli bank 0..3), then prints
# the table. --quick runs fewer starts and a shorter solver run. The raw
# outputs stay in build-bench/bench-out/. BENCH_BUILD overrides the folder.
set -euo pipefail
cd "$(dirname "$0")/.."
SRC="$PWD"
BUILD="${BENCH_BUILD:-$SRC/build-bench}"
OUT="$BUILD/bench-out"
QUICK=0
[ "${1:-}" = "--quick" ] && QUICK=1

if [ ! -f "$BUILD/build.ninja" ]; then
  cmake -S "$SRC" -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSUMA_BUILD_TESTS=OFF >/dev/null
fi
cmake --build "$BUILD" -j 2 --target tessuma-measured tessuma-cli bench_program bench_solver >/dev/null
mkdir -p "$OUT"

# --- A private X server --------------------------------------------------
XVFB_PID=""
cleanup() { [ -n "$XVFB_PID" ] && kill "$XVFB_PID" 2>/dev/null || true; }
trap cleanup EXIT
for n in $(seq 90 130); do
  [ -e "/tmp/.X$n-lock" ] || [ -e "/tmp/.X11-unix/X$n" ] || { DISP=":$n"; break; }
done
Xvfb "$DISP" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
XVFB_PID=$!
for _ in $(seq 100); do
  [ -e "/tmp/.X11-unix/X${DISP#:}" ] && break
  sleep 0.05
done
export DISPLAY="$DISP"

# --- Whole program -------------------------------------------------------
ARGS=()
[ "$QUICK" = 1 ] && ARGS+=(--benchmark_filter='BM_FirstFrame|BM_DealToPaint/0')
TESSUMA_GAME="$BUILD/tessuma-measured" "$BUILD/bench_program" --benchmark_format=csv "${ARGS[@]}" \
  >"$OUT/program.csv" 2>"$OUT/program.err" || { cat "$OUT/program.err" >&2; exit 1; }

# --- Solver over the bank set --------------------------------------------
for level in 0 1 2 3; do "$BUILD/tessuma-cli" bank "$level"; done >"$OUT/banks.txt"
MIN_TIME=2
[ "$QUICK" = 1 ] && MIN_TIME=0.3
TESSUMA_BENCH_PUZZLES="$OUT/banks.txt" "$BUILD/bench_solver" --benchmark_filter=BM_PuzzleSet \
  --benchmark_min_time="$MIN_TIME" --benchmark_format=csv >"$OUT/solver.csv" 2>"$OUT/solver.err" \
  || { cat "$OUT/solver.err" >&2; exit 1; }

# --- The table -----------------------------------------------------------
# A counter of a benchmark row from Google Benchmark's CSV.
counter() {  # FILE ROW-NAME COLUMN
  awk -F, -v row="$2" -v col="$3" '
    NR == 1 || /^name,/ { for (i = 1; i <= NF; i++) { k = $i; gsub(/"/, "", k); h[k] = i }; next }
    { name = $1; gsub(/"/, "", name) }
    name == row && (col in h) { print $h[col]; exit }' "$1"
}
fmt() { awk -v v="$1" -v d="$2" 'BEGIN { if (v == "") print "-"; else printf "%.*f\n", d, v }'; }

ff=$(counter "$OUT/program.csv" "BM_FirstFrame/iterations:10/manual_time" mean_ms)
ffmax=$(counter "$OUT/program.csv" "BM_FirstFrame/iterations:10/manual_time" worst_ms)
rss=$(counter "$OUT/program.csv" "BM_FirstFrame/iterations:10/manual_time" rss_MB)
hwm=$(counter "$OUT/program.csv" "BM_FirstFrame/iterations:10/manual_time" hwm_MB)
pps=$(counter "$OUT/solver.csv" "BM_PuzzleSet" puzzles_per_s)
npuz=$(wc -l <"$OUT/banks.txt")
allocs=$(counter "$OUT/solver.csv" "BM_PuzzleSet" allocs_per_solve)

echo
echo "Tessuma Sudoku, measured $(date '+%Y-%m-%d %H:%M') on $(nproc) cores, load $(cut -d' ' -f1-3 /proc/loadavg)"
echo
printf '| %-44s | %-26s | %-10s |\n' "Figure" "Measured" "Aim"
printf '|%s|%s|%s|\n' "$(printf -- '-%.0s' $(seq 46))" "$(printf -- '-%.0s' $(seq 28))" "$(printf -- '-%.0s' $(seq 12))"
printf '| %-44s | %-26s | %-10s |\n' "First frame, exec to painted (mean / worst)" "$(fmt "$ff" 0) / $(fmt "$ffmax" 0) ms" "<= 150 ms"
printf '| %-44s | %-26s | %-10s |\n' "Resident memory after start (VmRSS / VmHWM)" "$(fmt "$rss" 1) / $(fmt "$hwm" 1) MB" "< 60 MB"
for level in 0 1 2 3; do
  row="BM_DealToPaint/$level/iterations:5/manual_time"
  d=$(counter "$OUT/program.csv" "$row" mean_ms)
  [ -z "$d" ] && continue
  dmax=$(counter "$OUT/program.csv" "$row" worst_ms)
  drss=$(counter "$OUT/program.csv" "$row" rss_MB)
  dhwm=$(counter "$OUT/program.csv" "$row" hwm_MB)
  printf '| %-44s | %-26s | %-10s |\n' "Deal to painted board, level $level (mean / worst)" "$(fmt "$d" 1) / $(fmt "$dmax" 1) ms" "<= 16 ms"
  printf '| %-44s | %-26s | %-10s |\n' "Resident memory after a level $level deal" "$(fmt "$drss" 1) / $(fmt "$dhwm" 1) MB" "< 60 MB"
done
if [ -n "$pps" ]; then
  whole=$(awk -v n="$npuz" -v p="$pps" 'BEGIN { printf "%.0f", n / p * 1000 }')
  each=$(awk -v p="$pps" 'BEGIN { printf "%.1f", 1e6 / p }')
  printf '| %-44s | %-26s | %-10s |\n' "Solver, the $npuz bank puzzles (each / all)" "$each us / $whole ms" "-"
  printf '| %-44s | %-26s | %-10s |\n' "Solver allocations per solve" "$(fmt "$allocs" 0)" "0"
fi
