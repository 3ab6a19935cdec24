#include <vorn/geometry/polygon.h>

#include <vorn/foundation/exception.h>

VornPolygon::VornPolygon() : IsHole(false), Coordinates(), Attributes() {}

VornPolygon::VornPolygon(VornCoordinate* coords, int count) : VornPolygon(coords, count, false) {}

VornPolygon::VornPolygon(VornCoordinate* coords, int count, bool isHole)
    : IsHole(false), Coordinates(), Attributes() {
  if (coords == nullptr) throw VornException("Parameter is NULL", 5003);
  IsHole = isHole;
  Coordinates.AddRange(coords, count);
}

VornPolygon::VornPolygon(VornCoordinateVector const& v, bool isHole)
    : IsHole(isHole), Coordinates(), Attributes() {
  Coordinates.AddRange(v);
}

VornPolygon::VornPolygon(VornPolygon const& other)
    : IVornObject(), IsHole(false), Coordinates(), Attributes() {
  *this = other;
}

VornPolygon::~VornPolygon() {}

VornPolygon const& VornPolygon::operator=(VornPolygon const& other) {
  // The coordinate vector and the attribute collection empty themselves on
  // self-assignment; a polygon must not.
  if (this == &other) return *this;
  IVornObject::operator=(other);
  IsHole = other.IsHole;
  Coordinates = other.Coordinates;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornPolygon::GetType() const { return Polygon; }

void VornPolygon::Transform(VornTransformCallback callback, void* context) {
  Coordinates.Transform(callback, context);
}
