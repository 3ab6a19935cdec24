#include <vorn/geometry/line.h>

#include <vorn/foundation/exception.h>

VornLine::VornLine() : Coordinates(), Attributes() {}

VornLine::VornLine(VornCoordinate* coords, int count) : Coordinates(), Attributes() {
  if (coords == nullptr) throw VornException("Parameter is NULL", 5003);
  Coordinates.AddRange(coords, count);
}

VornLine::VornLine(VornCoordinateVector const& v) : Coordinates(), Attributes() {
  Coordinates.AddRange(v);
}

VornLine::VornLine(VornLine const& other) : IVornObject(), Coordinates(), Attributes() {
  *this = other;
}

VornLine::~VornLine() {}

VornLine const& VornLine::operator=(VornLine const& other) {
  if (this == &other) return *this;
  IVornObject::operator=(other);
  Coordinates = other.Coordinates;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornLine::GetType() const { return Line; }

void VornLine::Transform(VornTransformCallback callback, void* context) {
  Coordinates.Transform(callback, context);
}
