// VornTreatmentPolygon: one area of a vector application-rate map, a multi-polygon with
// the treatment zone that applies inside it.
//
// The area (outer rings and holes, with their attributes) and the zone are owned by
// value. The area's box is Area.Polygons.Boundbox; the treatment polygon collection reads
// it there. Not an IVornObject: no kind code, no virtual operations, and the destructor
// is not virtual. Instances that collections create live on the VornMalloc channel.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_POLYGON_H
#define VORN_TREATMENT_TREATMENT_POLYGON_H

#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/polygon.h>
#include <vorn/treatment/treatment_zone.h>

class VORN_API VornTreatmentPolygon : public VornAllocator {
public:
  VornMultiPolygon Area;
  VornTreatmentZone Zone;

  // An empty area with a default zone.
  VornTreatmentPolygon();
  // An area holding a copy of polygon (added to Area.Polygons), with a copy of zone.
  // Failures of the polygon collection's Add pass through.
  VornTreatmentPolygon(VornPolygon const& polygon, VornTreatmentZone const& zone);
  // A copy of multiPolygon as the area, with a copy of zone.
  VornTreatmentPolygon(VornMultiPolygon const& multiPolygon, VornTreatmentZone const& zone);
  // Deep copies of other's area and zone.
  VornTreatmentPolygon(VornTreatmentPolygon const& other);
  ~VornTreatmentPolygon() = default;

  // Assigns Area, then Zone.
  // Note: like the multi-polygon's, this has no self-assignment test: assigning a
  // treatment polygon to itself empties its area and keeps its zone.
  VornTreatmentPolygon const& operator=(VornTreatmentPolygon const& other);

  // Area.Transform(callback, context): every ring is mapped and the area's box follows.
  // The zone is not touched. A null callback throws VornException("Parameter is NULL",
  // 5003) after the area's box was reset.
  void Transform(VornTransformCallback callback, void* context) {
    Area.Transform(callback, context);
  }
};

#endif
