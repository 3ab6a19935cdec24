// Heap use of the library's coordinate storage and multi-polygon, next to std::vector.
// Each benchmark runs once: the figures are counts, not timings.
#include <vector>

#include <benchmark/benchmark.h>

#include <vorn/core/coordinate_vector.h>
#include <vorn/geometry/multi_polygon.h>

#include "common.h"
#include "heap_counter.h"

namespace {

std::vector<VornCoordinate> const& Coordinates() {
  static std::vector<VornCoordinate> const coords = bench::MakeCoordinates(bench::kCoordinates);
  return coords;
}

void AddVorn(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    VornCoordinateVector vector;
    for (VornCoordinate const& c : source) vector.Add(c);
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

void AddStd(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    std::vector<VornCoordinate> vector;
    for (VornCoordinate const& c : source) vector.push_back(c);
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

void AddRangeVorn(benchmark::State& state) {
  std::vector<VornCoordinate> source = Coordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    VornCoordinateVector vector;
    vector.AddRange(source.data(), static_cast<int>(source.size()));
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

void AddRangeStd(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    std::vector<VornCoordinate> vector;
    vector.insert(vector.end(), source.begin(), source.end());
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

// Built ring by ring from a flat array, then transformed once so that every box exists.
void MultiPolygonVorn(benchmark::State& state) {
  std::vector<VornCoordinate> coords = bench::MakeRings(bench::kRings, bench::kRingSize);
  for (auto _ : state) {
    bench::HeapWatch const watch;
    VornMultiPolygon multiPolygon;
    for (std::size_t ring = 0; ring < bench::kRings; ++ring) {
      multiPolygon.Polygons.Add(coords.data() + ring * bench::kRingSize,
                                static_cast<int>(bench::kRingSize), false);
    }
    multiPolygon.Transform(bench::OpaqueCallback(), bench::SharedRotation());
    bench::ReportHeap(state, watch.Stop(), coords.size());
  }
}

int const kRegistered = [] {
  auto const coords = static_cast<std::int64_t>(bench::kCoordinates);
  benchmark::RegisterBenchmark("memory_add/std_vector", AddStd)->Arg(coords)->Iterations(1);
  benchmark::RegisterBenchmark("memory_add/vorn", AddVorn)->Arg(coords)->Iterations(1);
  benchmark::RegisterBenchmark("memory_add_range/std_vector", AddRangeStd)
      ->Arg(coords)
      ->Iterations(1);
  benchmark::RegisterBenchmark("memory_add_range/vorn", AddRangeVorn)->Arg(coords)->Iterations(1);
  benchmark::RegisterBenchmark("memory_multipolygon/vorn", MultiPolygonVorn)
      ->Arg(static_cast<std::int64_t>(bench::kRings))
      ->Iterations(1);
  return 0;
}();

}  // namespace
