// VornTreatmentGridEx: a raster application-rate map whose every cell carries its own
// rate and zone number.
//
// Geometry, InitGrid arguments, box handling and Transform are those of
// VornTreatmentGrid: NumColumns() columns along X, NumRows() rows along Y inside
// Boundbox, with the orientation of row 0 left to the data's producer and consumer.
// The cells are stored row by row, each row a separate array owned by the grid: the cell
// of (column c, row r) is GetZones()[r][c], and every cell starts as
// VornTreatmentZoneEx() (rate 0.0, zone 0). Unlike the byte grid, every cell accessor
// checks its position against the stored counts, and none of them reaches through a row
// that does not exist. It is an IVornObject of kind TreatmentGridEx (8).
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_GRID_EX_H
#define VORN_TREATMENT_TREATMENT_GRID_EX_H

#include <vorn/core/attribute_collection.h>
#include <vorn/core/boundbox.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>
#include <vorn/treatment/grid_geometry.h>
#include <vorn/treatment/treatment_zone.h>

class VORN_API VornTreatmentGridEx : public IVornObject {
public:
  // The extent, as in VornTreatmentGrid.
  VornBoundbox Boundbox;
  VornAttributeCollection Attributes;

  // No row table, empty box and attributes; counts and sizes 0 until InitGrid.
  VornTreatmentGridEx();
  // Builds an empty grid, then assigns from other, so it throws what operator= throws.
  VornTreatmentGridEx(VornTreatmentGridEx const& other);
  // UnInit(), then releases the attributes and the box.
  ~VornTreatmentGridEx() override;

  // Throws VornException("Object not initialized", 5004) when other is not initialised;
  // otherwise runs InitGrid with other's south-west corner, sizes and counts, which
  // releases this grid's rows (false throws VornException("Unable to initialize Grid",
  // 5004)), copies Tag, Boundbox (other's exact box) and Attributes, then every cell.
  // A row that is null on either side (its allocation failed) is skipped. Running out of
  // memory while copying the attributes throws VornException("Parameter is NULL", 5003)
  // before any cell is copied.
  // Note: there is no self-assignment test; assigning a grid to itself empties its
  // attributes and resets every cell.
  VornTreatmentGridEx const& operator=(VornTreatmentGridEx const& other);

  // Releases any old rows, stores counts and sizes and sets Boundbox exactly as
  // VornTreatmentGrid::InitGrid does, then allocates the row table and one array of
  // numColumns default cells per row. Returns whether the row table was obtained.
  // Note: a row whose array cannot be allocated stays null and InitGrid still returns
  // true; GetZonesInRow hands that row out as null and the other cell accessors refuse
  // it. A table or row whose byte size is negative or beyond 32 bits counts as an
  // allocation that failed, and nothing is requested for it.
  bool InitGrid(double minY, double minX, double cellHeight, double cellWidth, int numColumns,
                int numRows);
  // Releases every row and the row table; box, counts and cell sizes keep their values.
  void UnInit();

  bool IsInit() const { return m_init; }
  int NumRows() const { return m_geometry.rows; }
  int NumColumns() const { return m_geometry.columns; }
  double CellHeight() const { return m_geometry.cellHeight; }
  double CellWidth() const { return m_geometry.cellWidth; }

  // Assigns the cell. Throws VornException("Index out of range", 5002) when
  // row >= NumRows() or column >= NumColumns(); then, for a position inside the counts
  // whose row does not exist (after UnInit, or a row whose allocation failed),
  // VornException("Object not initialized", 5004) rather than writing through null.
  void SetZoneInfo(unsigned int column, unsigned int row, VornTreatmentZoneEx const& zone) {
    Cell(column, row) = zone;
  }
  // Assigns VornTreatmentZoneEx(rate, zoneNumber) to the cell; throws as above.
  void SetZoneInfo(unsigned int column, unsigned int row, double rate, int zoneNumber) {
    Cell(column, row) = VornTreatmentZoneEx(rate, zoneNumber);
  }
  // The cell; throws as SetZoneInfo.
  VornTreatmentZoneEx const& GetZone(unsigned int column, unsigned int row) const {
    return Cell(column, row);
  }
  // The row's NumColumns() cells, writable; null when the row could not be allocated.
  // Throws VornException("Index out of range", 5002) when row >= NumRows(), then
  // VornException("Object not initialized", 5004) when there is no row table (after
  // UnInit).
  VornTreatmentZoneEx* GetZonesInRow(unsigned int row) const {
    if (row >= static_cast<unsigned int>(m_geometry.rows)) ThrowOutOfRange();
    if (m_rowTable == nullptr) ThrowMissingRow();
    return m_rowTable[row];
  }
  // The row table itself; null when not initialised. No check.
  VornTreatmentZoneEx** GetZones() const { return m_rowTable; }

  // TreatmentGridEx (8).
  VornObjectType GetType() const override;

  // As VornTreatmentGrid::Transform: the south-west and north-east corners go through
  // the callback, the box takes them without reordering and the cell sizes follow;
  // cells are untouched. Throws VornException("Parameter is NULL", 5003), changing
  // nothing, for a null callback.
  void Transform(VornTransformCallback callback, void* context) override;

private:
  // The checked cell behind every cell accessor: position first, then the row's presence.
  VornTreatmentZoneEx& Cell(unsigned int column, unsigned int row) const {
    if (column >= static_cast<unsigned int>(m_geometry.columns)) ThrowOutOfRange();
    VornTreatmentZoneEx* const cells = GetZonesInRow(row);
    if (cells == nullptr) ThrowMissingRow();
    return cells[column];
  }
  [[noreturn]] static void ThrowOutOfRange();
  [[noreturn]] static void ThrowMissingRow();

  bool m_init;
  Vorn::detail::grid_geometry m_geometry;
  VornTreatmentZoneEx** m_rowTable;
};

#endif
