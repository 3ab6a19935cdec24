#include <vorn/treatment/treatment_zone_collection.h>

#include <cassert>

#include <vorn/foundation/exception.h>

namespace {

[[noreturn]] void ThrowIndexOutOfRange() {
  throw VornException("Index out of range", Vorn::ErrorCodes::OutOfRange);
}

[[noreturn]] void ThrowParameterIsNull() {
  throw VornException("Parameter is NULL", Vorn::ErrorCodes::ParameterIsNull);
}

// The position `index` steps after `first`, once the index was checked against the count.
template <class Iterator>
Iterator Walk(Iterator first, unsigned int index, unsigned int count) {
  if (index >= count) ThrowIndexOutOfRange();
  while (index-- > 0) ++first;
  return first;
}

}  // namespace

VornTreatmentZoneCollection::VornTreatmentZoneCollection(VornTreatmentZoneCollection const& other) {
  AddRange(other);
}

VornTreatmentZoneCollection::~VornTreatmentZoneCollection() { Clear(); }

VornTreatmentZoneCollection const& VornTreatmentZoneCollection::operator=(
    VornTreatmentZoneCollection const& other) {
  Clear();
  AddRange(other);
  return *this;
}

void VornTreatmentZoneCollection::Add(VornTreatmentZone const& zone) {
  Adopt(new VornTreatmentZone(zone));
}

void VornTreatmentZoneCollection::Add(int zoneNumber, double rate) {
  Adopt(new VornTreatmentZone(zoneNumber, rate));
}

void VornTreatmentZoneCollection::Adopt(VornTreatmentZone* copy) {
  if (copy != nullptr && Link(copy)) return;
  delete copy;
  ThrowParameterIsNull();
}

void VornTreatmentZoneCollection::AddReference(VornTreatmentZone* zone) {
  if (zone == nullptr || !Link(zone)) ThrowParameterIsNull();
}

void VornTreatmentZoneCollection::AddRange(VornTreatmentZoneCollection const& other) {
  // Counted up front, so that appending a collection to itself stops at the zones it had.
  const_iterator it = other.begin();
  for (unsigned int remaining = other.Count(); remaining > 0; --remaining, ++it) {
    VornTreatmentZone* const copy = *it != nullptr ? new VornTreatmentZone(**it) : nullptr;
    if (!Link(copy)) {
      delete copy;
      return;
    }
  }
}

bool VornTreatmentZoneCollection::Link(VornTreatmentZone* zone) {
  iterator const node = m_zones.insert(m_zones.end());
  if (node == m_zones.end()) return false;
  *node = zone;
  return true;
}

void VornTreatmentZoneCollection::RemoveAt(unsigned int index) {
  iterator const it = at(index);
  delete *it;
  m_zones.erase(it);
}

void VornTreatmentZoneCollection::RemoveReference(unsigned int index) { m_zones.erase(at(index)); }

void VornTreatmentZoneCollection::Clear() {
  for (iterator it = m_zones.begin(); it != m_zones.end(); ++it) delete *it;
  m_zones.clear();
}

VornTreatmentZone const& VornTreatmentZoneCollection::operator[](unsigned int index) const {
  VornTreatmentZone const* const zone = *Walk(m_zones.begin(), index, Count());
  assert(zone != nullptr && "a zone whose copy could not be allocated");
  return *zone;
}

VornTreatmentZoneCollection::iterator VornTreatmentZoneCollection::at(unsigned int index) {
  return Walk(m_zones.begin(), index, Count());
}
