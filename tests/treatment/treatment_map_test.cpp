// Treatment polygons, their collection and the treatment map.
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_polygon_collection.h>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;

void ExpectExtent(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  EXPECT_TRUE(box.IsInit());
  EXPECT_EQ(box.MinX, minX);
  EXPECT_EQ(box.MaxX, maxX);
  EXPECT_EQ(box.MinY, minY);
  EXPECT_EQ(box.MaxY, maxY);
}

// A treatment polygon over the rectangle minX..maxX x minY..maxY with zone `number`.
VornTreatmentPolygon Area(double minX, double maxX, double minY, double maxY, int number) {
  VornCoordinate ring[] = {{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}};
  return VornTreatmentPolygon(VornPolygon(ring, 5), VornTreatmentZone(number, number * 1.5));
}

void AddOne(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 1;
  *outY = y + 1;
}

TEST(TreatmentPolygon, BuildsItsAreaAndZoneByCopy) {
  VornTreatmentPolygon const area = Area(0, 10, 0, 5, 3);
  ASSERT_EQ(area.Area.Polygons.Count(), 1u);
  ExpectExtent(area.Area.Polygons.Boundbox, 0, 10, 0, 5);
  EXPECT_EQ(area.Zone.ZoneNumber, 3);

  VornMultiPolygon rings;
  rings.Polygons.Add(area.Area.Polygons[0]);
  VornTreatmentPolygon fromRings(rings, VornTreatmentZone(4, 1.0, vorn_test::W(u"z"), nullptr, 0));
  EXPECT_NE(&fromRings.Area.Polygons[0], &rings.Polygons[0]);
  EXPECT_EQ(vorn_test::U16(fromRings.Zone.GetDesignator()), u"z");

  VornTreatmentPolygon copy(fromRings);
  copy.Transform(AddOne, nullptr);
  ExpectExtent(copy.Area.Polygons.Boundbox, 1, 11, 1, 6);
  ExpectExtent(fromRings.Area.Polygons.Boundbox, 0, 10, 0, 5);
  EXPECT_EQ(copy.Zone.ZoneNumber, 4);
}

TEST(TreatmentPolygonCollection, BoxFollowsAdditionsAndRemovals) {
  VornTreatmentPolygonCollection areas;
  EXPECT_TRUE(areas.AutoBoundbox);
  areas.Add(Area(0, 10, 0, 5, 1));
  ExpectExtent(areas.Boundbox, 0, 10, 0, 5);
  areas.Add(Area(20, 30, -5, 0, 2));
  ExpectExtent(areas.Boundbox, 0, 30, -5, 5);
  areas.RemoveAt(0);
  ExpectExtent(areas.Boundbox, 20, 30, -5, 0);
  areas.RemoveAt(0);
  EXPECT_EQ(areas.Count(), 0u);
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentPolygonCollection, PositionsBeyondTheEndAreIgnoredByRemovals) {
  VornTreatmentPolygonCollection areas;
  areas.RemoveAt(0);
  areas.RemoveReference(0);
  areas.Add(Area(0, 10, 0, 5, 1));
  areas.RemoveAt(areas.Count());
  areas.RemoveReference(areas.Count());
  ASSERT_EQ(areas.Count(), 1u);
  EXPECT_EQ(areas[0].Zone.ZoneNumber, 1);
  EXPECT_EQ((*areas.at(0))->Zone.ZoneNumber, 1);
}

TEST(TreatmentPolygonCollection, WithoutAutoBoundboxOnlyTransformAndClearTouchTheBox) {
  VornTreatmentPolygonCollection areas(false);
  areas.Add(Area(0, 10, 0, 5, 1));
  areas.AddReference(new VornTreatmentPolygon(Area(20, 30, 0, 5, 2)));
  EXPECT_FALSE(areas.Boundbox.IsInit());
  areas.Transform(AddOne, nullptr);
  ExpectExtent(areas.Boundbox, 1, 31, 1, 6);
  ExpectExtent(areas[1].Area.Polygons.Boundbox, 21, 31, 1, 6);
  areas.RemoveAt(1);
  ExpectExtent(areas.Boundbox, 1, 31, 1, 6);  // stale until RecalcBoundbox
  areas.RecalcBoundbox();
  ExpectExtent(areas.Boundbox, 1, 11, 1, 6);
  areas.Clear();
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentPolygonCollection, TransformWithANullCallbackFailsInTheFirstArea) {
  VornTreatmentPolygonCollection areas;
  areas.Transform(nullptr, nullptr);  // nothing to map, nothing to test
  areas.Add(Area(0, 10, 0, 5, 1));
  EXPECT_TRUE(ThrowsVornException([&] { areas.Transform(nullptr, nullptr); }, "Parameter is NULL",
                                  5003));
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentPolygonCollection, ReferencesAndTheTwoKindsOfCopy) {
  VornTreatmentPolygonCollection areas;
  EXPECT_TRUE(ThrowsVornException([&] { areas.AddReference(nullptr); }, "Parameter is NULL", 5003));
  VornTreatmentPolygon* const mine = new VornTreatmentPolygon(Area(0, 1, 0, 1, 1));
  areas.AddReference(mine);
  areas.Add(VornMultiPolygon(Area(5, 6, 5, 6, 2).Area), VornTreatmentZone(2, 3.0));
  EXPECT_EQ(&areas[0], mine);
  ExpectExtent(areas.Boundbox, 0, 6, 0, 6);

  VornTreatmentPolygonCollection shared(areas);  // refers to the same areas
  EXPECT_EQ(&shared[0], mine);
  shared.RemoveAllReferences();

  VornTreatmentPolygonCollection deep(false);
  deep = areas;
  EXPECT_FALSE(deep.AutoBoundbox);  // the target's setting is kept
  ASSERT_EQ(deep.Count(), 2u);
  EXPECT_NE(&deep[0], mine);
  EXPECT_EQ(deep[1].Zone.ZoneNumber, 2);

  areas.RemoveReference(0);
  ExpectExtent(areas.Boundbox, 5, 6, 5, 6);
  EXPECT_EQ(mine->Zone.ZoneNumber, 1);
  delete mine;

  VornTreatmentPolygonCollection& alias = areas;
  areas = alias;
  EXPECT_EQ(areas.Count(), 0u);
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentPolygonCollection, AddRangeAppendsCopiesAndWidens) {
  VornTreatmentPolygonCollection source;
  source.Add(Area(0, 1, 0, 1, 1));
  source.Add(Area(2, 3, 2, 3, 2));
  VornTreatmentPolygonCollection target;
  target.Add(Area(-1, 0, -1, 0, 0));
  target.AddRange(source);
  ASSERT_EQ(target.Count(), 3u);
  EXPECT_EQ(target[2].Zone.ZoneNumber, 2);
  EXPECT_NE(&target[1], &source[0]);
  ExpectExtent(target.Boundbox, -1, 3, -1, 3);
}

