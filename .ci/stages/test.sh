#!/usr/bin/env bash
# The README's test command: Debug build, warnings as errors, the whole suite.
set -euo pipefail
cmake --workflow --preset test
