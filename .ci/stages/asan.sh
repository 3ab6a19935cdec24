#!/usr/bin/env bash
# The whole suite under AddressSanitizer (leaks reported) and UndefinedBehaviorSanitizer,
# halting on the first error.
set -euo pipefail
cmake --workflow --preset asan
