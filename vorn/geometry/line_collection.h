// VornLineCollection: an owning, ordered collection of lines with a running bounding box.
//
// The collection owns every line it holds (see owning_list.h for the ownership rules):
// Add stores a copy, AddReference adopts the caller's heap line, RemoveAt/Clear/the
// destructor delete, RemoveReference/RemoveAllReferences hand lines back. The copy
// constructor is shallow and assignment is deep, on purpose.
//
// AutoBoundbox decides everything about the box on additions and removals: when it is
// false, AddReference, Add, RemoveAt, RemoveReference, RemoveAllReferences and Clear leave
// Boundbox alone, while Transform and RecalcBoundbox still rebuild it.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_GEOMETRY_LINE_COLLECTION_H
#define VORN_GEOMETRY_LINE_COLLECTION_H

#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/owning_list.h>

namespace Vorn {

struct VORN_API line_collection_rules : coordinate_vector_elements<VornLine> {
  static constexpr bool kRejectsNull = true;
  static constexpr IndexRule kIndexRule = IndexRule::Checked;
  static constexpr BoxOnAdd kBoxOnAdd = BoxOnAdd::IfAuto;
  static constexpr BoxOnClear kBoxOnClear = BoxOnClear::IfAuto;
  // A null callback changes nothing; the box is rebuilt once more at the end.
  static constexpr CallbackTest kCallbackTest = CallbackTest::BeforeReset;
  static constexpr bool kRecalcAfterTransform = true;
  static constexpr bool kGuardsSelfAssignment = true;
};

// The line list and its collection base are compiled once, inside the library, and
// exported from it.
extern template class VORN_API list<VornLine*>;
namespace list_impl {
extern template struct VORN_API _ListNode<VornLine*>;
extern template class VORN_API iterator<VornLine*>;
extern template class VORN_API const_iterator<VornLine*>;
}  // namespace list_impl
extern template class owning_list<VornLine, line_collection_rules>;

}  // namespace Vorn

class VORN_API VornLineCollection
    : public Vorn::owning_list<VornLine, Vorn::line_collection_rules> {
public:
  // Empty, AutoBoundbox true.
  VornLineCollection();
  // Empty, AutoBoundbox as given.
  explicit VornLineCollection(bool autoBoundbox);
  // Shallow: shares the source's lines (see the header comment).
  VornLineCollection(VornLineCollection const& other) = default;
  ~VornLineCollection() = default;

  // Deletes the own lines, then adds copies of the source's; AutoBoundbox is kept.
  // Assigning a collection to itself leaves it unchanged.
  VornLineCollection const& operator=(VornLineCollection const& other);

  using owning_list::Add;
  // Adds a new line holding every coordinate of v. Running out of memory for the line or
  // its list node throws VornException("Parameter is NULL", 5003), as Add(VornLine const&).
  void Add(VornCoordinateVector const& v);
  // Adds a new line of coords[0] .. coords[count - 1]. Throws
  // VornException("Parameter is NULL", 5003) when coords is null, before allocating, and
  // when memory runs out, as above.
  void Add(VornCoordinate* coords, int count);
};

#endif
