#include <vorn/treatment/treatment_grid.h>

#include <cstdlib>
#include <cstring>

#include <vorn/foundation/exception.h>

namespace {

void RequireInit(bool initialized) {
  if (!initialized) {
    throw VornException("Object not initialized", Vorn::ErrorCodes::NotInitialized);
  }
}

// A null source would be read by the block copy: refused loudly instead.
void RequireSource(unsigned char const* zoneIndices) {
  if (zoneIndices == nullptr) {
    throw VornException("Parameter is NULL", Vorn::ErrorCodes::ParameterIsNull);
  }
}

}  // namespace

VornTreatmentGrid::VornTreatmentGrid() : m_init(false), m_cells(nullptr) {}

VornTreatmentGrid::VornTreatmentGrid(VornTreatmentGrid const& other)
    : IVornObject(), m_init(false), m_cells(nullptr) {
  Vorn::detail::construct_grid_copy(*this, other);
}

VornTreatmentGrid::~VornTreatmentGrid() { UnInit(); }

VornTreatmentGrid const& VornTreatmentGrid::operator=(VornTreatmentGrid const& other) {
  Vorn::detail::assign_grid_frame(*this, other);
  Zones = other.Zones;
  SetZones(other.m_cells);
  return *this;
}

bool VornTreatmentGrid::InitGrid(double minY, double minX, double cellHeight, double cellWidth,
                                 int numColumns, int numRows) {
  UnInit();
  m_geometry.init(Boundbox, minY, minX, cellHeight, cellWidth, numColumns, numRows);
  std::size_t bytes;
  if (!Vorn::detail::array_bytes(static_cast<long long>(numColumns) * numRows, 1, bytes)) {
    return false;
  }
  m_cells = static_cast<unsigned char*>(std::malloc(bytes));
  if (m_cells == nullptr) return false;
  // Cleared so that a grid nobody filled reads as zone 0 everywhere.
  std::memset(m_cells, 0, bytes);
  m_init = true;
  return true;
}

void VornTreatmentGrid::UnInit() {
  std::free(m_cells);
  m_cells = nullptr;
  m_init = false;
}

std::size_t VornTreatmentGrid::CellCount() const {
  // The same product that InitGrid allocated, so it cannot overflow while initialised.
  return static_cast<std::size_t>(static_cast<long long>(m_geometry.columns) * m_geometry.rows);
}

void VornTreatmentGrid::SetZoneRow(int row, unsigned char* zoneIndices) {
  RequireInit(m_init);
  if (row < 0 || row >= m_geometry.rows) {
    throw VornException("Index out of range", Vorn::ErrorCodes::OutOfRange);
  }
  RequireSource(zoneIndices);
  std::size_t const columns = static_cast<std::size_t>(m_geometry.columns);
  std::memmove(m_cells + static_cast<std::size_t>(row) * columns, zoneIndices, columns);
}

void VornTreatmentGrid::SetZones(unsigned char* zoneIndices) {
  RequireInit(m_init);
  RequireSource(zoneIndices);
  std::memmove(m_cells, zoneIndices, CellCount());
}

VornObjectType VornTreatmentGrid::GetType() const { return TreatmentGrid; }

void VornTreatmentGrid::Transform(VornTransformCallback callback, void* context) {
  m_geometry.transform(Boundbox, callback, context);
}
