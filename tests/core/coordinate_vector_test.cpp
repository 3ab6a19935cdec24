#include <vorn/core/coordinate_vector.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;

// The coordinates, then the box, with a "-" in front while it is uninitialised.
std::string Show(VornCoordinateVector const& v) {
  std::ostringstream out;
  for (VornCoordinate const& c : v) out << c.X << ',' << c.Y << ' ';
  out << (v.IsInit() ? "| " : "| -") << v.MinX << ".." << v.MaxX << " x " << v.MinY << ".."
      << v.MaxY;
  return out.str();
}

VornCoordinateVector Make(std::initializer_list<VornCoordinate> coords) {
  VornCoordinateVector v;
  for (VornCoordinate const& c : coords) v.Add(c);
  return v;
}

void AddTen(double x, double y, double* outX, double* outY, void* context) {
  if ((*static_cast<int*>(context))-- == 0) throw 0;
  *outX = x + 10;
  *outY = y + 10;
}

TEST(CoordinateVector, AddRangeTakesEveryCoordinateAndRefusesNullWhateverTheCount) {
  VornCoordinate points[] = {{1, 1}, {2, 3}, {100, 100}};
  VornCoordinateVector v(points, 3);  // unlike VornBoundbox::AddCoordinates
  v.AddRange(points, -3);
  for (int count : {0, -3, 2}) {
    EXPECT_TRUE(ThrowsVornException([&] { v.AddRange(nullptr, count); }, "Parameter is NULL",
                                    5003));
  }
  EXPECT_EQ(Show(v), "1,1 2,3 100,100 | 1..100 x 1..100");
  EXPECT_TRUE(ThrowsVornException([] { VornCoordinateVector(nullptr, 0); }, "Parameter is NULL",
                                  5003));
  EXPECT_EQ(static_cast<VornCoordinate*>(VornCoordinateVector()), nullptr);  // no allocation
  v.AddRange(v);  // exactly full: the block moves while its own coordinates are read
  v.Add(v.begin()[1]);
  EXPECT_EQ(Show(v), "1,1 2,3 100,100 1,1 2,3 100,100 2,3 | 1..100 x 1..100");
}

TEST(CoordinateVector, AddRangeReservesOnceAndUsesOnlyTheCoordinates) {
  std::vector<VornCoordinate> points(100, VornCoordinate{2, 2});
  VornCoordinateVector source(points.data(), 100);
  source.Set(-50, 50, -50, 50);  // ignored by AddRange
  VornCoordinateVector v = Make({{1, 1}});
  unsigned long const before = vorn_test::Count(Channel::NothrowNew);
  v.AddRange(source);
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew) - before, 1u);
  EXPECT_TRUE(v.Count() == 101 && v.MinX == 1 && v.MaxX == 2);
}

TEST(CoordinateVector, RemoveAtKeepsTheStaleExtentUntilRecalc) {
  VornCoordinateVector v = Make({{1, 1}, {5, 5}});
  EXPECT_TRUE(ThrowsVornException([&] { v.RemoveAt(2); }, "Index out of range", 5002));
  v.RemoveAt(1);
  EXPECT_EQ(Show(v), "1,1 | 1..5 x 1..5");
  v.RecalcBoundbox();
  EXPECT_EQ(Show(v), "1,1 | 1..1 x 1..1");
  v.RemoveAt(0);
  EXPECT_TRUE(ThrowsVornException([&] { v.RemoveAt(0); }, "Index out of range", 5002));
}

TEST(CoordinateVector, EditsLeaveTheBoxAndClearResetsIt) {
  VornCoordinateVector v = Make({{0, 0}, {0, 0}, {1, 1}, {1, 1}, {1, 1}, {0, -0.0}});
  VornCoordinate* const block = v;
  v.RemoveDuplicates();  // consecutive runs only, each kept by its first coordinate
  v.Add(2, 2);
  v.ReverseOrder();
  EXPECT_EQ(Show(v), "2,2 0,-0 1,1 0,0 | 0..2 x 0..2");
  VornCoordinateVector odd = Make({{1, 1}, {2, 2}, {3, 3}});
  odd.ReverseOrder();  // the middle one stays
  EXPECT_EQ(Show(odd), "3,3 2,2 1,1 | 1..3 x 1..3");
  EXPECT_TRUE(v.Resize(1) && v.Resize(2));
  EXPECT_EQ(Show(v), "2,2 0,0 | 0..2 x 0..2");
  v.Clear();
  EXPECT_EQ(Show(v), "| -0..2 x 0..2");
  v.Add(3, 3);
  EXPECT_EQ(static_cast<VornCoordinate*>(v), block);  // the storage was kept
}

