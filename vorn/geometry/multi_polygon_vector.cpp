#include <vorn/geometry/multi_polygon_vector.h>

#include <cassert>

#include <vorn/foundation/exception.h>

template class Vorn::vector<VornMultiPolygon*, Vorn::allocator, Vorn::exponential_growth<10>>;

VornMultiPolygonVector::VornMultiPolygonVector() : Boundbox(), m_items() {}

VornMultiPolygonVector::VornMultiPolygonVector(Vorn::multi_polygon_pointers const& v)
    : Boundbox(), m_items() {
  AddRangeOrRelease(v);
}

VornMultiPolygonVector::VornMultiPolygonVector(VornMultiPolygonVector const& other)
    : Boundbox(), m_items() {
  AddRangeOrRelease(other);
}

// A constructor's destructor does not run when it throws, so the copies made before a
// failing one are released here before the exception goes on.
template <class Source>
void VornMultiPolygonVector::AddRangeOrRelease(Source const& source) {
  try {
    AddRange(source);
  } catch (...) {
    Clear();
    throw;
  }
}

VornMultiPolygonVector::~VornMultiPolygonVector() { Clear(); }

VornMultiPolygonVector const& VornMultiPolygonVector::operator=(
    VornMultiPolygonVector const& other) {
  Clear();
  if (other.Count() == 0) return *this;
  for (VornMultiPolygon* const* it = other.begin(); it != other.end(); ++it) {
    if (*it == nullptr) return *this;
    AppendCopy(new VornMultiPolygon(**it));
  }
  Boundbox = other.Boundbox;
  return *this;
}

bool VornMultiPolygonVector::Reserve(unsigned int n) {
  if (n <= m_items.capacity()) return true;
  m_items.reserve(n);
  return m_items.capacity() >= n;
}

bool VornMultiPolygonVector::Resize(unsigned int n) {
  m_items.resize(n);
  return Count() == n;
}

VornMultiPolygonVector::operator VornMultiPolygon*() const {
  return reinterpret_cast<VornMultiPolygon*>(const_cast<VornMultiPolygon**>(m_items.begin()));
}

void VornMultiPolygonVector::Add(VornMultiPolygon const& o) {
  Boundbox.AddBoundbox(o.Polygons.Boundbox);
  AppendCopy(new VornMultiPolygon(o));
}

void VornMultiPolygonVector::AddReference(VornMultiPolygon* p) {
  if (p == nullptr) return;
  if (!m_items.push_back(p)) return;
  Boundbox.AddBoundbox(p->Polygons.Boundbox);
}

void VornMultiPolygonVector::AddRange(Vorn::multi_polygon_pointers const& v) {
  if (v.empty()) return;
  Reserve(Count() + v.size());
  for (VornMultiPolygon* const* it = v.begin(); it != v.end(); ++it) {
    if (*it != nullptr) Add(**it);
  }
}

void VornMultiPolygonVector::AddRange(VornMultiPolygonVector const& v) {
  unsigned int const count = v.Count();
  Reserve(Count() + count);
  // By position, so that appending a vector to itself reads only the elements it held.
  for (unsigned int i = 0; i < count; ++i) {
    VornMultiPolygon* const element = v.m_items[i];
    if (element != nullptr) Add(*element);
  }
}

void VornMultiPolygonVector::RemoveAt(unsigned int index) {
  if (index >= Count()) throw VornException("Index out of range", 5002);
  VornMultiPolygon** const slot = m_items.begin() + index;
  delete *slot;
  m_items.erase(slot);
}

void VornMultiPolygonVector::Remove(VornMultiPolygon** slot) {
  assert(slot >= m_items.begin() && slot < m_items.end());
  delete *slot;
  m_items.erase(slot);
  RecalcBoundbox();
}

void VornMultiPolygonVector::RemoveReference(VornMultiPolygon** slot) {
  assert(slot >= m_items.begin() && slot < m_items.end());
  m_items.erase(slot);
  RecalcBoundbox();
}

void VornMultiPolygonVector::RemoveAllReferences() {
  m_items.clear();
  RecalcBoundbox();
}

void VornMultiPolygonVector::Clear() {
  for (VornMultiPolygon** it = m_items.begin(); it != m_items.end(); ++it) {
    delete *it;
    *it = nullptr;
  }
  m_items.clear();
  Boundbox.Reset();
}

void VornMultiPolygonVector::RecalcBoundbox() {
  Boundbox.Reset();
  for (VornMultiPolygon* const* it = m_items.begin(); it != m_items.end(); ++it) {
    if (*it != nullptr) Boundbox.AddBoundbox((*it)->Polygons.Boundbox);
  }
}

void VornMultiPolygonVector::Transform(VornTransformCallback, void*) {}

void VornMultiPolygonVector::RemoveDuplicates() {}

void VornMultiPolygonVector::AppendCopy(VornMultiPolygon* copy) {
  if (!m_items.push_back(copy)) delete copy;
}
