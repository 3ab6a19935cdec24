// Writes the example's picture: the vector treatment map on the left, the rate grid on
// the right, both coloured by rate, in projected metres with north up.
#ifndef VORN_EXAMPLES_FIELD_MAP_SVG_H
#define VORN_EXAMPLES_FIELD_MAP_SVG_H

#include <vorn/vorn.h>

namespace svg {

bool WriteFieldMap(char const* path, VornTreatmentMap const& map, VornTreatmentGridEx const& grid);

}  // namespace svg

#endif
