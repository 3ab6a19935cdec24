#include <vorn/treatment/treatment_grid.h>

#include <cstring>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;

// A 4 x 3 grid whose cell (c, r) holds 10 * r + c.
void FillNumbered(VornTreatmentGrid& grid) {
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 4; ++column) {
      grid.SetZoneIndex(column, row, static_cast<unsigned char>(10 * row + column));
    }
  }
}

TEST(TreatmentGrid, CellsAreOneRowMajorBuffer) {
  VornTreatmentGrid grid;
  EXPECT_EQ(static_cast<unsigned char*>(grid), nullptr);
  FillNumbered(grid);
  EXPECT_EQ(grid.GetCellIndex(1, 2), 9);
  EXPECT_EQ(grid.GetCellIndex(0, 0), 0);
  unsigned char const* const cells = grid;
  ASSERT_NE(cells, nullptr);
  EXPECT_EQ(cells[9], 21);  // column 1 of row 2
  EXPECT_EQ(cells[grid.GetCellIndex(3, 1)], grid.GetZoneIndex(3, 1));
  static_cast<unsigned char*>(grid)[5] = 77;
  EXPECT_EQ(grid.GetZoneIndex(1, 1), 77);
  EXPECT_EQ(grid.GetType(), TreatmentGrid);
  IVornObject const& object = grid;
  EXPECT_EQ(object.GetType(), 6);
}

TEST(TreatmentGrid, SecondInitGridReplacesTheBufferAndUnInitReleasesIt) {
  VornTreatmentGrid grid;
  FillNumbered(grid);
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 2.0, 2.0, 2, 5));
  EXPECT_EQ(grid.NumColumns(), 2);
  EXPECT_EQ(grid.NumRows(), 5);
  EXPECT_EQ(grid.GetZoneIndex(1, 4), 0);  // fresh cells select the first zone
  grid.UnInit();
  EXPECT_EQ(static_cast<unsigned char*>(grid), nullptr);
}

TEST(TreatmentGrid, BulkWritesCheckInitAndRow) {
  VornTreatmentGrid grid;
  unsigned char bytes[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  char const* const notInit = "Object not initialized";
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZones(bytes); }, notInit, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(0, bytes); }, notInit, 5004));

  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 4, 3));
  grid.SetZones(bytes);
  EXPECT_EQ(std::memcmp(static_cast<unsigned char*>(grid), bytes, 12), 0);
  grid.SetZoneRow(1, bytes + 8);
  EXPECT_EQ(grid.GetZoneIndex(0, 1), 9);
  EXPECT_EQ(grid.GetZoneIndex(3, 1), 12);
  EXPECT_EQ(grid.GetZoneIndex(0, 2), 9);  // the other rows are untouched
  EXPECT_EQ(grid.GetZoneIndex(3, 0), 4);

  char const* const range = "Index out of range";
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(grid.NumRows(), bytes); }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(-1, bytes); }, range, 5002));
  grid.UnInit();
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(5, bytes); }, notInit, 5004));
}

TEST(TreatmentGrid, GetZoneLooksTheByteUpAmongTheZones) {
  VornTreatmentGrid grid;
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
  grid.Zones.Add(VornTreatmentZone(10, 1.5));
  grid.Zones.Add(VornTreatmentZone(20, 2.5));
  grid.SetZoneIndex(1, 0, 1);
  grid.SetZoneIndex(0, 1, 3);
  EXPECT_EQ(grid.GetZone(0, 0).ZoneNumber, 10);
  EXPECT_EQ(grid.GetZone(1, 0).Rate, 2.5);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZone(0, 1); }, "Index out of range", 5002));
}

TEST(TreatmentGrid, CopyHasItsOwnCellsAndZones) {
  VornTreatmentGrid source;
  FillNumbered(source);
  source.Zones.Add(VornTreatmentZone(1, 1.0, vorn_test::W(u"low"), nullptr, 0));
  VornTreatmentGrid copy(source);
  VornTreatmentGrid assigned;
  ASSERT_TRUE(assigned.InitGrid(0.0, 0.0, 1.0, 1.0, 1, 1));
  assigned.Zones.Add(9, 9.0);
  assigned = source;
  for (VornTreatmentGrid* grid : {&copy, &assigned}) {
    ASSERT_NE(static_cast<unsigned char*>(*grid), static_cast<unsigned char*>(source));
    EXPECT_EQ(std::memcmp(static_cast<unsigned char*>(*grid), static_cast<unsigned char*>(source),
                          12), 0);
    ASSERT_EQ(grid->Zones.Count(), 1u);
    EXPECT_NE(&grid->Zones[0], &source.Zones[0]);
    EXPECT_EQ(vorn_test::U16(grid->Zones[0].GetDesignator()), u"low");
    EXPECT_EQ(grid->CellHeight(), 10.0);
    grid->SetZoneIndex(0, 0, 99);
  }
  EXPECT_EQ(source.GetZoneIndex(0, 0), 0);
}

TEST(TreatmentGrid, AllocationFailureIsAFalseResultWithTheBoxSet) {
  VornTreatmentGrid grid;
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_FALSE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  }
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(static_cast<unsigned char*>(grid), nullptr);
  EXPECT_EQ(grid.NumColumns(), 4);
  EXPECT_TRUE(grid.Boundbox.IsInit());
  EXPECT_EQ(grid.Boundbox.MaxY, 130.0);
}

TEST(TreatmentGrid, CellCountsBeyond32BitsFailWithoutAllocating) {
  VornTreatmentGrid grid;
  unsigned long const before = vorn_test::Count(Channel::Malloc);
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 70000, 70000));
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, -1, 3));
  EXPECT_EQ(vorn_test::Count(Channel::Malloc), before);
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(grid.NumColumns(), -1);  // stored as given
  EXPECT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 0, 3));  // an empty buffer is still a buffer
}

TEST(TreatmentGrid, AssignmentThatCannotAllocateThrows) {
  VornTreatmentGrid source;
  FillNumbered(source);
  VornTreatmentGrid target;
  char const* const text = "Unable to initialize Grid";
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_TRUE(ThrowsVornException([&] { target = source; }, text, 5004));
  }
  EXPECT_FALSE(target.IsInit());
  {
    ScopedFailure failure(Channel::Malloc, 1);
    EXPECT_TRUE(ThrowsVornException([&] { VornTreatmentGrid copy(source); }, text, 5004));
  }
}

TEST(TreatmentGrid, CopyThatFailsLateLeaksNothing) {
  VornTreatmentGrid source;
  FillNumbered(source);
  source.Attributes.Add(vorn_test::W(u"name"), 1);
  ScopedFailure failure(Channel::NothrowNew, 1);  // the attribute's copy
  EXPECT_TRUE(ThrowsVornException([&] { VornTreatmentGrid copy(source); }, "Parameter is NULL",
                                  5003));
}

TEST(TreatmentGrid, SelfAssignmentEmptiesZonesAndAttributes) {
  VornTreatmentGrid grid;
  FillNumbered(grid);
  grid.Zones.Add(1, 1.0);
  grid.Attributes.Add(vorn_test::W(u"name"), 1);
  VornTreatmentGrid& alias = grid;
  grid = alias;
  EXPECT_TRUE(grid.IsInit());
  EXPECT_EQ(grid.NumRows(), 3);
  EXPECT_EQ(grid.Zones.Count(), 0u);
  EXPECT_EQ(grid.Attributes.Count(), 0u);
}

}  // namespace
