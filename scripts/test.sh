#!/usr/bin/env bash
# Builds Ketrel twice (plain, and with AddressSanitizer + UndefinedBehaviorSanitizer) and runs
# every test in both.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/bootstrap.sh

jobs=$(nproc 2>/dev/null || echo 2)
export QT_QPA_PLATFORM=offscreen

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j "$jobs"
ctest --test-dir build --output-on-failure -j "$jobs"

cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DKETREL_SANITIZE=ON \
    -DKETREL_BUILD_BENCH=OFF
cmake --build build-asan -j "$jobs"
ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir build-asan --output-on-failure -j "$jobs"
