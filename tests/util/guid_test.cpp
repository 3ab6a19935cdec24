#include <vorn/util/vorn_util.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <set>
#include <string>
#include <type_traits>

#include "scoped_time_zone.h"

namespace {

using vorn_test::ScopedTimeZone;

static_assert(!std::is_default_constructible<VornUtil>::value, "VornUtil is never instantiated");

void ExpectWellFormed(std::string const& guid) {
  SCOPED_TRACE(guid);
  ASSERT_EQ(guid.size(), 36u);
  for (std::size_t i = 0; i < guid.size(); ++i) {
    if (i == 8 || i == 13 || i == 18 || i == 23) {
      EXPECT_EQ(guid[i], '-') << "at " << i;
    } else {
      EXPECT_TRUE((guid[i] >= '0' && guid[i] <= '9') || (guid[i] >= 'A' && guid[i] <= 'F'))
          << "at " << i;
    }
  }
  EXPECT_LT(std::stoul(guid.substr(33, 3), nullptr, 16), 1000u);  // the tick modulo 1000
}

// Both forms of GenerateGuid, so that neither can drift from the other.
std::string BufferForm() {
  char buffer[37];
  return VornUtil::GenerateGuid(buffer);
}

std::string StringForm() {
  stringbase<char, astringfuncs> const guid = VornUtil::GenerateGuid();
  EXPECT_EQ(guid.length(), 36u);
  return guid.c_str();
}

// Generates with `generate` until the wall clock second did not change during the call,
// and returns the identifier together with that second.
template <class Generate>
std::string GenerateWithinOneSecond(Generate generate, std::time_t* second) {
  for (;;) {
    std::time_t const before = std::time(nullptr);
    std::string guid = generate();
    if (std::time(nullptr) == before) {
      *second = before;
      return guid;
    }
  }
}

// The hour, minute and second of `utcSecond + offset`, each as "%02X".
std::string ClockDigits(std::time_t utcSecond, long offset) {
  std::time_t const shifted = utcSecond + offset;
  std::tm t{};
  gmtime_r(&shifted, &t);
  char digits[7];
  std::snprintf(digits, sizeof digits, "%02X%02X%02X", static_cast<unsigned>(t.tm_hour),
                static_cast<unsigned>(t.tm_min), static_cast<unsigned>(t.tm_sec));
  return digits;
}

TEST(Guid, BothFormsAreAlwaysWellFormed) {
  for (int i = 0; i < 200; ++i) {
    ExpectWellFormed(BufferForm());
    ExpectWellFormed(StringForm());
  }
}

TEST(Guid, BufferFormWritesExactly37CharactersAndReturnsTheBuffer) {
  char buffer[48];
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(VornUtil::GenerateGuid(buffer), buffer);
  EXPECT_EQ(buffer[36], '\0');
  for (std::size_t i = 37; i < sizeof buffer; ++i) EXPECT_EQ(buffer[i], '#') << "at " << i;
}

TEST(Guid, ClockDigitsShowTheLocalTime) {
  struct Zone {
    char const* rule;
    long offset;
  };
  for (Zone const zone : {Zone{vorn_test::kUtc, 0}, Zone{vorn_test::kPlusFiveThirty, 19800},
                          Zone{vorn_test::kMinusEight, -28800}}) {
    SCOPED_TRACE(zone.rule);
    ScopedTimeZone scoped(zone.rule);
    std::time_t second = 0;
    std::string guid = GenerateWithinOneSecond(BufferForm, &second);
    EXPECT_EQ(guid.substr(27, 6), ClockDigits(second, zone.offset));
    guid = GenerateWithinOneSecond(StringForm, &second);
    EXPECT_EQ(guid.substr(27, 6), ClockDigits(second, zone.offset));
  }
}

TEST(Guid, RandomDigitsFollowTheCounterNotThePriorRandomState) {
  // Reseeding from the nanosecond counter: even after the same srand, successive
  // identifiers start differently, and the caller's seeding does not show through.
  std::set<std::string> firstGroups;
  for (int i = 0; i < 20; ++i) {
    std::srand(1);
    firstGroups.insert(BufferForm().substr(0, 8));
  }
  EXPECT_GT(firstGroups.size(), 1u);
}

TEST(Guid, SeedStartsAtTwoAndIsNotUsedByTheGenerator) {
  EXPECT_EQ(VornUtil::GuidSeed, 2);
  VornUtil::GuidSeed = 12345;
  ExpectWellFormed(BufferForm());
  EXPECT_EQ(VornUtil::GuidSeed, 12345);
  VornUtil::GuidSeed = 2;
}

}  // namespace
