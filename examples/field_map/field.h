// The example field: a boundary in longitude/latitude with a pond, and the three
// treatment zones that a prescription for it uses. Made up for the example, shaped like
// a real field in northern Germany (UTM zone 32).
#ifndef VORN_EXAMPLES_FIELD_MAP_FIELD_H
#define VORN_EXAMPLES_FIELD_MAP_FIELD_H

#include <vorn/vorn.h>

namespace field {

// Outer boundary, counter-clockwise, closed (first vertex repeated last).
inline VornCoordinate kBoundary[] = {{9.43020, 52.07210}, {9.43890, 52.07180}, {9.43960, 52.07450},
                                     {9.43910, 52.07640}, {9.43350, 52.07690}, {9.43000, 52.07560},
                                     {9.43020, 52.07210}};

// The pond inside the middle third of the field, clockwise, closed.
inline VornCoordinate kPond[] = {{9.43420, 52.07400}, {9.43440, 52.07470}, {9.43530, 52.07480},
                                 {9.43560, 52.07410}, {9.43490, 52.07370}, {9.43420, 52.07400}};

// Longitudes that cut the field into three strips, west to east.
constexpr double kStripEdges[] = {9.43000, 9.43320, 9.43640, 9.43960};

struct ZonePlan {
  int number;
  double rate;
  char const* designator;
};

// One zone per strip: a nitrogen top dressing in kg/ha.
constexpr ZonePlan kZones[] = {
    {1, 120.0, "West: light soil"}, {2, 150.0, "Middle: loam"}, {3, 180.0, "East: heavy clay"}};

constexpr char kUnit[] = "kg/ha";

}  // namespace field

#endif
