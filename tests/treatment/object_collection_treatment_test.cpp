// The object collection with the treatment kinds: grids, extended grids and maps.
#include <vorn/geometry/object_collection.h>

#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"

namespace {

// One filled object of each treatment kind, adopted by `owner`, which deletes them.
struct TreatmentObjects {
  VornTreatmentGrid* grid = new VornTreatmentGrid();
  VornTreatmentMap* map = new VornTreatmentMap();
  VornTreatmentGridEx* gridEx = new VornTreatmentGridEx();

  explicit TreatmentObjects(VornObjectCollection& owner) {
    EXPECT_TRUE(grid->InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
    grid->Zones.Add(2, 20.0);
    map->TreatmentPolygons.Add(VornTreatmentPolygon());
    EXPECT_TRUE(gridEx->InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
    owner.AddReference(grid);
    owner.AddReference(map);
    owner.AddReference(gridEx);
  }
};

std::vector<IVornObject*> Members(VornObjectCollection& collection) {
  return std::vector<IVornObject*>(collection.begin(), collection.end());
}

// RemoveAt, Clear and the destructor delete each kind through its own destructor: the
// leak checker of the sanitizer build proves that cells, rows and areas go with them.
TEST(ObjectCollectionTreatment, AddRangeCopiesEveryTreatmentKindDeeply) {
  VornObjectCollection source;
  TreatmentObjects const objects(source);
  source.AddReference(static_cast<VornTreatmentMap*>(nullptr));
  VornObjectCollection target;
  target.AddRange(source);
  std::vector<IVornObject*> const copies = Members(target);
  ASSERT_EQ(copies.size(), 3u);
  EXPECT_NE(&static_cast<VornTreatmentGrid&>(*copies[0]).Zones[0], &objects.grid->Zones[0]);
  EXPECT_NE(&static_cast<VornTreatmentMap&>(*copies[1]).TreatmentPolygons[0],
            &objects.map->TreatmentPolygons[0]);
  EXPECT_NE(static_cast<VornTreatmentGridEx&>(*copies[2]).GetZones(), objects.gridEx->GetZones());
  source.RemoveAt(1);
  source.Clear();
}

TEST(ObjectCollectionTreatment, AddAppendsNullWhenTheCopyCannotBeAllocated) {
  VornObjectCollection collection;
  TreatmentObjects const objects(collection);
  std::function<void()> const adds[] = {[&] { collection.Add(*objects.grid); },
                                        [&] { collection.Add(*objects.map); },
                                        [&] { collection.Add(*objects.gridEx); }};
  for (auto const& add : adds) {
    vorn_test::ScopedFailure failure(vorn_test::Channel::Malloc, 1);  // the copy's storage
    EXPECT_NO_THROW(add());
  }
  EXPECT_EQ(Members(collection), (std::vector<IVornObject*>{objects.grid, objects.map,
                                                            objects.gridEx, nullptr, nullptr,
                                                            nullptr}));
  VornTreatmentGridEx const uninitialised;  // a copy constructor that throws adds nothing
  EXPECT_TRUE(vorn_test::ThrowsVornException([&] { collection.Add(uninitialised); },
                                             "Object not initialized", 5004));
  EXPECT_EQ(collection.Count(), 6u);
}

}  // namespace
