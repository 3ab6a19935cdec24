// A transverse Mercator projection (UTM, WGS84) written for the example, used as the
// library's coordinate callback: longitude/latitude in degrees in, easting/northing in
// metres out. Accurate to well below a millimetre within a UTM zone.
#ifndef VORN_EXAMPLES_FIELD_MAP_PROJECTION_H
#define VORN_EXAMPLES_FIELD_MAP_PROJECTION_H

namespace projection {

struct UtmZone {
  int number;  // 1..60; the central meridian is number * 6 - 183 degrees
};

// Matches VornTransformCallback; `context` points at a UtmZone.
void LonLatToUtm(double lon, double lat, double* easting, double* northing, void* context);

}  // namespace projection

#endif
