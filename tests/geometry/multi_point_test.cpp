#include <vorn/geometry/multi_point.h>

#include "geometry_fixtures.h"

namespace geometry_test {

TEST(MultiPoint, HoldsOneCoordinatePerPointAndSurvivesSelfAssignment) {
  EXPECT_VORN_ERROR(VornMultiPoint none(nullptr, 2), "Parameter is NULL", 5003);
  VornCoordinate coords[3] = {{1, 1}, {4, -2}, {0, 3}};
  VornMultiPoint points(coords, 3);
  EXPECT_EQ(points.GetType(), MultiPoint);
  ShiftContext shift{1, 1};
  points.Transform(Shift, &shift);
  VornMultiPoint& alias = points;
  points = alias;
  VornMultiPoint const copy(points);
  for (VornMultiPoint const* p : {static_cast<VornMultiPoint const*>(&points), &copy}) {
    EXPECT_EQ(p->Coordinates.Count(), 3u);
    EXPECT_TRUE(HasBox(p->Coordinates, 1, 5, -1, 4));
  }
}

}  // namespace geometry_test
