// Both treatment grids. What they share (the InitGrid box rule, Transform, the frame of
// copying) runs as typed tests on both classes so that they cannot drift apart.
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>

#include <array>
#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

namespace {

using namespace vorn_test;

// A box as MinX, MaxX, MinY, MaxY; a grid's shape as rows, columns, cell height, width.
typedef std::array<double, 4> Quad;
Quad Box(VornBoundbox const& box) { return {box.MinX, box.MaxX, box.MinY, box.MaxY}; }
template <class Grid>
Quad Shape(Grid const& grid) {
  return {double(grid.NumRows()), double(grid.NumColumns()), grid.CellHeight(), grid.CellWidth()};
}

struct Affine {  // x -> sx * x + dx, y -> sy * y + dy, counting the calls
  double sx, sy, dx, dy;
  int calls;
};
void Map(double x, double y, double* outX, double* outY, void* context) {
  Affine* const affine = static_cast<Affine*>(context);
  ++affine->calls;
  *outX = affine->sx * x + affine->dx;
  *outY = affine->sy * y + affine->dy;
}

// One cell as a number, and the channel the cells come from, for either grid.
double CellOf(VornTreatmentGrid const& grid, int c, int r) { return grid.GetZoneIndex(c, r); }
double CellOf(VornTreatmentGridEx const& grid, int c, int r) { return grid.GetZone(c, r).Rate; }
void SetCell(VornTreatmentGrid& grid, int c, int r) { grid.SetZoneIndex(c, r, 7); }
void SetCell(VornTreatmentGridEx& grid, int c, int r) { grid.SetZoneInfo(c, r, 7.0, 7); }
Channel CellChannel(VornTreatmentGrid const&) { return Channel::Malloc; }
Channel CellChannel(VornTreatmentGridEx const&) { return Channel::ArrayNew; }

template <class Grid>
class TreatmentGrids : public ::testing::Test {};
typedef ::testing::Types<VornTreatmentGrid, VornTreatmentGridEx> GridTypes;
TYPED_TEST_SUITE(TreatmentGrids, GridTypes);

TYPED_TEST(TreatmentGrids, InitGridTakesSouthWestHeightWidthColumnsRowsAndUnInitKeepsThem) {
  TypeParam grid;
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  SetCell(grid, 3, 2);
  for (int pass = 0; pass < 2; ++pass, grid.UnInit()) {  // initialised, then after UnInit
    EXPECT_EQ(grid.IsInit(), pass == 0);
    EXPECT_EQ(Box(grid.Boundbox), (Quad{200, 220, 100, 130}));
    EXPECT_EQ(Shape(grid), (Quad{3, 4, 10, 5}));
  }
  {
    ScopedFailure failure(CellChannel(grid), 1);
    EXPECT_FALSE(grid.InitGrid(0.0, 1.0, 2.0, 3.0, 5, 6));
  }
  EXPECT_FALSE(grid.IsInit());
  EXPECT_TRUE(grid.Boundbox.IsInit());  // the box and counts are set all the same
  EXPECT_EQ(Box(grid.Boundbox), (Quad{1, 16, 0, 12}));
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 4, 3));
  EXPECT_EQ(CellOf(grid, 3, 2), 0.0);  // fresh cells, not the old ones
}

TYPED_TEST(TreatmentGrids, TransformMovesOnlyTheTwoCornersWithoutReordering) {
  TypeParam grid;
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  Affine shift{1, 1, 10, 20, 0};
  grid.Transform(Map, &shift);
  EXPECT_EQ(shift.calls, 2);
  EXPECT_EQ(Box(grid.Boundbox), (Quad{210, 230, 120, 150}));
  EXPECT_EQ(Shape(grid), (Quad{3, 4, 10, 5}));
  Affine mirrorAndDouble{-2, 2, 0, 0, 0};
  grid.UnInit();  // the init flag is not tested
  grid.Transform(Map, &mirrorAndDouble);
  EXPECT_EQ(Box(grid.Boundbox), (Quad{-420, -460, 240, 300}));
  EXPECT_EQ(Shape(grid), (Quad{3, 4, 20, -10}));
  EXPECT_TRUE(ThrowsVornException([&] { grid.Transform(nullptr, &shift); }, "Parameter is NULL",
                                  5003));
  EXPECT_EQ(Box(grid.Boundbox), (Quad{-420, -460, 240, 300}));
}

