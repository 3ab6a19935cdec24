// VornMultiPolygon: the library's polygon with holes, several rings under one set of
// attributes.
//
// The rings live in a polygon collection: outer rings and holes (VornPolygon::IsHole)
// together, meant to be ordered outer rings first (SortHoles establishes that order;
// nothing else enforces it). The multi-polygon owns the collection and through it every
// ring: deleting or clearing it deletes them. The collection keeps the box of all rings.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_MULTI_POLYGON_H
#define VORN_GEOMETRY_MULTI_POLYGON_H

#include <vorn/core/attribute_collection.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>
#include <vorn/geometry/polygon_collection.h>

class VORN_API VornMultiPolygon : public IVornObject {
public:
  VornPolygonCollection Polygons;
  VornAttributeCollection Attributes;

  VornMultiPolygon();
  // Builds an empty multi-polygon, then assigns from `other` (the rings are deep copies).
  VornMultiPolygon(VornMultiPolygon const& other);
  ~VornMultiPolygon() override;

  // Copies Tag, Polygons (deep), then Attributes. Failures of the collections' copies
  // pass through.
  // Note: deliberately no self-assignment test: the polygon collection (and the attribute
  // collection) clear themselves before copying, so assigning a multi-polygon to itself
  // leaves it without polygons.
  VornMultiPolygon const& operator=(VornMultiPolygon const& other);

  // MultiPolygon (5).
  VornObjectType GetType() const override;

  // Polygons.Transform(callback, context). A null callback throws
  // VornException("Parameter is NULL", 5003) after the collection's box was reset.
  void Transform(VornTransformCallback callback, void* context) override;

  // Polygons.SortHoles(): see VornPolygonCollection::SortHoles for the exact order.
  void SortHoles();

  // Deletes hole rings, scanning from the front; RecalcBoundbox once at the end if any
  // ring was removed (otherwise the box is not touched).
  // Note: after each removal the scan resumes at the second ring, so the ring that is then
  // first is not examined again: [hole H1, hole H2, outer O] leaves [H2, O]. With the rings
  // sorted (outer first) every hole goes; otherwise a second call removes the survivor.
  void RemoveHoles();
};

#endif
