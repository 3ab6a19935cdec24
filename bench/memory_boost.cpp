// Heap use of a Boost.Geometry multi_polygon holding the same rings.
#include <vector>

#include <benchmark/benchmark.h>

#include "boost_data.h"
#include "common.h"
#include "heap_counter.h"

namespace {

void MultiPolygonBoost(benchmark::State& state) {
  std::vector<VornCoordinate> const coords = bench::MakeRings(bench::kRings, bench::kRingSize);
  for (auto _ : state) {
    bench::HeapWatch const watch;
    bench::BoostMultiPolygon multiPolygon = bench::MakeBoostMultiPolygon(coords, bench::kRingSize);
    bench::BoostBox box;
    bench::TransformAndEnvelope(multiPolygon, bench::OpaqueCallback(), bench::SharedRotation(),
                                box);
    benchmark::DoNotOptimize(box);
    bench::ReportHeap(state, watch.Stop(), coords.size());
  }
}

int const kRegistered = [] {
  benchmark::RegisterBenchmark("memory_multipolygon/boost", MultiPolygonBoost)
      ->Arg(static_cast<std::int64_t>(bench::kRings))
      ->Iterations(1);
  return 0;
}();

}  // namespace
