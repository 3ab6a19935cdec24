// Factory functions: create and destroy the library's objects on the library's own heap.
//
// An application that uses the library as a shared library must not allocate or free
// the library's objects with its own allocator. For each class there is a pair:
// Vorn::Alloc_<Class> creates an object and returns it, Vorn::Free_<Class> destroys it.
// The caller owns what an Alloc_ returns until it passes it to the matching Free_ or
// hands it to a collection with AddReference (the collection then owns it).
//
// Channels: every object comes from VornMalloc and goes back to VornFree, except
// VornAttribute, which comes from the global operator new and goes back to the global
// operator delete. An attribute must never reach VornFree, nor another object the global
// operator delete: free each with the function of its own class.
//
// Every Alloc_ returns null, runs no constructor and throws nothing when its storage
// cannot be allocated. An exception from the constructor (e.g. "Parameter is NULL", 5003,
// for a null coordinate pointer) releases the storage and reaches the caller. Every Free_
// does nothing for null.
//
// The functions hold no state; the objects are not thread-safe: use one object from one
// thread at a time.
#ifndef VORN_GEOMETRY_FACTORY_H
#define VORN_GEOMETRY_FACTORY_H

#include <vorn/foundation/export.h>

class IVornObject;
class VornAttribute;
class VornCoordinateVector;
class VornLine;
class VornMultiLine;
class VornMultiPoint;
class VornMultiPolygon;
class VornObjectCollection;
class VornPoint;
class VornPolygon;
class VornTreatmentGrid;
class VornTreatmentGridEx;
class VornTreatmentMap;
class VornTreatmentPolygon;
class VornTreatmentZone;
class VornTreatmentZoneEx;
struct VornCoordinate;

namespace Vorn {

VORN_API VornObjectCollection* Alloc_VornObjectCollection();

VORN_API VornPoint* Alloc_VornPoint();
VORN_API VornPoint* Alloc_VornPoint(double x, double y);
VORN_API VornPoint* Alloc_VornPoint(VornPoint const& other);

VORN_API VornLine* Alloc_VornLine();
VORN_API VornLine* Alloc_VornLine(VornLine const& other);
// Throws VornException("Parameter is NULL", 5003) when coords is null; nothing leaks.
VORN_API VornLine* Alloc_VornLine(VornCoordinate* coords, int count);
VORN_API VornLine* Alloc_VornLine(VornCoordinateVector const& coordinates);

VORN_API VornPolygon* Alloc_VornPolygon();
// An outer ring (IsHole false). Throws VornException("Parameter is NULL", 5003) when
// coords is null; nothing leaks.
VORN_API VornPolygon* Alloc_VornPolygon(VornCoordinate* coords, int count);
// As above, with IsHole taken from isHole.
VORN_API VornPolygon* Alloc_VornPolygon(VornCoordinate* coords, int count, bool isHole);

VORN_API VornMultiPoint* Alloc_VornMultiPoint();
VORN_API VornMultiLine* Alloc_VornMultiLine();
VORN_API VornMultiPolygon* Alloc_VornMultiPolygon();

// From the global operator new, not VornMalloc: free it with Free_VornAttribute only.
VORN_API VornAttribute* Alloc_VornAttribute();

VORN_API VornTreatmentGrid* Alloc_VornTreatmentGrid();
VORN_API VornTreatmentGridEx* Alloc_VornTreatmentGridEx();
VORN_API VornTreatmentMap* Alloc_VornTreatmentMap();
VORN_API VornTreatmentPolygon* Alloc_VornTreatmentPolygon();
VORN_API VornTreatmentZone* Alloc_VornTreatmentZone();
VORN_API VornTreatmentZoneEx* Alloc_VornTreatmentZoneEx();

// The nine object Free_ functions are one operation: the object is deleted through its
// virtual destructor, which runs the destructor of its concrete class and returns the
// storage to VornFree. Any of them therefore frees any IVornObject correctly, whatever
// its concrete class.
VORN_API void Free_VornPoint(VornPoint* object);
VORN_API void Free_VornLine(VornLine* object);
VORN_API void Free_VornPolygon(VornPolygon* object);
VORN_API void Free_VornMultiPoint(VornMultiPoint* object);
VORN_API void Free_VornMultiLine(VornMultiLine* object);
VORN_API void Free_VornMultiPolygon(VornMultiPolygon* object);
VORN_API void Free_VornTreatmentGrid(VornTreatmentGrid* object);
VORN_API void Free_VornTreatmentGridEx(VornTreatmentGridEx* object);
VORN_API void Free_VornTreatmentMap(VornTreatmentMap* object);

// Destroys the collection, which deletes every object it holds, then returns its storage
// to VornFree. Note: a member of an unknown kind ends the program, as in the
// collection's destructor; detach such members first.
VORN_API void Free_VornObjectCollection(VornObjectCollection* collection);

// Runs the attribute's destructor, then the global operator delete.
VORN_API void Free_VornAttribute(VornAttribute* attribute);

// These classes are not polymorphic: each must be freed by the function of its own
// class, which runs its destructor and then VornFree.
VORN_API void Free_VornTreatmentPolygon(VornTreatmentPolygon* polygon);
VORN_API void Free_VornTreatmentZone(VornTreatmentZone* zone);
VORN_API void Free_VornTreatmentZoneEx(VornTreatmentZoneEx* zone);

namespace detail {
// The shared operation behind the nine object Free_ functions: deletes object through
// its virtual deleting destructor; null does nothing.
VORN_API void free_object(IVornObject* object);
}  // namespace detail

}  // namespace Vorn

#endif
