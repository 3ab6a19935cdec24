#!/usr/bin/env bash
# Cross build for 32-bit ARM; the tests run under qemu-user.
set -euo pipefail
cmake --workflow --preset arm
