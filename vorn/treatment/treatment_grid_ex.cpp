#include <vorn/treatment/treatment_grid_ex.h>

#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

#include <vorn/foundation/exception.h>

namespace {

// An array of `count` value-initialised T from the non-throwing array allocation, or null
// when that fails or when the byte size is negative or beyond 32 bits (such a request is
// never made). Raw storage rather than new T[count]: on a 32-bit target a size above
// PTRDIFF_MAX would make the new-expression throw instead of yielding null.
template <class T>
T* AllocateArray(int count) {
  static_assert(std::is_trivially_destructible<T>::value, "ReleaseArray runs no destructors");
  std::size_t bytes;
  if (!Vorn::detail::array_bytes(count, sizeof(T), bytes)) return nullptr;
  void* raw = ::operator new[](bytes, std::nothrow);
  if (raw == nullptr) return nullptr;
  T* const first = static_cast<T*>(raw);
  std::uninitialized_value_construct_n(first, static_cast<std::size_t>(count));
  return first;
}

// Releases what AllocateArray returned; null is accepted.
void ReleaseArray(void* array) { ::operator delete[](array); }

}  // namespace

VornTreatmentGridEx::VornTreatmentGridEx() : m_init(false), m_rowTable(nullptr) {}

VornTreatmentGridEx::VornTreatmentGridEx(VornTreatmentGridEx const& other)
    : IVornObject(), m_init(false), m_rowTable(nullptr) {
  Vorn::detail::construct_grid_copy(*this, other);
}

VornTreatmentGridEx::~VornTreatmentGridEx() { UnInit(); }

VornTreatmentGridEx const& VornTreatmentGridEx::operator=(VornTreatmentGridEx const& other) {
  Vorn::detail::assign_grid_frame(*this, other);
  // Both tables exist now; a row whose allocation failed, on either side, is skipped.
  for (int row = 0; row < m_geometry.rows; ++row) {
    VornTreatmentZoneEx const* const source = other.m_rowTable[row];
    VornTreatmentZoneEx* const target = m_rowTable[row];
    if (source == nullptr || target == nullptr) continue;
    for (int column = 0; column < m_geometry.columns; ++column) target[column] = source[column];
  }
  return *this;
}

bool VornTreatmentGridEx::InitGrid(double minY, double minX, double cellHeight, double cellWidth,
                                   int numColumns, int numRows) {
  UnInit();
  m_geometry.init(Boundbox, minY, minX, cellHeight, cellWidth, numColumns, numRows);
  m_rowTable = AllocateArray<VornTreatmentZoneEx*>(numRows);
  if (m_rowTable == nullptr) return false;
  for (int row = 0; row < numRows; ++row) {
    m_rowTable[row] = AllocateArray<VornTreatmentZoneEx>(numColumns);
  }
  m_init = true;
  return true;
}

void VornTreatmentGridEx::UnInit() {
  if (m_rowTable != nullptr) {
    for (int row = 0; row < m_geometry.rows; ++row) ReleaseArray(m_rowTable[row]);
    ReleaseArray(m_rowTable);
    m_rowTable = nullptr;
  }
  m_init = false;
}

void VornTreatmentGridEx::ThrowOutOfRange() {
  throw VornException("Index out of range", Vorn::ErrorCodes::OutOfRange);
}

void VornTreatmentGridEx::ThrowMissingRow() {
  throw VornException("Object not initialized", Vorn::ErrorCodes::NotInitialized);
}

VornObjectType VornTreatmentGridEx::GetType() const { return TreatmentGridEx; }

void VornTreatmentGridEx::Transform(VornTransformCallback callback, void* context) {
  m_geometry.transform(Boundbox, callback, context);
}
