// The object collection with the treatment kinds: grids, extended grids and maps.
#include <vorn/geometry/object_collection.h>

#include <gtest/gtest.h>

#include <vector>

#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/point.h>
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_zone.h>

#include "geometry/geometry_fixtures.h"
#include "support/alloc_failure.h"

using geometry_test::ExpectVornError;
using geometry_test::NewRing;
using geometry_test::Pointers;
using vorn_test::Channel;
using vorn_test::ScopedFailure;

namespace {

// A 3 x 2 grid whose cell (2, 1) selects the second of two zones.
VornTreatmentGrid* NewGrid() {
  VornTreatmentGrid* const grid = new VornTreatmentGrid();
  EXPECT_TRUE(grid->InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  grid->Zones.Add(1, 10.0);
  grid->Zones.Add(2, 20.0);
  grid->SetZoneIndex(2, 1, 1);
  return grid;
}

VornTreatmentGridEx* NewGridEx() {
  VornTreatmentGridEx* const grid = new VornTreatmentGridEx();
  EXPECT_TRUE(grid->InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
  grid->SetZoneInfo(1, 1, 42.5, 7);
  return grid;
}

VornTreatmentMap* NewMap() {
  VornMultiPolygon area;
  area.Polygons.AddReference(NewRing(0, 2, 0, 2, false));
  VornTreatmentMap* const map = new VornTreatmentMap();
  map->TreatmentPolygons.Add(area, VornTreatmentZone(3, 30.0));
  return map;
}

}  // namespace

TEST(ObjectCollectionTreatment, ClearDeletesEveryKindThroughItsOwnDestructor) {
  VornTreatmentGrid* const grid = NewGrid();
  VornTreatmentGridEx* const gridEx = NewGridEx();
  VornTreatmentMap* const map = NewMap();
  VornObjectCollection collection;
  collection.AddReference(new VornPoint(1, 1));
  collection.AddReference(grid);
  collection.AddReference(map);
  collection.AddReference(gridEx);
  collection.Add(*gridEx);
  collection.AddReference(static_cast<VornTreatmentMap*>(nullptr));
  std::vector<IVornObject*> const held = Pointers(collection);
  ASSERT_EQ(held.size(), 6u);
  EXPECT_EQ((std::vector<IVornObject*>(held.begin() + 1, held.begin() + 4)),
            (std::vector<IVornObject*>{grid, map, gridEx}));
  EXPECT_EQ(held[5], nullptr);
  collection.Clear();  // the sanitizer build proves that nothing leaks
  EXPECT_EQ(collection.Count(), 0u);
}

TEST(ObjectCollectionTreatment, AddRangeMakesDeepCopiesOfTheTreatmentKinds) {
  VornObjectCollection source;
  source.AddReference(NewGrid());
  source.AddReference(NewMap());
  source.AddReference(NewGridEx());

  VornObjectCollection target;
  target.AddRange(source);
  ASSERT_EQ(target.Count(), 3u);
  std::vector<IVornObject*> const copies = Pointers(target);
  std::vector<IVornObject*> const originals = Pointers(source);
  for (std::size_t i = 0; i < copies.size(); ++i) {
    EXPECT_NE(copies[i], originals[i]);
    EXPECT_EQ(copies[i]->GetType(), originals[i]->GetType());
  }

  VornTreatmentGrid const& grid = static_cast<VornTreatmentGrid const&>(target[0]);
  EXPECT_EQ(grid.GetZone(2, 1).ZoneNumber, 2);
  EXPECT_NE(static_cast<unsigned char*>(grid),
            static_cast<unsigned char*>(static_cast<VornTreatmentGrid const&>(source[0])));
  VornTreatmentMap const& map = static_cast<VornTreatmentMap const&>(target[1]);
  ASSERT_EQ(map.TreatmentPolygons.Count(), 1u);
  EXPECT_EQ(map.TreatmentPolygons[0].Zone.Rate, 30.0);
  VornTreatmentGridEx const& gridEx = static_cast<VornTreatmentGridEx const&>(target[2]);
  EXPECT_EQ(gridEx.GetZone(1, 1).Rate, 42.5);
  EXPECT_NE(gridEx.GetZones(), static_cast<VornTreatmentGridEx const&>(source[2]).GetZones());
}

TEST(ObjectCollectionTreatment, AThrowingCopyConstructorAppendsNothing) {
  VornTreatmentGrid const uninitialised;
  VornObjectCollection collection;
  ExpectVornError([&] { collection.Add(uninitialised); }, "Object not initialized", 5004);
  EXPECT_EQ(collection.Count(), 0u);

  VornObjectCollection source;
  source.Add(VornPoint(1, 1));
  source.AddReference(new VornTreatmentGridEx());
  ExpectVornError([&] { collection.AddRange(source); }, "Object not initialized", 5004);
  ASSERT_EQ(collection.Count(), 1u);
  EXPECT_EQ(collection[0].GetType(), Point);
}

TEST(ObjectCollectionTreatment, AddAppendsNullWhenTheCopyCannotBeAllocated) {
  VornTreatmentMap const map;
  VornObjectCollection collection;
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_NO_THROW(collection.Add(map));
  }
  ASSERT_EQ(collection.Count(), 1u);
  EXPECT_EQ(*collection.begin(), nullptr);
}
