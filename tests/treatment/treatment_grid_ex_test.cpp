#include <vorn/treatment/treatment_grid_ex.h>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;

void ExpectCell(VornTreatmentZoneEx const& cell, double rate, int zoneNumber) {
  EXPECT_EQ(cell.Rate, rate);
  EXPECT_EQ(cell.ZoneNumber, zoneNumber);
}

TEST(TreatmentGridEx, EveryAccessorChecksItsPosition) {
  VornTreatmentGridEx grid;
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  char const* const text = "Index out of range";
  VornTreatmentZoneEx const cell(1.0, 1);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZone(3, 0); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZone(0, 2); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneInfo(3, 0, cell); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneInfo(0, 2, 1.0, 1); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZonesInRow(2); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZonesInRow(-1u); }, text, 5002));
}

TEST(TreatmentGridEx, CellsStartAsDefaultsAndBothSettersWriteTheAddressedCell) {
  VornTreatmentGridEx grid;
  EXPECT_EQ(grid.GetZones(), nullptr);
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  ExpectCell(grid.GetZone(2, 1), 0.0, 0);
  EXPECT_EQ(grid.GetZones()[1], grid.GetZonesInRow(1));
  IVornObject const& object = grid;
  EXPECT_EQ(object.GetType(), 8);
  grid.SetZoneInfo(1, 0, 12.5, 4);
  grid.SetZoneInfo(2, 1, VornTreatmentZoneEx(7.25, 9));
  ExpectCell(grid.GetZonesInRow(0)[1], 12.5, 4);
  ExpectCell(grid.GetZones()[1][2], 7.25, 9);
  ExpectCell(grid.GetZone(2, 1), 7.25, 9);
  ExpectCell(grid.GetZone(1, 1), 0.0, 0);
  grid.GetZonesInRow(1)[0] = VornTreatmentZoneEx(3.0, 3);  // rows are writable
  ExpectCell(grid.GetZone(0, 1), 3.0, 3);
}

TEST(TreatmentGridEx, InitGridAgainStartsFromFreshRows) {
  VornTreatmentGridEx grid;
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  grid.SetZoneInfo(0, 0, 5.0, 5);
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 4, 5));
  ExpectCell(grid.GetZone(0, 0), 0.0, 0);
  ExpectCell(grid.GetZone(3, 4), 0.0, 0);
  grid.UnInit();
  EXPECT_EQ(grid.GetZones(), nullptr);
}

TEST(TreatmentGridEx, CopyHasItsOwnRows) {
  VornTreatmentGridEx source;
  ASSERT_TRUE(source.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  source.SetZoneInfo(2, 1, 8.5, 2);
  VornTreatmentGridEx copy(source);
  VornTreatmentGridEx assigned;
  ASSERT_TRUE(assigned.InitGrid(0.0, 0.0, 1.0, 1.0, 7, 7));
  assigned = source;
  for (VornTreatmentGridEx* grid : {&copy, &assigned}) {
    EXPECT_EQ(grid->NumColumns(), 3);
    ExpectCell(grid->GetZone(2, 1), 8.5, 2);
    EXPECT_NE(grid->GetZonesInRow(1), source.GetZonesInRow(1));
    grid->SetZoneInfo(2, 1, 1.0, 1);
  }
  ExpectCell(source.GetZone(2, 1), 8.5, 2);
}

TEST(TreatmentGridEx, RowTableFailureIsAFalseResult) {
  VornTreatmentGridEx grid;
  {
    ScopedFailure failure(Channel::ArrayNew, 1);
    EXPECT_FALSE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  }
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(grid.GetZones(), nullptr);
  EXPECT_EQ(grid.Boundbox.MaxX, 220.0);
  EXPECT_EQ(grid.NumRows(), 3);
}

TEST(TreatmentGridEx, RowFailureLeavesANullRowUnreported) {
  VornTreatmentGridEx grid;
  {
    ScopedFailure failure(Channel::ArrayNew, 2);  // row 0; the table was the first
    ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  }
  EXPECT_TRUE(grid.IsInit());
  EXPECT_EQ(grid.GetZonesInRow(0), nullptr);
  ASSERT_NE(grid.GetZonesInRow(1), nullptr);
  grid.SetZoneInfo(1, 1, 2.0, 2);

  // Copies skip the missing row on either side.
  VornTreatmentGridEx copy(grid);
  ExpectCell(copy.GetZone(1, 1), 2.0, 2);
  ExpectCell(copy.GetZone(1, 0), 0.0, 0);
  VornTreatmentGridEx target;
  {
    ScopedFailure failure(Channel::ArrayNew, 3);  // the target's row 1
    target = copy;
  }
  EXPECT_EQ(target.GetZonesInRow(1), nullptr);
  ExpectCell(target.GetZone(2, 0), 0.0, 0);
}

TEST(TreatmentGridEx, SizesBeyond32BitsAreNeverRequested) {
  VornTreatmentGridEx grid;
  unsigned long const before = vorn_test::Count(Channel::ArrayNew);
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, -1));
  EXPECT_EQ(vorn_test::Count(Channel::ArrayNew), before);
  // 300 million cells of a row need more than 32 bits: the table is there, the rows not.
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 300000000, 2));
  EXPECT_EQ(vorn_test::Count(Channel::ArrayNew), before + 1);
  EXPECT_EQ(grid.GetZonesInRow(0), nullptr);
  EXPECT_EQ(grid.GetZonesInRow(1), nullptr);
}

TEST(TreatmentGridEx, AssignmentThatCannotAllocateThrows) {
  VornTreatmentGridEx source;
  ASSERT_TRUE(source.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  VornTreatmentGridEx target;
  char const* const text = "Unable to initialize Grid";
  ScopedFailure failure(Channel::ArrayNew, 1);
  EXPECT_TRUE(ThrowsVornException([&] { target = source; }, text, 5004));
  EXPECT_FALSE(target.IsInit());
}

}  // namespace
