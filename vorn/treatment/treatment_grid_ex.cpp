#include <vorn/treatment/treatment_grid_ex.h>

#include <cassert>
#include <cstddef>
#include <new>

#include <vorn/foundation/exception.h>

namespace {

[[noreturn]] void ThrowIndexOutOfRange() {
  throw VornException("Index out of range", Vorn::ErrorCodes::OutOfRange);
}

// new (std::nothrow) T[count], or null when that fails or when the array's byte size is
// negative or beyond 32 bits (such a request is never made).
template <class T>
T* AllocateArray(int count) {
  std::size_t bytes;
  if (!Vorn::detail::array_bytes(count, sizeof(T), bytes)) return nullptr;
  return new (std::nothrow) T[static_cast<std::size_t>(count)];
}

}  // namespace

VornTreatmentGridEx::VornTreatmentGridEx() : m_init(false), m_rowTable(nullptr) {}

VornTreatmentGridEx::VornTreatmentGridEx(VornTreatmentGridEx const& other)
    : IVornObject(), m_init(false), m_rowTable(nullptr) {
  // The destructor does not run for a constructor that throws, so release the rows
  // that a partly completed assignment obtained.
  try {
    operator=(other);
  } catch (...) {
    UnInit();
    throw;
  }
}

VornTreatmentGridEx::~VornTreatmentGridEx() { UnInit(); }

VornTreatmentGridEx const& VornTreatmentGridEx::operator=(VornTreatmentGridEx const& other) {
  using Vorn::ErrorCodes::NotInitialized;
  if (!other.m_init) throw VornException("Object not initialized", NotInitialized);
  UnInit();
  if (!InitGrid(other.Boundbox.MinY, other.Boundbox.MinX, other.m_geometry.cellHeight,
                other.m_geometry.cellWidth, other.m_geometry.columns, other.m_geometry.rows)) {
    throw VornException("Unable to initialize Grid", NotInitialized);
  }
  IVornObject::operator=(other);
  Boundbox = other.Boundbox;
  Attributes = other.Attributes;
  if (m_rowTable == nullptr || other.m_rowTable == nullptr) return *this;
  for (int row = 0; row < m_geometry.rows; ++row) {
    VornTreatmentZoneEx const* const source = other.m_rowTable[row];
    VornTreatmentZoneEx* const target = m_rowTable[row];
    if (source == nullptr || target == nullptr) continue;
    for (int column = 0; column < m_geometry.columns; ++column) target[column] = source[column];
  }
  return *this;
}

bool VornTreatmentGridEx::InitGrid(double minY, double minX, double cellHeight,
                                   double cellWidth, int numColumns, int numRows) {
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
    for (int row = 0; row < m_geometry.rows; ++row) delete[] m_rowTable[row];
    delete[] m_rowTable;
    m_rowTable = nullptr;
  }
  m_init = false;
}

VornTreatmentZoneEx* VornTreatmentGridEx::GetZonesInRow(unsigned int row) const {
  if (row >= static_cast<unsigned int>(m_geometry.rows)) ThrowIndexOutOfRange();
  assert(m_rowTable != nullptr && "cell access on a grid without rows");
  return m_rowTable[row];
}

VornTreatmentZoneEx& VornTreatmentGridEx::Cell(unsigned int column, unsigned int row) const {
  if (row >= static_cast<unsigned int>(m_geometry.rows) ||
      column >= static_cast<unsigned int>(m_geometry.columns)) {
    ThrowIndexOutOfRange();
  }
  assert(m_rowTable != nullptr && m_rowTable[row] != nullptr &&
         "cell access on a grid without rows");
  return m_rowTable[row][column];
}

VornObjectType VornTreatmentGridEx::GetType() const { return TreatmentGridEx; }

void VornTreatmentGridEx::Transform(VornTransformCallback callback, void* context) {
  m_geometry.transform(Boundbox, callback, context);
}
