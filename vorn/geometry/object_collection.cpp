#include <vorn/geometry/object_collection.h>

#include <iterator>

#include <vorn/foundation/exception.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/polygon.h>

VornObjectCollection::VornObjectCollection(VornObjectCollection const& other)
    : VornAllocator(), m_items(other.m_items) {}

VornObjectCollection::~VornObjectCollection() { Clear(); }

VornObjectCollection& VornObjectCollection::operator=(VornObjectCollection const& other) {
  // The result is ignored on purpose: assign is all or nothing, so on exhaustion the old
  // pointers stay, and this operator has no way to report it.
  static_cast<void>(m_items.assign(other.m_items));
  return *this;
}

// Each copy comes from the class-level operator new of VornAllocator, which is noexcept:
// a null result skips the copy constructor, and a throwing copy constructor hands the
// storage back to VornFree before the exception leaves the new-expression.
void VornObjectCollection::Add(VornPoint const& object) { AdoptCopy(new VornPoint(object)); }
void VornObjectCollection::Add(VornLine const& object) { AdoptCopy(new VornLine(object)); }
void VornObjectCollection::Add(VornPolygon const& object) { AdoptCopy(new VornPolygon(object)); }
void VornObjectCollection::Add(VornMultiPoint const& object) {
  AdoptCopy(new VornMultiPoint(object));
}
void VornObjectCollection::Add(VornMultiLine const& object) {
  AdoptCopy(new VornMultiLine(object));
}
void VornObjectCollection::Add(VornMultiPolygon const& object) {
  AdoptCopy(new VornMultiPolygon(object));
}

void VornObjectCollection::AddReference(IVornObject* object) { static_cast<void>(Link(object)); }
void VornObjectCollection::AddReference(VornPoint* object) {
  AddReference(static_cast<IVornObject*>(object));
}
void VornObjectCollection::AddReference(VornLine* object) {
  AddReference(static_cast<IVornObject*>(object));
}
void VornObjectCollection::AddReference(VornPolygon* object) {
  AddReference(static_cast<IVornObject*>(object));
}
void VornObjectCollection::AddReference(VornMultiPoint* object) {
  AddReference(static_cast<IVornObject*>(object));
}
void VornObjectCollection::AddReference(VornMultiLine* object) {
  AddReference(static_cast<IVornObject*>(object));
}
void VornObjectCollection::AddReference(VornMultiPolygon* object) {
  AddReference(static_cast<IVornObject*>(object));
}

void VornObjectCollection::AddRange(VornObjectCollection const& other) {
  // Counted up front, so that adding a collection to itself stops at the members it had.
  unsigned int remaining = other.Count();
  for (const_iterator it = other.begin(); remaining > 0; ++it, --remaining) {
    IVornObject const* const object = *it;
    if (object == nullptr) continue;
    switch (object->GetType()) {
      case Point:
        Add(static_cast<VornPoint const&>(*object));
        break;
      case Line:
        Add(static_cast<VornLine const&>(*object));
        break;
      case Polygon:
        Add(static_cast<VornPolygon const&>(*object));
        break;
      case MultiPoint:
        Add(static_cast<VornMultiPoint const&>(*object));
        break;
      case MultiLine:
        Add(static_cast<VornMultiLine const&>(*object));
        break;
      case MultiPolygon:
        Add(static_cast<VornMultiPolygon const&>(*object));
        break;
      case TreatmentGrid:
      case TreatmentMap:
      case TreatmentGridEx:
        AddTreatmentCopy(*object);
        break;
      default:
        throw VornException("AddRange(): Unknown VornObject-Type", Vorn::ErrorCodes::NoCode);
    }
  }
}

void VornObjectCollection::Clear() {
  // Free comes before the unlinking, so that a member that cannot be freed stays.
  while (!m_items.empty()) {
    Free(m_items.front());
    m_items.pop_front();
  }
}

void VornObjectCollection::RemoveAt(unsigned int index) {
  if (index >= Count()) return;
  iterator const it = at(index);
  Free(*it);
  m_items.erase(it);
}

void VornObjectCollection::RemoveReference(unsigned int index) {
  if (index < Count()) m_items.erase(at(index));
}

void VornObjectCollection::Transform(VornTransformCallback callback, void* context) {
  for (iterator it = m_items.begin(); it != m_items.end(); ++it) {
    if (*it != nullptr) (*it)->Transform(callback, context);
  }
}

VornObjectCollection::iterator VornObjectCollection::at(unsigned int index) {
  assert(index < Count());
  return std::next(m_items.begin(), index);
}

VornObjectCollection::const_iterator VornObjectCollection::at(unsigned int index) const {
  assert(index < Count());
  return std::next(m_items.begin(), index);
}

bool VornObjectCollection::Link(IVornObject* object) {
  iterator const node = m_items.insert(m_items.end());
  if (node == m_items.end()) return false;
  *node = object;
  return true;
}

void VornObjectCollection::AdoptCopy(IVornObject* copy) {
  if (!Link(copy)) delete copy;
}

void VornObjectCollection::Free(IVornObject* object) {
  if (object == nullptr) return;
  switch (object->GetType()) {
    case Point:
    case Line:
    case Polygon:
    case MultiPoint:
    case MultiLine:
    case MultiPolygon:
    case TreatmentGrid:
    case TreatmentMap:
    case TreatmentGridEx:
      // The virtual deleting destructor runs the concrete class's destructor and returns
      // the storage to VornFree, exactly as a delete through the concrete class would.
      delete object;
      return;
    default:
      throw VornException("Free(): Unknown VornObject-Type", Vorn::ErrorCodes::NoCode);
  }
}
