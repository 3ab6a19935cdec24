// VornMultiPolygonVector: an owning array of multi-polygons with a running bounding box.
//
// The vector owns what it holds: Add and AddRange store deep copies made on the
// VornMalloc channel, AddReference adopts the caller's heap object; RemoveAt, Remove,
// Clear, assignment and the destructor delete; RemoveReference and RemoveAllReferences
// hand objects back. Unlike the list collections, the copy constructor is deep, and the
// array may hold null slots (a copy that could not be allocated, or a growing Resize).
//
// Boundbox is the union of the elements' Polygons.Boundbox. Additions widen it and most
// removals recompute it; RemoveAt deliberately does not (see there).
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_MULTI_POLYGON_VECTOR_H
#define VORN_GEOMETRY_MULTI_POLYGON_VECTOR_H

#include <iterator>

#include <vorn/containers/vector.h>
#include <vorn/core/boundbox.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/multi_polygon.h>

namespace Vorn {

typedef vector<VornMultiPolygon*, allocator, exponential_growth<10>> multi_polygon_pointers;

extern template class VORN_API vector<VornMultiPolygon*, allocator, exponential_growth<10>>;

}  // namespace Vorn

class VORN_API VornMultiPolygonVector {
public:
  typedef std::reverse_iterator<VornMultiPolygon**> reverse_iterator;
  typedef std::reverse_iterator<VornMultiPolygon* const*> const_reverse_iterator;

  // Layout: Boundbox, then the pointer array.
  VornBoundbox Boundbox;

  // Empty, with an uninitialised box.
  VornMultiPolygonVector();
  // Empty, then AddRange(v): deep copies of the non-null elements. When a copy throws,
  // the copies already made are released before the exception passes on.
  explicit VornMultiPolygonVector(Vorn::multi_polygon_pointers const& v);
  // Empty, then AddRange(other): deep copies, with the box built from them; releases
  // them as above when a copy throws.
  VornMultiPolygonVector(VornMultiPolygonVector const& other);
  // Deletes every element.
  ~VornMultiPolygonVector();

  // Clear, then copies of the source's elements in order; on a complete copy Boundbox is
  // assigned from the source's, which throws VornException("Boundbox not initialized",
  // 5004) when that box is uninitialised (the copies stay). A null source element stops
  // the copying there, leaving the box reset. A copy that cannot be allocated is stored
  // as a null slot.
  // Note: deliberately no self-assignment test: assigning a vector to itself empties it.
  VornMultiPolygonVector const& operator=(VornMultiPolygonVector const& other);

  unsigned int Count() const { return m_items.size(); }

  // True when the capacity reaches n (never shrinks); false when the storage could not
  // grow, with nothing changed.
  bool Reserve(unsigned int n);
  // Resizes the pointer array: new slots are null; objects in slots that are cut off are
  // not deleted (the caller must have taken them). True when Count() is now n.
  bool Resize(unsigned int n);

  // The start of the pointer array (the value of begin()), typed as VornMultiPolygon*.
  // Note: deliberately typed this way although it points at the pointers, not at a
  // multi-polygon: index through begin() instead.
  operator VornMultiPolygon*() const;

  VornMultiPolygon** begin() { return m_items.begin(); }
  VornMultiPolygon** end() { return m_items.end(); }
  VornMultiPolygon* const* begin() const { return m_items.begin(); }
  VornMultiPolygon* const* end() const { return m_items.end(); }
  reverse_iterator rbegin() { return reverse_iterator(end()); }
  reverse_iterator rend() { return reverse_iterator(begin()); }
  const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

  // Widens Boundbox by o.Polygons.Boundbox, then appends a copy of o.
  // Note: running out of memory for the copy itself or its slot throws nothing: a copy
  // that cannot be allocated is appended as a null slot, and a copy for which no slot can
  // be allocated is released again (the box stays widened). An exception from copying
  // the multi-polygon's own contents passes through, and nothing is appended.
  void Add(VornMultiPolygon const& o);
  // Appends p and takes ownership, then widens Boundbox by its box. A null p is ignored.
  // When no slot can be allocated nothing changes and p stays with the caller (Count()
  // tells).
  void AddReference(VornMultiPolygon* p);
  // For every non-null element of v in order, Add(*element); null elements are skipped.
  // An empty v changes nothing; otherwise room is reserved once.
  void AddRange(Vorn::multi_polygon_pointers const& v);
  // As above for the elements of another vector (room is reserved even when it is
  // empty). Appending a vector to itself copies the elements it held at the call, once.
  void AddRange(VornMultiPolygonVector const& v);

  // Deletes the element at `index` and erases its slot. Throws
  // VornException("Index out of range", 5002) when index >= Count().
  // Note: Boundbox is deliberately left as it was (unlike every other removal); callers
  // shrink it with RecalcBoundbox.
  void RemoveAt(unsigned int index);
  // Deletes *slot and erases the slot, then RecalcBoundbox. `slot` must lie in
  // [begin(), end()); it is not checked.
  void Remove(VornMultiPolygon** slot);
  // Erases the slot without deleting (the object is the caller's again), then
  // RecalcBoundbox. `slot` must lie in [begin(), end()); it is not checked.
  void RemoveReference(VornMultiPolygon** slot);
  // Erases every slot without deleting, then RecalcBoundbox (which leaves the box reset).
  void RemoveAllReferences();
  // Deletes every element, erases every slot and resets Boundbox.
  void Clear();
  // Rebuilds Boundbox from the elements' Polygons.Boundbox, in order (null slots skipped).
  void RecalcBoundbox();

  // Note: does nothing at all, not even test the callback; the elements are transformed
  // through their own Transform.
  void Transform(VornTransformCallback callback, void* context);
  // Note: does nothing at all.
  void RemoveDuplicates();

private:
  // Appends a copy this vector has just made (null allowed); releases it when no slot can
  // be allocated.
  void AppendCopy(VornMultiPolygon* copy);
  // AddRange for the constructors: on an exception every copy made so far is released.
  template <class Source>
  void AddRangeOrRelease(Source const& source);

  Vorn::multi_polygon_pointers m_items;
};

#endif
