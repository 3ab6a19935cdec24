#include <vorn/util/vorn_util.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "scoped_time_zone.h"

namespace {

// Both forms of GenerateGuid, so that neither can drift from the other.
std::string BufferForm() {
  char buffer[48];
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(VornUtil::GenerateGuid(buffer), buffer);
  EXPECT_EQ(std::string(buffer + 37, buffer + 48), std::string(11, '#'));  // 37 written
  return buffer;
}

std::string StringForm() { return VornUtil::GenerateGuid().c_str(); }

TEST(Guid, BothFormsAreAlwaysWellFormedWhateverTheSeed) {
  EXPECT_EQ(VornUtil::GuidSeed, 2);
  VornUtil::GuidSeed = 12345;  // read and written by applications, unused by the generator
  for (int i = 0; i < 100; ++i) {
    for (std::string const& guid : {BufferForm(), StringForm()}) {
      ASSERT_EQ(guid.size(), 36u);
      for (std::size_t at : {8u, 13u, 18u, 23u}) EXPECT_EQ(guid[at], '-') << guid;
      EXPECT_EQ(guid.find_first_not_of("0123456789ABCDEF-"), std::string::npos) << guid;
      EXPECT_LT(std::stoul(guid.substr(33), nullptr, 16), 1000u) << guid;  // tick mod 1000
    }
  }
  EXPECT_EQ(VornUtil::GuidSeed, 12345);
  VornUtil::GuidSeed = 2;
}

TEST(Guid, ClockDigitsShowTheLocalTime) {
  vorn_test::ScopedTimeZone zone(vorn_test::kPlusFiveThirty);
  for (auto generate : {BufferForm, StringForm}) {
    std::time_t second;
    std::string guid;
    do {  // until the wall clock second did not change during the call
      second = std::time(nullptr);
      guid = generate();
    } while (std::time(nullptr) != second);
    std::time_t const local = second + 19800;
    std::tm t{};
    gmtime_r(&local, &t);
    char digits[7];
    std::snprintf(digits, sizeof digits, "%02X%02X%02X", static_cast<unsigned>(t.tm_hour),
                  static_cast<unsigned>(t.tm_min), static_cast<unsigned>(t.tm_sec));
    EXPECT_EQ(guid.substr(27, 6), digits);
  }
}

TEST(Guid, RandomDigitsFollowTheCounterNotThePriorRandomState) {
  std::set<std::string> firstGroups;
  for (int i = 0; i < 20; ++i) {
    std::srand(1);
    firstGroups.insert(BufferForm().substr(0, 8));
  }
  EXPECT_GT(firstGroups.size(), 1u);
}

}  // namespace
