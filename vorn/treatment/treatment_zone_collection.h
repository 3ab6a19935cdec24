// VornTreatmentZoneCollection: the ordered, owning list of zones of a grid's legend.
//
// The collection owns every zone in its list, whether it was copied in (Add, AddRange)
// or handed over (AddReference): Clear, RemoveAt, assignment and the destructor destroy
// them and return them to VornFree. RemoveReference and RemoveAllReferences only detach,
// after which the caller owns those zones again. A zone handed over must come from the
// VornMalloc channel (a plain new of VornTreatmentZone, or the factory).
//
// Positions are found by walking from the first zone, so position n costs n steps.
// An entry can be null only after AddRange ran out of memory (see there); Clear,
// RemoveAt and the destructor skip such entries.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_ZONE_COLLECTION_H
#define VORN_TREATMENT_TREATMENT_ZONE_COLLECTION_H

#include <vorn/containers/list.h>
#include <vorn/foundation/export.h>
#include <vorn/treatment/treatment_zone.h>

class VORN_API VornTreatmentZoneCollection {
public:
  typedef Vorn::list_impl::iterator<VornTreatmentZone*> iterator;
  typedef Vorn::list_impl::const_iterator<VornTreatmentZone*> const_iterator;

  VornTreatmentZoneCollection() = default;
  // Empty, then AddRange(other): the copy holds copies of other's zones in the same
  // order, so each side owns and releases its own zones.
  VornTreatmentZoneCollection(VornTreatmentZoneCollection const& other);
  // Clear(), then the list releases its nodes.
  ~VornTreatmentZoneCollection();

  // Clear(), then AddRange(other). Note: there is no self-assignment test, so assigning
  // a collection to itself leaves it empty.
  VornTreatmentZoneCollection const& operator=(VornTreatmentZoneCollection const& other);

  unsigned int Count() const { return m_zones.size(); }

  // Appends a copy of zone as AddReference does. Running out of memory for the copy or
  // its list node throws VornException("Parameter is NULL", 5003) with nothing changed.
  void Add(VornTreatmentZone const& zone);
  // Appends VornTreatmentZone(zoneNumber, rate) as Add does, with the same failure.
  void Add(int zoneNumber, double rate);
  // Appends the zone itself; the collection now owns it. Throws VornException("Parameter
  // is NULL", 5003) for a null zone and when no list node can be allocated; then nothing
  // changes and the caller keeps the zone.
  void AddReference(VornTreatmentZone* zone);
  // Appends a copy of every zone of other, in order.
  // Note: a copy that cannot be allocated is appended as a null entry instead of failing,
  // so later positions still line up with other's; if not even the list node can be
  // allocated the copying stops there. Appending a collection to itself appends one copy
  // of each zone it held before the call.
  void AddRange(VornTreatmentZoneCollection const& other);

  // Destroys and releases the zone at index and removes its entry. Throws
  // VornException("Index out of range", 5002) when index >= Count().
  void RemoveAt(unsigned int index);
  // Removes the entry at index without destroying the zone, which belongs to the caller
  // again. Throws VornException("Index out of range", 5002) when index >= Count().
  void RemoveReference(unsigned int index);
  // Removes every entry without destroying any zone.
  void RemoveAllReferences() { m_zones.clear(); }
  // Destroys and releases every zone, then removes every entry.
  void Clear();

  // The zone at index. Throws VornException("Index out of range", 5002) when
  // index >= Count().
  VornTreatmentZone const& operator[](unsigned int index) const;
  // An iterator at index. Throws VornException("Index out of range", 5002) when
  // index >= Count().
  iterator at(unsigned int index);

  iterator begin() { return m_zones.begin(); }
  iterator end() { return m_zones.end(); }
  const_iterator begin() const { return m_zones.begin(); }
  const_iterator end() const { return m_zones.end(); }

private:
  // Appends a node holding zone; false, with nothing changed, when none can be allocated.
  bool Link(VornTreatmentZone* zone);
  // Takes a copy this collection has just made, as AddReference does; a null copy or a
  // missing node throws VornException("Parameter is NULL", 5003) after releasing the copy.
  void Adopt(VornTreatmentZone* copy);

  Vorn::list<VornTreatmentZone*, Vorn::allocator> m_zones;
};

#endif
