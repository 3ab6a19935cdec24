#include <vorn/geometry/object_collection.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include <vorn/geometry/line.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/polygon.h>

#include "geometry_fixtures.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

using geometry_test::ExpectVornError;
using geometry_test::NewRing;
using geometry_test::Pointers;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::W;

namespace {

// An object whose kind the collection does not know. 9 is the first value past the
// known kinds that the enumeration can still hold.
class UnknownObject : public IVornObject {
public:
  ~UnknownObject() override = default;
  VornObjectType GetType() const override { return static_cast<VornObjectType>(9); }
  void Transform(VornTransformCallback, void*) override { ++transforms; }
  int transforms = 0;
};

// A point that counts how often a point's destructor ran.
class CountedPoint : public VornPoint {
public:
  CountedPoint(double x, double y) : VornPoint(x, y) {}
  ~CountedPoint() override { ++destroyed; }
  static int destroyed;
};
int CountedPoint::destroyed = 0;

VornPoint const& AsPoint(IVornObject const& object) {
  EXPECT_EQ(object.GetType(), Point);
  return static_cast<VornPoint const&>(object);
}

}  // namespace

TEST(ObjectCollection, AddStoresOwnCopies) {
  VornPoint source(1, 2);
  source.Attributes.Add(W(u"A"), 7);
  VornObjectCollection collection;
  collection.Add(source);
  ASSERT_EQ(collection.Count(), 1u);
  EXPECT_NE(&collection[0], &source);
  EXPECT_EQ(AsPoint(collection[0]).Coordinate.Y, 2.0);
  EXPECT_EQ(AsPoint(collection[0]).Attributes.Count(), 1u);
}

TEST(ObjectCollection, EveryAddReferenceOverloadAppendsThePointerAsItIs) {
  VornObjectCollection collection;
  VornLine* const line = new VornLine();
  collection.AddReference(line);
  collection.AddReference(static_cast<IVornObject*>(line));
  collection.AddReference(static_cast<VornPoint*>(nullptr));
  std::vector<IVornObject*> const held = Pointers(collection);
  ASSERT_EQ(held.size(), 3u);
  EXPECT_EQ(held[0], line);
  EXPECT_EQ(held[1], line);
  EXPECT_EQ(held[2], nullptr);
  collection.RemoveReference(1);  // the line must be owned once only
}

TEST(ObjectCollection, RemovalsBeyondTheEndAreSilent) {
  VornObjectCollection collection;
  collection.Add(VornPoint(1, 1));
  collection.Add(VornPoint(2, 2));
  collection.Add(VornPoint(3, 3));
  EXPECT_NO_THROW(collection.RemoveAt(collection.Count()));
  EXPECT_NO_THROW(collection.RemoveReference(5));
  EXPECT_EQ(collection.Count(), 3u);
}

TEST(ObjectCollection, RemoveAtDeletesAndRemoveReferenceDetaches) {
  CountedPoint::destroyed = 0;
  VornObjectCollection collection;
  CountedPoint* const deleted = new CountedPoint(1, 1);
  CountedPoint* const detached = new CountedPoint(2, 2);
  collection.AddReference(deleted);
  collection.AddReference(detached);
  collection.AddReference(static_cast<IVornObject*>(nullptr));

  collection.RemoveAt(0);
  EXPECT_EQ(CountedPoint::destroyed, 1);
  collection.RemoveReference(0);
  EXPECT_EQ(CountedPoint::destroyed, 1);
  EXPECT_EQ(detached->Coordinate.X, 2.0);  // alive and the caller's again
  collection.RemoveAt(0);                  // a null member is just unlinked
  EXPECT_EQ(collection.Count(), 0u);
  delete detached;
}

TEST(ObjectCollection, ClearDeletesThroughTheConcreteDestructorAndSkipsNull) {
  CountedPoint::destroyed = 0;
  VornObjectCollection collection;
  collection.AddReference(new CountedPoint(1, 1));
  collection.AddReference(static_cast<IVornObject*>(nullptr));
  collection.AddReference(NewRing(0, 1, 0, 1, false));
  collection.Clear();
  EXPECT_EQ(collection.Count(), 0u);
  EXPECT_EQ(CountedPoint::destroyed, 1);
}