TEST(CoordinateVector, TransformRebuildsTheBoxFromTheResults) {
  VornCoordinateVector v = Make({{0, 0}, {1, 2}});
  EXPECT_TRUE(ThrowsVornException([&] { v.Transform(nullptr, nullptr); }, "Parameter is NULL",
                                  5003));
  EXPECT_EQ(Show(v), "0,0 1,2 | 0..1 x 0..2");
  v.Set(-99, 99, -99, 99);
  int budget = 2;
  v.Transform(AddTen, &budget);
  EXPECT_EQ(Show(v), "10,10 11,12 | 10..11 x 10..12");
  v.Add(50, 50);
  budget = 2;  // the third call throws
  EXPECT_THROW(v.Transform(AddTen, &budget), int);
  EXPECT_EQ(Show(v), "20,20 21,22 50,50 | 20..21 x 20..22");
  v.Transform([](double x, double, double* outX, double*, void*) { *outX = x; }, nullptr);
  EXPECT_TRUE(std::isnan(v.begin()->Y));  // an unwritten axis is NaN, not a stale value

  // The outputs are scratch values: the element keeps its value until its call returns.
  VornCoordinateVector w = Make({{1, 2}, {3, 4}});
  w.Transform(
      [](double x, double y, double* outX, double* outY, void* context) {
        auto const* self = static_cast<VornCoordinateVector const*>(context);
        unsigned int const i = x == 1 ? 0 : 1;
        EXPECT_TRUE(self->begin()[i].X == x && self->begin()[i].Y == y);
        *outX = -x;
        *outY = -y;
        EXPECT_EQ(self->begin()[i].X, x);
      },
      &w);
  EXPECT_EQ(Show(w), "-1,-2 -3,-4 | -3..-1 x -4..-2");
}

TEST(CoordinateVector, CopyRecomputesTheBoxWhileAssignmentCopiesItAsItIs) {
  VornCoordinateVector source = Make({{1, 1}, {5, 5}});
  source.RemoveAt(1);
  EXPECT_EQ(Show(VornCoordinateVector(source)), "1,1 | 1..1 x 1..1");
  VornCoordinateVector target = Make({{-7, -7}, {8, 8}});
  EXPECT_EQ(&(target = source), &target);
  EXPECT_EQ(Show(target), "1,1 | 1..5 x 1..5");
  target = VornCoordinateVector();  // an empty source leaves the box
  EXPECT_EQ(Show(target), "| 1..5 x 1..5");
  VornCoordinateVector& alias = source;
  source = alias;  // emptied before it is read
  EXPECT_EQ(Show(source), "| 1..5 x 1..5");
  ASSERT_TRUE(source.Resize(2));  // two coordinates, box never initialised
  source.Reset();
  EXPECT_TRUE(ThrowsVornException([&] { target = source; }, "Boundbox not initialized", 5004));
  EXPECT_EQ(Show(target), "0,0 0,0 | 1..5 x 1..5");  // copied before the throw
}

