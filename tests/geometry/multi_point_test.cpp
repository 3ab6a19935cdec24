#include <vorn/geometry/multi_point.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::W;

TEST(MultiPoint, HoldsOneCoordinatePerPoint) {
  ExpectVornError([] { VornMultiPoint none(nullptr, 2); }, "Parameter is NULL", 5003);
  VornCoordinate coords[3] = {{1, 1}, {4, -2}, {0, 3}};
  VornMultiPoint points(coords, 3);
  EXPECT_EQ(points.GetType(), MultiPoint);
  points.Attributes.Add(W(u"A"), 1);
  ShiftContext shift{1, 1};
  points.Transform(Shift, &shift);
  ExpectBox(points.Coordinates, 1, 5, -1, 4);

  VornMultiPoint& alias = points;
  points = alias;
  EXPECT_EQ(points.Coordinates.Count(), 3u);
  EXPECT_EQ(points.Attributes.Count(), 1u);
  VornMultiPoint const copy(points);
  EXPECT_EQ(copy.Coordinates.begin()[1].X, 5.0);
}
