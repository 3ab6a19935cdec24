// VornTreatmentMap: a vector application-rate map, the areas of a treatment polygon
// collection plus attributes.
//
// Each area carries a full copy of its zone; the map has no zone legend of its own. The
// map owns its areas (through TreatmentPolygons, whose AutoBoundbox is on) and its
// attributes. It is an IVornObject of kind TreatmentMap (7).
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_MAP_H
#define VORN_TREATMENT_TREATMENT_MAP_H

#include <vorn/containers/list.h>
#include <vorn/core/attribute_collection.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_polygon_collection.h>

class VORN_API VornTreatmentMap : public IVornObject {
private:
  // Kept for layout only: created empty, released with the map, never used.
  Vorn::list<VornTreatmentPolygon*, Vorn::allocator> m_unused;

public:
  VornAttributeCollection Attributes;
  // The map's areas, with a box kept current on every addition and removal.
  VornTreatmentPolygonCollection TreatmentPolygons;

  // Empty Tag, attributes and areas.
  VornTreatmentMap();
  // Builds an empty map, then assigns from other: the copy has its own copies of every
  // area and attribute, and an empty Tag.
  VornTreatmentMap(VornTreatmentMap const& other);
  // Releases every area, the attributes, then the Tag.
  ~VornTreatmentMap() override;

  // Replaces the areas with copies of other's (Clear, then AddRange), then the attributes
  // likewise. An area whose copy cannot be allocated becomes a null member; running out
  // of memory inside a copy (its rings, an attribute) throws VornException("Parameter is
  // NULL", 5003) and keeps what was copied so far.
  // Note: Tag is deliberately not copied (unlike the grids), and there is no
  // self-assignment test, so assigning a map to itself empties it.
  VornTreatmentMap const& operator=(VornTreatmentMap const& other);

  // TreatmentMap (7).
  VornObjectType GetType() const override;

  // TreatmentPolygons.Transform(callback, context): every area is mapped and the box is
  // rebuilt from them. A null callback throws VornException("Parameter is NULL", 5003)
  // from the first area (after the box was reset); an empty map does not test it.
  void Transform(VornTransformCallback callback, void* context) override;
};

#endif
