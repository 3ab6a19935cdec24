// VornMultiPoint: a set of positions held as one coordinate vector, with attributes.
//
// The multi-point owns its coordinate vector (which keeps its bounding box) and its
// attribute collection. Transforming it is transforming the coordinate vector.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_MULTI_POINT_H
#define VORN_GEOMETRY_MULTI_POINT_H

#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>

class VORN_API VornMultiPoint : public IVornObject {
public:
  VornCoordinateVector Coordinates;
  VornAttributeCollection Attributes;

  VornMultiPoint();
  // One point per coordinate of coords[0] .. coords[count - 1]. Throws
  // VornException("Parameter is NULL", 5003) when coords is null.
  VornMultiPoint(VornCoordinate* coords, int count);
  // Builds an empty multi-point, then assigns from `other`.
  VornMultiPoint(VornMultiPoint const& other);
  ~VornMultiPoint() override;

  // Copies Tag, Coordinates, then Attributes. Assigning a multi-point to itself leaves it
  // unchanged.
  VornMultiPoint const& operator=(VornMultiPoint const& other);

  // MultiPoint (3).
  VornObjectType GetType() const override;

  // Coordinates.Transform(callback, context); a null callback throws
  // VornException("Parameter is NULL", 5003).
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
