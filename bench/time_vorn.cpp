// Timed workloads of the library and of their plain baselines (contiguous arrays,
// std::vector, memcpy, a linear scan of std::u16string names). The peers live in
// time_geos.cpp and time_boost.cpp and measure the same work on the same data.
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>

#include "common.h"

namespace {

using bench::RawBox;

void CountCoordinates(benchmark::State& state, std::size_t perIteration) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(perIteration));
}

std::vector<VornCoordinate> const& Coordinates() {
  static std::vector<VornCoordinate> const coords = bench::MakeCoordinates(bench::kCoordinates);
  return coords;
}

std::vector<VornCoordinate> const& MultiPolygonRings() {
  static std::vector<VornCoordinate> const coords =
      bench::MakeRings(bench::kRings, bench::kRingSize);
  return coords;
}

std::vector<VornCoordinate> const& MapRings() {
  static std::vector<VornCoordinate> const coords =
      bench::MakeRings(bench::kAreas * bench::kAreaRings, bench::kRingSize);
  return coords;
}

// --- Transform of one coordinate sequence -------------------------------------------

void TransformRaw(benchmark::State& state) {
  std::vector<VornCoordinate> coords = Coordinates();
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    RawBox box =
        bench::RawTransform(coords.data(), coords.size(), callback, bench::SharedRotation());
    benchmark::DoNotOptimize(box);
  }
  CountCoordinates(state, coords.size());
}

void TransformVorn(benchmark::State& state) {
  std::vector<VornCoordinate> coords = Coordinates();
  VornCoordinateVector vector(coords.data(), static_cast<int>(coords.size()));
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    vector.Transform(callback, bench::SharedRotation());
    benchmark::DoNotOptimize(vector.MinX);
  }
  CountCoordinates(state, coords.size());
}

// --- Building a coordinate sequence -------------------------------------------------
// "fresh" builds a new container in every iteration (allocation included); "reused"
// clears one container and refills it, so only the appending loop is measured.

RawBox StdInsert(std::vector<VornCoordinate>& target, std::vector<VornCoordinate> const& source) {
  target.insert(target.end(), source.begin(), source.end());
  RawBox box = bench::EmptyRawBox();
  for (VornCoordinate const& c : target) bench::Widen(box, c.X, c.Y);
  return box;
}

RawBox StdPushBack(std::vector<VornCoordinate>& target, std::vector<VornCoordinate> const& source) {
  RawBox box = bench::EmptyRawBox();
  for (VornCoordinate const& c : source) {
    target.push_back(c);
    bench::Widen(box, c.X, c.Y);
  }
  return box;
}

void AddVornOneByOne(VornCoordinateVector& target, std::vector<VornCoordinate> const& source) {
  for (VornCoordinate const& c : source) target.Add(c);
}

void AddRangeStdFresh(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    std::vector<VornCoordinate> target;
    RawBox box = StdInsert(target, source);
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(target.data());
  }
  CountCoordinates(state, source.size());
}

void AddRangeVornFresh(benchmark::State& state) {
  std::vector<VornCoordinate> source = Coordinates();
  for (auto _ : state) {
    VornCoordinateVector target;
    target.AddRange(source.data(), static_cast<int>(source.size()));
    benchmark::DoNotOptimize(target.MinX);
    benchmark::DoNotOptimize(target.begin());
  }
  CountCoordinates(state, source.size());
}

void AddRangeStdReused(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  std::vector<VornCoordinate> target;
  for (auto _ : state) {
    target.clear();
    RawBox box = StdInsert(target, source);
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(target.data());
  }
  CountCoordinates(state, source.size());
}

void AddRangeVornReused(benchmark::State& state) {
  std::vector<VornCoordinate> source = Coordinates();
  VornCoordinateVector target;
  for (auto _ : state) {
    target.Clear();
    target.AddRange(source.data(), static_cast<int>(source.size()));
    benchmark::DoNotOptimize(target.MinX);
    benchmark::DoNotOptimize(target.begin());
  }
  CountCoordinates(state, source.size());
}

void AddStdFresh(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    std::vector<VornCoordinate> target;
    RawBox box = StdPushBack(target, source);
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(target.data());
  }
  CountCoordinates(state, source.size());
}

void AddVornFresh(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  for (auto _ : state) {
    VornCoordinateVector target;
    AddVornOneByOne(target, source);
    benchmark::DoNotOptimize(target.MinX);
    benchmark::DoNotOptimize(target.begin());
  }
  CountCoordinates(state, source.size());
}

