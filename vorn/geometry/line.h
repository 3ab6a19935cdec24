// VornLine: an open sequence of vertices with attributes.
//
// The line owns its coordinate vector (which keeps the line's bounding box) and its
// attribute collection. Vertices are stored exactly in the order and with the values
// given. Transforming a line is transforming its coordinate vector.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_LINE_H
#define VORN_GEOMETRY_LINE_H

#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>

class VORN_API VornLine : public IVornObject {
public:
  VornCoordinateVector Coordinates;
  VornAttributeCollection Attributes;

  VornLine();
  // Appends coords[0] .. coords[count - 1] (a count of 0 or less appends nothing).
  // Throws VornException("Parameter is NULL", 5003) when coords is null.
  VornLine(VornCoordinate* coords, int count);
  // Appends every coordinate of v.
  explicit VornLine(VornCoordinateVector const& v);
  // Builds an empty line, then assigns from `other`.
  VornLine(VornLine const& other);
  ~VornLine() override;

  // Copies Tag, Coordinates, then Attributes. Returns at once when `other` is this line.
  VornLine const& operator=(VornLine const& other);

  // Line (1).
  VornObjectType GetType() const override;

  // Coordinates.Transform(callback, context): every vertex is mapped and the vector's box
  // follows; a null callback throws VornException("Parameter is NULL", 5003).
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
