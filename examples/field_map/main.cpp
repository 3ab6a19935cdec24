// Field map example: models one field with a pond, three treatment zones, a vector
// treatment map and both kinds of grid; projects everything from longitude/latitude to
// UTM metres through Transform; prints a summary and writes an SVG picture.
//
// Usage: vorn_field_map [output.svg]   (default: field-map.svg in the working directory)
#include <cstdio>
#include <vector>

#include <vorn/vorn.h>

#include "field.h"
#include "geometry_math.h"
#include "projection.h"
#include "svg.h"

namespace {

// Zone 0 of the byte grid marks cells outside the field; zones 1..3 are the strips.
constexpr int kOutsideZone = 0;
constexpr double kCellLon = 0.0002;
constexpr double kCellLat = 0.0001;

int StripOf(double lon) {
  for (int strip = 0; strip < 3; ++strip)
    if (lon < field::kStripEdges[strip + 1]) return strip;
  return 2;
}

VornTreatmentZone MakeZone(field::ZonePlan const& plan) {
  auto const designator = VornUtil::StringToWString(plan.designator);
  auto const unit = VornUtil::StringToWString(field::kUnit);
  return VornTreatmentZone(plan.number, plan.rate, designator.c_str(), unit.c_str(), 0);
}

// One area per strip: the boundary clipped to the strip, plus the pond where it lies.
void BuildMap(VornTreatmentMap& map) {
  for (int strip = 0; strip < 3; ++strip) {
    std::vector<VornCoordinate> ring =
        geometry_math::ClipToBand(field::kBoundary, std::size(field::kBoundary),
                                  field::kStripEdges[strip], field::kStripEdges[strip + 1]);
    VornMultiPolygon area;
    area.Polygons.Add(ring.data(), static_cast<int>(ring.size()), false);
    if (geometry_math::Contains(ring, field::kPond[0]))
      area.Polygons.Add(field::kPond, static_cast<int>(std::size(field::kPond)), true);
    area.SortHoles();
    map.TreatmentPolygons.Add(area, MakeZone(field::kZones[strip]));
  }
}

// Both grids cover the field's box with the same cells; row 0 is the southern row.
template <class Grid>
bool InitCells(Grid& grid, VornBoundbox const& box) {
  int const columns = static_cast<int>((box.MaxX - box.MinX) / kCellLon) + 1;
  int const rows = static_cast<int>((box.MaxY - box.MinY) / kCellLat) + 1;
  return grid.InitGrid(box.MinY, box.MinX, kCellLat, kCellLon, columns, rows);
}

VornCoordinate CellCentre(VornBoundbox const& box, int column, int row) {
  return {box.MinX + (column + 0.5) * kCellLon, box.MinY + (row + 0.5) * kCellLat};
}

bool InField(VornCoordinate const& point) {
  std::vector<VornCoordinate> const boundary(std::begin(field::kBoundary),
                                             std::end(field::kBoundary));
  std::vector<VornCoordinate> const pond(std::begin(field::kPond), std::end(field::kPond));
  return geometry_math::Contains(boundary, point) && !geometry_math::Contains(pond, point);
}

void BuildZoneGrid(VornTreatmentGrid& grid, VornBoundbox const& box) {
  if (!InitCells(grid, box)) return;
  grid.Zones.Add(kOutsideZone, 0.0);
  for (auto const& plan : field::kZones) grid.Zones.Add(MakeZone(plan));
  for (int row = 0; row < grid.NumRows(); ++row) {
    for (int column = 0; column < grid.NumColumns(); ++column) {
      VornCoordinate const centre = CellCentre(box, column, row);
      int const zone = InField(centre) ? StripOf(centre.X) + 1 : kOutsideZone;
      grid.SetZoneIndex(column, row, static_cast<unsigned char>(zone));
    }
  }
}

// The rate grid varies each strip's rate by up to 10% from south to north.
void BuildRateGrid(VornTreatmentGridEx& grid, VornBoundbox const& box) {
  if (!InitCells(grid, box)) return;
  for (int row = 0; row < grid.NumRows(); ++row) {
    double const northward = (row + 0.5) / grid.NumRows();
    for (int column = 0; column < grid.NumColumns(); ++column) {
      VornCoordinate const centre = CellCentre(box, column, row);
      if (!InField(centre)) continue;
      field::ZonePlan const& zone = field::kZones[StripOf(centre.X)];
      grid.SetZoneInfo(static_cast<unsigned>(column), static_cast<unsigned>(row),
                       zone.rate * (0.9 + 0.2 * northward), zone.number);
    }
  }
}

void PrintBox(char const* label, VornBoundbox const& box, char const* format) {
  std::printf("  %-22s", label);
  std::printf(format, box.MinX, box.MaxX, box.MinY, box.MaxY);
  std::printf("\n");
}

void PrintZones(VornTreatmentMap const& map) {
  std::printf("Treatment zones\n");
  for (VornTreatmentPolygon const* area : map.TreatmentPolygons) {
    VornTreatmentZone const& zone = area->Zone;
    std::printf("  zone %d  %-20s %6.1f %s\n", zone.ZoneNumber,
                VornUtil::WStringToString(zone.GetDesignator()).c_str(), zone.Rate,
                VornUtil::WStringToString(zone.GetUnitName()).c_str());
  }
}

void PrintAreas(VornTreatmentMap const& map) {
  std::printf("Areas of the treatment map (projected)\n");
  double total = 0.0;
  for (VornTreatmentPolygon const* area : map.TreatmentPolygons) {
    double const hectares = geometry_math::AreaSquareMetres(area->Area) / 10000.0;
    total += hectares;
    std::printf("  zone %d  %u ring(s)  %8.4f ha  %7.1f kg\n", area->Zone.ZoneNumber,
                area->Area.Polygons.Count(), hectares, hectares * area->Zone.Rate);
  }
  std::printf("  total            %8.4f ha\n", total);
}

template <class Grid>
void PrintGrid(char const* label, Grid const& grid) {
  std::printf("  %-22s %d columns x %d rows, cells %.6g x %.6g (width x height)\n", label,
              grid.NumColumns(), grid.NumRows(), grid.CellWidth(), grid.CellHeight());
}

}  // namespace

