#include <vorn/core/coordinate.h>

#include <limits>
#include <set>

#include <gtest/gtest.h>

namespace {

TEST(Coordinate, EqualityIsExactAndANanIsUnequalToItself) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  struct Case {
    VornCoordinate a, b;
    bool equal;
  } const cases[] = {{{1, 2}, {1, 2}, true},           {{1, 2}, {1, 2.0000000001}, false},
                     {{0.0, -0.0}, {-0.0, 0.0}, true}, {{nan, 0}, {nan, 0}, false},
                     {{0, nan}, {0, nan}, false}};
  for (Case const& c : cases) {  // == and != together, so that they cannot disagree
    EXPECT_EQ(c.a == c.b, c.equal) << c.a.X << ", " << c.a.Y;
    EXPECT_EQ(c.a != c.b, !c.equal) << c.a.X << ", " << c.a.Y;
  }
}

TEST(Coordinate, LessThanNeverOrdersAnything) {
  VornCoordinate const low{0, 0};
  VornCoordinate const high{1, 1};
  EXPECT_FALSE(low < high || high < low);
  std::set<VornCoordinate> const set{low, high, {5, -5}};  // all equivalent to the first
  EXPECT_EQ(set.size(), 1u);
}

}  // namespace
