#include <vorn/geometry/multi_polygon.h>

VornMultiPolygon::VornMultiPolygon() : Polygons(), Attributes() {}

VornMultiPolygon::VornMultiPolygon(VornMultiPolygon const& other)
    : IVornObject(), Polygons(), Attributes() {
  *this = other;
}

VornMultiPolygon::~VornMultiPolygon() {}

VornMultiPolygon const& VornMultiPolygon::operator=(VornMultiPolygon const& other) {
  IVornObject::operator=(other);
  Polygons = other.Polygons;
  Attributes = other.Attributes;
  return *this;
}

VornObjectType VornMultiPolygon::GetType() const { return MultiPolygon; }

void VornMultiPolygon::Transform(VornTransformCallback callback, void* context) {
  Polygons.Transform(callback, context);
}

void VornMultiPolygon::SortHoles() { Polygons.SortHoles(); }

void VornMultiPolygon::RemoveHoles() {
  bool removed = false;
  VornPolygonCollection::iterator it = Polygons.begin();
  while (it != Polygons.end()) {
    if ((*it)->IsHole) {
      Polygons.Remove(it);
      removed = true;
      it = Polygons.begin();
      if (it == Polygons.end()) break;
    }
    ++it;
  }
  if (removed) Polygons.RecalcBoundbox();
}
