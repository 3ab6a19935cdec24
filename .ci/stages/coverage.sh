#!/usr/bin/env bash
# Line and branch coverage of the library code (vorn/ only) under the whole test suite:
# an unoptimised g++ build with gcov instrumentation in build/coverage, CTest, then gcovr.
# Prints the summary, writes build/coverage/coverage.html (per file, line by line) and
# fails below 95% of lines or 85% of branches. The arcs a call takes when it throws, and
# branches on lines without code, are not counted. Assertions are compiled out, as in a
# release build (see VORN_COVERAGE). Only this build's counters are read, whatever other
# builds sit beside it.
set -euo pipefail
build=build/coverage
# A fresh tree each time: notes files of sources deleted since an earlier build would
# otherwise still be read.
rm -rf "$build"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Debug -DVORN_WERROR=ON -DVORN_COVERAGE=ON \
  -DVORN_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$build" -j2 >"$build/build.log" 2>&1 || { tail -n 60 "$build/build.log"; exit 1; }
ctest --test-dir "$build" -j2 --output-on-failure >"$build/ctest.log" 2>&1 ||
  { grep -v ' Passed ' "$build/ctest.log" | tail -n 80; exit 1; }
tail -n 3 "$build/ctest.log"
gcovr --root . --object-directory "$build" --filter 'vorn/' \
  --exclude-throw-branches --exclude-unreachable-branches \
  --html-details "$build/coverage.html" --txt "$build/coverage.txt" --print-summary \
  --fail-under-line 95 --fail-under-branch 85 "$build"
