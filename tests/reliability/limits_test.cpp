// Size limits that a 32-bit target reaches in practice, made reachable on 64-bit targets
// too: a block of more than 2^32 - 1 bytes is refused without being requested, and the
// largest block that fits is requested. Large objects work and are released.
//
// The LargeObjects tests allocate some hundred megabytes each. Slow stages (emulators,
// valgrind) skip them with --gtest_filter=-LargeObjects.* or ctest -E '^LargeObjects\.'.
#include <array>
#include <climits>
#include <functional>
#include <tuple>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "support/alloc_failure.h"

namespace {

using namespace vorn_test;
constexpr Channel kMalloc = Channel::Malloc, kNew = Channel::NothrowNew, kArray = Channel::ArrayNew;
using Mebibyte = std::array<unsigned char, 1u << 20>;  // 4095 of them fit in 2^32 - 1 bytes

// Each case, with the n-th allocation on its channel failing, must end as its operation
// says twice: at the largest size that fits (x = 0), where that allocation is requested,
// and one step beyond it (x = 1), where it is not. A failure names its case and x as one
// number: 10 * case + x.
TEST(Limits, BlocksBeyondThirtyTwoBitsAreRefusedWithoutBeingRequested) {
  unsigned const fit = UINT_MAX / sizeof(Mebibyte), rows = UINT_MAX / sizeof(VornTreatmentZoneEx*),
                 row = UINT_MAX / sizeof(VornTreatmentZoneEx);
  Vorn::vector<Mebibyte> held(10);  // growth counts the elements already held
  Vorn::vector<char> bytes(1, 'a');
  Vorn::vector<char, Vorn::allocator, Vorn::incremental_growth<10>> stepped;
  VornTreatmentGrid grid;
  VornTreatmentGridEx rates;
  std::tuple<Channel, unsigned long, std::function<bool(unsigned)>> const cases[] = {
      {kNew, 1, [&](unsigned x) { return !held.reserve(fit + x); }},
      // An element of the vector itself is a valid value to insert.
      {kNew, 1, [&](unsigned x) { return !held.insert(held.end(), fit - 10 + x, held[0]); }},
      // Beyond the limit the new capacity wraps around: size + growth, or count + 10.
      {kNew, 1, [&](unsigned x) { return !bytes.insert(bytes.end(), UINT_MAX - 1 + x, 'b'); }},
      {kNew, 1, [&](unsigned x) { return !stepped.insert(stepped.end(), UINT_MAX - 10 + x, 'c'); }},
      // 65535 x 65537 cells are 2^32 - 1 bytes, 65536 x 65536 one more.
      {kMalloc, 1, [&](unsigned x) { return !grid.InitGrid(0, 0, 1, 1, 65535 + x, 65537 - x); }},
      {kMalloc, 1, [&](unsigned x) { return !grid.InitGrid(0, 0, 1, 1, x ? -1 : 1, 5); }},
      {kArray, 1, [&](unsigned x) { return !rates.InitGrid(0, 0, 1, 1, 1, rows + x); }},
      {kArray, 1, [&](unsigned x) { return !rates.InitGrid(0, 0, 1, 1, 1, x ? -2 : 2); }},
      // The row table comes first, then the rows: a row that is not had stays null.
      {kArray, 2,
       [&](unsigned x) { return rates.InitGrid(0, 0, 1, 1, row + x, 1) && !*rates.GetZones(); }},
  };
  for (auto const& c : cases)
    for (unsigned x : {0u, 1u}) {
      ScopedFailure failure(std::get<0>(c), std::get<1>(c));
      EXPECT_TRUE(std::get<2>(c)(x) && Fired(std::get<0>(c)) == (x == 0)) << 10 * (&c - cases) + x;
    }
}

// Ten million coordinates, a 10,000 x 10,000 byte grid and a 3,000 x 3,000 rate grid,
// each written at its far end and copied.
TEST(LargeObjects, MillionsOfCoordinatesAndCells) {
  VornCoordinateVector v;
  for (int i = 0; i < 10000000; ++i) v.Add(i, -i);
  EXPECT_EQ(VornCoordinateVector(v).begin()[9999999].Y, -9999999.0);
  VornTreatmentGrid grid;
  VornTreatmentGridEx rates;
  ASSERT_TRUE(grid.InitGrid(0, 0, 1, 1, 10000, 10000) && rates.InitGrid(0, 0, 2, 2, 3000, 3000));
  grid.SetZoneIndex(9999, 9999, 1);
  rates.SetZoneInfo(2999, 2999, 120.0, 7);
  EXPECT_EQ(VornTreatmentGrid(grid).GetZoneIndex(9999, 9999), 1);
  EXPECT_EQ(VornTreatmentGridEx(rates).GetZone(2999, 2999).ZoneNumber, 7);
}

}  // namespace
