// The factory functions of the treatment classes, declared with the others in
// <vorn/geometry/factory.h>. They live here because geometry must not depend on treatment.
#include <vorn/geometry/factory.h>

#include <new>

#include <vorn/foundation/memory.h>
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_zone.h>

namespace Vorn {

// These classes derive from VornAllocator: the new-expression draws on VornMalloc, yields
// null without constructing on exhaustion, and releases the storage if the constructor
// throws.
VornTreatmentGrid* Alloc_VornTreatmentGrid() { return new VornTreatmentGrid(); }
VornTreatmentGridEx* Alloc_VornTreatmentGridEx() { return new VornTreatmentGridEx(); }
VornTreatmentMap* Alloc_VornTreatmentMap() { return new VornTreatmentMap(); }
VornTreatmentPolygon* Alloc_VornTreatmentPolygon() { return new VornTreatmentPolygon(); }
VornTreatmentZone* Alloc_VornTreatmentZone() { return new VornTreatmentZone(); }

// The compact zone is a plain value without allocation operators of its own, so its
// VornMalloc storage is obtained and constructed in by hand; its constructor cannot throw.
VornTreatmentZoneEx* Alloc_VornTreatmentZoneEx() {
  void* const storage = VornMalloc(sizeof(VornTreatmentZoneEx));
  if (storage == nullptr) return nullptr;
  return ::new (storage) VornTreatmentZoneEx();
}

void Free_VornTreatmentGrid(VornTreatmentGrid* object) { detail::free_object(object); }
void Free_VornTreatmentGridEx(VornTreatmentGridEx* object) { detail::free_object(object); }
void Free_VornTreatmentMap(VornTreatmentMap* object) { detail::free_object(object); }

// Not polymorphic: the delete runs this class's destructor and its class-level operator
// delete, that is VornFree.
void Free_VornTreatmentPolygon(VornTreatmentPolygon* polygon) { delete polygon; }
void Free_VornTreatmentZone(VornTreatmentZone* zone) { delete zone; }

void Free_VornTreatmentZoneEx(VornTreatmentZoneEx* zone) {
  if (zone == nullptr) return;
  zone->~VornTreatmentZoneEx();
  VornFree(zone);
}

}  // namespace Vorn
