#include <vorn/geometry/factory.h>

#include <new>

#include <vorn/core/attribute.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/object.h>
#include <vorn/geometry/object_collection.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/polygon.h>

// Every class made here derives from VornAllocator, whose class-level operator new is
// the VornMalloc channel and noexcept: a null result skips the constructor and the
// new-expression yields null, and a throwing constructor hands the storage back to
// VornFree before the exception leaves the new-expression.

namespace Vorn {

VornObjectCollection* Alloc_VornObjectCollection() { return new VornObjectCollection(); }

VornPoint* Alloc_VornPoint() { return new VornPoint(); }
VornPoint* Alloc_VornPoint(double x, double y) { return new VornPoint(x, y); }
VornPoint* Alloc_VornPoint(VornPoint const& other) { return new VornPoint(other); }

VornLine* Alloc_VornLine() { return new VornLine(); }
VornLine* Alloc_VornLine(VornLine const& other) { return new VornLine(other); }
VornLine* Alloc_VornLine(VornCoordinate* coords, int count) { return new VornLine(coords, count); }
VornLine* Alloc_VornLine(VornCoordinateVector const& coordinates) {
  return new VornLine(coordinates);
}

VornPolygon* Alloc_VornPolygon() { return new VornPolygon(); }
VornPolygon* Alloc_VornPolygon(VornCoordinate* coords, int count) {
  return new VornPolygon(coords, count);
}
VornPolygon* Alloc_VornPolygon(VornCoordinate* coords, int count, bool isHole) {
  return new VornPolygon(coords, count, isHole);
}

VornMultiPoint* Alloc_VornMultiPoint() { return new VornMultiPoint(); }
VornMultiLine* Alloc_VornMultiLine() { return new VornMultiLine(); }
VornMultiPolygon* Alloc_VornMultiPolygon() { return new VornMultiPolygon(); }

// The nothrow form: exhaustion yields null, and a throwing constructor releases the
// storage through the matching global operator delete.
VornAttribute* Alloc_VornAttribute() { return new (std::nothrow) VornAttribute(); }

void Free_VornPoint(VornPoint* object) { detail::free_object(object); }
void Free_VornLine(VornLine* object) { detail::free_object(object); }
void Free_VornPolygon(VornPolygon* object) { detail::free_object(object); }
void Free_VornMultiPoint(VornMultiPoint* object) { detail::free_object(object); }
void Free_VornMultiLine(VornMultiLine* object) { detail::free_object(object); }
void Free_VornMultiPolygon(VornMultiPolygon* object) { detail::free_object(object); }

void Free_VornObjectCollection(VornObjectCollection* collection) { delete collection; }

void Free_VornAttribute(VornAttribute* attribute) {
  if (attribute == nullptr) return;
  // Spelled out rather than `delete`, so that the block goes back to the global operator
  // delete whatever allocation operators the class may gain.
  attribute->~VornAttribute();
  ::operator delete(attribute);
}

namespace detail {
void free_object(IVornObject* object) { delete object; }
}  // namespace detail

}  // namespace Vorn
