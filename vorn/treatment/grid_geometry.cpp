#include <vorn/treatment/grid_geometry.h>

#include <cstdint>

#include <vorn/foundation/exception.h>

namespace Vorn {
namespace detail {

void grid_geometry::init(VornBoundbox& box, double minY, double minX, double newCellHeight,
                         double newCellWidth, int numColumns, int numRows) {
  rows = numRows;
  columns = numColumns;
  cellHeight = newCellHeight;
  cellWidth = newCellWidth;
  box.Set(minX, minX + numColumns * newCellWidth, minY, minY + numRows * newCellHeight);
}

void grid_geometry::transform(VornBoundbox& box, VornTransformCallback callback, void* context) {
  if (callback == nullptr) throw VornException("Parameter is NULL", ErrorCodes::ParameterIsNull);
  double westX;
  double southY;
  double eastX;
  double northY;
  callback(box.MinX, box.MinY, &westX, &southY, context);
  callback(box.MaxX, box.MaxY, &eastX, &northY, context);
  box.Set(westX, eastX, southY, northY);
  cellHeight = (box.MaxY - box.MinY) / rows;
  cellWidth = (box.MaxX - box.MinX) / columns;
}

bool array_bytes(long long count, std::size_t elementSize, std::size_t& bytes) {
  if (count < 0) return false;
  unsigned long long const limit = UINT32_MAX / elementSize;
  if (static_cast<unsigned long long>(count) > limit) return false;
  bytes = static_cast<std::size_t>(count) * elementSize;
  return true;
}

}  // namespace detail
}  // namespace Vorn
