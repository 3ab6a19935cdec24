#include <vorn/core/boundbox.h>

#include <limits>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"

namespace {

using vorn_test::ThrowsVornException;

// The box as text, with a "-" in front while it is uninitialised.
std::string Box(VornBoundbox const& b) {
  std::ostringstream out;
  out << (b.IsInit() ? "" : "-") << b.MinX << ".." << b.MaxX << " x " << b.MinY << ".." << b.MaxY;
  return out.str();
}

// Each query runs both of its overloads, so that they cannot drift apart.
bool Contains(VornBoundbox const& box, double x, double y) {
  bool const inside = box.IsPointInBoundbox(x, y);
  EXPECT_EQ(box.IsPointInBoundbox(VornCoordinate{x, y}), inside) << x << ", " << y;
  return inside;
}

bool Intersects(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  bool const overlap = box.HasIntersection(minX, maxX, minY, maxY);
  EXPECT_EQ(box.HasIntersection(VornBoundbox(minX, maxX, minY, maxY)), overlap) << minX;
  return overlap;
}

TEST(Boundbox, UninitialisedBoxRefusesQueriesAndResetKeepsStaleValues) {
  EXPECT_EQ(Box(VornBoundbox()), "-0..0 x 0..0");
  VornBoundbox box(1, 2, 3, 4);  // minX, maxX, minY, maxY
  box.Reset();
  EXPECT_EQ(Box(box), "-1..2 x 3..4");
  char const* const message = "Boundbox not initialized";
  EXPECT_TRUE(ThrowsVornException([&] { box.IsPointInBoundbox(0, 0); }, message, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.IsPointInBoundbox({0, 0}); }, message, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.HasIntersection(0, 1, 0, 1); }, message, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.HasIntersection(VornBoundbox()); }, message, 5004));
  box.AddCoordinate(5, 7);  // the first point replaces the stale numbers
  EXPECT_EQ(Box(box), "5..5 x 7..7");
}

TEST(Boundbox, AddCoordinateWidensButANanNever) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  VornBoundbox box;
  for (VornCoordinate c : {VornCoordinate{1, 1}, {-1, 9}, {8, -2}, {nan, nan}}) {
    box.AddCoordinate(c);
  }
  EXPECT_EQ(Box(box), "-1..8 x -2..9");
  box.Reset();
  box.AddCoordinate(nan, 2);  // a NaN first point is the extent
  EXPECT_EQ(Box(box), "nan..nan x 2..2");
  box.Set(10, 0, 10, 0);  // accepted with min above max: then nothing is inside
  EXPECT_FALSE(Contains(box, 5, 5));
  box.AddCoordinate(5, 5);  // the maximum is tested only for a value not below the minimum
  EXPECT_EQ(Box(box), "5..0 x 5..0");
}

TEST(Boundbox, AddCoordinatesFromAnArraySkipsTheLastCoordinate) {
  VornCoordinate points[] = {{1, 1}, {2, 3}, {100, 100}};
  VornBoundbox box;
  for (int count : {1, 0, -5}) box.AddCoordinates(points, count);
  EXPECT_FALSE(box.IsInit());
  box.AddCoordinates(points, 3);
  EXPECT_EQ(Box(box), "1..2 x 1..3");
  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> all;
  ASSERT_TRUE(all.push_back(points[2]));
  box.AddCoordinates(all);  // the vector form takes every element
  EXPECT_EQ(Box(box), "1..100 x 1..100");
}

TEST(Boundbox, AddBoundboxWidensEachBoundAndIgnoresTheArgumentsFlag) {
  VornBoundbox box;
  box.AddBoundbox(3, 1, 4, 2);  // taken as given while uninitialised
  box.AddBoundbox(2, 2, 5, 5);
  EXPECT_EQ(Box(box), "2..2 x 4..5");
  box.AddBoundbox(VornBoundbox());  // the default argument's zeros count
  EXPECT_EQ(Box(box), "0..2 x 0..5");
}

TEST(Boundbox, EdgesAndCornersAreInsideAndTouchingBoxesIntersect) {
  VornBoundbox box(0, 10, 0, 10);
  EXPECT_TRUE(Contains(box, 10, 10));
  EXPECT_FALSE(Contains(box, 10.0000001, 5) || Contains(box, 5, -0.0000001));
  EXPECT_TRUE(Intersects(box, 10, 20, 10, 20) && Intersects(box, -5, 0, 2, 3));
  EXPECT_FALSE(Intersects(box, 10.5, 20, 0, 10) || Intersects(box, -5, -0.5, 0, 10));
  EXPECT_FALSE(Intersects(box, 0, 10, 10.5, 20) || Intersects(box, 0, 10, -5, -0.5));
  EXPECT_TRUE(box.HasIntersection(VornBoundbox()));  // the argument's flag is not looked at
  box.MaxX = 20;  // the references write through
  EXPECT_TRUE(Contains(box, 15, 5));
}

TEST(Boundbox, AssignmentNeedsAnInitialisedSourceAndNeverRebinds) {
  VornBoundbox target;
  EXPECT_TRUE(ThrowsVornException([&] { target = VornBoundbox(); }, "Boundbox not initialized",
                                  5004));
  EXPECT_FALSE(target.IsInit());
  VornBoundbox source(5, 6, 7, 8);
  EXPECT_EQ(&(target = source), &target);
  source.MinX = -100;
  EXPECT_EQ(Box(target), "5..6 x 7..8");
  // The member-wise copy the list collections make reads the source through its
  // references, while its own queries use the values it copied.
  VornBoundbox const copy(source);
  source.Set(100, 110, 100, 110);
  EXPECT_EQ(Box(copy), "100..110 x 100..110");
  EXPECT_TRUE(Contains(copy, 5, 7));
}

}  // namespace
