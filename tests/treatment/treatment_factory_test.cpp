// The factory functions of the treatment classes.
#include <vorn/geometry/factory.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_zone.h>

#include "support/alloc_failure.h"

using vorn_test::Channel;
using vorn_test::ScopedFailure;

TEST(TreatmentFactory, BuildsDefaultObjectsAndFreesThem) {
  VornTreatmentGrid* const grid = Vorn::Alloc_VornTreatmentGrid();
  VornTreatmentGridEx* const gridEx = Vorn::Alloc_VornTreatmentGridEx();
  VornTreatmentMap* const map = Vorn::Alloc_VornTreatmentMap();
  VornTreatmentPolygon* const polygon = Vorn::Alloc_VornTreatmentPolygon();
  VornTreatmentZone* const zone = Vorn::Alloc_VornTreatmentZone();
  VornTreatmentZoneEx* const zoneEx = Vorn::Alloc_VornTreatmentZoneEx();
  EXPECT_EQ(grid->GetType(), TreatmentGrid);
  EXPECT_EQ(gridEx->GetType(), TreatmentGridEx);
  EXPECT_EQ(map->GetType(), TreatmentMap);
  EXPECT_EQ(zone->ZoneNumber, 0);
  EXPECT_EQ(zoneEx->ZoneNumber, 0);

  // Filled objects too: the cells, zones and areas go with them.
  ASSERT_TRUE(grid->InitGrid(0, 0, 1, 1, 4, 4));
  grid->Zones.Add(1, 2.0);
  ASSERT_TRUE(gridEx->InitGrid(0, 0, 1, 1, 4, 4));
  map->TreatmentPolygons.Add(*polygon);
  Vorn::Free_VornTreatmentGrid(grid);
  Vorn::Free_VornTreatmentGridEx(gridEx);
  Vorn::Free_VornTreatmentMap(map);
  Vorn::Free_VornTreatmentPolygon(polygon);
  Vorn::Free_VornTreatmentZone(zone);
  Vorn::Free_VornTreatmentZoneEx(zoneEx);
}

TEST(TreatmentFactory, AnObjectFreeFunctionFreesAnotherKindCorrectly) {
  VornTreatmentMap* const map = Vorn::Alloc_VornTreatmentMap();
  map->TreatmentPolygons.Add(VornTreatmentPolygon());
  IVornObject* const object = map;
  Vorn::Free_VornTreatmentGrid(reinterpret_cast<VornTreatmentGrid*>(object));
}

TEST(TreatmentFactory, EveryFreeAcceptsNull) {
  Vorn::Free_VornTreatmentGrid(nullptr);
  Vorn::Free_VornTreatmentGridEx(nullptr);
  Vorn::Free_VornTreatmentMap(nullptr);
  Vorn::Free_VornTreatmentPolygon(nullptr);
  Vorn::Free_VornTreatmentZone(nullptr);
  Vorn::Free_VornTreatmentZoneEx(nullptr);
}

TEST(TreatmentFactory, ExhaustedMemoryYieldsNullWithoutConstructing) {
  std::vector<std::function<void*()>> const allocs = {
      [] { return Vorn::Alloc_VornTreatmentGrid(); },
      [] { return Vorn::Alloc_VornTreatmentGridEx(); },
      [] { return Vorn::Alloc_VornTreatmentMap(); },
      [] { return Vorn::Alloc_VornTreatmentPolygon(); },
      [] { return Vorn::Alloc_VornTreatmentZone(); },
      [] { return Vorn::Alloc_VornTreatmentZoneEx(); },
  };
  for (std::size_t i = 0; i < allocs.size(); ++i) {
    vorn_test::Reset();
    ScopedFailure failure(Channel::Malloc, 1);
    void* result = reinterpret_cast<void*>(1);
    EXPECT_NO_THROW(result = allocs[i]()) << "form " << i;
    EXPECT_EQ(result, nullptr) << "form " << i;
    EXPECT_EQ(vorn_test::Count(Channel::Malloc), 1u) << "form " << i;
  }
}

TEST(TreatmentFactory, TheCompactZoneComesFromTheObjectChannel) {
  VornTreatmentZoneEx* zoneEx = nullptr;
  {
    ScopedFailure noNew(Channel::NothrowNew);
    zoneEx = Vorn::Alloc_VornTreatmentZoneEx();
  }
  ASSERT_NE(zoneEx, nullptr);
  Vorn::Free_VornTreatmentZoneEx(zoneEx);
}