TEST(ObjectCollection, TransformHasNoNullTestOfItsOwn) {
  VornObjectCollection empty;
  EXPECT_NO_THROW(empty.Transform(nullptr, nullptr));

  VornObjectCollection points;
  points.Add(VornPoint(1, 1));
  ExpectVornError([&] { points.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  EXPECT_EQ(AsPoint(points[0]).Coordinate.X, 1.0);
}

TEST(ObjectCollection, TransformStoppedPartWayKeepsTheEarlierMembersMoved) {
  VornObjectCollection collection;
  collection.AddReference(static_cast<IVornObject*>(nullptr));
  collection.Add(VornPoint(1, 1));
  collection.Add(VornPoint(2, 2));
  ShiftContext shift{10, 20, 1};
  EXPECT_THROW(collection.Transform(Shift, &shift), std::runtime_error);
  EXPECT_EQ(AsPoint(collection[1]).Coordinate.X, 11.0);
  EXPECT_EQ(AsPoint(collection[1]).Coordinate.Y, 21.0);
  EXPECT_EQ(AsPoint(collection[2]).Coordinate.X, 2.0);
}

TEST(ObjectCollection, AddRangeAppendsDeepCopies) {
  VornMultiPolygon rings;
  rings.Polygons.AddReference(NewRing(0, 4, 0, 4, false));
  rings.Polygons.AddReference(NewRing(1, 2, 1, 2, true));
  VornObjectCollection source;
  source.Add(VornPoint(5, 6));
  source.AddReference(static_cast<IVornObject*>(nullptr));
  source.Add(rings);

  VornObjectCollection target;
  target.Add(VornLine());
  target.AddRange(source);
  ASSERT_EQ(target.Count(), 3u);  // null members are not copied
  EXPECT_NE(&target[1], &source[0]);
  EXPECT_EQ(AsPoint(target[1]).Coordinate.Y, 6.0);
  ASSERT_EQ(target[2].GetType(), MultiPolygon);
  EXPECT_NE(&target[2], &source[2]);
  VornMultiPolygon const& copy = static_cast<VornMultiPolygon const&>(target[2]);
  ASSERT_EQ(copy.Polygons.Count(), 2u);
  EXPECT_NE(&copy.Polygons[0], &static_cast<VornMultiPolygon const&>(source[2]).Polygons[0]);
  EXPECT_TRUE(copy.Polygons[1].IsHole);
  EXPECT_EQ(copy.Polygons[0].Coordinates.MaxX, 4.0);
}

TEST(ObjectCollection, AddRangeOfItselfCopiesTheMembersItHad) {
  VornObjectCollection collection;
  collection.Add(VornPoint(1, 1));
  collection.Add(VornLine());
  collection.AddRange(collection);
  ASSERT_EQ(collection.Count(), 4u);
  EXPECT_EQ(collection[2].GetType(), Point);
  EXPECT_EQ(collection[3].GetType(), Line);
  EXPECT_NE(&collection[0], &collection[2]);
}

TEST(ObjectCollection, CopiesShareTheObjects) {
  VornObjectCollection a;
  a.Add(VornPoint(1, 1));
  a.Add(VornLine());
  VornObjectCollection copy(a);
  EXPECT_EQ(Pointers(copy), Pointers(a));

  VornPoint* const previous = new VornPoint(9, 9);
  VornObjectCollection assigned;
  assigned.AddReference(previous);
  assigned = a;
  EXPECT_EQ(Pointers(assigned), Pointers(a));
  EXPECT_EQ(previous->Coordinate.X, 9.0);  // not deleted by the assignment
  delete previous;

  copy.RemoveAllReferences();
  assigned.RemoveAllReferences();
  EXPECT_EQ(copy.Count(), 0u);
  EXPECT_EQ(AsPoint(a[0]).Coordinate.X, 1.0);  // a still owns intact objects
}

TEST(ObjectCollection, UnknownKindIsNeverFreedAndKeepsItsNode) {
  UnknownObject* const unknown = new UnknownObject();
  VornObjectCollection collection;
  collection.Add(VornPoint(1, 1));
  collection.AddReference(unknown);
  collection.Add(VornPoint(2, 2));

  ExpectVornError([&] { collection.RemoveAt(1); }, "Free(): Unknown VornObject-Type", -1);
  EXPECT_EQ(collection.Count(), 3u);
  ExpectVornError([&] { collection.Clear(); }, "Free(): Unknown VornObject-Type", -1);
  ASSERT_EQ(collection.Count(), 2u);  // the point before it went, the rest stayed
  EXPECT_EQ(*collection.begin(), unknown);

  ShiftContext shift{1, 1};
  collection.Transform(Shift, &shift);
  EXPECT_EQ(unknown->transforms, 1);  // the kind is not consulted for Transform

  collection.RemoveReference(0);
  delete unknown;
}

TEST(ObjectCollection, AddRangeStopsAtAnUnknownKindKeepingEarlierCopies) {
  UnknownObject* const unknown = new UnknownObject();
  VornObjectCollection source;
  source.Add(VornPoint(1, 1));
  source.AddReference(unknown);
  source.Add(VornLine());

  VornObjectCollection target;
  ExpectVornError([&] { target.AddRange(source); }, "AddRange(): Unknown VornObject-Type", -1);
  ASSERT_EQ(target.Count(), 1u);
  EXPECT_EQ(target[0].GetType(), Point);

  source.RemoveReference(1);
  delete unknown;
}

TEST(ObjectCollectionDeathTest, DestroyingAnUnknownKindEndsTheProgram) {
  EXPECT_DEATH(
      {
        VornObjectCollection collection;
        collection.AddReference(new UnknownObject());
      },
      "");
}

TEST(ObjectCollection, AddAppendsNullWhenTheCopyCannotBeAllocated) {
  VornObjectCollection collection;
  VornPolygon const source;
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_NO_THROW(collection.Add(source));
  }
  ASSERT_EQ(collection.Count(), 1u);
  EXPECT_EQ(*collection.begin(), nullptr);
  collection.Add(VornPoint(1, 1));
  collection.Clear();  // null members are skipped
  EXPECT_EQ(collection.Count(), 0u);
}

TEST(ObjectCollection, NoListNodeAppendsNothingAndLeaksNothing) {
  VornObjectCollection collection;
  VornPoint* const mine = new VornPoint(1, 1);
  VornPoint const source(2, 2);
  {
    ScopedFailure failure(Channel::NothrowNew);
    EXPECT_NO_THROW(collection.Add(source));
    EXPECT_NO_THROW(collection.AddReference(mine));
    EXPECT_TRUE(vorn_test::Fired(Channel::NothrowNew));
  }
  EXPECT_EQ(collection.Count(), 0u);
  EXPECT_EQ(mine->Coordinate.X, 1.0);  // still the caller's
  delete mine;
}
