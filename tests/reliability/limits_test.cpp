// Size limits that a 32-bit target reaches in practice, made reachable on 64-bit targets
// too: blocks beyond 2^32 - 1 bytes are refused without being requested, the largest
// block that fits is requested; and large objects work and are released.
//
// The LargeObjects tests allocate some hundred megabytes each. Slow stages (emulators,
// valgrind) skip them with --gtest_filter=-LargeObjects.* or ctest -E '^LargeObjects\.'.
#include <climits>
#include <cstddef>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::Count;
using vorn_test::Fired;
using vorn_test::ScopedFailure;

// Elements of 1 MiB and 64 KiB: their vectors reach the 32-bit limit at 4095 and 65535
// elements, far below any real memory.
struct Mebibyte {
  unsigned char bytes[1u << 20];
};
struct Chunk {
  unsigned char bytes[1u << 16];
};

// Runs `request` with every allocation on `channel` failing; returns whether one was
// asked for (true) or the operation refused before asking (false).
template <class Operation>
bool Requests(Channel channel, Operation request) {
  ScopedFailure exhausted(channel);
  request();
  return Fired(channel);
}

TEST(Limits, VectorRefusesBlocksBeyondThirtyTwoBitsWithoutAskingForThem) {
  Vorn::vector<Mebibyte> huge;
  unsigned int const fits = UINT_MAX / sizeof(Mebibyte);
  ASSERT_EQ(fits, 4095u);
  EXPECT_TRUE(Requests(Channel::NothrowNew, [&] { EXPECT_FALSE(huge.reserve(fits)); }));
  EXPECT_FALSE(Requests(Channel::NothrowNew, [&] { EXPECT_FALSE(huge.reserve(fits + 1)); }));
  static Mebibyte const filler{};
  EXPECT_TRUE(Requests(Channel::NothrowNew,
                       [&] { EXPECT_FALSE(huge.insert(huge.end(), fits, filler)); }));
  EXPECT_FALSE(Requests(Channel::NothrowNew,
                        [&] { EXPECT_FALSE(huge.insert(huge.end(), fits + 1, filler)); }));
  EXPECT_EQ(huge.size(), 0u);
  EXPECT_EQ(huge.capacity(), 0u);
}

TEST(Limits, VectorGrowthCountsTheElementsItAlreadyHolds) {
  static Chunk const filler{};
  Vorn::vector<Chunk> v;
  ASSERT_TRUE(v.resize(10));
  unsigned int const fits = UINT_MAX / sizeof(Chunk);  // 65535
  EXPECT_TRUE(Requests(Channel::NothrowNew,
                       [&] { EXPECT_FALSE(v.insert(v.end(), fits - 10, filler)); }));
  EXPECT_FALSE(Requests(Channel::NothrowNew,
                        [&] { EXPECT_FALSE(v.insert(v.end(), fits - 9, filler)); }));
  Chunk* const inserted = v.insert(v.begin(), filler);  // still usable
  EXPECT_EQ(inserted, v.begin());
  EXPECT_EQ(v.size(), 11u);
}

TEST(Limits, VectorGrowthThatWrapsAroundIsRefused) {
  Vorn::vector<char> bytes;
  ASSERT_TRUE(bytes.push_back('a'));
  // size 1 + growth 2^32 - 1 wraps to 0.
  EXPECT_FALSE(Requests(Channel::NothrowNew,
                        [&] { EXPECT_FALSE(bytes.insert(bytes.end(), UINT_MAX, 'b')); }));
  // The incremental policy's count + 10 wraps below the count.
  Vorn::vector<char, Vorn::allocator, Vorn::incremental_growth<10>> stepped;
  EXPECT_FALSE(Requests(Channel::NothrowNew,
                        [&] { EXPECT_FALSE(stepped.insert(stepped.end(), UINT_MAX - 5, 'c')); }));
  EXPECT_EQ(bytes.size(), 1u);
  EXPECT_TRUE(stepped.empty());
}

TEST(Limits, PublicVectorsRefuseBeyondThirtyTwoBits) {
  VornCoordinateVector coordinates;
  unsigned int const coordinatesFit = UINT_MAX / sizeof(VornCoordinate);
  EXPECT_TRUE(Requests(Channel::NothrowNew,
                       [&] { EXPECT_FALSE(coordinates.Reserve(coordinatesFit)); }));
  EXPECT_FALSE(Requests(Channel::NothrowNew,
                        [&] { EXPECT_FALSE(coordinates.Reserve(coordinatesFit + 1)); }));
  VornMultiPolygonVector areas;
  unsigned int const pointersFit = UINT_MAX / sizeof(VornMultiPolygon*);
  EXPECT_TRUE(Requests(Channel::NothrowNew, [&] { EXPECT_FALSE(areas.Reserve(pointersFit)); }));
  EXPECT_FALSE(
      Requests(Channel::NothrowNew, [&] { EXPECT_FALSE(areas.Reserve(pointersFit + 1)); }));
}

TEST(Limits, ByteGridRefusesACellCountBeyondThirtyTwoBits) {
  VornTreatmentGrid grid;
  // 65535 x 65537 = 2^32 - 1 bytes is asked for; 65536 x 65536 = 2^32 is not.
  EXPECT_TRUE(Requests(Channel::Malloc,
                       [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, 65535, 65537)); }));
  EXPECT_FALSE(Requests(Channel::Malloc,
                        [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, 65536, 65536)); }));
  EXPECT_FALSE(Requests(Channel::Malloc, [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, -1, 5)); }));
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(static_cast<unsigned char*>(grid), nullptr);
  EXPECT_EQ(grid.NumColumns(), -1);  // the counts are stored as given
}

