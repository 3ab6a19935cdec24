// Plane geometry the example needs and the library deliberately does not offer:
// clipping a ring to a vertical band, point-in-ring tests and ring areas.
#ifndef VORN_EXAMPLES_FIELD_MAP_GEOMETRY_MATH_H
#define VORN_EXAMPLES_FIELD_MAP_GEOMETRY_MATH_H

#include <cstddef>
#include <vector>

#include <vorn/vorn.h>

namespace geometry_math {

// The part of a closed ring between the meridians west and east (Sutherland-Hodgman),
// returned closed.
std::vector<VornCoordinate> ClipToBand(VornCoordinate const* ring, std::size_t count, double west,
                                       double east);

// Even-odd point-in-ring test.
bool Contains(std::vector<VornCoordinate> const& ring, VornCoordinate const& point);

// Outer rings minus holes, in the square of the coordinates' unit.
double AreaSquareMetres(VornMultiPolygon const& area);

}  // namespace geometry_math

#endif
