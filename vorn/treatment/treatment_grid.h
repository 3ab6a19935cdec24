// VornTreatmentGrid: a raster application-rate map whose cells select zones by position.
//
// The grid is an axis-aligned rectangle (Boundbox) divided into NumColumns() x NumRows()
// equal cells; columns run along X, rows along Y. Each cell holds one byte v that selects
// Zones[v]. The cells are one contiguous row-major buffer owned by the grid: the byte of
// (column c, row r) is at r * NumColumns() + c, and callers may read and fill the buffer
// directly through the conversion to unsigned char*. Whether row 0 is the southern or
// the northern row is a convention between the producer and the consumer of the data.
// The grid owns its zones and attributes as well. It is an IVornObject of kind
// TreatmentGrid (6).
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_GRID_H
#define VORN_TREATMENT_TREATMENT_GRID_H

#include <cassert>
#include <cstddef>

#include <vorn/containers/list.h>
#include <vorn/core/attribute_collection.h>
#include <vorn/core/boundbox.h>
#include <vorn/foundation/export.h>
#include <vorn/geometry/object.h>
#include <vorn/treatment/grid_geometry.h>
#include <vorn/treatment/treatment_zone_collection.h>

class VORN_API VornTreatmentGrid : public IVornObject {
private:
  // Kept for layout only: created empty, released with the grid, never used.
  Vorn::list<VornTreatmentZone*, Vorn::allocator> m_unused;

public:
  // The extent: MinX west edge, MaxX east edge, MinY south edge, MaxY north edge.
  VornBoundbox Boundbox;
  VornAttributeCollection Attributes;
  // The zones that cell bytes select by position.
  VornTreatmentZoneCollection Zones;

  // No cells, empty box, attributes and zones; counts and sizes 0 until InitGrid.
  VornTreatmentGrid();
  // Builds an empty grid, then assigns from other, so it throws what operator= throws.
  VornTreatmentGrid(VornTreatmentGrid const& other);
  // Releases the cells, the zones (every zone), the attributes and the box.
  ~VornTreatmentGrid() override;

  // Throws VornException("Object not initialized", 5004) when other is not initialised;
  // otherwise runs InitGrid with other's south-west corner, sizes and counts, which
  // releases this grid's cells (false throws VornException("Unable to initialize Grid",
  // 5004)), then copies Tag, Boundbox (other's exact box, not the recomputed one),
  // Attributes, Zones (deep) and the cells. Running out of memory while copying the
  // attributes throws VornException("Parameter is NULL", 5003) with the later parts
  // uncopied; a zone copy that cannot be allocated becomes a null zone entry.
  // Note: there is no self-assignment test; assigning a grid to itself empties its
  // attributes and zones and leaves zeroed cells.
  VornTreatmentGrid const& operator=(VornTreatmentGrid const& other);

  // Releases any old cells, stores the counts and sizes unchecked, sets Boundbox to
  // minX .. minX + numColumns * cellWidth by minY .. minY + numRows * cellHeight and
  // allocates numColumns * numRows cell bytes with malloc, all zero. Returns whether the buffer was
  // obtained; on false the grid is not initialised but the box and counts are set.
  // A cell count that is negative or beyond 32 bits fails without allocating.
  // Note the argument order: south edge, west edge, height, width, columns, rows.
  bool InitGrid(double minY, double minX, double cellHeight, double cellWidth, int numColumns,
                int numRows);
  // Releases the cells; box, counts and cell sizes keep their values.
  void UnInit();

  bool IsInit() const { return m_init; }
  int NumRows() const { return m_geometry.rows; }
  int NumColumns() const { return m_geometry.columns; }
  double CellHeight() const { return m_geometry.cellHeight; }
  double CellWidth() const { return m_geometry.cellWidth; }

  // row * NumColumns() + column. Unchecked: the position is the caller's responsibility
  // (debug builds assert it).
  int GetCellIndex(int column, int row) const {
    assert(IsInside(column, row));
    return static_cast<int>(static_cast<unsigned int>(row) *
                                static_cast<unsigned int>(m_geometry.columns) +
                            static_cast<unsigned int>(column));
  }
  // The cell byte. Deliberately unchecked, not even for an initialised grid, so that a
  // cell costs one multiply-add; debug builds assert the position and the buffer.
  unsigned char GetZoneIndex(int column, int row) const { return m_cells[Offset(column, row)]; }
  // Writes the cell byte. Unchecked, as GetZoneIndex.
  void SetZoneIndex(int column, int row, unsigned char zoneIndex) {
    m_cells[Offset(column, row)] = zoneIndex;
  }
  // Zones[GetZoneIndex(column, row)]: throws VornException("Index out of range", 5002)
  // when the byte is not below Zones.Count().
  VornTreatmentZone const& GetZone(int column, int row) const {
    return Zones[GetZoneIndex(column, row)];
  }

  // Copies NumColumns() bytes into the row. Throws VornException("Object not initialized",
  // 5004) when the grid is not initialised, then VornException("Index out of range", 5002)
  // when row < 0 or row >= NumRows(), then VornException("Parameter is NULL", 5003) for a
  // null zoneIndices.
  void SetZoneRow(int row, unsigned char* zoneIndices);
  // Copies NumColumns() * NumRows() bytes into the whole buffer. Throws
  // VornException("Object not initialized", 5004) when the grid is not initialised, then
  // VornException("Parameter is NULL", 5003) for a null zoneIndices.
  void SetZones(unsigned char* zoneIndices);

  // The cell buffer itself, writable; null when not initialised.
  operator unsigned char*() const { return m_cells; }

  // TreatmentGrid (6).
  VornObjectType GetType() const override;

  // Moves the box by passing its south-west and then its north-east corner through the
  // callback; the box takes the results without reordering (a mirrored axis leaves
  // min > max on purpose) and the cell sizes are recomputed from it. Cells and zones are
  // untouched, the grid stays axis-aligned and the init flag is not tested. Throws
  // VornException("Parameter is NULL", 5003), changing nothing, for a null callback.
  void Transform(VornTransformCallback callback, void* context) override;

private:
  bool IsInside(int column, int row) const {
    return column >= 0 && column < m_geometry.columns && row >= 0 && row < m_geometry.rows;
  }
  std::size_t Offset(int column, int row) const {
    assert(m_cells != nullptr && IsInside(column, row));
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_geometry.columns) +
           static_cast<std::size_t>(column);
  }
  std::size_t CellCount() const;

  bool m_init;
  Vorn::detail::grid_geometry m_geometry;
  unsigned char* m_cells;
};

#endif
