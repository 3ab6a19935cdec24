// VornPolygon: one ring of vertices with attributes, flagged as an outer ring or a hole.
//
// A polygon with holes is a VornMultiPolygon whose collection holds the outer rings and
// the flagged holes. The polygon owns its coordinate vector (which keeps its bounding
// box) and its attribute collection. Rings are stored exactly as given: they are not
// closed, reoriented or checked against each other.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_POLYGON_H
#define VORN_GEOMETRY_POLYGON_H

#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>

class VORN_API VornPolygon : public IVornObject {
public:
  // True: the ring is a hole of the outer ring(s) of its multi-polygon. Default false.
  bool IsHole;
  VornCoordinateVector Coordinates;
  VornAttributeCollection Attributes;

  // An empty outer ring.
  VornPolygon();
  // An outer ring of coords[0] .. coords[count - 1]. Throws
  // VornException("Parameter is NULL", 5003) when coords is null.
  VornPolygon(VornCoordinate* coords, int count);
  // As above with the given hole flag; the null test comes first.
  VornPolygon(VornCoordinate* coords, int count, bool isHole);
  // A ring of every coordinate of v with the given hole flag.
  VornPolygon(VornCoordinateVector const& v, bool isHole);
  // Builds an empty polygon, then assigns from `other`.
  VornPolygon(VornPolygon const& other);
  ~VornPolygon() override;

  // Copies Tag, IsHole, Coordinates, then Attributes. Assigning a polygon to itself leaves
  // it unchanged.
  VornPolygon const& operator=(VornPolygon const& other);

  // Polygon (2).
  VornObjectType GetType() const override;

  // Coordinates.Transform(callback, context); a null callback throws
  // VornException("Parameter is NULL", 5003). IsHole, Attributes and Tag are not touched.
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
