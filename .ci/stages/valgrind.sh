#!/usr/bin/env bash
# Every test program under valgrind memcheck (memory errors, definite and indirect
# leaks), on the Debug build that the test stage leaves in build/test. The LargeObjects
# tests, some hundred megabytes each, are left to the native and sanitizer stages.
set -euo pipefail
build=build/test
if [[ ! -f "$build/CMakeCache.txt" ]]; then
  echo "valgrind: no $build; run the test stage first (bash .ci/stages/test.sh)" >&2
  exit 1
fi
if ! output=$(cmake --build "$build" -j2 2>&1); then
  echo "$output"
  exit 1
fi

# The test support replaces malloc and operator new (to make chosen allocations fail) and
# forwards to the C runtime's allocator, which valgrind tracks. The synonym keeps valgrind
# from replacing those replacements, so failure injection still works under valgrind.
options=(--soname-synonyms=somalloc=nomatch --error-exitcode=1 --leak-check=full
         --errors-for-leak-kinds=definite,indirect)
logs="$build/valgrind"
mkdir -p "$logs"
status=0
for program in "$build"/tests/*/vorn_*_tests; do
  name=$(basename "$program")
  start=$SECONDS
  result=passed
  if ! valgrind "${options[@]}" --log-file="$logs/$name.valgrind" \
      "$program" --gtest_brief=1 --gtest_filter='-LargeObjects.*' >"$logs/$name.out" 2>&1; then
    result=FAILED
    status=1
  fi
  tests=$(grep -Eo '[0-9]+ tests? from [0-9]+ test suites? ran' "$logs/$name.out" |
          cut -d' ' -f1 || true)
  # Death tests fork: every process adds its own summaries to the log.
  errors=$({ grep -Eo 'ERROR SUMMARY: [0-9]+' "$logs/$name.valgrind" || true; } |
           awk '{n += $3} END {print n + 0}')
  lost=$({ grep -Eo 'definitely lost: [0-9,]+' "$logs/$name.valgrind" || true; } | tr -d , |
         awk '{n += $3} END {print n + 0}')
  printf '%-24s %-7s %3ds  %4s tests, %s memcheck errors, %s bytes definitely lost\n' \
    "$name" "$result" $((SECONDS - start)) "${tests:-?}" "${errors:-?}" "$lost"
  if [[ $result == FAILED ]]; then
    grep -E '^\[  FAILED|Failure' "$logs/$name.out" || true
    sed -n '/Parent PID/,$p' "$logs/$name.valgrind" | grep -vE '^==[0-9]+== *$' | head -80
  fi
done
exit $status