void AddStdReused(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  std::vector<VornCoordinate> target;
  for (auto _ : state) {
    target.clear();
    RawBox box = StdPushBack(target, source);
    benchmark::DoNotOptimize(box);
    benchmark::DoNotOptimize(target.data());
  }
  CountCoordinates(state, source.size());
}

void AddVornReused(benchmark::State& state) {
  std::vector<VornCoordinate> const& source = Coordinates();
  VornCoordinateVector target;
  for (auto _ : state) {
    target.Clear();
    AddVornOneByOne(target, source);
    benchmark::DoNotOptimize(target.MinX);
    benchmark::DoNotOptimize(target.begin());
  }
  CountCoordinates(state, source.size());
}

// --- Multi-polygon and treatment map ------------------------------------------------
// The raw counterpart keeps every ring in one contiguous array and, like the library,
// a box per ring (and per area) besides the overall one.

void TransformMultiPolygonRaw(benchmark::State& state) {
  std::vector<VornCoordinate> coords = MultiPolygonRings();
  std::vector<RawBox> ringBoxes(bench::kRings);
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    RawBox total = bench::EmptyRawBox();
    for (std::size_t ring = 0; ring < bench::kRings; ++ring) {
      ringBoxes[ring] = bench::RawTransform(coords.data() + ring * bench::kRingSize,
                                            bench::kRingSize, callback, bench::SharedRotation());
      bench::Widen(total, ringBoxes[ring]);
    }
    benchmark::DoNotOptimize(total);
    benchmark::DoNotOptimize(ringBoxes.data());
  }
  CountCoordinates(state, coords.size());
}

void TransformMultiPolygonVorn(benchmark::State& state) {
  std::vector<VornCoordinate> coords = MultiPolygonRings();
  VornMultiPolygon multiPolygon;
  for (std::size_t ring = 0; ring < bench::kRings; ++ring) {
    multiPolygon.Polygons.Add(coords.data() + ring * bench::kRingSize,
                              static_cast<int>(bench::kRingSize), false);
  }
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    multiPolygon.Transform(callback, bench::SharedRotation());
    benchmark::DoNotOptimize(multiPolygon.Polygons.Boundbox.MinX);
  }
  CountCoordinates(state, coords.size());
}

void TransformTreatmentMapRaw(benchmark::State& state) {
  std::vector<VornCoordinate> coords = MapRings();
  std::size_t const rings = bench::kAreas * bench::kAreaRings;
  std::vector<RawBox> ringBoxes(rings);
  std::vector<RawBox> areaBoxes(bench::kAreas);
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    RawBox total = bench::EmptyRawBox();
    for (std::size_t area = 0; area < bench::kAreas; ++area) {
      RawBox areaBox = bench::EmptyRawBox();
      for (std::size_t ring = area * bench::kAreaRings; ring < (area + 1) * bench::kAreaRings;
           ++ring) {
        ringBoxes[ring] = bench::RawTransform(coords.data() + ring * bench::kRingSize,
                                              bench::kRingSize, callback, bench::SharedRotation());
        bench::Widen(areaBox, ringBoxes[ring]);
      }
      areaBoxes[area] = areaBox;
      bench::Widen(total, areaBox);
    }
    benchmark::DoNotOptimize(total);
    benchmark::DoNotOptimize(ringBoxes.data());
    benchmark::DoNotOptimize(areaBoxes.data());
  }
  CountCoordinates(state, coords.size());
}

void TransformTreatmentMapVorn(benchmark::State& state) {
  std::vector<VornCoordinate> coords = MapRings();
  VornTreatmentMap map;
  for (std::size_t area = 0; area < bench::kAreas; ++area) {
    VornMultiPolygon multiPolygon;
    for (std::size_t ring = 0; ring < bench::kAreaRings; ++ring) {
      std::size_t const index = area * bench::kAreaRings + ring;
      multiPolygon.Polygons.Add(coords.data() + index * bench::kRingSize,
                                static_cast<int>(bench::kRingSize), ring != 0);
    }
    int const zone = static_cast<int>(area % 8);
    map.TreatmentPolygons.Add(multiPolygon, VornTreatmentZone(zone, 12.5 * zone));
  }
  VornTransformCallback const callback = bench::OpaqueCallback();
  for (auto _ : state) {
    map.Transform(callback, bench::SharedRotation());
    benchmark::DoNotOptimize(map.TreatmentPolygons.Boundbox.MinX);
  }
  CountCoordinates(state, coords.size());
}

