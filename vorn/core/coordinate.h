// VornCoordinate: the plain x/y value from which every geometry is built.
//
// A coordinate is two IEEE doubles copied by value; it owns nothing and has no
// constructor of its own, so a default-constructed coordinate is uninitialised and
// `VornCoordinate{1.0, 2.0}` builds one. Units are whatever the caller uses: the library
// never interprets them. Comparisons are exact, with no tolerance: coordinates that
// differ in the last bit are different, and a coordinate holding a NaN is unequal to
// everything, itself included.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CORE_COORDINATE_H
#define VORN_CORE_COORDINATE_H

#include <cstddef>
#include <type_traits>

#include <vorn/containers/vector.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>

struct VORN_API VornCoordinate {
  // Layout: X then Y, 16 bytes, no padding; coordinate arrays are handed out as
  // VornCoordinate* and copied as raw blocks, so this layout is part of the interface.
  double X;
  double Y;
  // Copy construction and assignment are the implicit ones: X and Y, bit for bit. None
  // is declared, so the struct stays an aggregate in every language standard.
};

static_assert(sizeof(VornCoordinate) == 16, "VornCoordinate is two packed doubles");
static_assert(offsetof(VornCoordinate, X) == 0 && offsetof(VornCoordinate, Y) == 8,
              "VornCoordinate stores X before Y");
static_assert(std::is_trivially_copyable<VornCoordinate>::value,
              "VornCoordinate arrays are copied as raw blocks");
static_assert(std::is_aggregate<VornCoordinate>::value, "VornCoordinate has no constructor");

// Exact equality; Y is compared only when X is equal.
VORN_API bool operator==(VornCoordinate const& a, VornCoordinate const& b);

// Exact inequality; Y is compared only when X is equal. True for a NaN coordinate
// compared with itself.
VORN_API bool operator!=(VornCoordinate const& a, VornCoordinate const& b);

// Always false.
// Note: deliberately orders nothing; sorts and ordered containers that use it see every
// coordinate as equivalent to every other. Do not rely on it for ordering.
VORN_API bool operator<(VornCoordinate const& a, VornCoordinate const& b);

// The coordinate array of VornCoordinateVector and VornBoundbox::AddCoordinates. It is
// compiled once, with every member, in coordinate.cpp and exported from there. The
// declaration sits directly after the element type on purpose: no translation unit can
// name the array before including this header, so the export attribute always precedes
// the first use (a declaration placed after an implicit instantiation would lose its
// attribute, with a warning).
extern template class VORN_API
    Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>;

#endif
