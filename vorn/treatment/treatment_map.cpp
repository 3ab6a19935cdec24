#include <vorn/treatment/treatment_map.h>

VornTreatmentMap::VornTreatmentMap() = default;

VornTreatmentMap::VornTreatmentMap(VornTreatmentMap const& other) : IVornObject() {
  operator=(other);
}

VornTreatmentMap::~VornTreatmentMap() = default;

VornTreatmentMap const& VornTreatmentMap::operator=(VornTreatmentMap const& other) {
  TreatmentPolygons.Clear();
  TreatmentPolygons.AddRange(other.TreatmentPolygons);
  Attributes.Clear();
  Attributes.AddRange(other.Attributes);
  return *this;
}

VornObjectType VornTreatmentMap::GetType() const { return TreatmentMap; }

void VornTreatmentMap::Transform(VornTransformCallback callback, void* context) {
  TreatmentPolygons.Transform(callback, context);
}