// --- Grids ----------------------------------------------------------------------------

std::vector<unsigned char> ZoneBytes(std::size_t count) {
  std::vector<unsigned char> bytes(count);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<unsigned char>(i % 13);
  return bytes;
}

void SetZonesMemcpy(benchmark::State& state) {
  std::size_t const count = static_cast<std::size_t>(bench::kByteGridSide) * bench::kByteGridSide;
  std::vector<unsigned char> source = ZoneBytes(count);
  std::vector<unsigned char> target(count);
  for (auto _ : state) {
    std::memcpy(target.data(), source.data(), count);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

void SetZonesVorn(benchmark::State& state) {
  std::size_t const count = static_cast<std::size_t>(bench::kByteGridSide) * bench::kByteGridSide;
  std::vector<unsigned char> source = ZoneBytes(count);
  VornTreatmentGrid grid;
  if (!grid.InitGrid(0.0, 0.0, 1.0, 1.0, bench::kByteGridSide, bench::kByteGridSide)) {
    state.SkipWithError("InitGrid failed");
    return;
  }
  for (auto _ : state) {
    grid.SetZones(source.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(count));
}

// The cell value every rate-grid workload writes at (column, row).
inline VornTreatmentZoneEx RateAt(int column, int row) {
  int const zone = (column + row) & 7;
  return VornTreatmentZoneEx(12.5 * zone, zone);
}

void RateGridStd(benchmark::State& state) {
  int const side = bench::kRateGridSide;
  for (auto _ : state) {
    std::vector<VornTreatmentZoneEx> cells(static_cast<std::size_t>(side) * side);
    for (int row = 0; row < side; ++row) {
      for (int column = 0; column < side; ++column) {
        cells[static_cast<std::size_t>(row) * side + column] = RateAt(column, row);
      }
    }
    benchmark::DoNotOptimize(cells.data());
  }
  state.SetItemsProcessed(state.iterations() * side * side);
}

void RateGridVornSetZoneInfo(benchmark::State& state) {
  int const side = bench::kRateGridSide;
  for (auto _ : state) {
    VornTreatmentGridEx grid;
    grid.InitGrid(0.0, 0.0, 1.0, 1.0, side, side);
    for (int row = 0; row < side; ++row) {
      for (int column = 0; column < side; ++column) {
        VornTreatmentZoneEx const zone = RateAt(column, row);
        grid.SetZoneInfo(static_cast<unsigned int>(column), static_cast<unsigned int>(row),
                         zone.Rate, zone.ZoneNumber);
      }
    }
    benchmark::DoNotOptimize(grid.GetZones());
  }
  state.SetItemsProcessed(state.iterations() * side * side);
}

void RateGridVornRowPointer(benchmark::State& state) {
  int const side = bench::kRateGridSide;
  for (auto _ : state) {
    VornTreatmentGridEx grid;
    grid.InitGrid(0.0, 0.0, 1.0, 1.0, side, side);
    for (int row = 0; row < side; ++row) {
      VornTreatmentZoneEx* const cells = grid.GetZonesInRow(static_cast<unsigned int>(row));
      for (int column = 0; column < side; ++column) cells[column] = RateAt(column, row);
    }
    benchmark::DoNotOptimize(grid.GetZones());
  }
  state.SetItemsProcessed(state.iterations() * side * side);
}

// --- Attribute lookup by name ---------------------------------------------------------

// Null-terminated 16-bit copies of names, as the library's wide-text interface takes them.
std::vector<std::vector<unsigned short>> WideKeys(std::vector<std::u16string> const& names) {
  std::vector<std::vector<unsigned short>> keys;
  for (std::u16string const& name : names) {
    std::vector<unsigned short> key(name.begin(), name.end());
    key.push_back(0);
    keys.push_back(std::move(key));
  }
  return keys;
}

inline char16_t FoldAsciiCase(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + (u'a' - u'A')) : unit;
}

bool EqualCaseless(std::u16string const& a, std::u16string const& b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (FoldAsciiCase(a[i]) != FoldAsciiCase(b[i])) return false;
  }
  return true;
}

template <bool kCaseless>
void AttributeLookupStd(benchmark::State& state) {
  std::vector<std::u16string> const names = bench::AttributeNames();
  std::vector<std::u16string> const keys =
      kCaseless ? bench::UpperCaseNames() : bench::AttributeNames();
  for (auto _ : state) {
    for (std::u16string const& key : keys) {
      int found = -1;
      for (std::size_t i = 0; i < names.size(); ++i) {
        if (kCaseless ? EqualCaseless(names[i], key) : names[i] == key) {
          found = static_cast<int>(i);
          break;
        }
      }
      benchmark::DoNotOptimize(found);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(keys.size()));
}

template <bool kCaseless>
void AttributeLookupVorn(benchmark::State& state) {
  std::vector<std::vector<unsigned short>> const names = WideKeys(bench::AttributeNames());
  std::vector<std::vector<unsigned short>> const keys =
      WideKeys(kCaseless ? bench::UpperCaseNames() : bench::AttributeNames());
  VornAttributeCollection attributes;
  for (std::size_t i = 0; i < names.size(); ++i) {
    attributes.Add(names[i].data(), static_cast<int>(i));
  }
  attributes.SetCaselessCompare(kCaseless);
  for (auto _ : state) {
    for (std::vector<unsigned short> const& key : keys) {
      int found = attributes.GetIndexOfKey(key.data());
      benchmark::DoNotOptimize(found);
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(keys.size()));
}

// --- Registration ---------------------------------------------------------------------

int const kRegistered = [] {
  auto const coords = static_cast<std::int64_t>(bench::kCoordinates);
  benchmark::RegisterBenchmark("transform/raw", TransformRaw)->Arg(coords);
  benchmark::RegisterBenchmark("transform/vorn", TransformVorn)->Arg(coords);

  benchmark::RegisterBenchmark("add_range_fresh/std_vector", AddRangeStdFresh)->Arg(coords);
  benchmark::RegisterBenchmark("add_range_fresh/vorn", AddRangeVornFresh)->Arg(coords);
  benchmark::RegisterBenchmark("add_range_reused/std_vector", AddRangeStdReused)->Arg(coords);
  benchmark::RegisterBenchmark("add_range_reused/vorn", AddRangeVornReused)->Arg(coords);
  benchmark::RegisterBenchmark("add_fresh/std_vector", AddStdFresh)->Arg(coords);
  benchmark::RegisterBenchmark("add_fresh/vorn", AddVornFresh)->Arg(coords);
  benchmark::RegisterBenchmark("add_reused/std_vector", AddStdReused)->Arg(coords);
  benchmark::RegisterBenchmark("add_reused/vorn", AddVornReused)->Arg(coords);

  auto const rings = static_cast<std::int64_t>(bench::kRings);
  benchmark::RegisterBenchmark("multipolygon/raw", TransformMultiPolygonRaw)->Arg(rings);
  benchmark::RegisterBenchmark("multipolygon/vorn", TransformMultiPolygonVorn)->Arg(rings);

  auto const areas = static_cast<std::int64_t>(bench::kAreas);
  benchmark::RegisterBenchmark("treatment_map/raw", TransformTreatmentMapRaw)->Arg(areas);
  benchmark::RegisterBenchmark("treatment_map/vorn", TransformTreatmentMapVorn)->Arg(areas);

  benchmark::RegisterBenchmark("set_zones/memcpy", SetZonesMemcpy)->Arg(bench::kByteGridSide);
  benchmark::RegisterBenchmark("set_zones/vorn", SetZonesVorn)->Arg(bench::kByteGridSide);
  benchmark::RegisterBenchmark("rate_grid/std_vector", RateGridStd)->Arg(bench::kRateGridSide);
  benchmark::RegisterBenchmark("rate_grid/vorn_SetZoneInfo", RateGridVornSetZoneInfo)
      ->Arg(bench::kRateGridSide);
  benchmark::RegisterBenchmark("rate_grid/vorn_GetZonesInRow", RateGridVornRowPointer)
      ->Arg(bench::kRateGridSide);

  auto const attributes = static_cast<std::int64_t>(bench::kAttributes);
  benchmark::RegisterBenchmark("lookup_exact/std_vector", AttributeLookupStd<false>)
      ->Arg(attributes);
  benchmark::RegisterBenchmark("lookup_exact/vorn", AttributeLookupVorn<false>)->Arg(attributes);
  benchmark::RegisterBenchmark("lookup_caseless/std_vector", AttributeLookupStd<true>)
      ->Arg(attributes);
  benchmark::RegisterBenchmark("lookup_caseless/vorn", AttributeLookupVorn<true>)->Arg(attributes);
  return 0;
}();

}  // namespace
