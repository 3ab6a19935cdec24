#include <vorn/treatment/treatment_zone.h>

VornTreatmentZone::VornTreatmentZone() : ZoneNumber(0), Rate(0.0), UserValue(0) {}

VornTreatmentZone::VornTreatmentZone(int zoneNumber, double rate)
    : ZoneNumber(zoneNumber), Rate(rate), UserValue(0) {}

VornTreatmentZone::VornTreatmentZone(int zoneNumber, double rate, int userValue)
    : ZoneNumber(zoneNumber), Rate(rate), UserValue(userValue) {}

VornTreatmentZone::VornTreatmentZone(int zoneNumber, double rate, unsigned short const* designator,
                                     unsigned short const* unitName, int userValue)
    : ZoneNumber(zoneNumber), m_designator(designator), Rate(rate), m_unitName(unitName),
      UserValue(userValue) {}

VornTreatmentZone::VornTreatmentZone(VornTreatmentZone const& other)
    : VornAllocator(other), ZoneNumber(other.ZoneNumber), m_designator(other.m_designator),
      Rate(other.Rate), m_unitName(other.m_unitName), UserValue(other.UserValue) {}

VornTreatmentZone const& VornTreatmentZone::operator=(VornTreatmentZone const& other) {
  // The texts free their buffers before reading the source, so they must not read
  // themselves.
  if (this == &other) return *this;
  ZoneNumber = other.ZoneNumber;
  UserValue = other.UserValue;
  Rate = other.Rate;
  m_unitName = other.m_unitName;
  m_designator = other.m_designator;
  return *this;
}
