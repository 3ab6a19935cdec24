#!/usr/bin/env bash
# The allocation-failure sweep in one process, so that the log ends with its report:
# failure points per allocation channel. Runs natively on the Debug build
# of the test stage; the asan stage runs the same sweep with leak checks.
set -euo pipefail
build=build/test
if [[ ! -f "$build/CMakeCache.txt" ]]; then
  echo "sweep: no $build; run the test stage first (bash .ci/stages/test.sh)" >&2
  exit 1
fi
cmake --build "$build" -j2 --target vorn_reliability_tests >/dev/null
"$build/tests/reliability/vorn_reliability_tests" --gtest_filter='AllocationFailureSweep.*' \
  --gtest_brief=1
