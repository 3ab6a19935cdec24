// VornObjectCollection: the heterogeneous, ordered collection of objects of every kind.
//
// The collection holds IVornObject pointers in insertion order: points next to lines,
// multi-polygons, treatment grids and treatment maps. It keeps no bounding box and tells
// its members apart only through GetType.
//
// Ownership: Add stores a copy made on the VornMalloc channel; AddReference adopts the
// caller's heap object as it is. Both kinds of member are deleted by Clear, RemoveAt and
// the destructor; RemoveReference and RemoveAllReferences only detach, handing the object
// back to the caller. Copy construction and assignment copy the pointers only, so that
// two collections then share the same objects: detach one side with RemoveAllReferences
// before both are destroyed.
//
// A member may be null (Add appends null when the copy cannot be allocated, AddReference
// takes null as it is). Null members are skipped by every operation that would have to
// look at the object, and removed like any other member.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_OBJECT_COLLECTION_H
#define VORN_GEOMETRY_OBJECT_COLLECTION_H

#include <cassert>

#include <vorn/containers/list.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/geometry/object.h>

class VornPoint;
class VornLine;
class VornPolygon;
class VornMultiPoint;
class VornMultiLine;
class VornMultiPolygon;
class VornTreatmentGrid;
class VornTreatmentGridEx;
class VornTreatmentMap;

class VORN_API VornObjectCollection : public VornAllocator {
public:
  typedef Vorn::list<IVornObject*, Vorn::allocator> item_list;
  typedef item_list::iterator iterator;
  typedef item_list::const_iterator const_iterator;
  typedef item_list::reverse_iterator reverse_iterator;
  typedef item_list::const_reverse_iterator const_reverse_iterator;

  VornObjectCollection() = default;
  // Refers to the very same objects as `other` (a copy of the pointers, not of the
  // objects). If memory runs out part-way, the copy holds the pointers copied so far.
  VornObjectCollection(VornObjectCollection const& other);
  // Clear(): deletes every member.
  // Note: a member of an unknown kind makes Clear throw, which a destructor cannot pass
  // on, so the program ends (std::terminate). Detach such members with RemoveReference
  // or RemoveAllReferences before the collection goes.
  ~VornObjectCollection();

  // Replaces the pointers with copies of other's: both collections then share the same
  // objects. Assigning a collection to itself changes nothing.
  // Note: the previous members are deliberately not deleted; they leak unless the caller
  // still holds them. If memory runs out, this collection is left as it was.
  VornObjectCollection& operator=(VornObjectCollection const& other);

  unsigned int Count() const { return m_items.size(); }

  // The member at `index`, walking from the first.
  // Note: deliberately unchecked, unlike the typed collections: index must be below
  // Count() and the member must not be null; debug builds assert both.
  IVornObject const& operator[](unsigned int index) const {
    IVornObject const* const object = *at(index);
    assert(object != nullptr);
    return *object;
  }

  iterator begin() { return m_items.begin(); }
  iterator end() { return m_items.end(); }
  const_iterator begin() const { return m_items.begin(); }
  const_iterator end() const { return m_items.end(); }
  reverse_iterator rbegin() { return m_items.rbegin(); }
  reverse_iterator rend() { return m_items.rend(); }
  const_reverse_iterator rbegin() const { return m_items.rbegin(); }
  const_reverse_iterator rend() const { return m_items.rend(); }

  // Appends a copy of `object` made on the VornMalloc channel; nothing is thrown for
  // want of memory. If the copy cannot be allocated, a null member is appended instead.
  // If the copy constructor throws, its storage is released, nothing is appended and the
  // exception passes on. If no list node can be had, the copy is deleted again and
  // nothing is appended.
  void Add(VornPoint const& object);
  void Add(VornLine const& object);
  void Add(VornPolygon const& object);
  void Add(VornMultiPoint const& object);
  void Add(VornMultiLine const& object);
  void Add(VornMultiPolygon const& object);
  void Add(VornTreatmentGrid const& object);
  void Add(VornTreatmentGridEx const& object);
  void Add(VornTreatmentMap const& object);

  // Appends the pointer as it is, null included, and takes ownership of the object. All
  // ten overloads are the same operation.
  // Note: if no list node can be had, nothing is appended and nothing is thrown; the
  // caller then still owns the object (Count() tells).
  void AddReference(IVornObject* object);
  void AddReference(VornPoint* object);
  void AddReference(VornLine* object);
  void AddReference(VornPolygon* object);
  void AddReference(VornMultiPoint* object);
  void AddReference(VornMultiLine* object);
  void AddReference(VornMultiPolygon* object);
  void AddReference(VornTreatmentGrid* object);
  void AddReference(VornTreatmentGridEx* object);
  void AddReference(VornTreatmentMap* object);

  // Appends a deep copy of every member of `other`, in order, through the matching Add.
  // Null members of `other` are skipped. A member of an unknown kind throws
  // VornException("AddRange(): Unknown VornObject-Type", -1); the copies appended before
  // it stay. `other` may be this collection: the members present at the call are copied.
  void AddRange(VornObjectCollection const& other);

  // Deletes the first member, then unlinks it, until the collection is empty. A member of
  // an unknown kind throws VornException("Free(): Unknown VornObject-Type", -1) and stays
  // first, with every member behind it.
  void Clear();

  // Deletes the member at `index`, then unlinks it. An index at or beyond Count() does
  // nothing and throws nothing. A member of an unknown kind throws as Clear and stays.
  void RemoveAt(unsigned int index);

  // Unlinks the member at `index` without deleting it: it belongs to the caller again,
  // who must have fetched its pointer beforehand. An index at or beyond Count() does
  // nothing and throws nothing.
  void RemoveReference(unsigned int index);

  // Unlinks every member without deleting any.
  void RemoveAllReferences() { m_items.clear(); }

  // Calls every member's own Transform(callback, context), in order; null members are
  // skipped. There is no test here: a null callback throws
  // VornException("Parameter is NULL", 5003) from the first member, so an empty
  // collection accepts it silently. A member that throws leaves the earlier members
  // transformed and the later ones untouched.
  void Transform(VornTransformCallback callback, void* context);

private:
  // The node at `index`, walking from the first; unchecked (asserted).
  iterator at(unsigned int index);
  const_iterator at(unsigned int index) const;

  // Appends `object` as it is; false, with nothing changed, when no node can be had.
  bool Link(IVornObject* object);
  // Appends a copy just made by Add (null when its allocation failed); deletes the copy
  // again when no node can be had.
  void AdoptCopy(IVornObject* copy);
  // AddRange's copy of a treatment grid, extended grid or treatment map. Defined with the
  // treatment classes, so that this subsystem does not depend on them.
  void AddTreatmentCopy(IVornObject const& object);
  // Deletes `object` through its virtual deleting destructor when its kind is one of the
  // nine known ones; null does nothing. Any other kind throws
  // VornException("Free(): Unknown VornObject-Type", -1) and the object is kept.
  static void Free(IVornObject* object);

  item_list m_items;
};

#endif
