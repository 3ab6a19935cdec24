// The raster geometry that both grids share: the InitGrid box rule and Transform. Every
// case runs on both grid classes so that they cannot drift apart.
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

namespace {

using vorn_test::ThrowsVornException;

template <class Grid>
class GridGeometry : public ::testing::Test {};

typedef ::testing::Types<VornTreatmentGrid, VornTreatmentGridEx> GridTypes;
TYPED_TEST_SUITE(GridGeometry, GridTypes);

void ExpectExtent(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  EXPECT_EQ(box.MinX, minX);
  EXPECT_EQ(box.MaxX, maxX);
  EXPECT_EQ(box.MinY, minY);
  EXPECT_EQ(box.MaxY, maxY);
}

struct Shift {
  double dx;
  double dy;
  int calls;
};

void ShiftBy(double x, double y, double* outX, double* outY, void* context) {
  Shift* const shift = static_cast<Shift*>(context);
  ++shift->calls;
  *outX = x + shift->dx;
  *outY = y + shift->dy;
}

void Double(double x, double y, double* outX, double* outY, void*) {
  *outX = 2 * x;
  *outY = 2 * y;
}

void MirrorX(double x, double y, double* outX, double* outY, void*) {
  *outX = -x;
  *outY = y;
}

TYPED_TEST(GridGeometry, InitGridTakesSouthWestCornerHeightWidthColumnsRows) {
  TypeParam grid;
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(grid.NumRows(), 0);
  EXPECT_EQ(grid.NumColumns(), 0);

  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  EXPECT_TRUE(grid.IsInit());
  EXPECT_TRUE(grid.Boundbox.IsInit());
  ExpectExtent(grid.Boundbox, 200, 220, 100, 130);
  EXPECT_EQ(grid.NumRows(), 3);
  EXPECT_EQ(grid.NumColumns(), 4);
  EXPECT_EQ(grid.CellHeight(), 10.0);
  EXPECT_EQ(grid.CellWidth(), 5.0);
}

TYPED_TEST(GridGeometry, UnInitKeepsBoxCountsAndSizes) {
  TypeParam grid;
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  grid.UnInit();
  EXPECT_FALSE(grid.IsInit());
  EXPECT_EQ(grid.NumRows(), 3);
  EXPECT_EQ(grid.NumColumns(), 4);
  EXPECT_EQ(grid.CellHeight(), 10.0);
  EXPECT_EQ(grid.CellWidth(), 5.0);
  ExpectExtent(grid.Boundbox, 200, 220, 100, 130);
  grid.UnInit();  // a second release is harmless
  EXPECT_FALSE(grid.IsInit());
}

TYPED_TEST(GridGeometry, TransformMovesTheCornersAndKeepsTheCellSize) {
  TypeParam grid;
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  Shift shift{10, 20, 0};
  grid.Transform(ShiftBy, &shift);
  EXPECT_EQ(shift.calls, 2);
  ExpectExtent(grid.Boundbox, 210, 230, 120, 150);
  EXPECT_EQ(grid.CellHeight(), 10.0);
  EXPECT_EQ(grid.CellWidth(), 5.0);
  EXPECT_TRUE(grid.IsInit());
}

TYPED_TEST(GridGeometry, TransformRecomputesTheCellsFromTheUnorderedBox) {
  TypeParam grid;
  ASSERT_TRUE(grid.InitGrid(100.0, 200.0, 10.0, 5.0, 4, 3));
  grid.Transform(Double, nullptr);
  ExpectExtent(grid.Boundbox, 400, 440, 200, 260);
  EXPECT_EQ(grid.CellHeight(), 20.0);
  EXPECT_EQ(grid.CellWidth(), 10.0);
  grid.Transform(MirrorX, nullptr);  // the mirrored axis is kept unordered
  ExpectExtent(grid.Boundbox, -400, -440, 200, 260);
  EXPECT_EQ(grid.CellWidth(), -10.0);
  EXPECT_EQ(grid.CellHeight(), 20.0);
}

TYPED_TEST(GridGeometry, TransformWorksWithoutCellsAndRefusesANullCallback) {
  TypeParam grid;
  grid.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2);
  grid.UnInit();
  Shift shift{1, 1, 0};
  grid.Transform(ShiftBy, &shift);  // the init flag is not tested
  ExpectExtent(grid.Boundbox, 1, 3, 1, 3);
  EXPECT_TRUE(ThrowsVornException([&] { grid.Transform(nullptr, nullptr); }, "Parameter is NULL",
                                  5003));
  ExpectExtent(grid.Boundbox, 1, 3, 1, 3);
}

TYPED_TEST(GridGeometry, CopyingAnUninitialisedGridThrows) {
  TypeParam const empty;
  char const* const text = "Object not initialized";
  EXPECT_TRUE(ThrowsVornException([&] { TypeParam copy(empty); }, text, 5004));
  TypeParam target;
  ASSERT_TRUE(target.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2));
  EXPECT_TRUE(ThrowsVornException([&] { target = empty; }, text, 5004));
  EXPECT_TRUE(target.IsInit());  // refused before anything changed
}

TYPED_TEST(GridGeometry, CopyTakesTheSourcesExactBoxAndTag) {
  TypeParam source;
  ASSERT_TRUE(source.InitGrid(0.0, 0.0, 1.0, 1.0, 3, 2));
  source.Boundbox.Set(-1, 7, -2, 9);  // not what InitGrid would compute
  source.Tag = "grid";
  source.Attributes.Add(vorn_test::W(u"n"), 5);
  TypeParam copy(source);
  TypeParam assigned;
  assigned = source;
  for (TypeParam const* grid : {&copy, &assigned}) {
    EXPECT_TRUE(grid->IsInit());
    ExpectExtent(grid->Boundbox, -1, 7, -2, 9);
    EXPECT_EQ(grid->NumRows(), 2);
    EXPECT_EQ(grid->NumColumns(), 3);
    EXPECT_STREQ(grid->Tag.c_str(), "grid");
    EXPECT_EQ(grid->Attributes.Count(), 1u);
  }
}

}  // namespace
