// The Boost.Geometry side of the benchmarks: the model types, builders from the shared
// data, and the transform-plus-envelope step every Boost peer times.
#ifndef VORN_BENCH_BOOST_DATA_H
#define VORN_BENCH_BOOST_DATA_H

#include <cstddef>
#include <vector>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include <vorn/core/coordinate.h>
#include <vorn/core/transform_callback.h>

namespace bench {

using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostLineString = boost::geometry::model::linestring<BoostPoint>;
using BoostPolygon = boost::geometry::model::polygon<BoostPoint>;
using BoostMultiPolygon = boost::geometry::model::multi_polygon<BoostPolygon>;
using BoostBox = boost::geometry::model::box<BoostPoint>;

inline BoostLineString MakeBoostLineString(std::vector<VornCoordinate> const& coords) {
  BoostLineString line;
  line.reserve(coords.size());
  for (VornCoordinate const& c : coords) line.emplace_back(c.X, c.Y);
  return line;
}

// One outer-ring-only polygon per closed ring of `ringSize` coordinates.
inline BoostMultiPolygon MakeBoostMultiPolygon(std::vector<VornCoordinate> const& coords,
                                               std::size_t ringSize) {
  BoostMultiPolygon multiPolygon;
  multiPolygon.reserve(coords.size() / ringSize);
  for (std::size_t first = 0; first + ringSize <= coords.size(); first += ringSize) {
    multiPolygon.emplace_back();
    BoostPolygon::ring_type& ring = multiPolygon.back().outer();
    ring.reserve(ringSize);
    for (std::size_t i = first; i < first + ringSize; ++i) {
      ring.emplace_back(coords[i].X, coords[i].Y);
    }
  }
  return multiPolygon;
}

// Passes every point through the callback with for_each_point, then rebuilds `box` with
// envelope().
template <class Geometry>
void TransformAndEnvelope(Geometry& geometry, VornTransformCallback callback, void* context,
                          BoostBox& box) {
  boost::geometry::for_each_point(geometry, [callback, context](BoostPoint& p) {
    double x;
    double y;
    callback(p.x(), p.y(), &x, &y, context);
    p.x(x);
    p.y(y);
  });
  boost::geometry::envelope(geometry, box);
}

}  // namespace bench

#endif
