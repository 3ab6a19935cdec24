#include <vorn/core/coordinate.h>

// Every member of the coordinate array, exported as declared in coordinate.h.
template class Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>;

bool operator==(VornCoordinate const& a, VornCoordinate const& b) {
  return a.X == b.X && a.Y == b.Y;
}

bool operator!=(VornCoordinate const& a, VornCoordinate const& b) {
  return a.X != b.X || a.Y != b.Y;
}

bool operator<(VornCoordinate const&, VornCoordinate const&) { return false; }
