#include <vorn/geometry/multi_polygon.h>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

// Adds unit rings at x = 0, 2, 4, ...; holes[i] marks ring i as a hole.
std::vector<VornPolygon*> Fill(VornMultiPolygon& area, std::vector<bool> const& holes) {
  double x = 0;
  for (bool hole : holes) {
    area.Polygons.AddReference(NewRing(x, x + 1, 0, 1, hole));
    x += 2;
  }
  return Pointers(area.Polygons);
}

}  // namespace

TEST(MultiPolygon, RemoveHolesResumesAtTheSecondRingAndSortHolesKeepsTheDefinedOrder) {
  struct Case {
    std::vector<bool> holes;
    std::vector<unsigned> survivors;
  };
  Case const cases[] = {{{false, true, true}, {0}}, {{true, true, false}, {1, 2}}, {{true}, {}}};
  for (Case const& c : cases) {
    VornMultiPolygon area;
    std::vector<VornPolygon*> const rings = Fill(area, c.holes);
    area.RemoveHoles();
    std::vector<VornPolygon*> expected;
    for (unsigned i : c.survivors) expected.push_back(rings[i]);
    EXPECT_EQ(Pointers(area.Polygons), expected);
    if (expected.empty()) {
      EXPECT_FALSE(area.Polygons.Boundbox.IsInit());
    } else {
      EXPECT_TRUE(HasBox(area.Polygons.Boundbox, 2.0 * c.survivors.front(),
                         2.0 * c.survivors.back() + 1, 0, 1));
    }
  }
  VornMultiPolygon sorted;
  std::vector<VornPolygon*> const p = Fill(sorted, {false, true, true});
  sorted.SortHoles();
  EXPECT_EQ(Pointers(sorted.Polygons), (std::vector<VornPolygon*>{p[0], p[2], p[1]}));
  VornMultiPolygon solid;  // no holes: the box is not recomputed
  Fill(solid, {false, false});
  solid.Polygons.Boundbox.Set(-9, 9, -9, 9);
  solid.RemoveHoles();
  EXPECT_TRUE(HasBox(solid.Polygons.Boundbox, -9, 9, -9, 9));
}

TEST(MultiPolygon, CopiesAreDeepButSelfAssignmentLosesThePolygons) {
  VornMultiPolygon area;
  Fill(area, {false, true});
  area.Attributes.Add(W(u"Rate"), 3);
  area.Tag = "kept";
  VornMultiPolygon const copy(area);
  EXPECT_EQ(copy.GetType(), MultiPolygon);
  ASSERT_EQ(copy.Polygons.Count(), 2u);
  EXPECT_NE(&copy.Polygons[0], &area.Polygons[0]);
  EXPECT_TRUE(copy.Polygons[1].IsHole);
  EXPECT_EQ(copy.Attributes.Count(), 1u);
  EXPECT_STREQ(copy.Tag.c_str(), "kept");
  VornMultiPolygon& alias = area;
  area = alias;
  EXPECT_EQ(area.Polygons.Count(), 0u);
  EXPECT_STREQ(area.Tag.c_str(), "kept");
}

TEST(MultiPolygon, NullCallbackFailsAfterTheBoxWasReset) {
  VornMultiPolygon area;
  Fill(area, {false});
  EXPECT_VORN_ERROR(area.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
  EXPECT_FALSE(area.Polygons.Boundbox.IsInit());
  EXPECT_EQ(area.Polygons[0].Coordinates.begin()[1].X, 1.0);
}

}  // namespace geometry_test
