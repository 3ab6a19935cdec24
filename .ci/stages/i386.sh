#!/usr/bin/env bash
# 32-bit x86 build (i686, SSE2 arithmetic, 64-bit time): Debug, warnings as errors,
# GoogleTest built from source for the target, the whole suite run under qemu-i386.
set -euo pipefail
build=build/i386
cmake -S . -B "$build" -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/i386.cmake \
  -DCMAKE_BUILD_TYPE=Debug -DVORN_WERROR=ON -DVORN_GTEST_FROM_SOURCE=ON >/dev/null
cmake --build "$build" -j2 >/dev/null
echo "libvorn.so: $(readelf -h "$build/libvorn.so" |
  awk -F': +' '/Class|Machine/ {printf "%s ", $2}')"
# Death tests fork; under qemu-i386 only the "threadsafe" style (fork and re-execute)
# finishes, the default "fast" style hangs in the emulator.
GTEST_DEATH_TEST_STYLE=threadsafe ctest --test-dir "$build" --output-on-failure
