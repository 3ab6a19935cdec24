// The README's first program, built against the installed package by CI.
#include <vorn/vorn.h>
#include <cstdio>

static void Shift(double x, double y, double* outX, double* outY, void* context) {
  double const* offset = static_cast<double const*>(context);
  *outX = x + offset[0];
  *outY = y + offset[1];
}

int main() {
  VornCoordinate ring[] = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};
  VornPolygon* field = Vorn::Alloc_VornPolygon(ring, 5, false);  // null if out of memory
  if (field == nullptr) return 1;
  field->Attributes.Add("Crop", "Winter wheat");

  VornMultiPolygon* area = Vorn::Alloc_VornMultiPolygon();
  if (area == nullptr) { Vorn::Free_VornPolygon(field); return 1; }
  area->Polygons.AddReference(field);  // the multi-polygon now owns the ring

  VornObjectCollection objects;        // owns what it holds, deletes it by kind
  objects.AddReference(area);
  double offset[] = {500000.0, 5700000.0};
  objects.Transform(Shift, offset);    // every coordinate, every envelope rebuilt

  VornBoundbox const& box = area->Polygons.Boundbox;
  std::printf("%.1f..%.1f x %.1f..%.1f\n", box.MinX, box.MaxX, box.MinY, box.MaxY);
  try {
    area->Polygons[7];
  } catch (VornException const& e) {
    std::printf("%s (%d)\n", e.Message(), e.ErrorCode());  // Index out of range (5002)
  }
}
