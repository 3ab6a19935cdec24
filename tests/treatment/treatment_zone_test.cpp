#include <vorn/treatment/treatment_zone.h>
#include <vorn/treatment/treatment_zone_collection.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/vorn_exception_matcher.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;
using vorn_test::U16;
using vorn_test::W;

void ExpectZone(VornTreatmentZone const& zone, int number, double rate,
                std::u16string const& designator, std::u16string const& unit, int user) {
  EXPECT_EQ(zone.ZoneNumber, number);
  EXPECT_EQ(zone.Rate, rate);
  EXPECT_EQ(U16(zone.GetDesignator()), designator);
  EXPECT_EQ(U16(zone.GetUnitName()), unit);
  EXPECT_EQ(zone.UserValue, user);
}

// Every zone number of the collection, in order, read through the iterators.
std::vector<int> Numbers(VornTreatmentZoneCollection const& zones) {
  std::vector<int> numbers;
  for (VornTreatmentZoneCollection::const_iterator it = zones.begin(); it != zones.end(); ++it) {
    numbers.push_back(*it != nullptr ? (*it)->ZoneNumber : -1);
  }
  return numbers;
}

TEST(TreatmentZone, TextsAreNeverNull) {
  VornTreatmentZone zone;
  ExpectZone(zone, 0, 0.0, u"", u"", 0);
  ASSERT_NE(zone.GetDesignator(), nullptr);
  ASSERT_NE(zone.GetUnitName(), nullptr);

  zone.SetDesignator(W(u"High"));
  zone.SetUnitName(W(u"kg/ha"));
  ExpectZone(zone, 0, 0.0, u"High", u"kg/ha", 0);
  zone.SetDesignator(nullptr);
  zone.SetUnitName(nullptr);
  ExpectZone(zone, 0, 0.0, u"", u"", 0);
  ASSERT_NE(zone.GetDesignator(), nullptr);
  ASSERT_NE(zone.GetUnitName(), nullptr);
}

TEST(TreatmentZone, ConstructorsFillWhatTheyAreGiven) {
  ExpectZone(VornTreatmentZone(3, 1.5), 3, 1.5, u"", u"", 0);
  ExpectZone(VornTreatmentZone(4, 2.5, 9), 4, 2.5, u"", u"", 9);
  ExpectZone(VornTreatmentZone(5, 3.5, W(u"Low"), W(u"l/ha"), -7), 5, 3.5, u"Low", u"l/ha", -7);
  ExpectZone(VornTreatmentZone(6, 4.5, nullptr, nullptr, 1), 6, 4.5, u"", u"", 1);
}

TEST(TreatmentZone, CopiesAreDeepAndSelfAssignmentKeepsTheZone) {
  VornTreatmentZone source(1, 2.0, W(u"A"), W(u"B"), 3);
  VornTreatmentZone copy(source);
  VornTreatmentZone assigned;
  assigned = source;
  source.SetDesignator(W(u"changed"));
  source.SetUnitName(nullptr);
  ExpectZone(copy, 1, 2.0, u"A", u"B", 3);
  ExpectZone(assigned, 1, 2.0, u"A", u"B", 3);

  VornTreatmentZone& alias = assigned;
  assigned = alias;
  ExpectZone(assigned, 1, 2.0, u"A", u"B", 3);
}

TEST(TreatmentZoneCollection, PositionsBeyondTheEndThrow) {
  VornTreatmentZoneCollection zones;
  char const* const text = "Index out of range";
  EXPECT_TRUE(ThrowsVornException([&] { zones[0]; }, text, 5002));
  zones.Add(1, 1.0);
  zones.Add(2, 2.0);
  EXPECT_EQ(zones[1].ZoneNumber, 2);
  EXPECT_EQ((*zones.at(1))->ZoneNumber, 2);
  EXPECT_TRUE(ThrowsVornException([&] { zones[2]; }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.at(2); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.RemoveAt(2); }, text, 5002));
  EXPECT_TRUE(ThrowsVornException([&] { zones.RemoveReference(2); }, text, 5002));
  EXPECT_EQ(Numbers(zones), (std::vector<int>{1, 2}));
}

TEST(TreatmentZoneCollection, AddStoresACopy) {
  VornTreatmentZoneCollection zones;
  VornTreatmentZone zone(7, 1.25, W(u"Mid"), W(u"kg"), 0);
  zones.Add(zone);
  zone.Rate = 99.0;
  zone.SetDesignator(W(u"other"));
  ExpectZone(zones[0], 7, 1.25, u"Mid", u"kg", 0);
}