TEST(Limits, ExtendedGridRefusesARowTableBeyondThirtyTwoBits) {
  VornTreatmentGridEx grid;
  int const rowsFit = static_cast<int>(UINT_MAX / sizeof(VornTreatmentZoneEx*));
  EXPECT_TRUE(Requests(Channel::ArrayNew,
                       [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, 1, rowsFit)); }));
  EXPECT_FALSE(Requests(Channel::ArrayNew,
                        [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, 1, rowsFit + 1)); }));
  EXPECT_FALSE(
      Requests(Channel::ArrayNew, [&] { EXPECT_FALSE(grid.InitGrid(0, 0, 1, 1, 1, -2)); }));
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(grid.GetZones(), nullptr);
}

TEST(Limits, ExtendedGridLeavesARowBeyondThirtyTwoBitsNull) {
  int const columnsFit = static_cast<int>(UINT_MAX / sizeof(VornTreatmentZoneEx));
  VornTreatmentGridEx grid;
  // The row table is the first array, the row the second: only the row may fail.
  {
    ScopedFailure row(Channel::ArrayNew, 2);
    EXPECT_TRUE(grid.InitGrid(0, 0, 1, 1, columnsFit, 1));
    EXPECT_TRUE(Fired(Channel::ArrayNew));  // the largest row that fits was asked for
  }
  ASSERT_NE(grid.GetZones(), nullptr);
  EXPECT_EQ(grid.GetZones()[0], nullptr);
  {
    ScopedFailure row(Channel::ArrayNew, 2);
    unsigned long const before = Count(Channel::ArrayNew);
    EXPECT_TRUE(grid.InitGrid(0, 0, 1, 1, columnsFit + 1, 2));
    EXPECT_FALSE(Fired(Channel::ArrayNew));
    EXPECT_EQ(Count(Channel::ArrayNew), before + 1);  // the table only: no short row
  }
  EXPECT_TRUE(grid.IsInit());
  EXPECT_EQ(grid.GetZones()[0], nullptr);
  EXPECT_EQ(grid.GetZones()[1], nullptr);
}

void Shift(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 1000.0;
  *outY = y - 1000.0;
}

TEST(LargeObjects, TenMillionCoordinates) {
  constexpr unsigned int kCount = 10000000;
  VornCoordinateVector v;
  for (unsigned int i = 0; i < kCount; ++i) v.Add(static_cast<double>(i), -static_cast<double>(i));
  ASSERT_EQ(v.Count(), kCount);
  EXPECT_EQ(v.MinX, 0.0);
  EXPECT_EQ(v.MaxX, kCount - 1.0);
  EXPECT_EQ(v.MinY, 1.0 - kCount);
  v.Transform(Shift, nullptr);
  VornCoordinate const* first = v;
  EXPECT_EQ(first[kCount - 1].X, kCount - 1 + 1000.0);
  EXPECT_EQ(v.MaxY, -1000.0);
  VornCoordinateVector const copy(v);
  EXPECT_EQ(copy.Count(), kCount);
  EXPECT_EQ(copy.begin()[4321].Y, -4321.0 - 1000.0);
}

TEST(LargeObjects, TenThousandByTenThousandByteGrid) {
  VornTreatmentGrid grid;
  ASSERT_TRUE(grid.InitGrid(0, 0, 1, 1, 10000, 10000));
  grid.Zones.Add(0, 0.0);
  grid.Zones.Add(1, 95.5);
  grid.SetZoneIndex(9999, 9999, 1);
  grid.SetZoneIndex(0, 5000, 1);
  EXPECT_EQ(grid.GetCellIndex(9999, 9999), 99999999);
  EXPECT_EQ(grid.GetZoneIndex(9999, 9999), 1);
  EXPECT_EQ(grid.GetZone(0, 5000).Rate, 95.5);
  EXPECT_EQ(grid.GetZone(1, 5000).Rate, 0.0);
  VornTreatmentGrid const copy(grid);
  EXPECT_EQ(copy.GetZoneIndex(9999, 9999), 1);
  EXPECT_EQ(copy.Boundbox.MaxX, 10000.0);
}

TEST(LargeObjects, ThreeThousandByThreeThousandRateGrid) {
  VornTreatmentGridEx grid;
  ASSERT_TRUE(grid.InitGrid(0, 0, 2, 2, 3000, 3000));
  for (int row = 0; row < 3000; ++row) ASSERT_NE(grid.GetZones()[row], nullptr) << row;
  grid.SetZoneInfo(2999, 2999, 120.0, 7);
  EXPECT_EQ(grid.GetZone(2999, 2999).Rate, 120.0);
  EXPECT_EQ(grid.GetZone(1500, 1500).Rate, 0.0);
  grid.Transform(Shift, nullptr);
  EXPECT_EQ(grid.CellWidth(), 2.0);
  VornTreatmentGridEx const copy(grid);
  EXPECT_EQ(copy.GetZone(2999, 2999).ZoneNumber, 7);
}

}  // namespace
