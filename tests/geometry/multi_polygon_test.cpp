#include <vorn/geometry/multi_polygon.h>

#include <gtest/gtest.h>

#include <vector>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::NewRing;
using geometry_test::Pointers;
using vorn_test::W;

namespace {

// Adds rings 0..1, 2..3, ... along x; flags[i] marks ring i as a hole.
std::vector<VornPolygon*> Fill(VornMultiPolygon& area, std::vector<bool> const& flags) {
  double x = 0;
  for (bool hole : flags) {
    area.Polygons.AddReference(NewRing(x, x + 1, 0, 1, hole));
    x += 2;
  }
  return Pointers(area.Polygons);
}

}  // namespace

TEST(MultiPolygon, RemoveHolesRestartsAtTheSecondRing) {
  VornMultiPolygon sorted;
  std::vector<VornPolygon*> const s = Fill(sorted, {false, true, true});
  sorted.RemoveHoles();
  EXPECT_EQ(Pointers(sorted.Polygons), std::vector<VornPolygon*>{s[0]});
  ExpectBox(sorted.Polygons.Boundbox, 0, 1, 0, 1);

  VornMultiPolygon holesFirst;
  std::vector<VornPolygon*> const h = Fill(holesFirst, {true, true, false});
  holesFirst.RemoveHoles();
  EXPECT_EQ(Pointers(holesFirst.Polygons), (std::vector<VornPolygon*>{h[1], h[2]}));
  holesFirst.RemoveHoles();
  EXPECT_EQ(Pointers(holesFirst.Polygons), std::vector<VornPolygon*>{h[2]});

  VornMultiPolygon onlyHole;
  Fill(onlyHole, {true});
  onlyHole.RemoveHoles();
  EXPECT_EQ(onlyHole.Polygons.Count(), 0u);
  EXPECT_FALSE(onlyHole.Polygons.Boundbox.IsInit());
}

TEST(MultiPolygon, RemoveHolesWithoutHolesLeavesTheBoxAlone) {
  VornMultiPolygon area;
  Fill(area, {false, false});
  area.Polygons.Boundbox.Set(-9, 9, -9, 9);
  area.RemoveHoles();
  ExpectBox(area.Polygons.Boundbox, -9, 9, -9, 9);
}

TEST(MultiPolygon, SortHolesIsTheCollectionOrder) {
  VornMultiPolygon area;
  std::vector<VornPolygon*> const p = Fill(area, {false, true, true});
  area.SortHoles();
  EXPECT_EQ(Pointers(area.Polygons), (std::vector<VornPolygon*>{p[0], p[2], p[1]}));
}

TEST(MultiPolygon, SelfAssignmentLosesThePolygons) {
  VornMultiPolygon area;
  Fill(area, {false, true});
  area.Tag = "kept";
  VornMultiPolygon& alias = area;
  area = alias;
  EXPECT_EQ(area.Polygons.Count(), 0u);
  EXPECT_STREQ(area.Tag.c_str(), "kept");
}

TEST(MultiPolygon, CopiesAreDeep) {
  VornMultiPolygon area;
  Fill(area, {false, true});
  area.Attributes.Add(W(u"Rate"), 3);
  VornMultiPolygon const copy(area);
  EXPECT_EQ(copy.GetType(), MultiPolygon);
  ASSERT_EQ(copy.Polygons.Count(), 2u);
  EXPECT_NE(&copy.Polygons[0], &area.Polygons[0]);
  EXPECT_TRUE(copy.Polygons[1].IsHole);
  EXPECT_EQ(copy.Attributes.Count(), 1u);
}

TEST(MultiPolygon, NullCallbackFailsAfterTheBoxWasReset) {
  VornMultiPolygon area;
  Fill(area, {false});
  ExpectVornError([&] { area.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  EXPECT_FALSE(area.Polygons.Boundbox.IsInit());
}
