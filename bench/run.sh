#!/usr/bin/env bash
# Builds the benchmarks in Release mode, runs every workload with repetitions and prints
# one table: workload, size, implementation, median throughput and the ratio to the
# baseline measured in the same run; then the memory figures and the bars.
#
#   bench/run.sh                 everything
#   bench/run.sh 'transform|add' only the workloads whose names match the regex
#
# Environment: VORN_BENCH_BUILD_DIR (default build/bench), VORN_BENCH_REPETITIONS (5),
# VORN_BENCH_MIN_TIME (seconds per repetition, 0.2), VORN_BENCH_JOBS (2).
# Timings are only comparable on a quiet machine: the load average is printed with them.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
build="${VORN_BENCH_BUILD_DIR:-$here/../build/bench}"
repetitions="${VORN_BENCH_REPETITIONS:-5}"
min_time="${VORN_BENCH_MIN_TIME:-0.2}"
jobs="${VORN_BENCH_JOBS:-2}"
filter="${1:-.}"

mkdir -p "$build"
echo "Configuring (Release) in $build"
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=Release >"$build/configure.log" 2>&1 ||
  { cat "$build/configure.log"; exit 1; }
grep -E "peer (enabled|skipped)" "$build/configure.log" | sed 's/^-- /  /' || true
echo "Building"
cmake --build "$build" -j "$jobs" >"$build/build.log" 2>&1 || { cat "$build/build.log"; exit 1; }

echo "Running timed workloads ($repetitions repetitions; log in $build/timing.log)"
"$build/vorn_bench" \
  --benchmark_filter="$filter" \
  --benchmark_repetitions="$repetitions" \
  --benchmark_report_aggregates_only=true \
  --benchmark_min_time="$min_time" \
  --benchmark_out="$build/timing.json" --benchmark_out_format=json \
  >"$build/timing.log" 2>&1

echo "Running memory workloads (log in $build/memory.log)"
rm -f "$build/memory.json"
reports=("$build/timing.json")
if "$build/vorn_bench_memory" \
  --benchmark_filter="$filter" \
  --benchmark_out="$build/memory.json" --benchmark_out_format=json \
  >"$build/memory.log" 2>&1 && [ -s "$build/memory.json" ]; then
  reports+=("$build/memory.json")
else
  echo "  no memory workload matched '$filter'"
fi

echo
python3 "$here/report.py" "${reports[@]}"
