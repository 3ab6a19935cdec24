// The raster geometry that both treatment grids share: the counts of rows and columns,
// the size of one cell, how InitGrid turns its arguments into the grid's box, and how
// Transform moves that box.
//
// Columns run along X and rows along Y: the box is columns x cell width wide and
// rows x cell height high, with its south-west corner at (minX, minY). Which edge row 0
// lies at is a convention between the producer and the consumer of the cells; nothing
// here maps coordinates to cells.
//
// Internal to the library: the grids hold one of these and forward to it.
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_GRID_GEOMETRY_H
#define VORN_TREATMENT_GRID_GEOMETRY_H

#include <cstddef>

#include <vorn/core/boundbox.h>
#include <vorn/core/transform_callback.h>

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
  void init(VornBoundbox& box, double minY, double minX, double newCellHeight,
            double newCellWidth, int numColumns, int numRows);

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

}  // namespace detail
}  // namespace Vorn

#endif
