#include <vorn/treatment/treatment_zone.h>
#include <vorn/treatment/treatment_zone_collection.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

namespace {

using namespace vorn_test;

typedef std::tuple<int, double, std::u16string, std::u16string, int> Fields;
Fields FieldsOf(VornTreatmentZone const& zone) {
  return Fields(zone.ZoneNumber, zone.Rate, U16(zone.GetDesignator()), U16(zone.GetUnitName()),
                zone.UserValue);
}

// Every zone number of the collection in order; -1 stands for a null entry.
std::vector<int> Numbers(VornTreatmentZoneCollection const& zones) {
  std::vector<int> numbers;
  for (auto it = zones.begin(); it != zones.end(); ++it) {
    numbers.push_back(*it != nullptr ? (*it)->ZoneNumber : -1);
  }
  return numbers;
}

TEST(TreatmentZone, TextsAreNeverNullAndCopiesAreDeep) {
  VornTreatmentZone zone(5, 3.5, W(u"Low"), nullptr, -7);
  VornTreatmentZone const copy(zone);
  VornTreatmentZone assigned(4, 2.5, 9);
  assigned = zone;
  VornTreatmentZone& alias = assigned;
  assigned = alias;  // a zone assigned to itself stays as it was
  zone.SetDesignator(nullptr);
  zone.SetUnitName(W(u"kg"));
  EXPECT_EQ(FieldsOf(zone), Fields(5, 3.5, u"", u"kg", -7));
  EXPECT_EQ(FieldsOf(copy), Fields(5, 3.5, u"Low", u"", -7));
  EXPECT_EQ(FieldsOf(assigned), FieldsOf(copy));
  EXPECT_EQ(FieldsOf(VornTreatmentZone(4, 2.5, 9)), Fields(4, 2.5, u"", u"", 9));
  EXPECT_EQ(FieldsOf(VornTreatmentZone()), Fields(0, 0.0, u"", u"", 0));
}

// Adopted zones are released by RemoveAt, Clear and the destructor: the leak checker of
// the sanitizer build holds the collection to that.
TEST(TreatmentZoneCollection, PositionsAreCheckedAndReferencesPassOwnershipBothWays) {
  VornTreatmentZoneCollection zones;
  EXPECT_TRUE(ThrowsVornException([&] { zones.AddReference(nullptr); }, "Parameter is NULL", 5003));
  VornTreatmentZone* const kept = new VornTreatmentZone(1, 1.0);
  zones.AddReference(new VornTreatmentZone(2, 0));
  zones.AddReference(kept);
  EXPECT_EQ(*zones.at(1), kept);
  char const* const range = "Index out of range";
  EXPECT_TRUE(ThrowsVornException([&] { zones[2]; }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.at(2); }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.RemoveAt(2); }, range, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.RemoveReference(2); }, range, 5002));
  zones.RemoveReference(1);
  zones.RemoveAt(0);
  EXPECT_TRUE(ThrowsVornException([&] { zones[0]; }, range, 5002));
  zones.AddReference(kept);
  zones.RemoveAllReferences();
  EXPECT_EQ(kept->ZoneNumber, 1);  // alive, and the caller's again
  delete kept;
  zones.AddReference(new VornTreatmentZone(3, 3.0));
}

TEST(TreatmentZoneCollection, CopiesOwnTheirZonesAndSelfAssignmentEmpties) {
  VornTreatmentZoneCollection source;
  VornTreatmentZone zone(1, 1.0, W(u"one"), nullptr, 0);
  source.Add(zone);
  zone.SetDesignator(W(u"changed"));  // Add stored a copy
  source.Add(2, 2.0);
  VornTreatmentZoneCollection copy(source);
  VornTreatmentZoneCollection assigned;
  assigned.Add(9, 9.0);
  assigned = source;
  source.AddRange(source);  // one copy of each zone it held
  EXPECT_EQ(Numbers(source), (std::vector<int>{1, 2, 1, 2}));
  for (VornTreatmentZoneCollection const* zones : {&copy, &assigned}) {
    EXPECT_EQ(Numbers(*zones), (std::vector<int>{1, 2}));
    EXPECT_NE(&(*zones)[0], &source[0]);
    EXPECT_EQ(U16((*zones)[0].GetDesignator()), u"one");
  }
  VornTreatmentZoneCollection& alias = assigned;
  assigned = alias;
  EXPECT_EQ(assigned.Count(), 0u);
}

TEST(TreatmentZoneCollection, ExhaustionFailsAddButLeavesANullEntryInAddRange) {
  VornTreatmentZoneCollection zones;
  VornTreatmentZone* const mine = new VornTreatmentZone(4, 4.0);
  auto failsOn = [](Channel channel, std::function<void()> const& operation) {
    return ThrowsVornException([&] { ScopedFailure failure(channel, 1); operation(); },
                               "Parameter is NULL", 5003);
  };
  EXPECT_TRUE(failsOn(Channel::Malloc, [&] { zones.Add(3, 3.0); }));  // the zone itself
  EXPECT_TRUE(failsOn(Channel::NothrowNew, [&] { zones.Add(VornTreatmentZone()); }));  // node
  EXPECT_TRUE(failsOn(Channel::NothrowNew, [&] { zones.AddReference(mine); }));
  EXPECT_EQ(zones.Count(), 0u);
  delete mine;  // not taken: still the caller's

  VornTreatmentZoneCollection source;
  for (int number = 1; number <= 3; ++number) source.Add(number, 1.0);
  {
    ScopedFailure failure(Channel::Malloc, 2);  // the copy of zone 2: a null entry
    zones.AddRange(source);
  }
  {
    ScopedFailure failure(Channel::NothrowNew, 2);  // the second node: copying stops
    zones.AddRange(source);
  }
  EXPECT_EQ(Numbers(zones), (std::vector<int>{1, -1, 3, 1}));
  EXPECT_EQ(Numbers(VornTreatmentZoneCollection(zones)), (std::vector<int>{1, -1, 3, 1}));
  zones.RemoveAt(1);
}

}  // namespace
