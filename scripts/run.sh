#!/usr/bin/env bash
# Builds Ketrel and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/bootstrap.sh
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$jobs" --target ketrel
exec build/bin/ketrel "$@"
