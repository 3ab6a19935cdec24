#include "svg.h"

#include <cstdio>

namespace svg {
namespace {

constexpr double kMinRate = 100.0;
constexpr double kMaxRate = 200.0;
constexpr double kGap = 40.0;  // metres between the two panels

// Light yellow for low rates to dark green for high ones.
void RateColour(double rate, char* out, std::size_t size) {
  double t = (rate - kMinRate) / (kMaxRate - kMinRate);
  t = t < 0 ? 0 : (t > 1 ? 1 : t);
  auto mix = [t](int low, int high) { return static_cast<int>(low + t * (high - low)); };
  std::snprintf(out, size, "#%02x%02x%02x", mix(255, 0), mix(247, 104), mix(188, 55));
}

struct Frame {
  double west, south, north;
  // SVG y grows downward: flip northings.
  double X(double easting, double offset) const { return easting - west + offset; }
  double Y(double northing) const { return north - northing; }
};

void WriteRing(std::FILE* out, Frame const& frame, VornCoordinateVector const& ring,
               double offset) {
  char command = 'M';
  for (VornCoordinate const& c : ring) {
    std::fprintf(out, "%c%.2f,%.2f ", command, frame.X(c.X, offset), frame.Y(c.Y));
    command = 'L';
  }
  std::fprintf(out, "Z ");
}

void WriteMap(std::FILE* out, Frame const& frame, VornTreatmentMap const& map) {
  for (VornTreatmentPolygon const* area : map.TreatmentPolygons) {
    char colour[8];
    RateColour(area->Zone.Rate, colour, sizeof colour);
    std::fprintf(out, "<path fill=\"%s\" fill-rule=\"evenodd\" stroke=\"#333\" d=\"", colour);
    for (VornPolygon const* ring : area->Area.Polygons) WriteRing(out, frame, ring->Coordinates, 0);
    std::fprintf(out, "\"/>\n");
  }
}

void WriteGrid(std::FILE* out, Frame const& frame, VornTreatmentGridEx const& grid, double offset) {
  double const width = grid.CellWidth();
  double const height = grid.CellHeight();
  for (int row = 0; row < grid.NumRows(); ++row) {
    VornTreatmentZoneEx const* cells = grid.GetZonesInRow(static_cast<unsigned>(row));
    double const south = grid.Boundbox.MinY + row * height;
    for (int column = 0; column < grid.NumColumns(); ++column) {
      if (cells[column].Rate <= 0.0) continue;  // outside the field or in the pond
      char colour[8];
      RateColour(cells[column].Rate, colour, sizeof colour);
      std::fprintf(out,
                   "<rect x=\"%.2f\" y=\"%.2f\" width=\"%.2f\" height=\"%.2f\" fill=\"%s\"/>\n",
                   frame.X(grid.Boundbox.MinX + column * width, offset), frame.Y(south + height),
                   width, height, colour);
    }
  }
}

}  // namespace

bool WriteFieldMap(char const* path, VornTreatmentMap const& map, VornTreatmentGridEx const& grid) {
  VornBoundbox const& box = grid.Boundbox;
  Frame const frame{box.MinX, box.MinY, box.MaxY};
  double const panel = box.MaxX - box.MinX;
  std::FILE* out = std::fopen(path, "w");
  if (out == nullptr) return false;
  std::fprintf(out,
               "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-10 -30 %.2f %.2f\">\n"
               "<rect x=\"-10\" y=\"-30\" width=\"100%%\" height=\"100%%\" fill=\"white\"/>\n"
               "<text x=\"0\" y=\"-10\" font-size=\"16\">Treatment map (kg/ha)</text>\n"
               "<text x=\"%.2f\" y=\"-10\" font-size=\"16\">Rate grid (kg/ha)</text>\n",
               2 * panel + kGap + 20, box.MaxY - box.MinY + 40, panel + kGap);
  WriteMap(out, frame, map);
  WriteGrid(out, frame, grid, panel + kGap);
  std::fprintf(out, "</svg>\n");
  return std::fclose(out) == 0;
}

}  // namespace svg
