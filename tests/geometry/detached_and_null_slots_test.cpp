// Slots that hold nothing and objects handed back: a multi-polygon vector detaching all
// its areas, removing the null slot that a failed copy leaves, and an application's own
// object kind copying the tag through the base.
#include <vorn/geometry/multi_polygon_vector.h>
#include <vorn/geometry/object.h>

#include <cstring>
#include <memory>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

VornMultiPolygon* NewArea(double minX, double maxX, double minY, double maxY) {
  VornMultiPolygon* area = new VornMultiPolygon();
  area->Polygons.AddReference(NewRing(minX, maxX, minY, maxY, false));
  return area;
}

TEST(MultiPolygonVectorSlots, RemoveAllReferencesHandsEveryAreaBackAndResetsTheBox) {
  std::unique_ptr<VornMultiPolygon> const a(NewArea(0, 1, 0, 1));
  std::unique_ptr<VornMultiPolygon> const b(NewArea(4, 5, 4, 5));
  VornMultiPolygonVector areas;
  areas.AddReference(a.get());
  areas.AddReference(b.get());
  ASSERT_TRUE(HasBox(areas.Boundbox, 0, 5, 0, 5));
  areas.RemoveAllReferences();
  EXPECT_EQ(areas.Count(), 0u);
  EXPECT_FALSE(areas.Boundbox.IsInit());
  EXPECT_TRUE(HasBox(a->Polygons.Boundbox, 0, 1, 0, 1));  // still alive, the caller's again
  EXPECT_TRUE(HasBox(b->Polygons.Boundbox, 4, 5, 4, 5));
}

TEST(MultiPolygonVectorSlots, TheNullSlotOfAFailedCopyIsSkippedAndRemovedLikeAnyOther) {
  std::unique_ptr<VornMultiPolygon> const source(NewArea(2, 3, 2, 3));
  VornMultiPolygonVector areas;
  areas.AddReference(NewArea(0, 1, 0, 1));
  {
    ScopedFailure failure(Channel::Malloc, 1);
    areas.Add(*source);
  }
  ASSERT_EQ(areas.Count(), 2u);
  ASSERT_EQ(areas.begin()[1], nullptr);
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 3, 0, 3)) << "the box was widened before the copy";
  areas.RecalcBoundbox();
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 1, 0, 1));
  areas.Remove(areas.begin() + 1);
  EXPECT_EQ(areas.Count(), 1u);

  for (int i = 0; i < 2; ++i) {
    ScopedFailure failure(Channel::Malloc, 1);
    areas.Add(*source);
  }
  areas.RemoveAt(2);
  areas.RemoveReference(areas.begin() + 1);
  EXPECT_EQ(areas.Count(), 1u);
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 1, 0, 1));
}

TEST(MultiPolygonVectorSlots, AppendingAnEmptyPointerVectorChangesNothing) {
  VornMultiPolygonVector areas;
  areas.AddReference(NewArea(0, 1, 0, 1));
  areas.AddRange(Vorn::multi_polygon_pointers());
  EXPECT_EQ(areas.Count(), 1u);
  EXPECT_TRUE(HasBox(areas.Boundbox, 0, 1, 0, 1));
}

// An application's own kind, copied by the base's copy constructor and assignment.
class Marker : public IVornObject {
public:
  Marker() = default;
  Marker(Marker const&) = default;
  Marker& operator=(Marker const&) = default;
  VornObjectType GetType() const override { return Point; }
  void Transform(VornTransformCallback, void*) override {}
};

TEST(ObjectBaseCopies, TheTagIsCopiedIntoABufferOfItsOwn) {
  Marker original;
  original.Tag = "field 7";
  Marker const copy(original);
  EXPECT_STREQ(copy.Tag.c_str(), "field 7");
  EXPECT_NE(copy.Tag.c_str(), original.Tag.c_str());
  Marker assigned;
  assigned = original;
  original.Tag = "changed";
  EXPECT_STREQ(assigned.Tag.c_str(), "field 7");
  assigned = assigned;
  EXPECT_STREQ(assigned.Tag.c_str(), "field 7");
}

}  // namespace
}  // namespace geometry_test
