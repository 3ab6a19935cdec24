// Boost.Geometry peers of the transform workloads: every point goes through the shared
// callback with for_each_point, then envelope() rebuilds the bounding box.
#include <benchmark/benchmark.h>

#include "boost_data.h"
#include "common.h"

namespace {

using bench::TransformAndEnvelope;

void TransformBoost(benchmark::State& state) {
  bench::BoostLineString line =
      bench::MakeBoostLineString(bench::MakeCoordinates(bench::kCoordinates));
  VornTransformCallback const callback = bench::OpaqueCallback();
  bench::BoostBox box;
  for (auto _ : state) {
    TransformAndEnvelope(line, callback, bench::SharedRotation(), box);
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(line.size()));
}

void TransformMultiPolygonBoost(benchmark::State& state) {
  bench::BoostMultiPolygon multiPolygon = bench::MakeBoostMultiPolygon(
      bench::MakeRings(bench::kRings, bench::kRingSize), bench::kRingSize);
  VornTransformCallback const callback = bench::OpaqueCallback();
  bench::BoostBox box;
  for (auto _ : state) {
    TransformAndEnvelope(multiPolygon, callback, bench::SharedRotation(), box);
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(bench::kRings * bench::kRingSize));
}

int const kRegistered = [] {
  benchmark::RegisterBenchmark("transform/boost", TransformBoost)
      ->Arg(static_cast<std::int64_t>(bench::kCoordinates));
  benchmark::RegisterBenchmark("multipolygon/boost", TransformMultiPolygonBoost)
      ->Arg(static_cast<std::int64_t>(bench::kRings));
  return 0;
}();

}  // namespace
