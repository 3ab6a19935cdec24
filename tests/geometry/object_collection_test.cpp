#include <vorn/geometry/object_collection.h>

#include <memory>

#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_polygon.h>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

// An object of a kind the collection does not know (9 is the first number past them).
class UnknownObject : public IVornObject {
public:
  VornObjectType GetType() const override { return static_cast<VornObjectType>(9); }
  void Transform(VornTransformCallback, void*) override { ++transforms; }
  int transforms = 0;
};

VornPoint const& AsPoint(IVornObject const& object) {
  EXPECT_EQ(object.GetType(), Point);
  return static_cast<VornPoint const&>(object);
}

IVornObject* const none = nullptr;

}  // namespace

TEST(ObjectCollection, AddAndAddRangeStoreDeepCopiesOfEveryGeometryKind) {
  VornMultiPolygon rings;
  rings.Polygons.AddReference(NewRing(0, 4, 0, 4, false));
  VornObjectCollection source;
  source.Add(VornPoint(5, 6));
  source.Add(VornLine());
  source.Add(VornPolygon());
  source.Add(VornMultiPoint());
  source.Add(VornMultiLine());
  source.Add(rings);
  source.AddReference(none);

  VornObjectCollection target;
  target.AddRange(source);
  target.AddRange(target);  // the members it had, once
  ASSERT_EQ(target.Count(), 12u);  // null members are not copied
  for (unsigned int i = 0; i < 12; ++i) {
    EXPECT_EQ(target[i].GetType(), static_cast<VornObjectType>(i % 6));
    EXPECT_NE(&target[i], &source[i % 6]);
  }
  EXPECT_EQ(AsPoint(target[6]).Coordinate.Y, 6.0);
  VornMultiPolygon const& copy = static_cast<VornMultiPolygon const&>(target[5]);
  ASSERT_EQ(copy.Polygons.Count(), 1u);
  EXPECT_NE(&copy.Polygons[0], &rings.Polygons[0]);
  target.Clear();  // deletes each kind through its own destructor (ASan checks)
  EXPECT_EQ(target.Count(), 0u);
}

TEST(ObjectCollection, AddReferenceAppendsAsItIsAndRemovalsDeleteDetachOrIgnore) {
  CountedPoint::destroyed = 0;
  VornObjectCollection collection;
  CountedPoint* const detached = new CountedPoint(2, 2);
  collection.AddReference(new CountedPoint(1, 1));
  collection.AddReference(detached);
  collection.AddReference(static_cast<IVornObject*>(detached));  // the same pointer value
  collection.AddReference(static_cast<VornLine*>(nullptr));
  EXPECT_EQ(Pointers(collection)[2], Pointers(collection)[1]);
  EXPECT_EQ(Pointers(collection)[3], none);
  collection.RemoveReference(2);  // owned once only
  EXPECT_NO_THROW(collection.RemoveAt(3));
  EXPECT_NO_THROW(collection.RemoveReference(5));
  EXPECT_EQ(collection.Count(), 3u);
  collection.RemoveAt(0);
  EXPECT_EQ(CountedPoint::destroyed, 1);
  collection.RemoveReference(0);
  EXPECT_EQ(CountedPoint::destroyed, 1);
  EXPECT_EQ(detached->Coordinate.X, 2.0);  // alive and the caller's again
  collection.RemoveAt(0);                  // a null member is just unlinked
  EXPECT_EQ(collection.Count(), 0u);
  delete detached;
}

TEST(ObjectCollection, TransformHasNoNullTestOfItsOwnAndStopsAtAFailure) {
  VornObjectCollection collection;
  EXPECT_NO_THROW(collection.Transform(nullptr, nullptr));
  collection.AddReference(none);
  collection.Add(VornPoint(1, 1));
  collection.Add(VornPoint(2, 2));
  EXPECT_VORN_ERROR(collection.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
  ShiftContext shift{10, 20, 1};
  EXPECT_THROW(collection.Transform(Shift, &shift), std::runtime_error);
  EXPECT_EQ(AsPoint(collection[1]).Coordinate.X, 11.0);
  EXPECT_EQ(AsPoint(collection[1]).Coordinate.Y, 21.0);
  EXPECT_EQ(AsPoint(collection[2]).Coordinate.X, 2.0);
}

TEST(ObjectCollection, CopiesShareTheObjects) {
  VornObjectCollection a;
  a.Add(VornPoint(1, 1));
  a.Add(VornLine());
  VornObjectCollection copy(a);
  std::unique_ptr<VornPoint> const previous(new VornPoint(9, 9));
  VornObjectCollection assigned;
  assigned.AddReference(previous.get());
  assigned = a;  // does not delete the previous member (ASan checks)
  EXPECT_EQ(Pointers(copy), Pointers(a));
  EXPECT_EQ(Pointers(assigned), Pointers(a));
  copy.RemoveAllReferences();
  assigned.RemoveAllReferences();
  EXPECT_EQ(AsPoint(a[0]).Coordinate.X, 1.0);  // a still owns intact objects
}

TEST(ObjectCollection, UnknownKindsAreRejectedWithMinusOne) {
  UnknownObject* const unknown = new UnknownObject();
  VornObjectCollection collection;
  collection.Add(VornPoint(1, 1));
  collection.AddReference(unknown);
  collection.Add(VornPoint(2, 2));
  VornObjectCollection target;
  EXPECT_VORN_ERROR(target.AddRange(collection), "AddRange(): Unknown VornObject-Type", -1);
  EXPECT_EQ(target.Count(), 1u);  // the copy made before it stays
  EXPECT_VORN_ERROR(collection.RemoveAt(1), "Free(): Unknown VornObject-Type", -1);
  EXPECT_EQ(collection.Count(), 3u);
  EXPECT_VORN_ERROR(collection.Clear(), "Free(): Unknown VornObject-Type", -1);
  ASSERT_EQ(collection.Count(), 2u);  // the point before it went, the rest stayed
  EXPECT_EQ(*collection.begin(), unknown);
  ShiftContext shift{1, 1};
  collection.Transform(Shift, &shift);
  EXPECT_EQ(unknown->transforms, 1);  // Transform does not ask for the kind
  collection.RemoveReference(0);
  delete unknown;
}

TEST(ObjectCollectionDeathTest, DestroyingAnUnknownKindEndsTheProgram) {
  EXPECT_DEATH(VornObjectCollection().AddReference(new UnknownObject()), "");
}

TEST(ObjectCollection, OutOfMemoryAppendsNullOrNothingAndNeverThrows) {
  VornObjectCollection collection;
  {
    ScopedFailure noCopy(Channel::Malloc, 1);
    EXPECT_NO_THROW(collection.Add(VornLine()));
  }
  EXPECT_EQ(Pointers(collection), std::vector<IVornObject*>{none});
  std::unique_ptr<VornPoint> const mine(new VornPoint(1, 1));
  {
    ScopedFailure noNode(Channel::NothrowNew);
    EXPECT_NO_THROW(collection.Add(VornPoint(2, 2)));  // the copy is released again
    EXPECT_NO_THROW(collection.AddReference(mine.get()));
    EXPECT_TRUE(vorn_test::Fired(Channel::NothrowNew));
  }
  EXPECT_EQ(collection.Count(), 1u);  // mine is still the caller's
}

}  // namespace geometry_test
