// VornPoint: a single position with attributes, the simplest geometry object.
//
// The point owns its attribute collection; it has no bounding box. Its fields are public
// data members that applications read and write directly.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_POINT_H
#define VORN_GEOMETRY_POINT_H

#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>

class VORN_API VornPoint : public IVornObject {
public:
  VornCoordinate Coordinate;
  VornAttributeCollection Attributes;

  // Position (0, 0), no attributes.
  VornPoint();
  // Position (x, y) exactly as given, no attributes.
  VornPoint(double x, double y);
  // Builds an empty point, then assigns from `other` (attributes are deep copies).
  VornPoint(VornPoint const& other);
  ~VornPoint() override;

  // Copies Tag, Coordinate, then Attributes; attribute-collection failures pass through.
  // Assigning a point to itself leaves it unchanged.
  VornPoint const& operator=(VornPoint const& other);

  // Point (0).
  VornObjectType GetType() const override;

  // Replaces Coordinate by the callback's result. A null callback throws
  // VornException("Parameter is NULL", 5003); a throwing callback leaves Coordinate as it
  // was. Attributes and Tag are not touched.
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
