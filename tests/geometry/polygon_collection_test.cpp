#include <vorn/geometry/polygon_collection.h>

#include <gtest/gtest.h>

#include <vector>

#include "geometry_fixtures.h"
#include "support/alloc_failure.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::NewRing;
using geometry_test::Pointers;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::Channel;
using vorn_test::ScopedFailure;

namespace {

// Builds a collection of unit rings; flags[i] marks ring i as a hole.
std::vector<VornPolygon*> Fill(VornPolygonCollection& rings, std::vector<bool> const& flags) {
  double x = 0;
  for (bool hole : flags) {
    rings.AddReference(NewRing(x, x + 1, 0, 1, hole));
    x += 2;
  }
  return Pointers(rings);
}

}  // namespace

TEST(PolygonCollection, KeepsItsBoxEvenWhenAskedNotTo) {
  VornPolygonCollection rings(false);
  EXPECT_TRUE(rings.AutoBoundbox);  // the argument is ignored

  rings.AutoBoundbox = false;  // additions and Clear still track the box
  rings.AddReference(NewRing(0, 1, 0, 1, false));
  rings.Add(VornCoordinateVector(), true);
  ExpectBox(rings.Boundbox, 0, 1, 0, 1);
  rings.Clear();
  EXPECT_FALSE(rings.Boundbox.IsInit());

  VornPolygonCollection tracked(false);
  tracked.AddReference(NewRing(0, 1, 0, 1, false));
  tracked.AddReference(NewRing(5, 6, 5, 6, false));
  tracked.RemoveAt(1);
  ExpectBox(tracked.Boundbox, 0, 1, 0, 1);
}

TEST(PolygonCollection, NullCallbackResetsTheBoxFirst) {
  VornPolygonCollection rings;
  rings.AddReference(NewRing(0, 1, 0, 1, false));
  ExpectVornError([&] { rings.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  EXPECT_FALSE(rings.Boundbox.IsInit());
  EXPECT_EQ(rings[0].Coordinates.begin()[1].X, 1.0);
}

TEST(PolygonCollection, TransformMovesRingsAndBox) {
  VornPolygonCollection rings;
  rings.AddReference(NewRing(0, 1, 0, 1, false));
  rings.AddReference(NewRing(3, 4, -2, 0, true));
  ShiftContext shift{-1, 1};
  rings.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 8);
  ExpectBox(rings.Boundbox, -1, 3, -1, 2);
}

TEST(PolygonCollection, SelfAssignmentEmptiesIt) {
  VornPolygonCollection rings;
  Fill(rings, {false, true});
  VornPolygonCollection& alias = rings;
  rings = alias;
  EXPECT_EQ(rings.Count(), 0u);
  EXPECT_FALSE(rings.Boundbox.IsInit());
}

TEST(PolygonCollection, AddByCoordinatesRejectsNullWithoutLeaking) {
  VornPolygonCollection rings;
  ExpectVornError([&] { rings.Add(nullptr, 4, true); }, "Parameter is NULL", 5003);
  EXPECT_EQ(rings.Count(), 0u);
  VornCoordinate ring[3] = {{0, 0}, {2, 0}, {1, 1}};
  rings.Add(ring, 3, true);
  EXPECT_TRUE(rings[0].IsHole);
}

TEST(PolygonCollection, RemoveDeletesTheRingUnderTheIterator) {
  VornPolygonCollection rings;
  std::vector<VornPolygon*> const all = Fill(rings, {false, true, false});
  VornPolygonCollection::iterator second = rings.begin();
  ++second;
  rings.Remove(second);
  EXPECT_EQ(Pointers(rings), (std::vector<VornPolygon*>{all[0], all[2]}));
  ExpectBox(rings.Boundbox, 0, 5, 0, 1);
}

TEST(PolygonCollection, SortHolesRelinksInTheDefinedOrder) {
  VornPolygonCollection rings;
  std::vector<VornPolygon*> const p = Fill(rings, {true, false, true, false});
  rings.Boundbox.Set(7, 7, 7, 7);  // not touched by sorting
  vorn_test::Reset();
  rings.SortHoles();
  EXPECT_EQ(vorn_test::Count(Channel::Malloc) + vorn_test::Count(Channel::NothrowNew), 0u);
  EXPECT_EQ(Pointers(rings), (std::vector<VornPolygon*>{p[1], p[3], p[0], p[2]}));
  ExpectBox(rings.Boundbox, 7, 7, 7, 7);

  VornPolygonCollection abc;
  std::vector<VornPolygon*> const q = Fill(abc, {false, true, true});
  abc.SortHoles();  // the last ring is never visited
  EXPECT_EQ(Pointers(abc), (std::vector<VornPolygon*>{q[0], q[2], q[1]}));

  VornPolygonCollection single;
  std::vector<VornPolygon*> const h = Fill(single, {true});
  single.SortHoles();
  EXPECT_EQ(Pointers(single), h);
}

TEST(PolygonCollection, OutOfMemoryInAddIsReportedAsNull) {
  VornPolygonCollection rings;
  VornPolygon const ring;
  {
    ScopedFailure noCopy(Channel::Malloc, 1);
    ExpectVornError([&] { rings.Add(ring); }, "Parameter is NULL", 5003);
  }
  {
    ScopedFailure noNode(Channel::NothrowNew, 1);
    ExpectVornError([&] { rings.Add(ring); }, "Parameter is NULL", 5003);
  }
  EXPECT_EQ(rings.Count(), 0u);
  EXPECT_FALSE(rings.Boundbox.IsInit());
}