TEST(CoordinateVector, ExhaustionStoresLessButTheBoxStillTakesEveryCoordinate) {
  VornCoordinateVector full;
  for (int i = 0; i < 10; ++i) full.Add(i, i);  // capacity 10 is full
  VornCoordinate points[] = {{-5, -5}, {50, 50}};
  VornCoordinateVector v(full);
  {
    ScopedFailure failure(Channel::NothrowNew);
    v.Add(100, 100);  // widened first, then not stored
    v.AddRange(points, 2);
  }
  EXPECT_EQ(v.Count(), 10u);
  EXPECT_EQ(Show(v).substr(Show(v).find('|')), "| -5..100 x -5..100");

  VornCoordinateVector w(full);
  {
    ScopedFailure failure(Channel::NothrowNew, 1);  // only the reservation of 12 fails
    w.AddRange(points, 2);  // each coordinate then grows the block on its own
  }
  EXPECT_EQ(Show(w), "0,0 1,1 2,2 3,3 4,4 5,5 6,6 7,7 8,8 9,9 -5,-5 50,50 | -5..50 x -5..50");

  VornCoordinateVector target(points, 1);  // room for exactly one
  std::string const before = Show(full);
  for (int step = 0; step < 3; ++step) {
    ScopedFailure failure(Channel::NothrowNew, 1);
    switch (step) {
      case 0: EXPECT_FALSE(full.Reserve(100)); break;
      case 1: EXPECT_FALSE(full.Resize(20)); break;
      case 2: target = full; break;
    }
  }
  EXPECT_EQ(Show(full), before);
  EXPECT_EQ(Show(target), "| -5..-5 x -5..-5");
}

// The bit patterns of the box, with its flag, so that NaN and -0 compare exactly.
std::string Bits(VornBoundbox const& box) {
  std::ostringstream out;
  out << box.IsInit() << std::hex;
  for (double value : {box.MinX, box.MaxX, box.MinY, box.MaxY}) {
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    out << ' ' << bits;
  }
  return out.str();
}

void Identity(double x, double y, double* outX, double* outY, void*) {
  *outX = x;
  *outY = y;
}

// Writes both outputs, then throws once the budget in context is spent.
void ShiftThenThrow(double x, double y, double* outX, double* outY, void* context) {
  *outX = x + 1;
  *outY = y + 1;
  if ((*static_cast<int*>(context))-- == 0) throw 0;
}

// AddRange, RecalcBoundbox and Transform widen the box over whole runs of coordinates;
// each must end bit for bit where Add, one coordinate at a time, ends: with NaNs and
// signed zeros, and on a box whose order of tests matters (Set with min above max).
TEST(CoordinateVector, RangesWidenTheBoxExactlyAsAddingOneByOne) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  std::vector<VornCoordinate> ring;
  for (int i = 0; i < 300; ++i) ring.push_back({std::sin(i) * i, -std::cos(i) * i});
  ring[7] = {nan, 3};
  ring[150] = {-0.0, nan};
  std::vector<VornCoordinate> inverted = {{5, 5}, {-1, -1}};
  for (int start = 0; start < 3; ++start) {
    std::vector<VornCoordinate>& points = start == 1 ? inverted : ring;
    VornCoordinateVector oneByOne;
    VornCoordinateVector ranged;
    if (start == 1) {
      oneByOne.Set(10, 0, 10, 0);  // (5, 5) is below the minimum and above the maximum
      ranged.Set(10, 0, 10, 0);
    } else if (start == 2) {
      oneByOne.Add(nan, 1);  // a NaN first point holds its axis for good
      ranged.Add(nan, 1);
    }
    for (VornCoordinate const& c : points) oneByOne.Add(c);
    ranged.AddRange(points.data(), static_cast<int>(points.size()));
    EXPECT_EQ(Bits(ranged), Bits(oneByOne)) << "start " << start;
  }
  VornCoordinateVector v(ring.data(), static_cast<int>(ring.size()));
  std::string const exact = Bits(v);
  v.Set(-1, 1, -1, 1);
  v.RecalcBoundbox();
  EXPECT_EQ(Bits(v), exact);
  v.Transform(Identity, nullptr);
  EXPECT_EQ(Bits(v), exact);
  int budget = 200;  // throws part way through the second block of coordinates
  EXPECT_THROW(v.Transform(ShiftThenThrow, &budget), int);
  VornCoordinateVector done;
  for (int i = 0; i < 200; ++i) done.Add(ring[i].X + 1, ring[i].Y + 1);
  EXPECT_EQ(Bits(v), Bits(done));
  EXPECT_EQ(std::memcmp(v.begin() + 200, &ring[200], sizeof(VornCoordinate)), 0);  // kept
}

}  // namespace
