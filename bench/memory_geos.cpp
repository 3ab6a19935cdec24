// Heap use of GEOS coordinate sequences and a GEOS MultiPolygon holding the same data.
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>
#include <geos/geom/Coordinate.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/Envelope.h>

#include "common.h"
#include "geos_data.h"
#include "heap_counter.h"

namespace {

std::vector<geos::geom::Coordinate> GeosCoordinates() {
  std::vector<geos::geom::Coordinate> coords;
  for (VornCoordinate const& c : bench::MakeCoordinates(bench::kCoordinates)) {
    coords.emplace_back(c.X, c.Y);
  }
  return coords;
}

void AddGeos(benchmark::State& state) {
  std::vector<geos::geom::Coordinate> const source = GeosCoordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    geos::geom::CoordinateArraySequence sequence;
    for (geos::geom::Coordinate const& c : source) sequence.add(c);
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

void AddRangeGeos(benchmark::State& state) {
  std::vector<geos::geom::Coordinate> const source = GeosCoordinates();
  for (auto _ : state) {
    bench::HeapWatch const watch;
    geos::geom::CoordinateArraySequence sequence;
    sequence.setPoints(source);
    bench::ReportHeap(state, watch.Stop(), source.size());
  }
}

void MultiPolygonGeos(benchmark::State& state) {
  auto const factory = geos::geom::GeometryFactory::create();
  std::vector<VornCoordinate> const coords = bench::MakeRings(bench::kRings, bench::kRingSize);
  for (auto _ : state) {
    bench::HeapWatch const watch;
    std::unique_ptr<geos::geom::MultiPolygon> multiPolygon =
        bench::MakeGeosMultiPolygon(*factory, coords, bench::kRingSize);
    bench::CallbackFilter filter(bench::OpaqueCallback(), bench::SharedRotation());
    multiPolygon->apply_rw(filter);
    benchmark::DoNotOptimize(multiPolygon->getEnvelopeInternal()->getMinX());
    bench::ReportHeap(state, watch.Stop(), coords.size());
  }
}

int const kRegistered = [] {
  auto const coords = static_cast<std::int64_t>(bench::kCoordinates);
  benchmark::RegisterBenchmark("memory_add/geos", AddGeos)->Arg(coords)->Iterations(1);
  benchmark::RegisterBenchmark("memory_add_range/geos", AddRangeGeos)->Arg(coords)->Iterations(1);
  benchmark::RegisterBenchmark("memory_multipolygon/geos", MultiPolygonGeos)
      ->Arg(static_cast<std::int64_t>(bench::kRings))
      ->Iterations(1);
  return 0;
}();

}  // namespace