TEST(TreatmentZoneCollection, ReferencesPassOwnershipBothWays) {
  VornTreatmentZoneCollection zones;
  EXPECT_TRUE(ThrowsVornException([&] { zones.AddReference(nullptr); }, "Parameter is NULL", 5003));
  EXPECT_EQ(zones.Count(), 0u);

  VornTreatmentZone* const kept = new VornTreatmentZone(1, 1.0);
  zones.AddReference(kept);
  zones.Add(2, 2.0);
  EXPECT_EQ(&zones[0], kept);
  zones.RemoveReference(0);
  EXPECT_EQ(Numbers(zones), (std::vector<int>{2}));
  EXPECT_EQ(kept->ZoneNumber, 1);  // still alive and the caller's again
  delete kept;

  // Adopted zones are released by Clear, RemoveAt and the destructor (the leak checker
  // of the sanitizer build holds the collection to that).
  zones.AddReference(new VornTreatmentZone(3, 3.0));
  zones.AddReference(new VornTreatmentZone(4, 4.0));
  zones.RemoveAt(0);
  EXPECT_EQ(Numbers(zones), (std::vector<int>{3, 4}));
  zones.Clear();
  EXPECT_EQ(zones.Count(), 0u);

  VornTreatmentZone* const first = new VornTreatmentZone(5, 5.0);
  VornTreatmentZone* const second = new VornTreatmentZone(6, 6.0);
  zones.AddReference(first);
  zones.AddReference(second);
  zones.RemoveAllReferences();
  EXPECT_EQ(zones.Count(), 0u);
  EXPECT_EQ(first->ZoneNumber + second->ZoneNumber, 11);
  delete first;
  delete second;
  zones.AddReference(new VornTreatmentZone(7, 7.0));  // released by the destructor
}

TEST(TreatmentZoneCollection, AssignmentAndCopyOwnTheirZones) {
  VornTreatmentZoneCollection source;
  source.Add(VornTreatmentZone(1, 1.0, W(u"one"), nullptr, 0));
  source.Add(2, 2.0);

  VornTreatmentZoneCollection copy(source);
  VornTreatmentZoneCollection assigned;
  assigned.Add(9, 9.0);
  assigned = source;
  for (VornTreatmentZoneCollection const* zones : {&copy, &assigned}) {
    EXPECT_EQ(Numbers(*zones), (std::vector<int>{1, 2}));
    EXPECT_NE(&(*zones)[0], &source[0]);
    EXPECT_EQ(U16((*zones)[0].GetDesignator()), u"one");
  }

  VornTreatmentZoneCollection& alias = assigned;
  assigned = alias;
  EXPECT_EQ(assigned.Count(), 0u);
}

TEST(TreatmentZoneCollection, AddReportsExhaustionAsNullParameter) {
  VornTreatmentZoneCollection zones;
  zones.Add(1, 1.0);
  VornTreatmentZone const zone(2, 2.0);
  {
    ScopedFailure failure(Channel::Malloc, 1);  // the zone's own storage
    EXPECT_TRUE(ThrowsVornException([&] { zones.Add(zone); }, "Parameter is NULL", 5003));
    EXPECT_TRUE(vorn_test::Fired(Channel::Malloc));
  }
  {
    ScopedFailure failure(Channel::NothrowNew, 1);  // the list node; the copy is released
    EXPECT_TRUE(ThrowsVornException([&] { zones.Add(3, 3.0); }, "Parameter is NULL", 5003));
  }
  VornTreatmentZone* const mine = new VornTreatmentZone(4, 4.0);
  {
    ScopedFailure failure(Channel::NothrowNew, 1);
    EXPECT_TRUE(ThrowsVornException([&] { zones.AddReference(mine); }, "Parameter is NULL", 5003));
  }
  EXPECT_EQ(mine->ZoneNumber, 4);  // not taken: still the caller's
  delete mine;
  EXPECT_EQ(Numbers(zones), (std::vector<int>{1}));
}

TEST(TreatmentZoneCollection, AddRangeKeepsPositionsWhenACopyFails) {
  VornTreatmentZoneCollection source;
  source.Add(1, 1.0);
  source.Add(2, 2.0);
  source.Add(3, 3.0);
  VornTreatmentZoneCollection target;
  {
    ScopedFailure failure(Channel::Malloc, 2);  // the copy of zone 2
    target.AddRange(source);
  }
  EXPECT_EQ(Numbers(target), (std::vector<int>{1, -1, 3}));
  EXPECT_EQ(target[2].ZoneNumber, 3);

  VornTreatmentZoneCollection again(target);  // copies the null entry as a null entry
  EXPECT_EQ(Numbers(again), (std::vector<int>{1, -1, 3}));
  target.RemoveAt(1);
  EXPECT_EQ(Numbers(target), (std::vector<int>{1, 3}));
  {
    ScopedFailure failure(Channel::NothrowNew, 2);  // the second node: copying stops there
    target.AddRange(source);
  }
  EXPECT_EQ(Numbers(target), (std::vector<int>{1, 3, 1}));
}

}  // namespace
