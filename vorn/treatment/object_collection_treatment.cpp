// The members of VornObjectCollection that handle the treatment kinds. They live here,
// with the treatment classes, because geometry must not depend on treatment.
#include <vorn/geometry/object_collection.h>

#include <cassert>

#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_map.h>

void VornObjectCollection::Add(VornTreatmentGrid const& object) {
  AdoptCopy(new VornTreatmentGrid(object));
}

void VornObjectCollection::Add(VornTreatmentGridEx const& object) {
  AdoptCopy(new VornTreatmentGridEx(object));
}

void VornObjectCollection::Add(VornTreatmentMap const& object) {
  AdoptCopy(new VornTreatmentMap(object));
}

void VornObjectCollection::AddReference(VornTreatmentGrid* object) {
  AddReference(static_cast<IVornObject*>(object));
}

void VornObjectCollection::AddReference(VornTreatmentGridEx* object) {
  AddReference(static_cast<IVornObject*>(object));
}

void VornObjectCollection::AddReference(VornTreatmentMap* object) {
  AddReference(static_cast<IVornObject*>(object));
}

void VornObjectCollection::AddTreatmentCopy(IVornObject const& object) {
  switch (object.GetType()) {
    case TreatmentGrid:
      Add(static_cast<VornTreatmentGrid const&>(object));
      return;
    case TreatmentMap:
      Add(static_cast<VornTreatmentMap const&>(object));
      return;
    case TreatmentGridEx:
      Add(static_cast<VornTreatmentGridEx const&>(object));
      return;
    default:
      assert(false && "AddRange hands over treatment kinds only");
      return;
  }
}
