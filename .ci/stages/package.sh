#!/usr/bin/env bash
# Installs the Debug build and builds a consumer against the installed package alone,
# once with find_package(VornLib) and once with pkg-config.
set -euo pipefail
prefix="$PWD/build/install"
rm -rf "$prefix" build/consumer
cmake --install build/test --prefix "$prefix" >/dev/null
cmake -S tests/package -B build/consumer -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build build/consumer >/dev/null
LD_LIBRARY_PATH="$prefix/lib" build/consumer/consumer
export PKG_CONFIG_PATH="$prefix/lib/pkgconfig"
flags=$(pkg-config --cflags --libs vornlib)
g++ -std=c++17 tests/package/consumer.cpp -o build/consumer/consumer-pc $flags
LD_LIBRARY_PATH="$prefix/lib" build/consumer/consumer-pc
readelf -d "$prefix/lib/libvorn.so" | grep -q 'SONAME.*libvorn.so.0' && echo "SONAME libvorn.so.0"
