#!/usr/bin/env bash
# Installs what is missing, builds the game and starts it.
set -euo pipefail
cd "$(dirname "$0")"
scripts/deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --target tessuma
exec build/tessuma "$@"
