// The raster geometry that both treatment grids share: the counts of rows and columns,
// the size of one cell, how InitGrid turns its arguments into the grid's box, how
// Transform moves that box, and the steps that copying a grid starts and ends with.
//
// Columns run along X and rows along Y: the box is columns x cell width wide and
// rows x cell height high, with its south-west corner at (minX, minY). Which edge row 0
// lies at is a convention between the producer and the consumer of the cells; nothing
// here maps coordinates to cells.
//
// Internal to the library: the grids hold one of these and forward to it. The two grids
// cannot share a base class instead, because the byte grid declares its zone legend
// between the object base and these fields.
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_GRID_GEOMETRY_H
#define VORN_TREATMENT_GRID_GEOMETRY_H

#include <cstddef>

#include <vorn/core/boundbox.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/exception.h>

namespace Vorn {
namespace detail {

class grid_geometry {
public:
  // Counts and sizes as InitGrid stored them (or as Transform recomputed the sizes);
  // all zero before the first InitGrid.
  int rows = 0;
  int columns = 0;
  double cellHeight = 0.0;
  double cellWidth = 0.0;

  // Stores the counts and sizes unchecked and sets `box` to minX .. minX + numColumns *
  // cellWidth along X and minY .. minY + numRows * cellHeight along Y. Note the order of
  // the arguments, which is InitGrid's: south edge, west edge, height, width, columns, rows.
  void init(VornBoundbox& box, double minY, double minX, double newCellHeight, double newCellWidth,
            int numColumns, int numRows);

  // Passes the south-west corner (MinX, MinY) and then the north-east corner (MaxX, MaxY)
  // of `box` through the callback and sets the box from the results without reordering,
  // so a mirroring callback leaves min > max on purpose. Then recomputes both cell sizes
  // from the new box and the stored counts. Throws VornException("Parameter is NULL",
  // 5003), changing nothing, for a null callback.
  void transform(VornBoundbox& box, VornTransformCallback callback, void* context);
};

// The byte size of an array of `count` elements of `elementSize` bytes. False when count
// is negative or the size does not fit in 32 bits: the grids treat such a request as a
// failed allocation and never ask the allocator for it, so no target can end up with a
// truncated buffer and 64-bit targets refuse exactly what 32-bit ones cannot address.
bool array_bytes(long long count, std::size_t elementSize, std::size_t& bytes);

// The first steps of both grids' assignment: refuses a source that is not initialised
// with VornException("Object not initialized", 5004), then rebuilds `target` with
// InitGrid from the source's south-west corner, cell sizes and counts (which releases
// the target's old cells first); a false result throws VornException("Unable to
// initialize Grid", 5004). Then copies Tag, the source's exact Boundbox and Attributes.
// The caller copies what is particular to its grid.
template <class Grid>
void assign_grid_frame(Grid& target, Grid const& source) {
  if (!source.IsInit()) throw VornException("Object not initialized", ErrorCodes::NotInitialized);
  if (!target.InitGrid(source.Boundbox.MinY, source.Boundbox.MinX, source.CellHeight(),
                       source.CellWidth(), source.NumColumns(), source.NumRows())) {
    throw VornException("Unable to initialize Grid", ErrorCodes::NotInitialized);
  }
  // The grid's own Tag must not be read after it was released.
  if (&target != &source) target.Tag = source.Tag;
  target.Boundbox = source.Boundbox;
  target.Attributes = source.Attributes;
}

// The body of both grids' copy constructors: target = source. A constructor that throws
// is never followed by its destructor, so the cells that a partly completed assignment
// obtained are released here before the exception passes on.
template <class Grid>
void construct_grid_copy(Grid& target, Grid const& source) {
  try {
    target = source;
  } catch (...) {
    target.UnInit();
    throw;
  }
}

}  // namespace detail
}  // namespace Vorn

#endif