TEST(TreatmentPolygonCollection, AddOfACopyThatCannotBeAllocatedAppendsNull) {
  VornTreatmentPolygonCollection areas;
  VornTreatmentPolygon const area = Area(0, 10, 0, 5, 1);
  {
    ScopedFailure failure(Channel::Malloc, 1);  // the treatment polygon's own storage
    areas.Add(area);
  }
  ASSERT_EQ(areas.Count(), 1u);
  EXPECT_EQ(*areas.begin(), nullptr);
  ExpectExtent(areas.Boundbox, 0, 10, 0, 5);  // widened before the copy was attempted

  areas.Add(Area(20, 30, 0, 5, 2));
  areas.Transform(AddOne, nullptr);  // the null member is skipped
  ExpectExtent(areas.Boundbox, 21, 31, 1, 6);
  VornTreatmentPolygonCollection copy;
  copy = areas;
  EXPECT_EQ(copy.Count(), 1u);
  areas.RemoveAt(0);
  EXPECT_EQ(areas.Count(), 1u);
}

TEST(TreatmentPolygonCollection, AddFromPartsReportsExhaustionAsNullParameter) {
  VornTreatmentPolygonCollection areas;
  VornMultiPolygon const rings(Area(0, 1, 0, 1, 1).Area);
  VornTreatmentZone const zone(1, 1.0);
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_TRUE(ThrowsVornException([&] { areas.Add(rings, zone); }, "Parameter is NULL", 5003));
  }
  EXPECT_EQ(areas.Count(), 0u);
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentMap, IsObjectKindSevenAndTransformsItsAreas) {
  VornTreatmentMap map;
  EXPECT_EQ(map.GetType(), TreatmentMap);
  IVornObject& object = map;
  EXPECT_EQ(object.GetType(), 7);
  EXPECT_TRUE(map.TreatmentPolygons.AutoBoundbox);
  map.TreatmentPolygons.Add(Area(0, 10, 0, 5, 1));
  object.Transform(AddOne, nullptr);
  ExpectExtent(map.TreatmentPolygons.Boundbox, 1, 11, 1, 6);
  ExpectExtent(map.TreatmentPolygons[0].Area.Polygons.Boundbox, 1, 11, 1, 6);
}

TEST(TreatmentMap, CopiesAreasAndAttributesButNotTheTag) {
  VornTreatmentMap source;
  source.Tag = "source";
  source.TreatmentPolygons.Add(Area(0, 10, 0, 5, 1));
  source.Attributes.Add(vorn_test::W(u"crop"), vorn_test::W(u"wheat"));

  VornTreatmentMap copy(source);
  VornTreatmentMap assigned;
  assigned.Tag = "mine";
  assigned.TreatmentPolygons.Add(Area(50, 60, 50, 60, 9));
  assigned = source;
  EXPECT_STREQ(copy.Tag.c_str(), "");
  EXPECT_STREQ(assigned.Tag.c_str(), "mine");
  for (VornTreatmentMap const* map : {&copy, &assigned}) {
    ASSERT_EQ(map->TreatmentPolygons.Count(), 1u);
    EXPECT_NE(&map->TreatmentPolygons[0], &source.TreatmentPolygons[0]);
    EXPECT_NE(&map->TreatmentPolygons[0].Zone, &source.TreatmentPolygons[0].Zone);
    EXPECT_EQ(map->TreatmentPolygons[0].Zone.ZoneNumber, 1);
    ExpectExtent(map->TreatmentPolygons.Boundbox, 0, 10, 0, 5);
    EXPECT_EQ(map->Attributes.Count(), 1u);
  }

  VornTreatmentMap& alias = assigned;
  assigned = alias;
  EXPECT_EQ(assigned.TreatmentPolygons.Count(), 0u);
  EXPECT_EQ(assigned.Attributes.Count(), 0u);
}

}  // namespace
