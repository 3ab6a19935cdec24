// VornPolygonCollection: an owning, ordered collection of polygon rings with a running
// bounding box; the ring list of a multi-polygon.
//
// The collection owns every polygon it holds (see owning_list.h for the ownership rules):
// Add stores a copy, AddReference adopts the caller's heap polygon, RemoveAt/Remove/
// Clear/the destructor delete, RemoveReference/RemoveAllReferences hand polygons back.
// The copy constructor is shallow and assignment is deep, on purpose.
//
// Unlike the line collection, the box is kept whatever the caller asks: the constructor
// ignores its argument, additions always widen the box and Clear always resets it; only
// the removals consult AutoBoundbox (which a caller may still set false directly).
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_POLYGON_COLLECTION_H
#define VORN_GEOMETRY_POLYGON_COLLECTION_H

#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/owning_list.h>
#include <vorn/geometry/polygon.h>

namespace Vorn {

struct VORN_API polygon_collection_rules : coordinate_vector_elements<VornPolygon> {
  static constexpr bool kRejectsNull = true;
  static constexpr IndexRule kIndexRule = IndexRule::Checked;
  static constexpr BoxOnAdd kBoxOnAdd = BoxOnAdd::Always;
  static constexpr BoxOnClear kBoxOnClear = BoxOnClear::Always;
  // The box is reset before the callback is tested, so a null callback leaves it reset.
  static constexpr CallbackTest kCallbackTest = CallbackTest::AfterReset;
  static constexpr bool kRecalcAfterTransform = false;
  static constexpr bool kGuardsSelfAssignment = false;
};

// The polygon list and its collection base are compiled once, inside the library, and
// exported from it.
extern template class VORN_API list<VornPolygon*>;
namespace list_impl {
extern template struct VORN_API _ListNode<VornPolygon*>;
extern template class VORN_API iterator<VornPolygon*>;
extern template class VORN_API const_iterator<VornPolygon*>;
}  // namespace list_impl
extern template class owning_list<VornPolygon, polygon_collection_rules>;

}  // namespace Vorn

class VORN_API VornPolygonCollection
    : public Vorn::owning_list<VornPolygon, Vorn::polygon_collection_rules> {
public:
  // Empty, AutoBoundbox true.
  VornPolygonCollection();
  // Note: the argument is deliberately ignored; AutoBoundbox is true as with the default
  // constructor.
  explicit VornPolygonCollection(bool autoBoundbox);
  // Shallow: shares the source's polygons (see the header comment).
  VornPolygonCollection(VornPolygonCollection const& other) = default;
  ~VornPolygonCollection() = default;

  // Deletes the own polygons, then adds copies of the source's; AutoBoundbox is kept.
  // Note: there is no self-assignment test, so assigning a collection to itself empties
  // it (and so does assigning a multi-polygon to itself).
  VornPolygonCollection const& operator=(VornPolygonCollection const& other);

  using owning_list::Add;
  // Adds a new polygon holding every coordinate of v, with the given hole flag. Running out
  // of memory for the polygon or its list node throws VornException("Parameter is NULL",
  // 5003), as Add(VornPolygon const&).
  void Add(VornCoordinateVector const& v, bool isHole);
  // Adds a new polygon of coords[0] .. coords[count - 1] with the given hole flag. A null
  // coords makes the polygon's constructor throw VornException("Parameter is NULL", 5003);
  // its storage is released and nothing changes. Out of memory: as above.
  void Add(VornCoordinate* coords, int count, bool isHole);

  // Deletes the polygon under `it` and unlinks it; RecalcBoundbox when AutoBoundbox.
  // `it` must be a valid position of this collection (not end()); it is not checked.
  void Remove(iterator it);

  // Moves holes behind outer rings by relinking nodes; no polygon is copied or freed and
  // the box is untouched. Exactly Count() - 1 positions are visited from the front: a
  // visited hole is moved to the end and the walk continues at its successor.
  // Note: the polygon that was last is never visited, so the result is the outer rings of
  // the first Count() - 1, then that last polygon whatever its flag, then the holes of the
  // first Count() - 1, each group in its old order: [A, hole B, hole C] gives [A, C, B].
  // This is the defined ring order.
  void SortHoles();
};

#endif
