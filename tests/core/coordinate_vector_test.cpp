#include <vorn/core/coordinate_vector.h>

#include <cmath>
#include <initializer_list>
#include <vector>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;

char const* const kNull = "Parameter is NULL";
char const* const kNotInitialized = "Boundbox not initialized";

void ExpectCoords(VornCoordinateVector const& v, std::initializer_list<VornCoordinate> expected) {
  ASSERT_EQ(v.Count(), expected.size());
  VornCoordinate const* actual = v;
  for (VornCoordinate const& c : expected) {
    EXPECT_TRUE(actual->X == c.X && actual->Y == c.Y) << "index " << (actual - v.begin());
    ++actual;
  }
}

void ExpectExtent(VornBoundbox const& box, double minX, double maxX, double minY, double maxY) {
  EXPECT_TRUE(box.IsInit());
  EXPECT_TRUE(box.MinX == minX && box.MaxX == maxX && box.MinY == minY && box.MaxY == maxY)
      << box.MinX << ".." << box.MaxX << " x " << box.MinY << ".." << box.MaxY;
}

VornCoordinateVector Make(std::initializer_list<VornCoordinate> coords) {
  VornCoordinateVector v;
  for (VornCoordinate const& c : coords) v.Add(c);
  return v;
}

TEST(CoordinateVector, AddAppendsAndWidensTheBox) {
  VornCoordinateVector v;
  EXPECT_EQ(static_cast<VornCoordinate*>(v), nullptr);
  for (int i = 0; i < 10; ++i) v.Add(i, -i);
  v.Add(v.begin()[9]);  // its own element, while the block moves
  EXPECT_EQ(v.Count(), 11u);
  EXPECT_EQ(v.rbegin()->Y, -9);
  EXPECT_EQ((v.rend() - 1)->X, 0);
  ExpectExtent(v, 0, 9, -9, 0);
}

TEST(CoordinateVector, AddRangeTakesEveryCoordinateAndRefusesNull) {
  VornCoordinate points[] = {{1, 1}, {2, 3}, {100, 100}};
  VornCoordinateVector v(points, 3);
  ExpectExtent(v, 1, 100, 1, 100);
  v.AddRange(points, 0);
  v.AddRange(points, -3);
  for (int count : {0, -3, 2}) {
    EXPECT_TRUE(ThrowsVornException([&] { v.AddRange(nullptr, count); }, kNull, 5003));
  }
  ExpectCoords(v, {{1, 1}, {2, 3}, {100, 100}});
  EXPECT_TRUE(ThrowsVornException([] { VornCoordinateVector(nullptr, 0); }, kNull, 5003));
}

TEST(CoordinateVector, AddRangeReservesOnceAndUsesOnlyTheCoordinates) {
  std::vector<VornCoordinate> points(100, VornCoordinate{2, 2});
  VornCoordinateVector source(points.data(), 100);
  source.Set(-50, 50, -50, 50);  // ignored by AddRange
  VornCoordinateVector v = Make({{1, 1}});
  unsigned long const before = vorn_test::Count(Channel::NothrowNew);
  v.AddRange(source);
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew) - before, 1u);
  EXPECT_EQ(v.Count(), 101u);
  ExpectExtent(v, 1, 2, 1, 2);
}

TEST(CoordinateVector, AppendingToItselfDoublesTheCoordinates) {
  VornCoordinate points[] = {{1, 1}, {2, 2}, {3, 3}};
  VornCoordinateVector v(points, 3);  // exactly full, so each append moves the block
  v.AddRange(v);
  v.AddRange(v.begin() + 1, 2);
  ExpectCoords(v, {{1, 1}, {2, 2}, {3, 3}, {1, 1}, {2, 2}, {3, 3}, {2, 2}, {3, 3}});
}

TEST(CoordinateVector, RemoveAtKeepsTheStaleExtentUntilRecalc) {
  VornCoordinateVector v = Make({{1, 1}, {5, 5}});
  EXPECT_TRUE(ThrowsVornException([&] { v.RemoveAt(2); }, "Index out of range", 5002));
  v.RemoveAt(1);
  ExpectCoords(v, {{1, 1}});
  ExpectExtent(v, 1, 5, 1, 5);
  v.RecalcBoundbox();
  ExpectExtent(v, 1, 1, 1, 1);
  VornCoordinateVector empty;
  EXPECT_TRUE(ThrowsVornException([&] { empty.RemoveAt(0); }, "Index out of range", 5002));
}

TEST(CoordinateVector, RemoveDuplicatesCollapsesConsecutiveRunsOnly) {
  VornCoordinateVector v = Make({{0, 0}, {0, 0}, {1, 1}, {1, 1}, {1, 1}, {0, -0.0}});
  v.MaxX = 99;  // the box is left alone
  v.RemoveDuplicates();
  ExpectCoords(v, {{0, 0}, {1, 1}, {0, 0}});
  ExpectExtent(v, 0, 99, 0, 1);

  double const nan = std::nan("");
  VornCoordinateVector nans = Make({{nan, 0}, {nan, 0}, {-0.0, 0}, {0, 0}});
  nans.RemoveDuplicates();
  EXPECT_EQ(nans.Count(), 3u);
}

