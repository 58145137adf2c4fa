#!/usr/bin/env bash
# The solver over the 4,800 puzzles of the four banks (tessuma-cli bank 0..3).
#
#   bench/run-all.sh [--quick]
#
# Builds build-bench (RelWithDebInfo, with the benchmarks), runs bench_solver
# over the bank set and prints its figures. --quick runs a shorter solver
# run. The raw outputs stay in build-bench/bench-out/. BENCH_BUILD overrides
# the folder. The whole program (start-up, memory, idle cost, deal to paint)
# is measured by bench/sitting.py.
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
cmake --build "$BUILD" -j 2 --target tessuma-cli bench_solver >/dev/null
mkdir -p "$OUT"
# --- Solver over the bank set --------------------------------------------
for level in 0 1 2 3; do "$BUILD/tessuma-cli" bank "$level"; done >"$OUT/banks.txt"
MIN_TIME=2
[ "$QUICK" = 1 ] && MIN_TIME=0.3
TESSUMA_BENCH_PUZZLES="$OUT/banks.txt" "$BUILD/bench_solver" --benchmark_filter='BM_PuzzleSet|BM_EmptyBoard|BM_ExhaustTwoFives' \
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

pps=$(counter "$OUT/solver.csv" "BM_PuzzleSet" puzzles_per_s)
npuz=$(wc -l <"$OUT/banks.txt")
allocs=$(counter "$OUT/solver.csv" "BM_PuzzleSet" allocs_per_solve)
# The search's own rate, where the search does the work: filling an empty
# board, and exhausting a board that has no solution.
cps_empty=$(counter "$OUT/solver.csv" "BM_EmptyBoard" calls_per_s)
cps_exhaust=$(counter "$OUT/solver.csv" "BM_ExhaustTwoFives" calls_per_s)

echo
echo "Tessuma Sudoku, measured $(date '+%Y-%m-%d %H:%M') on $(nproc) cores, load $(cut -d' ' -f1-3 /proc/loadavg)"
echo
printf '| %-44s | %-26s | %-10s |\n' "Figure" "Measured" "Aim"
printf '|%s|%s|%s|\n' "$(printf -- '-%.0s' $(seq 46))" "$(printf -- '-%.0s' $(seq 28))" "$(printf -- '-%.0s' $(seq 12))"
if [ -n "$pps" ]; then
  whole=$(awk -v n="$npuz" -v p="$pps" 'BEGIN { printf "%.0f", n / p * 1000 }')
  each=$(awk -v p="$pps" 'BEGIN { printf "%.1f", 1e6 / p }')
  printf '| %-44s | %-26s | %-10s |\n' "Solver, the $npuz bank puzzles (each / all)" "$each us / $whole ms" "-"
  printf '| %-44s | %-26s | %-10s |\n' "SearchCell calls/s (empty board / exhaust)" "$(awk -v a="$cps_empty" -v b="$cps_exhaust" 'BEGIN { printf "%.1f M / %.1f M", a / 1e6, b / 1e6 }')" ">= 5 M"
  printf '| %-44s | %-26s | %-10s |\n' "Solver allocations per solve" "$(fmt "$allocs" 0)" "0"
fi
