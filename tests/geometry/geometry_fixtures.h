// Shared helpers for the geometry tests: coordinate callbacks, ring builders and box checks.
#ifndef VORN_TESTS_GEOMETRY_FIXTURES_H
#define VORN_TESTS_GEOMETRY_FIXTURES_H

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include <vorn/core/boundbox.h>
#include <vorn/core/coordinate.h>
#include <vorn/foundation/exception.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/polygon.h>

namespace geometry_test {

// Context of Shift: adds (dx, dy) to every coordinate, counts the calls and, when
// throwAfter is not negative, throws on the call after that many.
struct ShiftContext {
  double dx;
  double dy;
  int throwAfter = -1;
  int calls = 0;
};

inline void Shift(double x, double y, double* outX, double* outY, void* context) {
  ShiftContext* const shift = static_cast<ShiftContext*>(context);
  if (shift->throwAfter >= 0 && shift->calls == shift->throwAfter) {
    throw std::runtime_error("callback failed");
  }
  ++shift->calls;
  *outX = x + shift->dx;
  *outY = y + shift->dy;
}

// An axis-aligned ring with the corners of minX..maxX x minY..maxY, counter-clockwise.
inline VornPolygon* NewRing(double minX, double maxX, double minY, double maxY, bool hole) {
  VornCoordinate corners[4] = {{minX, minY}, {maxX, minY}, {maxX, maxY}, {minX, maxY}};
  return new VornPolygon(corners, 4, hole);
}

inline VornLine* NewLine(double x0, double y0, double x1, double y1) {
  VornCoordinate ends[2] = {{x0, y0}, {x1, y1}};
  return new VornLine(ends, 2);
}

// The element pointers of a list collection, in order.
template <class Collection>
auto Pointers(Collection& collection) {
  std::vector<typename std::remove_reference<decltype(*collection.begin())>::type> result;
  for (auto it = collection.begin(); it != collection.end(); ++it) result.push_back(*it);
  return result;
}

inline void ExpectBox(VornBoundbox const& box, double minX, double maxX, double minY,
                      double maxY) {
  EXPECT_TRUE(box.IsInit());
  EXPECT_EQ(box.MinX, minX);
  EXPECT_EQ(box.MaxX, maxX);
  EXPECT_EQ(box.MinY, minY);
  EXPECT_EQ(box.MaxY, maxY);
}

// Runs `action` and expects a VornException with exactly this message and code.
template <class Action>
void ExpectVornError(Action action, char const* message, int code) {
  try {
    action();
    ADD_FAILURE() << "expected VornException \"" << message << "\" " << code;
  } catch (VornException const& e) {
    EXPECT_STREQ(e.Message(), message);
    EXPECT_EQ(e.ErrorCode(), code);
  }
}

}  // namespace geometry_test

#endif
