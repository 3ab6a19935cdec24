// The factory functions of the treatment classes.
#include <vorn/geometry/factory.h>

#include <functional>

#include <gtest/gtest.h>

#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_zone.h>

#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;

// Filled objects go back with everything they own, each through its own channel: the
// sanitizer build checks both.
TEST(TreatmentFactory, FreeReleasesWhatAllocMadeAndAcceptsNull) {
  VornTreatmentGrid* const grid = Vorn::Alloc_VornTreatmentGrid();
  VornTreatmentMap* const map = Vorn::Alloc_VornTreatmentMap();
  VornTreatmentGridEx* const gridEx = Vorn::Alloc_VornTreatmentGridEx();
  VornTreatmentPolygon* const polygon = Vorn::Alloc_VornTreatmentPolygon();
  VornTreatmentZone* const zone = Vorn::Alloc_VornTreatmentZone();
  ASSERT_TRUE(grid->InitGrid(0, 0, 1, 1, 4, 4));
  grid->Zones.Add(*zone);
  ASSERT_TRUE(gridEx->InitGrid(0, 0, 1, 1, 4, 4));
  map->TreatmentPolygons.Add(*polygon);
  // Any of the object Free_ functions frees any kind of object correctly.
  Vorn::Free_VornTreatmentGrid(reinterpret_cast<VornTreatmentGrid*>(static_cast<IVornObject*>(map)));
  Vorn::Free_VornTreatmentMap(reinterpret_cast<VornTreatmentMap*>(static_cast<IVornObject*>(grid)));
  Vorn::Free_VornTreatmentGridEx(gridEx);
  Vorn::Free_VornTreatmentPolygon(polygon);
  Vorn::Free_VornTreatmentZone(zone);
  Vorn::Free_VornTreatmentZoneEx(Vorn::Alloc_VornTreatmentZoneEx());
  Vorn::Free_VornTreatmentGrid(nullptr);
  Vorn::Free_VornTreatmentGridEx(nullptr);
  Vorn::Free_VornTreatmentMap(nullptr);
  Vorn::Free_VornTreatmentPolygon(nullptr);
  Vorn::Free_VornTreatmentZone(nullptr);
  Vorn::Free_VornTreatmentZoneEx(nullptr);
}

TEST(TreatmentFactory, EveryAllocMakesOneVornMallocRequestAndYieldsNullWhenItFails) {
  std::function<void*()> const allocs[] = {
      [] { return Vorn::Alloc_VornTreatmentGrid(); },
      [] { return Vorn::Alloc_VornTreatmentGridEx(); },
      [] { return Vorn::Alloc_VornTreatmentMap(); },
      [] { return Vorn::Alloc_VornTreatmentPolygon(); },
      [] { return Vorn::Alloc_VornTreatmentZone(); },
      [] { return Vorn::Alloc_VornTreatmentZoneEx(); }};
  for (auto const& alloc : allocs) {
    vorn_test::Reset();
    vorn_test::ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_EQ(alloc(), nullptr);
    EXPECT_EQ(vorn_test::Count(Channel::Malloc), 1u);
    EXPECT_EQ(vorn_test::Count(Channel::NothrowNew) + vorn_test::Count(Channel::ArrayNew), 0u);
  }
}

}  // namespace