TYPED_TEST(TreatmentGrids, CopyRefusesABadSourceTakesTheExactBoxAndOwnsItsCells) {
  TypeParam target;
  ASSERT_TRUE(target.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
  TypeParam const empty;
  EXPECT_TRUE(ThrowsVornException([&] { TypeParam copy(empty); }, "Object not initialized", 5004));
  EXPECT_TRUE(ThrowsVornException([&] { target = empty; }, "Object not initialized", 5004));
  EXPECT_TRUE(target.IsInit());  // refused before anything changed

  TypeParam source;
  ASSERT_TRUE(source.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  SetCell(source, 2, 1);
  source.Boundbox.Set(-1, 7, -2, 9);  // not what InitGrid would compute
  source.Tag = "grid";
  source.Attributes.Add(W(u"n"), 5);
  TypeParam copy(source);
  target = source;
  for (TypeParam* grid : {&copy, &target}) {
    EXPECT_EQ(Box(grid->Boundbox), (Quad{-1, 7, -2, 9}));
    EXPECT_STREQ(grid->Tag.c_str(), "grid");
    EXPECT_EQ(grid->Attributes.Count(), 1u);
    EXPECT_EQ(CellOf(*grid, 2, 1), 7.0);
    SetCell(*grid, 0, 0);
  }
  EXPECT_EQ(CellOf(source, 0, 0), 0.0);
  TypeParam& alias = target;
  target = alias;  // no self-assignment test: attributes and cells reset, the Tag stays
  EXPECT_STREQ(target.Tag.c_str(), "grid");
  EXPECT_EQ(target.Attributes.Count(), 0u);
  EXPECT_EQ(CellOf(target, 2, 1), 0.0);

  auto assignFailing = [&](Channel channel) {
    ScopedFailure failure(channel, 1);
    target = source;
  };
  EXPECT_TRUE(ThrowsVornException([&] { assignFailing(CellChannel(source)); },
                                  "Unable to initialize Grid", 5004));
  ScopedFailure failure(Channel::NothrowNew, 1);  // late: the attribute, after the cells
  EXPECT_TRUE(ThrowsVornException([&] { TypeParam late(source); }, "Parameter is NULL", 5003));
}

unsigned char* Cells(VornTreatmentGrid const& grid) { return grid; }

TEST(TreatmentGrid, CellsAreOneRowMajorBufferAndBulkWritesCheckInitRowAndSource) {
  VornTreatmentGrid grid;
  unsigned char bytes[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  EXPECT_EQ(Cells(grid), nullptr);
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZones(bytes); }, "Object not initialized", 5004));
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  EXPECT_EQ(static_cast<IVornObject const&>(grid).GetType(), 6);
  grid.SetZones(bytes);
  grid.SetZoneRow(1, bytes + 8);
  EXPECT_EQ(grid.GetCellIndex(1, 2), 9);
  EXPECT_EQ(grid.GetZoneIndex(1, 2), 10);
  unsigned char const expected[12] = {1, 2, 3, 4, 9, 10, 11, 12, 9, 10, 11, 12};
  EXPECT_EQ(std::memcmp(Cells(grid), expected, 12), 0);

  char const* const range = "Index out of range";
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(3, nullptr); }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(-1, bytes); }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(0, nullptr); }, "Parameter is NULL", 5003));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZones(nullptr); }, "Parameter is NULL", 5003));
  grid.UnInit();
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneRow(5, bytes); }, "Object not initialized",
                                  5004));
}

TEST(TreatmentGrid, GetZoneLooksTheByteUpAmongItsOwnZones) {
  VornTreatmentGrid grid;
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
  grid.Zones.Add(10, 1.5);
  grid.Zones.Add(20, 2.5);
  grid.SetZoneIndex(1, 0, 1);
  grid.SetZoneIndex(0, 1, 2);
  EXPECT_EQ(grid.GetZone(1, 0).ZoneNumber, 20);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZone(0, 1); }, "Index out of range", 5002));
  VornTreatmentGrid copy(grid);
  EXPECT_NE(&copy.GetZone(1, 0), &grid.GetZone(1, 0));
  VornTreatmentGrid& alias = copy;
  copy = alias;  // no self-assignment test: the zones go
  EXPECT_EQ(copy.Zones.Count(), 0u);
}

