#include <vorn/core/coordinate.h>

#include <cmath>
#include <limits>
#include <set>

#include <gtest/gtest.h>

namespace {

// Checks == and != together so that they cannot disagree.
void ExpectEqual(VornCoordinate const& a, VornCoordinate const& b, bool equal) {
  EXPECT_EQ(a == b, equal);
  EXPECT_EQ(a != b, !equal);
}

TEST(Coordinate, EqualityIsExactWithoutTolerance) {
  ExpectEqual({1, 2}, {1, 2}, true);
  ExpectEqual({1, 2}, {1, 2.0000000001}, false);
  ExpectEqual({1, 2}, {std::nextafter(1.0, 2.0), 2}, false);
  ExpectEqual({1, 2}, {2, 1}, false);
}

TEST(Coordinate, NanIsUnequalToItselfAndSignedZerosAreEqual) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  VornCoordinate const nanX{nan, 0};
  VornCoordinate const nanY{0, nan};
  ExpectEqual(nanX, nanX, false);
  ExpectEqual(nanY, nanY, false);
  ExpectEqual({0.0, -0.0}, {-0.0, 0.0}, true);
}

TEST(Coordinate, LessThanNeverOrdersAnything) {
  VornCoordinate const low{0, 0};
  VornCoordinate const high{1, 1};
  EXPECT_FALSE(low < high);
  EXPECT_FALSE(high < low);
  EXPECT_FALSE(low < low);
  // An ordered container sees every coordinate as equivalent to the first.
  std::set<VornCoordinate> set{low, high, {5, -5}};
  ASSERT_EQ(set.size(), 1u);
  EXPECT_TRUE(*set.begin() == low);
}

}  // namespace
