#!/usr/bin/env bash
# Builds the libFuzzer targets (clang, AddressSanitizer, UndefinedBehaviorSanitizer) in
# build/fuzz and runs each for a bounded time on a scratch copy of its seed corpus in
# fuzz/corpus/<target>/, so that the repository is never written. Any crash, sanitizer
# report, leak, timeout or memory blow-up fails the stage; the input that caused it is
# kept in build/fuzz/findings/ (reproduce with: build/fuzz/<target> <file>).
# FUZZ_SECONDS (default 60) sets the time per target.
set -euo pipefail
seconds="${FUZZ_SECONDS:-60}"
build=build/fuzz
cmake -S fuzz -B "$build" -DCMAKE_CXX_COMPILER=clang++-14 >/dev/null
cmake --build "$build" -j2 >"$build/build.log" 2>&1 || { tail -n 60 "$build/build.log"; exit 1; }

work="$build/runs"
findings="$build/findings"
rm -rf "$work"
mkdir -p "$work" "$findings"
for source in fuzz/corpus/*/; do
  name="$(basename "$source")"
  target="$build/${name}_fuzzer"
  mkdir -p "$work/$name"
  cp "$source"* "$work/$name/"
  echo "--- ${name}_fuzzer: ${seconds}s"
  if ! "$target" "$work/$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
       -print_final_stats=1 -artifact_prefix="$findings/${name}-" \
       >"$work/$name.log" 2>&1; then
    tail -n 40 "$work/$name.log"
    echo "${name}_fuzzer FAILED; input kept in $findings/"
    exit 1
  fi
  grep -E '^stat::number_of_executed_units|^Done' "$work/$name.log" | tail -n 1
done
echo "all fuzz targets ran ${seconds}s each without a finding"
