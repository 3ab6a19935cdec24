#include <vorn/geometry/point.h>

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectVornError;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::W;

static_assert(Point == 0 && Line == 1 && Polygon == 2 && MultiPoint == 3 && MultiLine == 4 &&
                  MultiPolygon == 5 && TreatmentGrid == 6 && TreatmentMap == 7 &&
                  TreatmentGridEx == 8,
              "object kinds are part of the interface");
static_assert(VornObjectType::TreatmentMap == 7, "the kinds are also reachable scoped");
static_assert(std::is_abstract<IVornObject>::value, "IVornObject cannot be instantiated");

TEST(Point, KeepsItsCoordinatesBitForBit) {
  VornPoint const p(0.1, -0.0);
  EXPECT_EQ(p.GetType(), Point);
  EXPECT_EQ(p.Coordinate.X, 0.1);
  EXPECT_TRUE(std::signbit(p.Coordinate.Y));
}

TEST(Point, TransformMapsTheCoordinateThroughTheCallerContext) {
  VornPoint p(3, 4);
  p.Attributes.Add(W(u"A"), 1);
  ShiftContext shift{1, 2};
  p.Transform(Shift, &shift);
  EXPECT_EQ(p.Coordinate.X, 4.0);
  EXPECT_EQ(p.Coordinate.Y, 6.0);
  EXPECT_EQ(shift.calls, 1);
  EXPECT_EQ(p.Attributes.Count(), 1u);
}

TEST(Point, FailedTransformKeepsTheCoordinate) {
  VornPoint p(3, 4);
  ExpectVornError([&] { p.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  ShiftContext failing{1, 1, 0};
  EXPECT_THROW(p.Transform(Shift, &failing), std::runtime_error);
  EXPECT_EQ(p.Coordinate.X, 3.0);
  EXPECT_EQ(p.Coordinate.Y, 4.0);
}

TEST(Point, CopiesAreIndependentAndCarryTheTag) {
  VornPoint source(1, 2);
  source.Tag = "tagged";
  source.Attributes.Add(W(u"A"), 7);

  VornPoint copy(source);
  copy.Attributes.Add(W(u"B"), 8);
  EXPECT_STREQ(copy.Tag.c_str(), "tagged");
  EXPECT_EQ(copy.Coordinate.Y, 2.0);
  EXPECT_EQ(source.Attributes.Count(), 1u);

  VornPoint assigned;
  assigned = copy;
  EXPECT_STREQ(assigned.Tag.c_str(), "tagged");
  EXPECT_EQ(assigned.Attributes.Count(), 2u);
  EXPECT_NE(&assigned.Attributes[0], &copy.Attributes[0]);
}

TEST(Point, SelfAssignmentLeavesItUnchanged) {
  VornPoint p(5, 6);
  p.Tag = "t";
  p.Attributes.Add(W(u"A"), 1);
  VornPoint& alias = p;
  p = alias;
  EXPECT_EQ(p.Coordinate.X, 5.0);
  EXPECT_STREQ(p.Tag.c_str(), "t");
  EXPECT_EQ(p.Attributes.Count(), 1u);
}
