#include <vorn/treatment/treatment_polygon.h>

VornTreatmentPolygon::VornTreatmentPolygon() = default;

VornTreatmentPolygon::VornTreatmentPolygon(VornPolygon const& polygon,
                                           VornTreatmentZone const& zone)
    : Area(), Zone() {
  Area.Polygons.Add(polygon);
  Zone = zone;
}

VornTreatmentPolygon::VornTreatmentPolygon(VornMultiPolygon const& multiPolygon,
                                           VornTreatmentZone const& zone)
    : Area(multiPolygon), Zone(zone) {}

VornTreatmentPolygon::VornTreatmentPolygon(VornTreatmentPolygon const& other)
    : VornAllocator(other), Area(other.Area), Zone(other.Zone) {}

VornTreatmentPolygon const& VornTreatmentPolygon::operator=(VornTreatmentPolygon const& other) {
  Area = other.Area;
  Zone = other.Zone;
  return *this;
}
