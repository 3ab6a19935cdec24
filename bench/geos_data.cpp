#include "geos_data.h"

#include <utility>

#include <geos/geom/Coordinate.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Polygon.h>

namespace bench {

namespace {

std::unique_ptr<geos::geom::CoordinateSequence> MakeSequence(VornCoordinate const* first,
                                                             std::size_t count) {
  std::vector<geos::geom::Coordinate> points;
  points.reserve(count);
  for (std::size_t i = 0; i < count; ++i) points.emplace_back(first[i].X, first[i].Y);
  return std::make_unique<geos::geom::CoordinateArraySequence>(std::move(points), 2);
}

}  // namespace

std::unique_ptr<geos::geom::LineString> MakeGeosLineString(
    geos::geom::GeometryFactory const& factory, std::vector<VornCoordinate> const& coords) {
  return factory.createLineString(MakeSequence(coords.data(), coords.size()));
}

std::unique_ptr<geos::geom::MultiPolygon> MakeGeosMultiPolygon(
    geos::geom::GeometryFactory const& factory, std::vector<VornCoordinate> const& coords,
    std::size_t ringSize) {
  std::vector<std::unique_ptr<geos::geom::Polygon>> polygons;
  for (std::size_t first = 0; first + ringSize <= coords.size(); first += ringSize) {
    polygons.push_back(
        factory.createPolygon(factory.createLinearRing(MakeSequence(&coords[first], ringSize))));
  }
  return factory.createMultiPolygon(std::move(polygons));
}

}  // namespace bench
