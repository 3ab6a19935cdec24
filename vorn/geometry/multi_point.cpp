#include <vorn/geometry/multi_point.h>

#include <vorn/foundation/exception.h>

VornMultiPoint::VornMultiPoint() : Coordinates(), Attributes() {}

VornMultiPoint::VornMultiPoint(VornCoordinate* coords, int count) : Coordinates(), Attributes() {
  if (coords == nullptr) throw VornException("Parameter is NULL", 5003);
  Coordinates.AddRange(coords, count);
}

VornMultiPoint::VornMultiPoint(VornMultiPoint const& other)
    : IVornObject(), Coordinates(), Attributes() {
  *this = other;
}

VornMultiPoint::~VornMultiPoint() {}

VornMultiPoint const& VornMultiPoint::operator=(VornMultiPoint const& other) {
  // The coordinate vector and the attribute collection empty themselves on
  // self-assignment; a multi-point must not.
  if (this == &other) return *this;
  IVornObject::operator=(other);
  Coordinates = other.Coordinates;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornMultiPoint::GetType() const { return MultiPoint; }

void VornMultiPoint::Transform(VornTransformCallback callback, void* context) {
  Coordinates.Transform(callback, context);
}
