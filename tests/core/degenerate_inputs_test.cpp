// Degenerate inputs to coordinate vectors and boxes: empty ranges, vectors too short or
// too varied to hold duplicates, reservations within the capacity, and points beyond a
// single edge of a box.
#include <vorn/core/boundbox.h>
#include <vorn/core/coordinate_vector.h>

#include <vector>

#include <gtest/gtest.h>

namespace {

using Coordinates = Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>;

std::vector<double> Flat(VornCoordinateVector const& v) {
  std::vector<double> flat;
  for (VornCoordinate const& c : v) {
    flat.push_back(c.X);
    flat.push_back(c.Y);
  }
  return flat;
}

TEST(DegenerateInputs, EmptyRangesAddNothingAndLeaveTheBoxUnset) {
  VornCoordinateVector v;
  Coordinates const none;
  v.AddRange(none);
  v.AddRange(VornCoordinateVector());
  EXPECT_EQ(v.Count(), 0u);
  EXPECT_FALSE(v.IsInit());
  VornCoordinateVector const fromNone(none);
  EXPECT_EQ(fromNone.Count(), 0u);
}

TEST(DegenerateInputs, RemoveDuplicatesLeavesShortAndVariedVectorsAsTheyAre) {
  VornCoordinateVector v;
  v.RemoveDuplicates();
  EXPECT_EQ(v.Count(), 0u);
  v.Add(1, 1);
  v.RemoveDuplicates();
  EXPECT_EQ(Flat(v), (std::vector<double>{1, 1}));
  v.Add(2, 1);
  v.Add(1, 1);  // equal to the first, but not next to it
  v.Add(1, 2);
  VornCoordinate* const block = v;
  v.RemoveDuplicates();
  EXPECT_EQ(Flat(v), (std::vector<double>{1, 1, 2, 1, 1, 1, 1, 2}));
  EXPECT_EQ(static_cast<VornCoordinate*>(v), block);
}

TEST(DegenerateInputs, ReservingWithinTheCapacityKeepsTheBlock) {
  VornCoordinateVector v;
  ASSERT_TRUE(v.Reserve(8));
  v.Add(1, 1);
  VornCoordinate* const block = v;
  EXPECT_TRUE(v.Reserve(4));
  EXPECT_TRUE(v.Reserve(8));
  EXPECT_EQ(static_cast<VornCoordinate*>(v), block);
}

TEST(DegenerateInputs, APointBeyondAnySingleEdgeIsOutside) {
  VornBoundbox const box(0, 10, 0, 5);
  EXPECT_TRUE(box.IsPointInBoundbox(10, 5));
  EXPECT_FALSE(box.IsPointInBoundbox(-1, 2));
  EXPECT_FALSE(box.IsPointInBoundbox(11, 2));
  EXPECT_FALSE(box.IsPointInBoundbox(5, -1));
  EXPECT_FALSE(box.IsPointInBoundbox(5, 6));
  EXPECT_FALSE(box.IsPointInBoundbox(VornCoordinate{5, 5.5}));
}

}  // namespace
