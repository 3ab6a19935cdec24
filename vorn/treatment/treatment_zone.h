// Treatment zones: one entry of an application-rate legend.
//
// VornTreatmentZone carries a zone number, the rate to apply, a designator text and the
// name of the rate's unit, plus a caller value the library only stores. The byte grid
// selects zones by position from a VornTreatmentZoneCollection; every treatment polygon
// carries one zone of its own. A zone owns its two wide texts. Zones that collections
// create live on the VornMalloc channel (the class derives from VornAllocator), so a
// zone handed to a collection must come from a plain new or from the factory.
//
// VornTreatmentZoneEx is the compact cell value of the extended grid: a rate and a zone
// number, copied by value, with a fixed layout.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_TREATMENT_TREATMENT_ZONE_H
#define VORN_TREATMENT_TREATMENT_ZONE_H

#include <cstddef>

#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>

class VORN_API VornTreatmentZone : public VornAllocator {
public:
  // The zone's number; stored and copied, never interpreted.
  int ZoneNumber;

private:
  stringbase<unsigned short, wstringfuncs> m_designator;

public:
  // The rate to apply inside the zone, in the unit that GetUnitName names.
  double Rate;

private:
  stringbase<unsigned short, wstringfuncs> m_unitName;

public:
  // A further caller value; 0 unless a constructor is given one. Stored and copied only.
  int UserValue;

  // Zone 0, rate 0.0, empty texts, UserValue 0.
  VornTreatmentZone();
  VornTreatmentZone(int zoneNumber, double rate);
  VornTreatmentZone(int zoneNumber, double rate, int userValue);
  // Copies both zero-terminated texts; a null text leaves that text empty, and so does a
  // copy that cannot be allocated (nothing is thrown).
  VornTreatmentZone(int zoneNumber, double rate, unsigned short const* designator,
                    unsigned short const* unitName, int userValue);
  // Copies all five members, the texts deeply (a text that cannot be allocated is left
  // empty).
  VornTreatmentZone(VornTreatmentZone const& other);
  ~VornTreatmentZone() = default;

  // Copies ZoneNumber, UserValue, Rate, then the unit name, then the designator.
  // Assigning a zone to itself leaves it unchanged.
  VornTreatmentZone const& operator=(VornTreatmentZone const& other);

  // The designator's characters; never null: an empty designator gives a static "".
  unsigned short const* GetDesignator() const { return m_designator.c_str(); }
  // The unit name's characters; never null, as GetDesignator.
  unsigned short const* GetUnitName() const { return m_unitName.c_str(); }

  // Copies the zero-terminated text; null releases the buffer and leaves the text empty,
  // and so does running out of memory for the copy.
  void SetDesignator(unsigned short const* text) { m_designator = text; }
  void SetUnitName(unsigned short const* text) { m_unitName = text; }
};

class VORN_API VornTreatmentZoneEx {
public:
  // Layout is part of the interface: Rate at offset 0, ZoneNumber at offset 8, padded to
  // the alignment of double (16 bytes on x86_64 and ARM, 12 on i386).
  double Rate;
  int ZoneNumber;

  VornTreatmentZoneEx() : Rate(0.0), ZoneNumber(0) {}
  VornTreatmentZoneEx(double rate, int zoneNumber) : Rate(rate), ZoneNumber(zoneNumber) {}
  VornTreatmentZoneEx(VornTreatmentZoneEx const& other) = default;
  ~VornTreatmentZoneEx() = default;

  VornTreatmentZoneEx const& operator=(VornTreatmentZoneEx const& other) {
    Rate = other.Rate;
    ZoneNumber = other.ZoneNumber;
    return *this;
  }
};

static_assert(offsetof(VornTreatmentZoneEx, Rate) == 0, "Rate opens the cell value");
static_assert(offsetof(VornTreatmentZoneEx, ZoneNumber) == sizeof(double),
              "ZoneNumber follows Rate directly");
static_assert(sizeof(VornTreatmentZoneEx) == (alignof(double) == 8 ? 16 : 12),
              "a cell value is a double and an int padded to double alignment");

#endif