int main(int argc, char** argv) {
  char const* svgPath = argc > 1 ? argv[1] : "field-map.svg";

  auto* map = Vorn::Alloc_VornTreatmentMap();
  auto* zoneGrid = Vorn::Alloc_VornTreatmentGrid();
  auto* rateGrid = Vorn::Alloc_VornTreatmentGridEx();
  if (map == nullptr || zoneGrid == nullptr || rateGrid == nullptr) return 1;
  VornObjectCollection field;  // owns all three from here on
  field.AddReference(map);
  field.AddReference(zoneGrid);
  field.AddReference(rateGrid);

  BuildMap(*map);
  VornBoundbox const fieldBox(
      map->TreatmentPolygons.Boundbox.MinX, map->TreatmentPolygons.Boundbox.MaxX,
      map->TreatmentPolygons.Boundbox.MinY, map->TreatmentPolygons.Boundbox.MaxY);
  BuildZoneGrid(*zoneGrid, fieldBox);
  BuildRateGrid(*rateGrid, fieldBox);

  PrintZones(*map);
  std::printf("Envelopes in longitude/latitude (min X, max X, min Y, max Y)\n");
  PrintBox("treatment map", map->TreatmentPolygons.Boundbox, "%.5f  %.5f  %.5f  %.5f");
  PrintBox("zone grid", zoneGrid->Boundbox, "%.5f  %.5f  %.5f  %.5f");
  std::printf("Grids in degrees\n");
  PrintGrid("zone grid", *zoneGrid);
  PrintGrid("rate grid", *rateGrid);

  projection::UtmZone utm32{32};
  field.Transform(projection::LonLatToUtm, &utm32);

  std::printf("Envelopes in UTM zone 32 metres\n");
  PrintBox("treatment map", map->TreatmentPolygons.Boundbox, "%.2f  %.2f  %.2f  %.2f");
  PrintBox("zone grid", zoneGrid->Boundbox, "%.2f  %.2f  %.2f  %.2f");
  PrintBox("rate grid", rateGrid->Boundbox, "%.2f  %.2f  %.2f  %.2f");
  std::printf("Grids in metres\n");
  PrintGrid("zone grid", *zoneGrid);
  PrintGrid("rate grid", *rateGrid);
  PrintAreas(*map);

  if (!svg::WriteFieldMap(svgPath, *map, *rateGrid)) {
    std::fprintf(stderr, "could not write %s\n", svgPath);
    return 1;
  }
  std::printf("Picture written to %s\n", svgPath);
  return 0;
}
