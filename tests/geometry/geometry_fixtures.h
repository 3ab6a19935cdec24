// Shared helpers for the geometry tests, which live in namespace geometry_test: a
// context-driven callback, a counted point, ring and line builders, element listings and
// a box check.
#ifndef VORN_TESTS_GEOMETRY_FIXTURES_H
#define VORN_TESTS_GEOMETRY_FIXTURES_H

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>
#include <vector>

#include <vorn/core/boundbox.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/polygon.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

// Expects `statement` to raise VornException with exactly this message and code.
#define EXPECT_VORN_ERROR(statement, message, code) \
  EXPECT_TRUE(::vorn_test::ThrowsVornException([&] { statement; }, message, code))

namespace geometry_test {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::W;

// Context of Shift: adds (dx, dy) to every coordinate and counts the calls; when
// throwAfter is not negative, the call after that many throws std::runtime_error.
struct ShiftContext {
  double dx;
  double dy;
  int throwAfter = -1;
  int calls = 0;
};

inline void Shift(double x, double y, double* outX, double* outY, void* context) {
  ShiftContext* const shift = static_cast<ShiftContext*>(context);
  if (shift->calls == shift->throwAfter) throw std::runtime_error("callback failed");
  ++shift->calls;
  *outX = x + shift->dx;
  *outY = y + shift->dy;
}

// A point that counts how often a point's destructor ran.
class CountedPoint : public VornPoint {
public:
  CountedPoint(double x, double y) : VornPoint(x, y) {}
  ~CountedPoint() override { ++destroyed; }
  static inline int destroyed = 0;
};

// A heap ring with the four corners of minX..maxX x minY..maxY.
inline VornPolygon* NewRing(double minX, double maxX, double minY, double maxY, bool hole) {
  VornCoordinate corners[4] = {{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}};
  return new VornPolygon(corners, 4, hole);
}

inline VornLine* NewLine(double x0, double y0, double x1, double y1) {
  VornCoordinate ends[2] = {{x0, y0}, {x1, y1}};
  return new VornLine(ends, 2);
}

// The element pointers of a collection, in order.
template <class Collection>
auto Pointers(Collection& collection) {
  std::vector<typename std::decay<decltype(*collection.begin())>::type> result;
  for (auto it = collection.begin(); it != collection.end(); ++it) result.push_back(*it);
  return result;
}

// Whether `box` is initialised and spans exactly minX..maxX x minY..maxY.
inline ::testing::AssertionResult HasBox(VornBoundbox const& box, double minX, double maxX,
                                         double minY, double maxY) {
  if (box.IsInit() && box.MinX == minX && box.MaxX == maxX && box.MinY == minY &&
      box.MaxY == maxY) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure()
         << "box " << (box.IsInit() ? "" : "(uninitialised) ") << box.MinX << ".." << box.MaxX
         << " x " << box.MinY << ".." << box.MaxY;
}

}  // namespace geometry_test

#endif
