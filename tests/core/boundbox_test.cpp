#include <vorn/core/boundbox.h>

#include <limits>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"

namespace {

using vorn_test::ThrowsVornException;

double const kNan = std::numeric_limits<double>::quiet_NaN();
char const* const kNotInitialized = "Boundbox not initialized";

void ExpectExtent(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  EXPECT_EQ(box.MinX, minX);
  EXPECT_EQ(box.MaxX, maxX);
  EXPECT_EQ(box.MinY, minY);
  EXPECT_EQ(box.MaxY, maxY);
}

// Both containment overloads, so that they cannot drift apart.
void ExpectContains(VornBoundbox const& box, double x, double y, bool inside) {
  EXPECT_EQ(box.IsPointInBoundbox(x, y), inside) << x << ", " << y;
  EXPECT_EQ(box.IsPointInBoundbox(VornCoordinate{x, y}), inside) << x << ", " << y;
}

// Both intersection overloads, so that they cannot drift apart.
void ExpectIntersects(VornBoundbox const& box, double minX, double maxX, double minY, double maxY,
                      bool overlap) {
  EXPECT_EQ(box.HasIntersection(minX, maxX, minY, maxY), overlap);
  EXPECT_EQ(box.HasIntersection(VornBoundbox(minX, maxX, minY, maxY)), overlap);
}

void ExpectQueriesRefused(VornBoundbox const& box) {
  VornCoordinate const origin{0, 0};
  VornBoundbox const unit(0, 1, 0, 1);
  EXPECT_TRUE(ThrowsVornException([&] { box.IsPointInBoundbox(0, 0); }, kNotInitialized, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.IsPointInBoundbox(origin); }, kNotInitialized, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.HasIntersection(0, 1, 0, 1); }, kNotInitialized, 5004));
  EXPECT_TRUE(ThrowsVornException([&] { box.HasIntersection(unit); }, kNotInitialized, 5004));
}

TEST(Boundbox, UninitialisedBoxRefusesQueriesAndResetKeepsStaleValues) {
  VornBoundbox box;
  EXPECT_FALSE(box.IsInit());
  ExpectExtent(box, 0, 0, 0, 0);
  ExpectQueriesRefused(box);

  box.Set(1, 2, 3, 4);  // minX, maxX, minY, maxY
  EXPECT_TRUE(box.IsInit());
  box.Reset();
  ExpectExtent(box, 1, 2, 3, 4);
  ExpectQueriesRefused(box);
  box.AddCoordinate(5, 7);
  ExpectExtent(box, 5, 5, 7, 7);
  ExpectContains(box, 5, 7, true);
}

TEST(Boundbox, AddCoordinateWidensButNanNever) {
  VornBoundbox box;
  box.AddCoordinate(VornCoordinate{1, 1});
  box.AddCoordinate(-1, 9);
  box.AddCoordinate(8, -2);
  box.AddCoordinate(kNan, kNan);
  ExpectExtent(box, -1, 8, -2, 9);

  VornBoundbox poisoned;
  poisoned.AddCoordinate(kNan, 2);  // a NaN first point is the extent
  EXPECT_TRUE(poisoned.IsInit());
  EXPECT_NE(poisoned.MinX, poisoned.MinX);
}

TEST(Boundbox, AddCoordinateTestsTheMaximumOnlyWhenNotBelowTheMinimum) {
  VornBoundbox box(10, 0, 10, 0);  // accepted with min above max
  ExpectContains(box, 5, 5, false);
  ExpectContains(box, 10, 10, false);
  box.AddCoordinate(5, 5);
  ExpectExtent(box, 5, 0, 5, 0);
}

