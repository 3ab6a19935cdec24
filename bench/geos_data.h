// The GEOS side of the benchmarks: the filter that applies the shared callback, and
// builders of the geometries the GEOS peers measure, from the shared data.
#ifndef VORN_BENCH_GEOS_DATA_H
#define VORN_BENCH_GEOS_DATA_H

#include <cstddef>
#include <memory>
#include <vector>

#include <geos/geom/Coordinate.h>
#include <geos/geom/CoordinateSequence.h>
#include <geos/geom/CoordinateSequenceFilter.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/MultiPolygon.h>

#include <vorn/core/coordinate.h>
#include <vorn/core/transform_callback.h>

namespace bench {

// Passes every coordinate of a geometry through the callback (apply_rw), which then
// marks the geometry changed so that its next getEnvelopeInternal rebuilds the envelope.
class CallbackFilter : public geos::geom::CoordinateSequenceFilter {
public:
  CallbackFilter(VornTransformCallback callback, void* context)
      : m_callback(callback), m_context(context) {}

  void filter_rw(geos::geom::CoordinateSequence& sequence, std::size_t i) override {
    geos::geom::Coordinate const& c = sequence.getAt(i);
    double x;
    double y;
    m_callback(c.x, c.y, &x, &y, m_context);
    sequence.setAt(geos::geom::Coordinate(x, y, c.z), i);
  }
  bool isDone() const override { return false; }
  bool isGeometryChanged() const override { return true; }

private:
  VornTransformCallback m_callback;
  void* m_context;
};

// A LineString over a CoordinateArraySequence holding `coords`.
std::unique_ptr<geos::geom::LineString> MakeGeosLineString(
    geos::geom::GeometryFactory const& factory, std::vector<VornCoordinate> const& coords);

// A MultiPolygon with one shell-only Polygon per closed ring of `ringSize` coordinates.
std::unique_ptr<geos::geom::MultiPolygon> MakeGeosMultiPolygon(
    geos::geom::GeometryFactory const& factory, std::vector<VornCoordinate> const& coords,
    std::size_t ringSize);

}  // namespace bench

#endif
