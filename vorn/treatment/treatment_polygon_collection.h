// VornTreatmentPolygonCollection: the ordered, owning list of the areas of a treatment
// map, with a running bounding box.
//
// It follows the ownership rules of the geometry list collections (owning_list.h): Add
// stores a copy, AddReference adopts the caller's heap object, RemoveAt/Clear/assignment/
// the destructor delete, RemoveReference/RemoveAllReferences hand areas back, the copy
// constructor is shallow and assignment is deep. A member's box is its area's box
// (Area.Polygons.Boundbox). Its own variations, all deliberate:
//   - positions are never range-checked: removals beyond the end do nothing, and
//     operator[] and at leave the position to the caller;
//   - Add(VornTreatmentPolygon const&) appends a null member when the copy cannot be
//     allocated instead of failing;
//   - AddRange widens the box for a member and then again inside Add (harmless);
//   - Transform rebuilds the box from the mapped areas whatever AutoBoundbox says.
// Null members (from a failed copy) are skipped by every walk over the members.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_POLYGON_COLLECTION_H
#define VORN_TREATMENT_TREATMENT_POLYGON_COLLECTION_H

#include <vorn/core/boundbox.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/owning_list.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_zone.h>

namespace Vorn {

struct VORN_API treatment_polygon_collection_rules {
  static VornBoundbox const& BoxOf(VornTreatmentPolygon const& area) {
    return area.Area.Polygons.Boundbox;
  }
  static void TransformElement(VornTreatmentPolygon& area, VornTransformCallback callback,
                               void* context) {
    area.Transform(callback, context);
  }
  // A null area is refused, as in the other collections: it changes nothing for valid
  // callers and turns a failed allocation in Add(multiPolygon, zone) into an exception.
  static constexpr bool kRejectsNull = true;
  static constexpr IndexRule kIndexRule = IndexRule::Unchecked;
  static constexpr BoxOnAdd kBoxOnAdd = BoxOnAdd::IfAuto;
  static constexpr BoxOnClear kBoxOnClear = BoxOnClear::Always;
  // No test of its own: a null callback fails in the first area's transformation, after
  // the box was reset (and not at all when the collection is empty).
  static constexpr CallbackTest kCallbackTest = CallbackTest::None;
  static constexpr bool kRecalcAfterTransform = false;
  static constexpr bool kGuardsSelfAssignment = false;
};

extern template class owning_list<VornTreatmentPolygon, treatment_polygon_collection_rules>;

}  // namespace Vorn

class VORN_API VornTreatmentPolygonCollection
    : public Vorn::owning_list<VornTreatmentPolygon, Vorn::treatment_polygon_collection_rules> {
public:
  // Empty, AutoBoundbox true.
  VornTreatmentPolygonCollection();
  // Empty, AutoBoundbox as given.
  explicit VornTreatmentPolygonCollection(bool autoBoundbox);
  // Shallow: copies Boundbox member-wise, shares the source's areas and takes its
  // AutoBoundbox. Detach one side with RemoveAllReferences before both are destroyed.
  VornTreatmentPolygonCollection(VornTreatmentPolygonCollection const& other) = default;
  ~VornTreatmentPolygonCollection() = default;

  // Clear(), then Add(*p) for every member of other in order; AutoBoundbox is kept.
  // Note: there is no self-assignment test, so assigning a collection to itself empties it.
  VornTreatmentPolygonCollection const& operator=(VornTreatmentPolygonCollection const& other);

  // Widens Boundbox by area's box when AutoBoundbox, then appends a copy of area. The box
  // takes area's box as it stands, even when it is stale: the copy's own box, rebuilt from
  // its rings, is not added.
  // Note: a copy that cannot be allocated is appended as a null member, with no exception
  // (the box stays widened); if not even the list node can be allocated nothing is
  // appended. An exception from the copy constructor passes through, its storage released.
  void Add(VornTreatmentPolygon const& area);
  // Appends a new VornTreatmentPolygon(multiPolygon, zone) as AddReference does. Running
  // out of memory for it or its list node throws VornException("Parameter is NULL", 5003)
  // with nothing changed.
  void Add(VornMultiPolygon const& multiPolygon, VornTreatmentZone const& zone);
  // For every member of other, in order: widens Boundbox by its box when AutoBoundbox,
  // then Add(member). Appending a collection to itself appends one copy of each area it
  // held before the call.
  void AddRange(VornTreatmentPolygonCollection const& other);

  // An iterator at index, found by walking from the first member. Unchecked: index must
  // be below Count().
  using owning_list::at;
};

#endif