TEST(TreatmentGridLimits, SizesBeyond32BitsAreNeverRequested) {
  VornTreatmentGrid grid;
  VornTreatmentGridEx gridEx;
  unsigned long const mallocs = Count(Channel::Malloc);
  unsigned long const arrays = Count(Channel::ArrayNew);
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 70000, 70000));
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, -65536, -65536));  // 2^32 once multiplied
  EXPECT_FALSE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, -1, 3));
  EXPECT_FALSE(gridEx.InitGrid(0.0, 0.0, 1.0, 1.0, 3, -1));
  // A row one cell longer than 32 bits of bytes holds: the table is there, the rows not.
  int const tooManyColumns = static_cast<int>(UINT32_MAX / sizeof(VornTreatmentZoneEx) + 1);
  ASSERT_TRUE(gridEx.InitGrid(0.0, 0.0, 1.0, 1.0, tooManyColumns, 2));
  EXPECT_EQ(Count(Channel::Malloc), mallocs);
  EXPECT_EQ(Count(Channel::ArrayNew), arrays + 1);
  EXPECT_EQ(gridEx.GetZonesInRow(1), nullptr);
  EXPECT_EQ(grid.NumColumns(), -1);  // stored as given
  EXPECT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 0, 3));  // an empty buffer is still a buffer
}

// Checks that every cell accessor at (column, row) throws the given exception.
void ExpectEveryAccessorThrows(VornTreatmentGridEx& grid, unsigned column, unsigned row,
                               char const* message, int code) {
  SCOPED_TRACE(testing::Message() << "cell " << column << ", " << row);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZone(column, row); }, message, code));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneInfo(column, row, 1.0, 1); }, message, code));
  EXPECT_TRUE(ThrowsVornException([&] { grid.SetZoneInfo(column, row, VornTreatmentZoneEx()); },
                                  message, code));
}

TEST(TreatmentGridEx, AccessorsReachOneCellAfterCheckingThePositionAndTheRow) {
  VornTreatmentGridEx grid;
  ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  EXPECT_EQ(static_cast<IVornObject const&>(grid).GetType(), 8);
  EXPECT_TRUE(grid.GetZone(2, 1).Rate == 0.0 && grid.GetZone(2, 1).ZoneNumber == 0);
  grid.SetZoneInfo(2, 1, 12.5, 4);
  EXPECT_EQ(grid.GetZones()[1][2].ZoneNumber, 4);
  grid.GetZonesInRow(1)[2] = VornTreatmentZoneEx(3.0, 3);  // rows are writable
  grid.SetZoneInfo(0, 1, VornTreatmentZoneEx(7.25, 9));
  EXPECT_EQ(grid.GetZone(2, 1).Rate, 3.0);
  EXPECT_EQ(grid.GetZone(0, 1).ZoneNumber, 9);
  ExpectEveryAccessorThrows(grid, 3, 0, "Index out of range", 5002);
  ExpectEveryAccessorThrows(grid, 0, 2, "Index out of range", 5002);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZonesInRow(-1u); }, "Index out of range", 5002));
  grid.UnInit();  // counts kept, rows gone
  ExpectEveryAccessorThrows(grid, 2, 1, "Object not initialized", 5004);
  EXPECT_TRUE(ThrowsVornException([&] { grid.GetZonesInRow(1); }, "Object not initialized", 5004));
}

TEST(TreatmentGridEx, ARowThatCannotBeAllocatedStaysNullAndCopiesSkipIt) {
  VornTreatmentGridEx grid;
  {
    ScopedFailure failure(Channel::ArrayNew, 2);  // row 0; the table was the first
    ASSERT_TRUE(grid.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  }
  EXPECT_EQ(grid.GetZonesInRow(0), nullptr);
  ExpectEveryAccessorThrows(grid, 0, 0, "Object not initialized", 5004);
  grid.SetZoneInfo(1, 1, 2.0, 2);
  VornTreatmentGridEx target;
  {
    ScopedFailure failure(Channel::ArrayNew, 3);  // the target's row 1
    target = grid;
  }
  EXPECT_EQ(target.GetZonesInRow(1), nullptr);
  EXPECT_EQ(target.GetZone(2, 0).Rate, 0.0);
  EXPECT_EQ(VornTreatmentGridEx(grid).GetZone(1, 1).Rate, 2.0);
}

}  // namespace
