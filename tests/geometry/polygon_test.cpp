#include <vorn/geometry/polygon.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using vorn_test::W;

namespace {
void Twice(double x, double y, double* outX, double* outY, void*) {
  *outX = 2 * x;
  *outY = 2 * y;
}
}  // namespace

TEST(Polygon, StoresTheRingAsGivenWithoutClosingIt) {
  VornCoordinate ring[4] = {{0, 0}, {4, 0}, {4, 3}, {0, 3}};
  VornPolygon const outer(ring, 4);
  EXPECT_EQ(outer.GetType(), Polygon);
  EXPECT_FALSE(outer.IsHole);
  ASSERT_EQ(outer.Coordinates.Count(), 4u);
  EXPECT_EQ(outer.Coordinates.begin()[3].X, 0.0);
  EXPECT_EQ(outer.Coordinates.begin()[3].Y, 3.0);

  EXPECT_TRUE(VornPolygon(outer.Coordinates, true).IsHole);
}

TEST(Polygon, NullCoordinatesThrowWithoutLeaking) {
  ExpectVornError([] { VornPolygon p(nullptr, 3); }, "Parameter is NULL", 5003);
  ExpectVornError([] { delete new VornPolygon(nullptr, 3, true); }, "Parameter is NULL", 5003);
}

TEST(Polygon, TransformScalesTheBox) {
  VornCoordinate ring[3] = {{1, 1}, {3, 1}, {2, 4}};
  VornPolygon p(ring, 3, true);
  p.Transform(Twice, nullptr);
  ExpectBox(p.Coordinates, 2, 6, 2, 8);
  EXPECT_TRUE(p.IsHole);
}

TEST(Polygon, CopiesCarryTheHoleFlagAndSelfAssignmentKeepsEverything) {
  VornCoordinate ring[3] = {{1, 1}, {3, 1}, {2, 4}};
  VornPolygon hole(ring, 3, true);
  hole.Attributes.Add(W(u"A"), 1);
  hole.Tag = "t";

  EXPECT_TRUE(VornPolygon(hole).IsHole);
  VornPolygon assigned;
  assigned = hole;
  EXPECT_TRUE(assigned.IsHole);
  EXPECT_STREQ(assigned.Tag.c_str(), "t");

  VornPolygon& alias = hole;
  hole = alias;
  EXPECT_TRUE(hole.IsHole);
  EXPECT_EQ(hole.Coordinates.Count(), 3u);
  ExpectBox(hole.Coordinates, 1, 3, 1, 4);
  EXPECT_EQ(hole.Attributes.Count(), 1u);
  EXPECT_STREQ(hole.Tag.c_str(), "t");
}
