#include <vorn/treatment/treatment_polygon_collection.h>

template class Vorn::owning_list<VornTreatmentPolygon, Vorn::treatment_polygon_collection_rules>;

VornTreatmentPolygonCollection::VornTreatmentPolygonCollection() : owning_list(true) {}

VornTreatmentPolygonCollection::VornTreatmentPolygonCollection(bool autoBoundbox)
    : owning_list(autoBoundbox) {}

VornTreatmentPolygonCollection const& VornTreatmentPolygonCollection::operator=(
    VornTreatmentPolygonCollection const& other) {
  // Not the shared Assign: that adds through the base's Add, which throws where this
  // collection's Add appends a null member.
  Clear();
  for (const_iterator it = other.begin(); it != other.end(); ++it) {
    if (*it != nullptr) Add(**it);
  }
  return *this;
}

void VornTreatmentPolygonCollection::Add(VornTreatmentPolygon const& area) {
  if (AutoBoundbox) Boundbox.AddBoundbox(area.Area.Polygons.Boundbox);
  // The box has taken area's own box, stale or not; the copy's recomputed box must not
  // widen it a second time, so the copy (null when it could not be allocated) is
  // appended without touching the box.
  VornTreatmentPolygon* const copy = new VornTreatmentPolygon(area);
  if (!AppendUnchecked(copy)) delete copy;
}

void VornTreatmentPolygonCollection::Add(VornMultiPolygon const& multiPolygon,
                                         VornTreatmentZone const& zone) {
  Adopt(new VornTreatmentPolygon(multiPolygon, zone));
}

void VornTreatmentPolygonCollection::AddRange(VornTreatmentPolygonCollection const& other) {
  // Counted up front, so that appending a collection to itself stops at the areas it had.
  const_iterator it = other.begin();
  for (unsigned int remaining = other.Count(); remaining > 0; --remaining, ++it) {
    if (*it == nullptr) continue;
    if (AutoBoundbox) Boundbox.AddBoundbox((*it)->Area.Polygons.Boundbox);
    Add(**it);
  }
}
