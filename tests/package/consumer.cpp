// The README's first program, built against the installed package by CI.
#include <vorn/vorn.h>
#include <cstdio>

static void Shift(double x, double y, double* outX, double* outY, void* context) {
  double const* offset = static_cast<double const*>(context);
  *outX = x + offset[0];
  *outY = y + offset[1];
}

int main() {
  VornMultiPolygon* area = Vorn::Alloc_VornMultiPolygon();  // null if out of memory
  if (area == nullptr) return 1;
  VornObjectCollection objects;  // owns what it holds, deletes it by kind
  objects.AddReference(area);

  VornCoordinate ring[] = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};
  area->Polygons.Add(ring, 5, false);  // a copy of the ring, as an outer ring (true: a hole)
  area->Attributes.Add("Crop", "Winter wheat");
  double offset[] = {500000.0, 5700000.0};
  objects.Transform(Shift, offset);  // every coordinate, every envelope rebuilt

  VornBoundbox const& box = area->Polygons.Boundbox;
  std::printf("%.1f..%.1f x %.1f..%.1f\n", box.MinX, box.MaxX, box.MinY, box.MaxY);
  try {
    area->Polygons[7];
  } catch (VornException const& e) {
    std::printf("%s (%d)\n", e.Message(), e.ErrorCode());  // Index out of range (5002)
  }
}
