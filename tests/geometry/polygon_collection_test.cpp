#include <vorn/geometry/polygon_collection.h>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

// Adds unit rings at x = 0, 2, 4, ...; holes[i] marks ring i as a hole.
std::vector<VornPolygon*> Fill(VornPolygonCollection& rings, std::vector<bool> const& holes) {
  double x = 0;
  for (bool hole : holes) {
    rings.AddReference(NewRing(x, x + 1, 0, 1, hole));
    x += 2;
  }
  return Pointers(rings);
}

}  // namespace

TEST(PolygonCollection, KeepsItsBoxEvenWhenAskedNotTo) {
  VornPolygonCollection rings(false);
  EXPECT_TRUE(rings.AutoBoundbox);  // the argument is ignored
  Fill(rings, {false, false, false});
  rings.RemoveAt(2);
  EXPECT_TRUE(HasBox(rings.Boundbox, 0, 3, 0, 1));
  rings.Remove(++rings.begin());
  EXPECT_TRUE(HasBox(rings.Boundbox, 0, 1, 0, 1));

  rings.AutoBoundbox = false;  // additions and Clear still track the box
  rings.Add(VornCoordinateVector(), true);
  VornCoordinate far[2] = {{-4, 5}, {-3, 6}};
  rings.Add(far, 2, false);
  EXPECT_TRUE(HasBox(rings.Boundbox, -4, 1, 0, 6));
  rings.Clear();
  EXPECT_FALSE(rings.Boundbox.IsInit());
}

TEST(PolygonCollection, TransformResetsTheBoxBeforeTestingTheCallback) {
  VornPolygonCollection rings;
  Fill(rings, {false, true});
  EXPECT_VORN_ERROR(rings.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
  EXPECT_FALSE(rings.Boundbox.IsInit());
  EXPECT_EQ(rings[0].Coordinates.begin()[1].X, 1.0);
  ShiftContext shift{-1, 1};
  rings.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 8);
  EXPECT_TRUE(HasBox(rings.Boundbox, -1, 2, 1, 2));
}

TEST(PolygonCollection, BadInputChangesNothingButSelfAssignmentEmpties) {
  VornPolygonCollection rings;
  Fill(rings, {false});
  EXPECT_VORN_ERROR(rings[1], "Index out of range", 5002);
  EXPECT_VORN_ERROR(rings.RemoveAt(1), "Index out of range", 5002);
  EXPECT_VORN_ERROR(rings.RemoveReference(1), "Index out of range", 5002);
  EXPECT_VORN_ERROR(rings.AddReference(nullptr), "Parameter is NULL", 5003);
  EXPECT_VORN_ERROR(rings.Add(nullptr, 4, true), "Parameter is NULL", 5003);
  VornPolygon const ring;
  for (Channel channel : {Channel::Malloc, Channel::NothrowNew}) {
    ScopedFailure failure(channel, 1);  // the copy, then its list node
    EXPECT_VORN_ERROR(rings.Add(ring), "Parameter is NULL", 5003);
  }
  EXPECT_EQ(rings.Count(), 1u);
  EXPECT_TRUE(HasBox(rings.Boundbox, 0, 1, 0, 1));

  VornPolygonCollection& alias = rings;
  rings = alias;
  EXPECT_EQ(rings.Count(), 0u);
  EXPECT_FALSE(rings.Boundbox.IsInit());
}

TEST(PolygonCollection, SortHolesRelinksInTheDefinedOrder) {
  struct Case {
    std::vector<bool> holes;
    std::vector<unsigned> order;
  };
  Case const cases[] = {{{true, false, true, false}, {1, 3, 0, 2}},
                        {{false, true, true}, {0, 2, 1}},  // the last ring is never visited
                        {{true, true, false}, {2, 0, 1}},
                        {{true}, {0}}};
  for (Case const& c : cases) {
    VornPolygonCollection rings;
    std::vector<VornPolygon*> const p = Fill(rings, c.holes);
    rings.Boundbox.Set(7, 7, 7, 7);
    vorn_test::Reset();
    rings.SortHoles();
    EXPECT_EQ(vorn_test::Count(Channel::Malloc) + vorn_test::Count(Channel::NothrowNew), 0u);
    std::vector<VornPolygon*> expected;
    for (unsigned i : c.order) expected.push_back(p[i]);
    EXPECT_EQ(Pointers(rings), expected);
    EXPECT_TRUE(HasBox(rings.Boundbox, 7, 7, 7, 7));
  }
}

}  // namespace geometry_test
