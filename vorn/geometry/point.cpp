#include <vorn/geometry/point.h>

#include <vorn/foundation/exception.h>

VornPoint::VornPoint() : Coordinate{0.0, 0.0}, Attributes() {}

VornPoint::VornPoint(double x, double y) : Coordinate{x, y}, Attributes() {}

VornPoint::VornPoint(VornPoint const& other) : IVornObject(), Coordinate{0.0, 0.0}, Attributes() {
  *this = other;
}

VornPoint::~VornPoint() {}

VornPoint const& VornPoint::operator=(VornPoint const& other) {
  // The attribute collection empties itself on self-assignment; a point must not.
  if (this == &other) return *this;
  IVornObject::operator=(other);
  Coordinate = other.Coordinate;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornPoint::GetType() const { return Point; }

void VornPoint::Transform(VornTransformCallback callback, void* context) {
  if (callback == nullptr) throw VornException("Parameter is NULL", 5003);
  double outX;
  double outY;
  callback(Coordinate.X, Coordinate.Y, &outX, &outY, context);
  Coordinate.X = outX;
  Coordinate.Y = outY;
}
