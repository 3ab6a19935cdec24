#include <vorn/geometry/line_collection.h>

namespace Vorn {
template class list<VornLine*>;
namespace list_impl {
template struct _ListNode<VornLine*>;
template class iterator<VornLine*>;
template class const_iterator<VornLine*>;
}  // namespace list_impl
template class owning_list<VornLine, line_collection_rules>;
}  // namespace Vorn

VornLineCollection::VornLineCollection() : owning_list(true) {}

VornLineCollection::VornLineCollection(bool autoBoundbox) : owning_list(autoBoundbox) {}

VornLineCollection const& VornLineCollection::operator=(VornLineCollection const& other) {
  Assign(other);
  return *this;
}

void VornLineCollection::Add(VornCoordinateVector const& v) { Adopt(new VornLine(v)); }

void VornLineCollection::Add(VornCoordinate* coords, int count) {
  if (coords == nullptr) Vorn::detail::throw_parameter_is_null();
  Adopt(new VornLine(coords, count));
}
