// The transform callback, alone in its translation unit so that no benchmark loop can
// inline it: every implementation pays one real call per coordinate.
#include "common.h"

namespace bench {

void RotateCoordinate(double x, double y, double* outX, double* outY, void* context) {
  Rotation const* const rotation = static_cast<Rotation const*>(context);
  *outX = rotation->cosine * x - rotation->sine * y;
  *outY = rotation->sine * x + rotation->cosine * y;
}

}  // namespace bench
