#include <vorn/core/coordinate.h>

bool operator==(VornCoordinate const& a, VornCoordinate const& b) {
  return a.X == b.X && a.Y == b.Y;
}

bool operator!=(VornCoordinate const& a, VornCoordinate const& b) {
  return a.X != b.X || a.Y != b.Y;
}

bool operator<(VornCoordinate const&, VornCoordinate const&) { return false; }