TEST(CoordinateVector, ReverseOrderAndResizeLeaveTheBox) {
  VornCoordinateVector v = Make({{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}});
  v.ReverseOrder();
  ExpectCoords(v, {{4, 4}, {3, 3}, {2, 2}, {1, 1}, {0, 0}});
  EXPECT_TRUE(v.Resize(2));
  EXPECT_TRUE(v.Resize(3));
  ExpectCoords(v, {{4, 4}, {3, 3}, {0, 0}});
  ExpectExtent(v, 0, 4, 0, 4);
}

TEST(CoordinateVector, ClearResetsTheBoxAndKeepsTheStorage) {
  VornCoordinateVector v = Make({{1, 1}, {2, 2}});
  VornCoordinate* const block = v;
  v.Clear();
  EXPECT_FALSE(v.IsInit());
  EXPECT_TRUE(ThrowsVornException([&] { v.IsPointInBoundbox(1, 1); }, kNotInitialized, 5004));
  v.Add(3, 3);
  EXPECT_EQ(static_cast<VornCoordinate*>(v), block);
}

void AddTen(double x, double y, double* outX, double* outY, void* context) {
  if ((*static_cast<int*>(context))-- == 0) throw 0;
  *outX = x + 10;
  *outY = y + 10;
}

TEST(CoordinateVector, TransformRebuildsTheBoxFromTheResults) {
  VornCoordinateVector v = Make({{0, 0}, {1, 2}});
  v.Set(-99, 99, -99, 99);
  int budget = 2;
  v.Transform(AddTen, &budget);
  ExpectCoords(v, {{10, 10}, {11, 12}});
  ExpectExtent(v, 10, 11, 10, 12);

  v.Add(50, 50);
  budget = 2;  // the third call throws
  EXPECT_THROW(v.Transform(AddTen, &budget), int);
  ExpectCoords(v, {{20, 20}, {21, 22}, {50, 50}});
  ExpectExtent(v, 20, 21, 20, 22);

  v.Transform([](double x, double, double* outX, double*, void*) { *outX = x; }, nullptr);
  EXPECT_TRUE(std::isnan(v.begin()->Y));  // an unwritten axis is NaN, not a stale value
}

TEST(CoordinateVector, TransformWithoutCallbackThrowsBeforeAnyChange) {
  VornCoordinateVector v = Make({{0, 0}, {1, 2}});
  EXPECT_TRUE(ThrowsVornException([&] { v.Transform(nullptr, nullptr); }, kNull, 5003));
  ExpectCoords(v, {{0, 0}, {1, 2}});
  ExpectExtent(v, 0, 1, 0, 2);
}

TEST(CoordinateVector, AssignmentCopiesTheCoordinatesAndTheBoxAsItIs) {
  VornCoordinateVector source = Make({{1, 1}, {5, 5}});
  source.RemoveAt(1);
  VornCoordinateVector target = Make({{-7, -7}, {8, 8}, {9, 9}});
  EXPECT_EQ(&(target = source), &target);
  ExpectCoords(target, {{1, 1}});
  ExpectExtent(target, 1, 5, 1, 5);  // the stale box travels

  target = VornCoordinateVector();
  EXPECT_EQ(target.Count(), 0u);
  ExpectExtent(target, 1, 5, 1, 5);  // an empty source leaves the box

  VornCoordinateVector& alias = source;
  source = alias;
  EXPECT_EQ(source.Count(), 0u);
  ExpectExtent(source, 1, 5, 1, 5);
}

TEST(CoordinateVector, AssignmentFromAnUninitialisedBoxThrowsAfterCopying) {
  VornCoordinateVector source;
  ASSERT_TRUE(source.Resize(2));  // two coordinates, box never initialised
  VornCoordinateVector target = Make({{7, 7}});
  EXPECT_TRUE(ThrowsVornException([&] { target = source; }, kNotInitialized, 5004));
  ExpectCoords(target, {{0, 0}, {0, 0}});
  ExpectExtent(target, 7, 7, 7, 7);
}

TEST(CoordinateVector, CopyConstructorRecomputesTheBox) {
  VornCoordinateVector source = Make({{1, 1}, {5, 5}});
  source.RemoveAt(1);
  VornCoordinateVector copy(source);
  ExpectCoords(copy, {{1, 1}});
  ExpectExtent(copy, 1, 1, 1, 1);
  EXPECT_NE(&copy.MinX, &source.MinX);
}

TEST(CoordinateVector, ExhaustionLeavesTheVectorAndItsBoxUnchanged) {
  VornCoordinateVector v;
  for (int i = 0; i < 10; ++i) v.Add(i, i);  // capacity 10 is full
  VornCoordinate* const block = v;
  VornCoordinate points[] = {{-5, -5}, {50, 50}};
  VornCoordinateVector big(points, 2);
  big.AddRange(v);
  VornCoordinateVector target = Make({{-1, -1}});
  for (int step = 0; step < 5; ++step) {
    ScopedFailure failure(Channel::NothrowNew, 1);
    switch (step) {
      case 0: v.Add(100, 100); break;
      case 1: v.AddRange(points, 2); break;  // stored whole or not at all
      case 2: EXPECT_FALSE(v.Reserve(100)); break;
      case 3: EXPECT_FALSE(v.Resize(20)); break;
      case 4: target = big; break;
    }
  }
  EXPECT_EQ(v.Count(), 10u);
  EXPECT_EQ(static_cast<VornCoordinate*>(v), block);
  ExpectExtent(v, 0, 9, 0, 9);
  EXPECT_EQ(target.Count(), 0u);
  ExpectExtent(target, -1, -1, -1, -1);
}

}  // namespace
