// Shared data and helpers of the benchmarks.
//
// Every implementation of a workload works on the same coordinates, produced here from a
// fixed seed, and pushes them through the same callback, RotateCoordinate, which lives in
// its own translation unit (callback.cpp) so that no loop can inline it. Benchmarks are
// named "<workload>/<implementation>/<size>"; report.py reads that shape back.
#ifndef VORN_BENCH_COMMON_H
#define VORN_BENCH_COMMON_H

#include <cstddef>
#include <string>
#include <vector>

#include <vorn/core/coordinate.h>
#include <vorn/core/transform_callback.h>

namespace bench {

// Workload sizes, fixed so that every implementation measures the same amount of work.
constexpr std::size_t kCoordinates = 1000000;  // transform, AddRange, Add
constexpr std::size_t kRings = 10000;          // rings of the multi-polygon
constexpr std::size_t kRingSize = 20;          // coordinates per ring, last == first
constexpr std::size_t kAreas = 1000;           // areas of the treatment map
constexpr std::size_t kAreaRings = 2;          // outer ring and one hole per area
constexpr int kByteGridSide = 4096;            // byte grid: 4096 x 4096 cells
constexpr int kRateGridSide = 1000;            // rate grid: 1000 x 1000 cells
constexpr std::size_t kAttributes = 30;        // attribute collection

// Rotation about the origin; it keeps every coordinate bounded however often it runs.
struct Rotation {
  double cosine;
  double sine;
};

// The one callback of every transform workload: rotates (x, y) by the Rotation that
// `context` points to. Defined out of line on purpose.
void RotateCoordinate(double x, double y, double* outX, double* outY, void* context);

// A small rotation shared by all workloads.
Rotation* SharedRotation();

// The callback as a pointer the optimiser cannot see through, so that the baselines
// call it indirectly, exactly as the library does.
VornTransformCallback OpaqueCallback();

// `count` pseudo-random coordinates inside a 1 km square at projected-metre magnitudes.
std::vector<VornCoordinate> MakeCoordinates(std::size_t count);

// `rings` closed rings of `ringSize` coordinates each (the last repeats the first), one
// after the other: ring k occupies [k * ringSize, (k + 1) * ringSize).
std::vector<VornCoordinate> MakeRings(std::size_t rings, std::size_t ringSize);

// kAttributes distinct attribute names of the kind a field record carries.
std::vector<std::u16string> AttributeNames();
// The same names with every letter in upper case.
std::vector<std::u16string> UpperCaseNames();

// An envelope kept as four doubles; the baselines' counterpart of a bounding box.
struct RawBox {
  double minX;
  double maxX;
  double minY;
  double maxY;
};

RawBox EmptyRawBox();

inline void Widen(RawBox& box, double x, double y) {
  box.minX = x < box.minX ? x : box.minX;
  box.maxX = x > box.maxX ? x : box.maxX;
  box.minY = y < box.minY ? y : box.minY;
  box.maxY = y > box.maxY ? y : box.maxY;
}

inline void Widen(RawBox& box, RawBox const& other) {
  Widen(box, other.minX, other.minY);
  Widen(box, other.maxX, other.maxY);
}

// The baseline of every transform: one fused pass over a contiguous array that calls the
// callback through a pointer, stores the result back and widens the box.
RawBox RawTransform(VornCoordinate* first, std::size_t count, VornTransformCallback callback,
                    void* context);

}  // namespace bench

#endif
