#include <vorn/geometry/multi_polygon_vector.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/alloc_failure.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::NewRing;
using vorn_test::Channel;
using vorn_test::ScopedFailure;

namespace {

// A heap multi-polygon of one ring minX..maxX x minY..maxY.
VornMultiPolygon* NewArea(double minX, double maxX, double minY, double maxY) {
  VornMultiPolygon* area = new VornMultiPolygon();
  area->Polygons.AddReference(NewRing(minX, maxX, minY, maxY, false));
  return area;
}

void Ignore(double, double, double*, double*, void*) { ADD_FAILURE() << "callback called"; }

}  // namespace

TEST(MultiPolygonVector, RemoveAtKeepsTheOldBox) {
  VornMultiPolygonVector areas;
  areas.AddReference(NewArea(0, 1, 0, 1));
  areas.AddReference(NewArea(5, 6, 5, 6));
  ExpectBox(areas.Boundbox, 0, 6, 0, 6);
  areas.RemoveAt(1);
  EXPECT_EQ(areas.Count(), 1u);
  ExpectBox(areas.Boundbox, 0, 6, 0, 6);
  areas.RecalcBoundbox();
  ExpectBox(areas.Boundbox, 0, 1, 0, 1);
  ExpectVornError([&] { areas.RemoveAt(1); }, "Index out of range", 5002);
}

TEST(MultiPolygonVector, SlotRemovalsRecomputeTheBox) {
  VornMultiPolygonVector areas;
  VornMultiPolygon* first = NewArea(0, 1, 0, 1);
  areas.AddReference(first);
  areas.AddReference(NewArea(5, 6, 5, 6));
  areas.AddReference(NewArea(-3, -2, 0, 1));
  areas.Remove(areas.begin() + 2);
  ExpectBox(areas.Boundbox, 0, 6, 0, 6);
  areas.RemoveReference(areas.begin());
  ExpectBox(areas.Boundbox, 5, 6, 5, 6);
  delete first;  // handed back by RemoveReference
}

TEST(MultiPolygonVector, DoNothingOperationsDoNothing) {
  VornMultiPolygonVector areas;
  areas.AddReference(nullptr);
  EXPECT_EQ(areas.Count(), 0u);
  areas.AddReference(NewArea(0, 1, 0, 1));
  areas.Transform(nullptr, nullptr);
  areas.Transform(Ignore, nullptr);
  areas.RemoveDuplicates();
  EXPECT_EQ(areas.begin()[0]->Polygons[0].Coordinates.begin()[1].X, 1.0);
  EXPECT_EQ(static_cast<VornMultiPolygon*>(areas),
            reinterpret_cast<VornMultiPolygon*>(areas.begin()));
}

TEST(MultiPolygonVector, CopiesAreDeepAndSkipNulls) {
  Vorn::multi_polygon_pointers raw;
  VornMultiPolygon* a = NewArea(0, 1, 0, 1);
  VornMultiPolygon* b = NewArea(3, 4, 0, 2);
  raw.push_back(a);
  raw.push_back(nullptr);
  raw.push_back(b);
  VornMultiPolygonVector areas(raw);
  ASSERT_EQ(areas.Count(), 2u);
  EXPECT_NE(areas.begin()[0], a);
  ExpectBox(areas.Boundbox, 0, 4, 0, 2);
  delete a;
  delete b;

  VornMultiPolygonVector copy(areas);
  ASSERT_EQ(copy.Count(), 2u);
  EXPECT_NE(copy.begin()[1], areas.begin()[1]);
  ExpectBox(copy.Boundbox, 0, 4, 0, 2);

  copy.AddRange(copy);  // its own original elements, once
  EXPECT_EQ(copy.Count(), 4u);
}

TEST(MultiPolygonVector, AssignmentClearsFirst) {
  VornMultiPolygonVector areas;
  areas.AddReference(NewArea(0, 1, 0, 1));
  VornMultiPolygonVector& alias = areas;
  areas = alias;
  EXPECT_EQ(areas.Count(), 0u);
  EXPECT_FALSE(areas.Boundbox.IsInit());

  VornMultiPolygonVector source;
  source.AddReference(NewArea(0, 1, 0, 1));
  source.Resize(3);  // two null slots behind it
  source.AddReference(NewArea(7, 8, 7, 8));
  VornMultiPolygonVector target;
  target.AddReference(NewArea(-5, -4, 0, 1));
  target = source;  // stops at the first null slot
  EXPECT_EQ(target.Count(), 1u);
  EXPECT_FALSE(target.Boundbox.IsInit());
}

TEST(MultiPolygonVector, AssignmentFromAnUninitialisedBoxThrowsAfterCopying) {
  VornMultiPolygonVector source;
  source.AddReference(NewArea(0, 1, 0, 1));
  source.Boundbox.Reset();
  VornMultiPolygonVector target;
  ExpectVornError([&] { target = source; }, "Boundbox not initialized", 5004);
  EXPECT_EQ(target.Count(), 1u);
}

TEST(MultiPolygonVector, OutOfMemoryInAddAppendsANullSlot) {
  VornMultiPolygonVector areas;
  areas.Reserve(4);
  VornMultiPolygon const area;
  {
    ScopedFailure noCopy(Channel::Malloc, 1);
    areas.Add(area);
  }
  ASSERT_EQ(areas.Count(), 1u);
  EXPECT_EQ(areas.begin()[0], nullptr);
  ExpectBox(areas.Boundbox, 0, 0, 0, 0);  // widened before the copy was attempted
  areas.RecalcBoundbox();
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(MultiPolygonVector, FullVectorThatCannotGrowTakesNothing) {
  VornMultiPolygonVector areas;
  ASSERT_TRUE(areas.Resize(10));  // ten null slots, exactly the first block
  VornMultiPolygon const empty;   // copies without any operator new
  VornMultiPolygon* mine = NewArea(0, 1, 0, 1);
  {
    ScopedFailure noGrowth(Channel::NothrowNew);
    areas.Add(empty);          // the copy is released again
    areas.AddReference(mine);  // stays ours
    EXPECT_FALSE(areas.Reserve(11));
  }
  EXPECT_EQ(areas.Count(), 10u);
  delete mine;
}
