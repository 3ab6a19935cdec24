#include <vorn/geometry/multi_polygon_vector.h>

#include <memory>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

// A heap multi-polygon of one ring minX..maxX x minY..maxY.
VornMultiPolygon* NewArea(double minX, double maxX, double minY, double maxY) {
  VornMultiPolygon* area = new VornMultiPolygon();
  area->Polygons.AddReference(NewRing(minX, maxX, minY, maxY, false));
  return area;
}

void MustNotRun(double, double, double*, double*, void*) { ADD_FAILURE() << "callback ran"; }

}  // namespace

TEST(MultiPolygonVector, RemoveAtKeepsTheOldBoxWhileSlotRemovalsRecompute) {
  VornMultiPolygonVector areas;
  VornMultiPolygon* const first = NewArea(0, 1, 0, 1);
  areas.AddReference(first);
  areas.AddReference(NewArea(5, 6, 5, 6));
  areas.AddReference(NewArea(-3, -2, 0, 1));
  areas.AddReference(NewArea(8, 9, 8, 9));
  EXPECT_VORN_ERROR(areas.RemoveAt(4), "Index out of range", 5002);
  areas.RemoveAt(3);
  EXPECT_TRUE(HasBox(areas.Boundbox, -3, 9, 0, 9));
  areas.Remove(areas.begin() + 2);
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 6, 0, 6));
  areas.RemoveReference(areas.begin());
  EXPECT_TRUE(HasBox(areas.Boundbox, 5, 6, 5, 6));
  delete first;  // handed back by RemoveReference
}

TEST(MultiPolygonVector, TransformRemoveDuplicatesAndNullReferencesDoNothing) {
  VornMultiPolygonVector areas;
  areas.AddReference(nullptr);
  EXPECT_EQ(areas.Count(), 0u);
  areas.AddReference(NewArea(0, 1, 0, 1));
  areas.AddReference(NewArea(0, 1, 0, 1));
  areas.Transform(nullptr, nullptr);
  areas.Transform(MustNotRun, nullptr);
  areas.RemoveDuplicates();
  EXPECT_EQ(areas.Count(), 2u);
  EXPECT_EQ(static_cast<VornMultiPolygon*>(areas),
            reinterpret_cast<VornMultiPolygon*>(areas.begin()));
}

TEST(MultiPolygonVector, CopiesAreDeepAndSkipNulls) {
  std::unique_ptr<VornMultiPolygon> const a(NewArea(0, 1, 0, 1));
  std::unique_ptr<VornMultiPolygon> const b(NewArea(3, 4, 0, 2));
  Vorn::multi_polygon_pointers raw;
  for (VornMultiPolygon* p : {a.get(), static_cast<VornMultiPolygon*>(nullptr), b.get()}) {
    raw.push_back(p);
  }
  VornMultiPolygonVector areas(raw);
  ASSERT_EQ(areas.Count(), 2u);
  EXPECT_NE(areas.begin()[0], a.get());
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 4, 0, 2));
  VornMultiPolygonVector copy(areas);
  ASSERT_EQ(copy.Count(), 2u);
  EXPECT_NE(copy.begin()[1], areas.begin()[1]);
  EXPECT_TRUE(HasBox(copy.Boundbox, 0, 4, 0, 2));
  copy.AddRange(copy);  // the elements it had, once
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
  source.Boundbox.Reset();
  areas.AddReference(NewArea(-5, -4, 0, 1));
  EXPECT_VORN_ERROR(areas = source, "Boundbox not initialized", 5004);
  ASSERT_EQ(areas.Count(), 1u);  // copied before the box was read
  EXPECT_NE(areas.begin()[0], source.begin()[0]);
  source.Resize(3);  // two null slots
  source.AddReference(NewArea(7, 8, 7, 8));
  areas = source;  // stops at the first null slot, box left reset
  EXPECT_EQ(areas.Count(), 1u);
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(MultiPolygonVector, OutOfMemoryNeverThrows) {
  VornMultiPolygonVector areas;
  VornMultiPolygon const empty;  // copies without any operator new
  {
    ScopedFailure noCopy(Channel::Malloc, 1);
    areas.Add(empty);  // a null slot; the box was widened before the copy
  }
  ASSERT_EQ(areas.Count(), 1u);
  EXPECT_EQ(areas.begin()[0], nullptr);
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 0, 0, 0));
  ASSERT_TRUE(areas.Resize(10));  // full: the first block holds exactly ten
  VornMultiPolygon* const mine = NewArea(0, 1, 0, 1);
  {
    ScopedFailure noGrowth(Channel::NothrowNew);
    areas.Add(empty);          // the copy is released again
    areas.AddReference(mine);  // stays ours
    EXPECT_FALSE(areas.Reserve(11));
  }
  EXPECT_EQ(areas.Count(), 10u);
  delete mine;
}

}  // namespace geometry_test
