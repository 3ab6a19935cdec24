#include <vorn/treatment/treatment_polygon_collection.h>

template class Vorn::owning_list<VornTreatmentPolygon,
                                 Vorn::treatment_polygon_collection_rules>;

VornTreatmentPolygonCollection::VornTreatmentPolygonCollection() : owning_list(true) {}

VornTreatmentPolygonCollection::VornTreatmentPolygonCollection(bool autoBoundbox)
    : owning_list(autoBoundbox) {}

VornTreatmentPolygonCollection const& VornTreatmentPolygonCollection::operator=(
    VornTreatmentPolygonCollection const& other) {
  Clear();
  for (const_iterator it = other.begin(); it != other.end(); ++it) {
    if (*it != nullptr) Add(**it);
  }
  return *this;
}

void VornTreatmentPolygonCollection::Add(VornTreatmentPolygon const& area) {
  if (AutoBoundbox) Boundbox.AddBoundbox(area.Area.Polygons.Boundbox);
  VornTreatmentPolygon* const copy = new VornTreatmentPolygon(area);
  iterator const node = m_items.insert(m_items.end());
  if (node == m_items.end()) {
    delete copy;
    return;
  }
  *node = copy;
}

void VornTreatmentPolygonCollection::Add(VornMultiPolygon const& multiPolygon,
                                         VornTreatmentZone const& zone) {
  Adopt(new VornTreatmentPolygon(multiPolygon, zone));
}

void VornTreatmentPolygonCollection::AddRange(VornTreatmentPolygonCollection const& other) {
  for (const_iterator it = other.begin(); it != other.end(); ++it) {
    if (*it == nullptr) continue;
    if (AutoBoundbox) Boundbox.AddBoundbox((*it)->Area.Polygons.Boundbox);
    Add(**it);
  }
}
