#include <vorn/geometry/polygon_collection.h>

#include <cassert>

namespace Vorn {
template class list<VornPolygon*>;
namespace list_impl {
template struct _ListNode<VornPolygon*>;
template class iterator<VornPolygon*>;
template class const_iterator<VornPolygon*>;
}  // namespace list_impl
template class owning_list<VornPolygon, polygon_collection_rules>;
}  // namespace Vorn

VornPolygonCollection::VornPolygonCollection() : owning_list(true) {}

VornPolygonCollection::VornPolygonCollection(bool) : owning_list(true) {}

VornPolygonCollection const& VornPolygonCollection::operator=(VornPolygonCollection const& other) {
  Assign(other);
  return *this;
}

void VornPolygonCollection::Add(VornCoordinateVector const& v, bool isHole) {
  Adopt(new VornPolygon(v, isHole));
}

void VornPolygonCollection::Add(VornCoordinate* coords, int count, bool isHole) {
  Adopt(new VornPolygon(coords, count, isHole));
}

void VornPolygonCollection::Remove(iterator it) { RemoveNode(it); }

void VornPolygonCollection::SortHoles() {
  unsigned int const count = Count();
  if (count < 2) return;
  iterator it = m_items.begin();
  for (unsigned int visited = 0; visited + 1 < count; ++visited) {
    assert(*it != nullptr);
    if (!(*it)->IsHole) {
      ++it;
      continue;
    }
    iterator hole = it;
    ++it;
    m_items.splice(m_items.end(), m_items, hole);
  }
}
