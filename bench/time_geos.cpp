// GEOS peers of the transform workloads: the coordinates live in GEOS geometries
// (CoordinateArraySequence under a LineString, or rings of Polygons under a
// MultiPolygon), every coordinate goes through the shared callback in a
// CoordinateSequenceFilter applied with apply_rw, and the envelope is rebuilt by
// getEnvelopeInternal after apply_rw marked the geometry changed.
#include <memory>

#include <benchmark/benchmark.h>
#include <geos/geom/Envelope.h>

#include "common.h"
#include "geos_data.h"

namespace {

using bench::CallbackFilter;

void TransformGeos(benchmark::State& state) {
  auto const factory = geos::geom::GeometryFactory::create();
  std::unique_ptr<geos::geom::LineString> line =
      bench::MakeGeosLineString(*factory, bench::MakeCoordinates(bench::kCoordinates));
  CallbackFilter filter(bench::OpaqueCallback(), bench::SharedRotation());
  for (auto _ : state) {
    line->apply_rw(filter);
    benchmark::DoNotOptimize(line->getEnvelopeInternal()->getMinX());
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(bench::kCoordinates));
}

void TransformMultiPolygonGeos(benchmark::State& state) {
  auto const factory = geos::geom::GeometryFactory::create();
  std::unique_ptr<geos::geom::MultiPolygon> multiPolygon = bench::MakeGeosMultiPolygon(
      *factory, bench::MakeRings(bench::kRings, bench::kRingSize), bench::kRingSize);
  CallbackFilter filter(bench::OpaqueCallback(), bench::SharedRotation());
  for (auto _ : state) {
    multiPolygon->apply_rw(filter);
    benchmark::DoNotOptimize(multiPolygon->getEnvelopeInternal()->getMinX());
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<std::int64_t>(bench::kRings * bench::kRingSize));
}

int const kRegistered = [] {
  benchmark::RegisterBenchmark("transform/geos", TransformGeos)
      ->Arg(static_cast<std::int64_t>(bench::kCoordinates));
  benchmark::RegisterBenchmark("multipolygon/geos", TransformMultiPolygonGeos)
      ->Arg(static_cast<std::int64_t>(bench::kRings));
  return 0;
}();

}  // namespace