TEST(Boundbox, AddCoordinatesFromAnArraySkipsTheLastCoordinate) {
  VornCoordinate points[] = {{1, 1}, {2, 3}, {100, 100}};
  VornBoundbox box;
  box.AddCoordinates(points, 3);
  ExpectExtent(box, 1, 2, 1, 3);

  VornBoundbox untouched;
  for (int count : {1, 0, -5}) untouched.AddCoordinates(points, count);
  untouched.AddCoordinates(nullptr, 1);  // never dereferenced
  EXPECT_FALSE(untouched.IsInit());

  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> all;
  ASSERT_TRUE(all.push_back(points[0]) && all.push_back(points[2]));
  VornBoundbox fromVector;
  fromVector.AddCoordinates(all);
  ExpectExtent(fromVector, 1, 100, 1, 100);
}

TEST(Boundbox, AddBoundboxWidensEachBoundAndIgnoresTheArgumentsFlag) {
  VornBoundbox box;
  box.AddBoundbox(3, 1, 4, 2);  // taken as given while uninitialised
  ExpectExtent(box, 3, 1, 4, 2);
  box.AddBoundbox(2, 2, 5, 5);
  ExpectExtent(box, 2, 2, 4, 5);

  VornBoundbox five(5, 6, 5, 6);
  five.AddBoundbox(VornBoundbox());  // the argument's zeros count
  ExpectExtent(five, 0, 6, 0, 6);
  VornBoundbox stale(-9, 9, -9, 9);
  stale.Reset();
  five.AddBoundbox(stale);
  ExpectExtent(five, -9, 9, -9, 9);
}

TEST(Boundbox, EdgesAndCornersAreInside) {
  VornBoundbox box(0, 10, 0, 10);
  ExpectContains(box, 10, 10, true);
  ExpectContains(box, -0.0, 0, true);
  ExpectContains(box, 10.0000001, 5, false);
  ExpectContains(box, 5, -0.0000001, false);
  ExpectContains(box, kNan, 5, false);
  box.MaxX = 20;  // the references write through
  ExpectContains(box, 15, 5, true);
}

TEST(Boundbox, TouchingBoxesIntersect) {
  VornBoundbox box(0, 10, 0, 10);
  ExpectIntersects(box, 10, 20, 10, 20, true);  // corner
  ExpectIntersects(box, -5, 0, 2, 3, true);     // edge
  ExpectIntersects(box, -5, 20, -5, 20, true);  // around
  ExpectIntersects(box, 10.5, 20, 0, 10, false);
  ExpectIntersects(box, -5, -0.5, 0, 10, false);
  ExpectIntersects(box, 0, 10, 10.5, 20, false);
  ExpectIntersects(box, 0, 10, -5, -0.5, false);
  ExpectIntersects(VornBoundbox(5, 5, 5, 5), 5, 6, 0, 5, true);
  EXPECT_TRUE(box.HasIntersection(VornBoundbox()));  // the argument's flag is not looked at
}

TEST(Boundbox, AssignmentNeedsAnInitialisedSourceAndNeverRebinds) {
  VornBoundbox target(1, 2, 3, 4);
  EXPECT_TRUE(ThrowsVornException([&] { target = VornBoundbox(); }, kNotInitialized, 5004));
  ExpectExtent(target, 1, 2, 3, 4);

  VornBoundbox fresh;
  VornBoundbox source(5, 6, 7, 8);
  EXPECT_EQ(&(fresh = source), &fresh);
  EXPECT_TRUE(fresh.IsInit());
  source.MinX = -100;
  ExpectExtent(fresh, 5, 6, 7, 8);
}

// The copy the list collections make: the copy's references read the source, while its
// own queries use the values it copied.
TEST(Boundbox, MemberwiseCopyKeepsItsReferencesOnTheSource) {
  VornBoundbox source(0, 10, 0, 10);
  VornBoundbox copy(source);
  source.Set(100, 110, 100, 110);
  ExpectExtent(copy, 100, 110, 100, 110);
  ExpectContains(copy, 5, 5, true);
  EXPECT_FALSE(source.HasIntersection(copy));
  VornBoundbox widened(50, 50, 50, 50);
  widened.AddBoundbox(copy);
  ExpectExtent(widened, 50, 110, 50, 110);
}

}  // namespace
