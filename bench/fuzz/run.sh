#!/usr/bin/env bash
# Builds every fuzz target with clang (libFuzzer, AddressSanitizer, UndefinedBehaviorSanitizer)
# and runs each for a number of executions, starting from its kept inputs. Prints one row per
# target: executions, seconds, executions per second, coverage (edges and features) and findings.
#
#   bench/fuzz/run.sh [RUNS] [TARGET...]     RUNS defaults to 10000000; TARGET e.g. dorvane_receive
#
# KETREL_FUZZ_JOBS=N runs N targets at a time (default 1); each target is one process on one core.
#
# Findings (crash-, leak-, timeout-, oom- files) are kept under build-fuzz/findings/<target>/; new
# inputs found along the way under build-fuzz/work/<target>/ (copy the useful ones into the corpus).
set -euo pipefail
cd "$(dirname "$0")/../.."
bash scripts/bootstrap.sh

runs=${1:-10000000}
shift || true
build=${KETREL_FUZZ_BUILD:-build-fuzz}

CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DKETREL_FUZZ=ON -DKETREL_BUILD_QT=OFF -DKETREL_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target fuzz_all

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for exe in "$build"/bin/fuzz_*; do targets+=("$(basename "$exe" | sed 's/^fuzz_//')"); done
fi

jobs=${KETREL_FUZZ_JOBS:-1}
rows="$build/rows"
rm -rf "$rows"
mkdir -p "$rows"

# Runs one target and writes its row to $rows/<target>.
run_target() {
    local t=$1
    local corpus work findings log start secs done_line execs cov ft found rate
    corpus=$(find fuzz -type d -path "*/corpus/$t" | head -n 1)
    work="$build/work/$t"
    findings="$build/findings/$t"
    mkdir -p "$work" "$findings"
    log="$build/findings/$t.log"
    # A replayed log costs time for every line it holds, and a log run slows as its inputs grow:
    # log inputs stop at 1 KB, which more than doubles the rate for a few dozen fewer edges.
    local extra=()
    [ "$t" != log_replay ] || extra=(-max_len=1024)
    start=$(date +%s)
    ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "$build/bin/fuzz_$t" -runs="$runs" -rss_limit_mb=2048 -timeout=10 -print_final_stats=1 \
        "${extra[@]}" -artifact_prefix="$findings/" "$work" ${corpus:+"$corpus"} >"$log" 2>&1 || true
    secs=$(($(date +%s) - start))
    done_line=$(grep -E '^#[0-9]+' "$log" | tail -n 1)
    execs=$(grep -oE '^stat::number_of_executed_units: *[0-9]+' "$log" | grep -oE '[0-9]+$' || true)
    [ -n "$execs" ] || execs=$(printf '%s' "$done_line" | grep -oE '^#[0-9]+' | tr -d '#')
    cov=$(printf '%s' "$done_line" | grep -oE 'cov: [0-9]+' | grep -oE '[0-9]+' || echo '?')
    ft=$(printf '%s' "$done_line" | grep -oE 'ft: [0-9]+' | grep -oE '[0-9]+' || echo '?')
    # A slow-unit file is a note (a starved machine makes them), not a finding.
    found=$(find "$findings" -maxdepth 1 -type f \( -name 'crash-*' -o -name 'leak-*' \
        -o -name 'timeout-*' -o -name 'oom-*' \) | wc -l)
    rate=$((secs > 0 ? ${execs:-0} / secs : ${execs:-0}))
    printf '%-24s %12s %8s %10s %7s %7s %9s\n' "$t" "${execs:-0}" "$secs" "$rate" "$cov" "$ft" \
        "$found" >"$rows/$t"
}

for t in "${targets[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "$jobs" ]; do wait -n || true; done
    run_target "$t" &
done
wait

printf '%-24s %12s %8s %10s %7s %7s %9s\n' target executions seconds exec/s cov ft findings
status=0
for t in "${targets[@]}"; do
    cat "$rows/$t"
    [ "$(awk '{print $7}' "$rows/$t")" = 0 ] || status=1
done
exit $status
