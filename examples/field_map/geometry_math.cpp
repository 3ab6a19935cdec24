#include "geometry_math.h"

#include <cmath>

namespace geometry_math {
namespace {

// Keeps the part of `ring` on the inner side of the meridian `edge`; `keepEast` picks
// the side.
std::vector<VornCoordinate> ClipAt(std::vector<VornCoordinate> const& ring, double edge,
                                   bool keepEast) {
  auto inside = [&](VornCoordinate const& c) { return keepEast ? c.X >= edge : c.X <= edge; };
  std::vector<VornCoordinate> out;
  for (std::size_t i = 0; i + 1 < ring.size(); ++i) {
    VornCoordinate const& a = ring[i];
    VornCoordinate const& b = ring[i + 1];
    if (inside(a)) out.push_back(a);
    if (inside(a) != inside(b)) {
      double const t = (edge - a.X) / (b.X - a.X);
      out.push_back({edge, a.Y + t * (b.Y - a.Y)});
    }
  }
  if (!out.empty()) out.push_back(out.front());
  return out;
}

double RingArea(VornCoordinateVector const& ring) {
  double twiceArea = 0.0;
  VornCoordinate const* c = ring.begin();
  for (unsigned int i = 0; i + 1 < ring.Count(); ++i)
    twiceArea += c[i].X * c[i + 1].Y - c[i + 1].X * c[i].Y;
  return std::fabs(twiceArea) / 2.0;
}

}  // namespace

std::vector<VornCoordinate> ClipToBand(VornCoordinate const* ring, std::size_t count, double west,
                                       double east) {
  std::vector<VornCoordinate> const closed(ring, ring + count);
  return ClipAt(ClipAt(closed, west, true), east, false);
}

bool Contains(std::vector<VornCoordinate> const& ring, VornCoordinate const& point) {
  bool inside = false;
  for (std::size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
    VornCoordinate const& a = ring[i];
    VornCoordinate const& b = ring[j];
    if ((a.Y > point.Y) != (b.Y > point.Y) &&
        point.X < (b.X - a.X) * (point.Y - a.Y) / (b.Y - a.Y) + a.X)
      inside = !inside;
  }
  return inside;
}

double AreaSquareMetres(VornMultiPolygon const& area) {
  double total = 0.0;
  for (VornPolygon const* ring : area.Polygons) {
    double const part = RingArea(ring->Coordinates);
    total += ring->IsHole ? -part : part;
  }
  return total;
}

}  // namespace geometry_math
