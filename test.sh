#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole test suite.
#
# TESSUMA_SANITIZE=1 ./test.sh  also builds the suite with AddressSanitizer
# and UndefinedBehaviorSanitizer (build-asan) and runs it there, then builds
# the fuzz targets with clang (build-fuzz) and runs each one for a few
# seconds from its seed corpus. CI runs it so.
set -euo pipefail
cd "$(dirname "$0")"
SANITIZE="${TESSUMA_SANITIZE:-0}"
if [ "$SANITIZE" = 1 ]; then
  scripts/deps.sh clang libclang-rt-14-dev
else
  scripts/deps.sh
fi
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build
ctest --test-dir build --output-on-failure -j "$(nproc)"

[ "$SANITIZE" = 1 ] || exit 0

# --- The same suite under ASan and UBSan ---------------------------------
# Any report fails the test that made it. Leaks inside Qt's own libraries
# (caches it keeps for the life of the process) are suppressed by
# tests/lsan-qt.supp; a leak with a frame of the game in it is never
# suppressed.
export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1:abort_on_error=0:strict_init_order=1:detect_stack_use_after_return=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan-qt.supp:print_suppressions=0"
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSUMA_SANITIZE=ON \
  -DTESSUMA_BUILD_BENCH=OFF -DTESSUMA_REAL_TESTS=OFF >/dev/null
cmake --build build-asan
ctest --test-dir build-asan --output-on-failure -j "$(nproc)"

# --- The fuzz targets, briefly --------------------------------------------
cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DTESSUMA_FUZZ=ON -DTESSUMA_BUILD_GUI=OFF -DTESSUMA_BUILD_TESTS=OFF -DTESSUMA_BUILD_BENCH=OFF >/dev/null
cmake --build build-fuzz
ctest --test-dir build-fuzz --output-on-failure -j "$(nproc)"
