// Treatment polygons, their collection and the treatment map.
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_polygon_collection.h>

#include <array>
#include <vector>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

namespace {

using namespace vorn_test;

typedef std::array<double, 4> Quad;  // MinX, MaxX, MinY, MaxY of an initialised box
Quad Box(VornBoundbox const& box) {
  EXPECT_TRUE(box.IsInit());
  return {box.MinX, box.MaxX, box.MinY, box.MaxY};
}
Quad Box(VornTreatmentPolygon const& area) { return Box(area.Area.Polygons.Boundbox); }

// A treatment polygon over the rectangle minX..maxX x minY..maxY with zone `number`.
VornTreatmentPolygon Area(double minX, double maxX, double minY, double maxY, int number) {
  VornCoordinate ring[] = {{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}, {minX, minY}};
  return VornTreatmentPolygon(VornPolygon(ring, 5), VornTreatmentZone(number, number * 1.5));
}

// Zone numbers of the members in order; -1 stands for a null member.
std::vector<int> Zones(VornTreatmentPolygonCollection const& areas) {
  std::vector<int> numbers;
  for (auto it = areas.begin(); it != areas.end(); ++it) {
    numbers.push_back(*it != nullptr ? (*it)->Zone.ZoneNumber : -1);
  }
  return numbers;
}

void AddOne(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 1;
  *outY = y + 1;
}

TEST(TreatmentPolygon, SelfAssignmentEmptiesTheAreaAndKeepsTheZone) {
  VornTreatmentPolygon area = Area(0, 10, 0, 5, 3);
  EXPECT_EQ(Box(area), (Quad{0, 10, 0, 5}));
  VornTreatmentPolygon& alias = area;
  area = alias;
  EXPECT_EQ(area.Area.Polygons.Count(), 0u);
  EXPECT_EQ(area.Zone.ZoneNumber, 3);
}

TEST(TreatmentPolygonCollection, BoxFollowsAdditionsAndRemovalsAndStrayRemovalsAreSilent) {
  VornTreatmentPolygonCollection areas;
  areas.RemoveAt(0);
  areas.RemoveReference(0);
  areas.Add(Area(0, 10, 0, 5, 1));
  areas.Add(Area(20, 30, -5, 0, 2));
  EXPECT_EQ(Box(areas.Boundbox), (Quad{0, 30, -5, 5}));
  areas.RemoveAt(areas.Count());
  areas.RemoveReference(5);
  EXPECT_EQ(Zones(areas), (std::vector<int>{1, 2}));
  EXPECT_EQ((*areas.at(1))->Zone.ZoneNumber, 2);
  areas.RemoveAt(0);
  EXPECT_EQ(Box(areas.Boundbox), (Quad{20, 30, -5, 0}));
  areas.RemoveAt(0);
  EXPECT_FALSE(areas.Boundbox.IsInit());
}

TEST(TreatmentPolygonCollection, WithoutAutoBoundboxOnlyTransformAndClearTouchTheBox) {
  VornTreatmentPolygonCollection areas(false);
  areas.Add(Area(0, 10, 0, 5, 1));
  areas.AddReference(new VornTreatmentPolygon(Area(20, 30, 0, 5, 2)));
  EXPECT_FALSE(areas.Boundbox.IsInit());
  areas.Transform(AddOne, nullptr);
  EXPECT_EQ(Box(areas.Boundbox), (Quad{1, 31, 1, 6}));
  EXPECT_EQ(Box(areas[1]), (Quad{21, 31, 1, 6}));
  areas.RemoveAt(1);
  EXPECT_EQ(Box(areas.Boundbox), (Quad{1, 31, 1, 6}));  // stale until RecalcBoundbox
  areas.RecalcBoundbox();
  EXPECT_EQ(Box(areas.Boundbox), (Quad{1, 11, 1, 6}));
  EXPECT_TRUE(ThrowsVornException([&] { areas.Transform(nullptr, nullptr); }, "Parameter is NULL",
                                  5003));
  EXPECT_FALSE(areas.Boundbox.IsInit());  // reset before the first area refused
  areas.Clear();
  areas.Transform(nullptr, nullptr);  // nothing to map, nothing tested
}

TEST(TreatmentPolygonCollection, CopyIsShallowWhileAssignmentAndAddRangeAreDeep) {
  VornTreatmentPolygonCollection areas;
  EXPECT_TRUE(ThrowsVornException([&] { areas.AddReference(nullptr); }, "Parameter is NULL", 5003));
  VornTreatmentPolygon* const mine = new VornTreatmentPolygon(Area(0, 1, 0, 1, 1));
  areas.AddReference(mine);
  areas.Add(Area(5, 6, 5, 6, 2).Area, VornTreatmentZone(2, 3.0));
  EXPECT_EQ(Box(areas.Boundbox), (Quad{0, 6, 0, 6}));
  VornTreatmentPolygonCollection shared(areas);
  EXPECT_EQ(&shared[0], mine);
  shared.RemoveAllReferences();

  VornTreatmentPolygonCollection deep(false);
  deep.Add(Area(-1, 0, -1, 0, 0));
  deep = areas;
  EXPECT_FALSE(deep.AutoBoundbox);  // the target keeps its setting
  EXPECT_NE(&deep[0], mine);
  deep.AddRange(deep);  // one copy of each member it held
  EXPECT_EQ(Zones(deep), (std::vector<int>{1, 2, 1, 2}));

  areas.RemoveReference(0);
  EXPECT_EQ(Box(areas.Boundbox), (Quad{5, 6, 5, 6}));
  delete mine;
  VornTreatmentPolygonCollection& alias = areas;
  areas = alias;
  EXPECT_EQ(areas.Count(), 0u);
}

TEST(TreatmentPolygonCollection, AddTakesTheAreasOwnBoxAndKeepsACopyItCannotMakeAsNull) {
  VornTreatmentPolygonCollection areas;
  VornTreatmentPolygon area = Area(0, 10, 0, 5, 1);
  area.Area.Polygons.Boundbox.Set(0, 1, 0, 1);  // stale: the ring reaches 10 x 5
  areas.Add(area);
  EXPECT_EQ(Box(areas.Boundbox), (Quad{0, 1, 0, 1}));
  EXPECT_TRUE(ThrowsVornException(
      [&] {
        ScopedFailure failure(Channel::Malloc, 1);
        areas.Add(area.Area, area.Zone);
      },
      "Parameter is NULL", 5003));
  VornTreatmentPolygon const west = Area(-5, 0, 0, 5, 2);
  {
    ScopedFailure failure(Channel::Malloc, 1);  // the treatment polygon's own storage
    areas.Add(west);
  }
  EXPECT_EQ(Zones(areas), (std::vector<int>{1, -1}));
  EXPECT_EQ(Box(areas.Boundbox), (Quad{-5, 1, 0, 5}));  // widened before the copy was tried
  areas.Transform(AddOne, nullptr);  // null members are skipped by every walk
  EXPECT_EQ(Box(areas.Boundbox), (Quad{1, 11, 1, 6}));
  VornTreatmentPolygonCollection copy;
  copy = areas;
  EXPECT_EQ(Zones(copy), (std::vector<int>{1}));
  areas.RemoveAt(1);
  EXPECT_EQ(Zones(areas), (std::vector<int>{1}));
}

TEST(TreatmentMap, IsKindSevenTransformsItsAreasAndCopiesAllButTheTag) {
  VornTreatmentMap source;
  IVornObject& object = source;
  EXPECT_EQ(object.GetType(), 7);
  source.Tag = "source";
  source.TreatmentPolygons.Add(Area(0, 10, 0, 5, 1));
  source.Attributes.Add(W(u"crop"), W(u"wheat"));
  object.Transform(AddOne, nullptr);
  EXPECT_EQ(Box(source.TreatmentPolygons[0]), (Quad{1, 11, 1, 6}));

  VornTreatmentMap copy(source);
  VornTreatmentMap assigned;
  assigned.Tag = "mine";
  assigned.TreatmentPolygons.Add(Area(50, 60, 50, 60, 9));
  assigned = source;
  EXPECT_STREQ(copy.Tag.c_str(), "");
  EXPECT_STREQ(assigned.Tag.c_str(), "mine");
  for (VornTreatmentMap const* map : {&copy, &assigned}) {
    EXPECT_EQ(Zones(map->TreatmentPolygons), (std::vector<int>{1}));
    EXPECT_NE(&map->TreatmentPolygons[0].Zone, &source.TreatmentPolygons[0].Zone);
    EXPECT_EQ(Box(map->TreatmentPolygons.Boundbox), (Quad{1, 11, 1, 6}));
    EXPECT_EQ(map->Attributes.Count(), 1u);
  }
  VornTreatmentMap& alias = assigned;
  assigned = alias;
  EXPECT_EQ(assigned.TreatmentPolygons.Count(), 0u);
  EXPECT_EQ(assigned.Attributes.Count(), 0u);
}

}  // namespace
