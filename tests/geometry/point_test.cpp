#include <vorn/geometry/point.h>

#include <cmath>

#include "geometry_fixtures.h"

static_assert(Point == 0 && Line == 1 && Polygon == 2 && MultiPoint == 3 && MultiLine == 4 &&
                  MultiPolygon == 5 && TreatmentGrid == 6 && TreatmentMap == 7 &&
                  TreatmentGridEx == 8 && VornObjectType::TreatmentMap == 7,
              "the kind numbers are part of the interface, reachable plain and scoped");
static_assert(std::is_same<std::underlying_type<VornObjectType>::type, int>::value,
              "any kind number a caller's object reports is representable");
static_assert(std::is_abstract<IVornObject>::value, "IVornObject cannot be instantiated");

namespace geometry_test {

TEST(Point, KeepsItsCoordinateBitForBitAndTransformsThroughTheCallerContext) {
  VornPoint const exact(0.1, -0.0);
  EXPECT_EQ(exact.Coordinate.X, 0.1);
  EXPECT_TRUE(std::signbit(exact.Coordinate.Y));
  VornPoint p(3, 4);
  EXPECT_EQ(p.GetType(), Point);
  p.Attributes.Add(W(u"A"), 1);
  EXPECT_VORN_ERROR(p.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
  ShiftContext failing{1, 1, 0};
  EXPECT_THROW(p.Transform(Shift, &failing), std::runtime_error);
  EXPECT_EQ(p.Coordinate.X, 3.0);
  ShiftContext shift{1, 2};
  p.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 1);
  EXPECT_EQ(p.Coordinate.X, 4.0);
  EXPECT_EQ(p.Coordinate.Y, 6.0);
  EXPECT_EQ(p.Attributes.Count(), 1u);
}

TEST(Point, CopiesCarryTheTagAndOwnTheirAttributesAndSelfAssignmentKeepsAll) {
  VornPoint source(1, 2);
  source.Tag = "tagged";
  source.Attributes.Add(W(u"A"), 7);
  VornPoint copy(source);
  copy.Attributes.Add(W(u"B"), 8);
  EXPECT_EQ(source.Attributes.Count(), 1u);
  VornPoint assigned;
  assigned = copy;
  VornPoint& alias = assigned;
  assigned = alias;
  EXPECT_STREQ(assigned.Tag.c_str(), "tagged");
  EXPECT_EQ(assigned.Coordinate.Y, 2.0);
  EXPECT_EQ(assigned.Attributes.Count(), 2u);
}

}  // namespace geometry_test
