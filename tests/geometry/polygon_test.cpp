#include <vorn/geometry/polygon.h>

#include "geometry_fixtures.h"

namespace geometry_test {

TEST(Polygon, StoresTheRingAsGivenWithoutClosingIt) {
  VornCoordinate ring[4] = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
  VornPolygon const outer(ring, 4);
  EXPECT_EQ(outer.GetType(), Polygon);
  EXPECT_FALSE(outer.IsHole);
  ASSERT_EQ(outer.Coordinates.Count(), 4u);
  EXPECT_EQ(outer.Coordinates.begin()[3].Y, 3.0);
  EXPECT_TRUE(VornPolygon(ring, 4, true).IsHole);
  EXPECT_TRUE(VornPolygon(outer.Coordinates, true).IsHole);
  EXPECT_VORN_ERROR(delete new VornPolygon(nullptr, 3, true), "Parameter is NULL", 5003);
}

TEST(Polygon, TransformMovesTheBoxAndCopiesKeepTheFlag) {
  VornPolygon* const hole = NewRing(0, 2, 1, 4, true);
  hole->Attributes.Add(W(u"A"), 1);
  hole->Tag = "t";
  ShiftContext shift{1, 1};
  hole->Transform(Shift, &shift);
  VornPolygon& alias = *hole;
  *hole = alias;
  VornPolygon const copy(*hole);
  VornPolygon assigned;
  assigned = *hole;
  VornPolygon const* const all[] = {hole, &copy, &assigned};
  for (VornPolygon const* p : all) {
    EXPECT_TRUE(p->IsHole);
    EXPECT_TRUE(HasBox(p->Coordinates, 1, 3, 2, 5));
    EXPECT_EQ(p->Attributes.Count(), 1u);
    EXPECT_STREQ(p->Tag.c_str(), "t");
  }
  delete hole;
}

}  // namespace geometry_test
