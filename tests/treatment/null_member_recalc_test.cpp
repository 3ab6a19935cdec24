// A treatment area that could not be copied stays in its collection as a null member;
// recomputing the box, on request or after a removal, must step over it.
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_polygon_collection.h>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;

VornTreatmentPolygon Area(double minX, double maxX, double minY, double maxY, int number) {
  VornCoordinate ring[] = {{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}};
  return VornTreatmentPolygon(VornPolygon(ring, 4), VornTreatmentZone(number, 1.0));
}

bool BoxIs(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  return box.IsInit() && box.MinX == minX && box.MaxX == maxX && box.MinY == minY &&
         box.MaxY == maxY;
}

TEST(TreatmentNullMember, RecalculationsStepOverIt) {
  VornTreatmentPolygonCollection areas;
  VornTreatmentPolygon const lost = Area(-9, -8, -9, -8, 1);
  {
    ScopedFailure failure(Channel::Malloc, 1);  // the copy's own storage
    areas.Add(lost);
  }
  areas.Add(Area(0, 1, 0, 1, 2));
  areas.Add(Area(5, 6, 5, 6, 3));
  ASSERT_EQ(areas.Count(), 3u);
  ASSERT_EQ(*areas.begin(), nullptr);

  areas.RecalcBoundbox();
  EXPECT_TRUE(BoxIs(areas.Boundbox, 0, 6, 0, 6));
  areas.RemoveAt(1);
  EXPECT_TRUE(BoxIs(areas.Boundbox, 5, 6, 5, 6));
  areas.RemoveAt(0);  // the null member goes like any other
  ASSERT_EQ(areas.Count(), 1u);
  EXPECT_EQ(areas[0].Zone.ZoneNumber, 3);
}

}  // namespace
