// Heap accounting for the memory benchmarks (vorn_bench_memory only).
//
// heap_counter.cpp replaces malloc, free, calloc, realloc and the aligned forms for the
// whole process, shared libraries included, and counts each block at its usable size,
// so the figures are what the heap really hands out (a block's rounding included, its
// allocator header not). Single-threaded, like the benchmarks that read it.
#ifndef VORN_BENCH_HEAP_COUNTER_H
#define VORN_BENCH_HEAP_COUNTER_H

#include <cstddef>

#include <benchmark/benchmark.h>

namespace bench {

struct HeapUsage {
  long long retained;  // bytes live at Stop that were not live at Start
  long long peak;      // highest live bytes between Start and Stop, above the Start level
};

class HeapWatch {
public:
  // Starts measuring from the bytes live now.
  HeapWatch();
  HeapUsage Stop() const;

private:
  std::size_t m_start;
};

// Publishes a measurement as the counters report.py reads: retained bytes per
// coordinate, peak and retained bytes.
inline void ReportHeap(benchmark::State& state, HeapUsage usage, std::size_t coordinates) {
  state.counters["bytes_per_coord"] =
      static_cast<double>(usage.retained) / static_cast<double>(coordinates);
  state.counters["peak_bytes"] = static_cast<double>(usage.peak);
  state.counters["retained_bytes"] = static_cast<double>(usage.retained);
}

}  // namespace bench

#endif
