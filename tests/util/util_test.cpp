// Timestamps and identifier generation.
#include <vorn/util/vorn_util.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <string>

namespace {

// Every field of a record: the calendar year, month and day, the time, then the day of
// the week, the day of the year and the daylight-saving flag.
std::string Show(std::tm const& t) {
  auto n = [](int field) { return std::to_string(field); };
  return n(t.tm_year + 1900) + "-" + n(t.tm_mon + 1) + "-" + n(t.tm_mday) + " " + n(t.tm_hour) +
         ":" + n(t.tm_min) + ":" + n(t.tm_sec) + " w" + n(t.tm_wday) + " y" + n(t.tm_yday) +
         " dst" + n(t.tm_isdst);
}

// The calendar of the seconds in the zone (a POSIX rule), and the seconds read back.
std::string Local(char const* zone, unsigned long seconds) {
  setenv("TZ", zone, 1);  // no tzset(): the library reads the zone at each call
  std::tm t = VornUtil::TimeToTimestamp(&seconds);
  std::string const calendar = Show(t);
  return calendar + " " + std::to_string(VornUtil::TimestampToTime(&t));
}

// Note: any character counts as a digit (its code - 48, a byte read as signed char), no
// field is range-checked and nothing after the nineteenth character is read. A text cut
// short, at a separator or inside a field, is rejected and leaves the record as it was
// (the timestamp fuzzer tries every length under AddressSanitizer). The compact form
// keeps every field as it is, both ways, and equality compares all six. Note: the
// VornDateTime overload only tests the text and never writes its record.
TEST(ParseTimestamp, ReadsSixFieldsOfAnyCharactersThatTheCompactFormKeeps) {
  char const text[] = "2021/0A/15T14.60.0\xB0+02:00";
  std::tm t{};
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, text));
  for (char const* cut : {"2021", "2021-06-1"}) EXPECT_FALSE(VornUtil::ParseTimestamp(&t, cut));
  EXPECT_EQ(Show(t), "2021-17-15 14:60:-128 w0 y0 dst-1");
  VornDateTime d = VornUtil::TimestampToDateTime(t);
  EXPECT_TRUE(VornUtil::ParseTimestamp(&d, "1999-01-01 00:00:00"));
  EXPECT_EQ(d, (VornDateTime{-128, 60, 14, 15, 17, 2021}));
  EXPECT_EQ(Show(VornUtil::DateTimeToTimestamp(d)), Show(t));
  VornDateTime const others[] = {{1, 0, 0, 0, 0, 0}, {0, 1, 0, 0, 0, 0}, {0, 0, 1, 0, 0, 0},
                                 {0, 0, 0, 1, 0, 0}, {0, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 0, 1}};
  for (VornDateTime const& other : others) EXPECT_NE(other, VornDateTime{});
}

// Universal time in Gregorian years, unchecked fields adding their weight, wrapped to 32
// bits; a month outside 1..12 or a year before 1970 gives 4294967295 and writes nothing.
// Note: the day of the year written back counts from 1 and leaves out the leap day
// (parsing leaves it 0).
TEST(TimestampToTime, CountsGregorianDaysAsUniversalTimeWrappingAt32Bits) {
  std::pair<char const*, char const*> const cases[] = {
      {"1970-01-01 00:00:00", "0 y1"},           {"2000-12-31 00:00:00", "978220800 y365"},
      {"2024-03-01 00:00:00", "1709251200 y60"}, {"2100-03-01 00:00:00", "4107542400 y60"},
      {"2106-02-07 06:28:16", "0 y38"},          {"2200-01-01 00:00:00", "2963151104 y1"},
      {"1970-01-32 25:00:75", "2768475 y32"},    {"2021-13-01 00:00:00", "4294967295 y0"},
      {"2021-00-01 00:00:00", "4294967295 y0"},  {"1969-12-31 23:59:59", "4294967295 y0"}};
  for (auto const& [text, time] : cases) {
    std::tm t{};
    EXPECT_TRUE(VornUtil::ParseTimestamp(&t, text));
    unsigned long const seconds = VornUtil::TimestampToTime(&t);
    EXPECT_EQ(std::to_string(seconds) + " y" + std::to_string(t.tm_yday), time) << text;
  }
}

// Only the low 32 bits of the seconds count. Note: tm_isdst is always 0, and
// TimestampToTime reads the record as universal time, so only UTC round-trips.
TEST(TimeToTimestamp, GivesTheLocalCalendarInTheCurrentZone) {
  EXPECT_EQ(Local("UTC0", 4294967295UL), "2106-2-7 6:28:15 w0 y37 dst0 4294967295");
  EXPECT_EQ(Local("UTC0", static_cast<unsigned long>(0x100000005)), "1970-1-1 0:0:5 w4 y0 dst0 5");
  EXPECT_EQ(Local("CET-1CEST,M3.5.0,M10.5.0/3", 1623758400),
            "2021-6-15 14:0:0 w2 y165 dst0 1623765600");
}

// 8-4-4-4-12 upper-case hex digits from both forms, the last three a millisecond tick
// below 1000. Note: GuidSeed starts at 2 and the generator does not use it.
TEST(Guid, BothFormsAreWellFormed) {
  EXPECT_EQ(VornUtil::GuidSeed, 2);
  std::regex const hex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{9}[0-3][0-9A-F]{2}");
  char buffer[37];
  for (int i = 0; i < 20; ++i) EXPECT_TRUE(std::regex_match(VornUtil::GenerateGuid(buffer), hex));
  EXPECT_TRUE(std::regex_match(VornUtil::GenerateGuid().c_str(), hex));
}

}  // namespace
