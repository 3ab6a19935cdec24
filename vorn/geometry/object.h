// IVornObject: the polymorphic base of every geometry object, treatment grid and
// treatment map, and VornObjectType, the kind code by which collections tell objects apart.
//
// Every object can name its kind (GetType) and push all of its coordinates through a
// caller-supplied callback (Transform). Objects are created on the VornMalloc channel:
// the base derives from VornAllocator, so a plain new or delete of any object, and the
// virtual deleting destructor used by the owning collections, go through VornMalloc and
// VornFree. Each object also carries a narrow Tag that the library only copies.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_OBJECT_H
#define VORN_GEOMETRY_OBJECT_H

#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>

// The kind of an object, as returned by GetType. The numbering is part of the interface:
// collections and the factory functions switch on it.
// Note: TreatmentMap (7) deliberately comes before TreatmentGridEx (8).
// The underlying type is fixed to int so that every kind number a caller's object may
// report (not only 0 to 8) is a valid value that the collections can reject.
enum VornObjectType : int {
  Point = 0,
  Line = 1,
  Polygon = 2,
  MultiPoint = 3,
  MultiLine = 4,
  MultiPolygon = 5,
  TreatmentGrid = 6,
  TreatmentMap = 7,
  TreatmentGridEx = 8
};

class VORN_API IVornObject : public VornAllocator {
public:
  // A narrow text carried by every object. The library never sets or reads it; it is
  // empty after construction and copied by every copy constructor and assignment.
  stringbase<char, astringfuncs> Tag;

  // Releases Tag. Pure, so that the class cannot be instantiated, but with a body that
  // every derived destructor runs.
  virtual ~IVornObject() = 0;

  // The kind of the concrete object.
  virtual VornObjectType GetType() const = 0;

  // Maps every coordinate of the object through callback(x, y, &outX, &outY, context).
  // A null callback throws VornException("Parameter is NULL", 5003); each object states
  // what it has changed by then and what a callback that throws part-way leaves behind.
  virtual void Transform(VornTransformCallback callback, void* context) = 0;

protected:
  IVornObject() = default;
  // Copies Tag.
  IVornObject(IVornObject const& other);
  // Copies Tag; assigning an object to itself leaves Tag as it is.
  IVornObject& operator=(IVornObject const& other);
};

#endif
