// The whole public interface of VornLib in one include.
#ifndef VORN_VORN_H
#define VORN_VORN_H

#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>
#include <vorn/foundation/exception.h>
#include <vorn/foundation/conversion.h>

#include <vorn/containers/vector.h>
#include <vorn/containers/list.h>

#include <vorn/core/transform_callback.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/boundbox.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/core/attribute.h>
#include <vorn/core/attribute_collection.h>

#include <vorn/util/date_time.h>
#include <vorn/util/guid.h>
#include <vorn/util/vorn_util.h>

#include <vorn/geometry/object.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/polygon.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/line_collection.h>
#include <vorn/geometry/polygon_collection.h>
#include <vorn/geometry/multi_polygon_vector.h>
#include <vorn/geometry/object_collection.h>
#include <vorn/geometry/factory.h>

#include <vorn/treatment/treatment_zone.h>
#include <vorn/treatment/treatment_zone_collection.h>
#include <vorn/treatment/treatment_grid.h>
#include <vorn/treatment/treatment_grid_ex.h>
#include <vorn/treatment/treatment_polygon.h>
#include <vorn/treatment/treatment_polygon_collection.h>
#include <vorn/treatment/treatment_map.h>

#endif
