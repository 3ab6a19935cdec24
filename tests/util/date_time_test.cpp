#include <vorn/util/vorn_util.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "scoped_time_zone.h"

namespace {

using vorn_test::ScopedTimeZone;

constexpr unsigned long kUnusable = 4294967295UL;

std::tm Record(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  std::tm t{};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = hour;
  t.tm_min = minute;
  t.tm_sec = second;
  return t;
}

unsigned long Seconds(int year, int month, int day, int hour = 0, int minute = 0,
                      int second = 0) {
  std::tm t = Record(year, month, day, hour, minute, second);
  return VornUtil::TimestampToTime(&t);
}

// A record whose every byte is 0x5A, to prove that a call leaves it alone.
std::tm Sentinel() {
  std::tm t;
  std::memset(&t, 0x5A, sizeof t);
  return t;
}

bool Untouched(std::tm const& t) {
  std::tm const sentinel = Sentinel();
  return std::memcmp(&t, &sentinel, sizeof t) == 0;
}

// An exact-size heap copy, so that a read past the terminator is caught under ASan.
std::unique_ptr<char[]> HeapText(std::string const& text) {
  std::unique_ptr<char[]> copy(new char[text.size() + 1]);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

struct Expected {
  int year, month, day, hour, minute, second, wday, yday, isdst;
};

void ExpectRecord(std::tm const& t, Expected const& e) {
  EXPECT_EQ(t.tm_year, e.year - 1900);
  EXPECT_EQ(t.tm_mon, e.month - 1);
  EXPECT_EQ(t.tm_mday, e.day);
  EXPECT_EQ(t.tm_hour, e.hour);
  EXPECT_EQ(t.tm_min, e.minute);
  EXPECT_EQ(t.tm_sec, e.second);
  EXPECT_EQ(t.tm_wday, e.wday);
  EXPECT_EQ(t.tm_yday, e.yday);
  EXPECT_EQ(t.tm_isdst, e.isdst);
}

std::tm Local(unsigned long seconds) {
  return VornUtil::TimeToTimestamp(&seconds);
}

// ---------------------------------------------------------------- ParseTimestamp

TEST(ParseTimestamp, ReadsAllSixFieldsAndNothingElse) {
  std::tm t = Sentinel();
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "2021-06-15 14:05:09"));
  ExpectRecord(t, {2021, 6, 15, 14, 5, 9, 0, 0, -1});
}

TEST(ParseTimestamp, AcceptsAnySeparatorAndIgnoresWhatFollowsTheSeconds) {
  for (char const* text : {"2021/06/15T14.05.09Z", "2021-06-15 14:05:09.250+02:00",
                           "2021-06-15T14:05:09", "2021x06x15x14x05x09-08:00"}) {
    SCOPED_TRACE(text);
    std::tm t = Sentinel();
    ASSERT_TRUE(VornUtil::ParseTimestamp(&t, text));
    ExpectRecord(t, {2021, 6, 15, 14, 5, 9, 0, 0, -1});
  }
}

TEST(ParseTimestamp, RejectsEveryTextShorterThanNineteenAndLeavesTheTargetAlone) {
  // Covers terminators on digit positions ("2021-06-15 14:0") and on separator
  // positions ("2021-06-15", "2021-06-15 14:05") alike.
  std::string const full = "2021-06-15 14:05:09";
  for (std::size_t length = 0; length < full.size(); ++length) {
    std::string const prefix = full.substr(0, length);
    SCOPED_TRACE(prefix);
    auto const text = HeapText(prefix);
    std::tm t = Sentinel();
    EXPECT_FALSE(VornUtil::ParseTimestamp(&t, text.get()));
    EXPECT_TRUE(Untouched(t));
  }
  auto const exact = HeapText(full);
  std::tm t = Sentinel();
  EXPECT_TRUE(VornUtil::ParseTimestamp(&t, exact.get()));
}

TEST(ParseTimestamp, TakesAnyCharacterAsADigitAndChecksNoRange) {
  std::tm t{};
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "2021-0A-15 14:05:09"));
  EXPECT_EQ(t.tm_mon, 16);  // 0 * 10 + ('A' - '0') = 17

  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "0000-13-00 99:60:99"));
  ExpectRecord(t, {0, 13, 0, 99, 60, 99, 0, 0, -1});

  // Bytes above 127 count as negative codes on every target: 0 * 10 + (-80 - 48).
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "2021-06-15 14:05:0\xB0"));
  EXPECT_EQ(t.tm_sec, -128);
}

TEST(ParseTimestamp, DateTimeOverloadOnlyTestsTheText) {
  VornDateTime const original = {1, 2, 3, 4, 5, 1999};
  VornDateTime d = original;
  EXPECT_TRUE(VornUtil::ParseTimestamp(&d, "2021-06-15 14:05:09"));
  EXPECT_EQ(d, original);
  auto const shortText = HeapText("2021-06-15");
  EXPECT_FALSE(VornUtil::ParseTimestamp(&d, shortText.get()));
  EXPECT_EQ(d, original);
}

// ---------------------------------------------------------------- TimestampToTime

TEST(TimestampToTime, ReadsTheRecordAsUniversalTime) {
  EXPECT_EQ(Seconds(1970, 1, 1), 0UL);
  EXPECT_EQ(Seconds(2000, 3, 1), 951868800UL);
  EXPECT_EQ(Seconds(2021, 6, 15, 12), 1623758400UL);
  EXPECT_EQ(Seconds(2038, 1, 19, 3, 14, 8), 2147483648UL);
  EXPECT_EQ(Seconds(2106, 2, 7, 6, 28, 15), 4294967295UL);
}

TEST(TimestampToTime, FollowsTheGregorianLeapRule) {
  EXPECT_EQ(Seconds(1972, 3, 1) - Seconds(1972, 2, 28), 2UL * 86400);
  EXPECT_EQ(Seconds(2000, 3, 1) - Seconds(2000, 2, 28), 2UL * 86400);
  EXPECT_EQ(Seconds(2100, 3, 1) - Seconds(2100, 2, 28), 1UL * 86400);
  EXPECT_EQ(Seconds(2100, 3, 1), 4107542400UL);
  EXPECT_EQ(Seconds(2001, 1, 1) - Seconds(2000, 1, 1), 366UL * 86400);
  EXPECT_EQ(Seconds(2101, 1, 1) - Seconds(2100, 1, 1), 365UL * 86400);
}

TEST(TimestampToTime, WrapsModulo2To32OnEveryTarget) {
  EXPECT_EQ(Seconds(2106, 2, 7, 6, 28, 16), 0UL);
  EXPECT_EQ(Seconds(2200, 1, 1), 2963151104UL);  // 7258118400 mod 2^32
  EXPECT_EQ(Seconds(1970, 1, 0), 4294880896UL);  // day 0 is one day before the epoch
  EXPECT_EQ(Seconds(1970, 1, 1, 0, -1), 4294967236UL);
}

TEST(TimestampToTime, OutOfRangeFieldsAddTheirWeightAndOtherFieldsAreIgnored) {
  EXPECT_EQ(Seconds(1970, 1, 1, 0, 0, 75), 75UL);
  EXPECT_EQ(Seconds(1970, 1, 1, 25), 90000UL);
  EXPECT_EQ(Seconds(1970, 1, 32), 31UL * 86400);
  std::tm t = Record(2000, 3, 1);
  t.tm_wday = 6;
  t.tm_isdst = 1;
  EXPECT_EQ(VornUtil::TimestampToTime(&t), 951868800UL);
}

TEST(TimestampToTime, UnusableMonthOrYearGivesAllBitsAndWritesNothing) {
  std::tm records[] = {Record(2021, 13, 1), Record(2021, 0, 1), Record(1969, 12, 31, 23, 59, 59)};
  for (std::tm& t : records) {
    t.tm_yday = -7;
    EXPECT_EQ(VornUtil::TimestampToTime(&t), kUnusable);
    EXPECT_EQ(t.tm_yday, -7);
  }
}

TEST(TimestampToTime, WritesADayOfYearThatCountsFromOneAndSkipsTheLeapDay) {
  std::tm t = Record(2021, 1, 1);
  VornUtil::TimestampToTime(&t);
  EXPECT_EQ(t.tm_yday, 1);

  t = Record(2000, 3, 1);
  EXPECT_EQ(VornUtil::TimestampToTime(&t), 951868800UL);  // the leap day still counts here
  EXPECT_EQ(t.tm_yday, 60);                               // but not here

  t = Record(2000, 12, 31);
  VornUtil::TimestampToTime(&t);
  EXPECT_EQ(t.tm_yday, 365);
  EXPECT_EQ(t.tm_mday, 31);  // nothing else is written
  EXPECT_EQ(t.tm_mon, 11);
}

// ---------------------------------------------------------------- TimeToTimestamp

TEST(TimeToTimestamp, GivesTheUtcCalendarUnderUtc) {
  ScopedTimeZone zone(vorn_test::kUtc);
  ExpectRecord(Local(0), {1970, 1, 1, 0, 0, 0, 4, 0, 0});
  ExpectRecord(Local(951868800), {2000, 3, 1, 0, 0, 0, 3, 60, 0});
}

TEST(TimeToTimestamp, CoversEveryUnsigned32BitValue) {
  ScopedTimeZone zone(vorn_test::kUtc);
  ExpectRecord(Local(2147483647), {2038, 1, 19, 3, 14, 7, 2, 18, 0});
  ExpectRecord(Local(2147483648), {2038, 1, 19, 3, 14, 8, 2, 18, 0});
  ExpectRecord(Local(4294967295UL), {2106, 2, 7, 6, 28, 15, 0, 37, 0});
}

TEST(TimeToTimestamp, UsesOnlyTheLow32BitsOfTheSeconds) {
  ScopedTimeZone zone(vorn_test::kUtc);
  // 2^32 + 5 where unsigned long is 64-bit, plain 5 where it is 32-bit.
  unsigned long const wide = static_cast<unsigned long>((std::uint64_t{1} << 32) + 5);
  ExpectRecord(Local(wide), {1970, 1, 1, 0, 0, 5, 4, 0, 0});
}

TEST(TimeToTimestamp, AppliesFixedOffsetsAcrossYearBoundaries) {
  {
    ScopedTimeZone zone(vorn_test::kPlusFiveThirty);
    ExpectRecord(Local(0), {1970, 1, 1, 5, 30, 0, 4, 0, 0});
    ExpectRecord(Local(1609444800), {2021, 1, 1, 1, 30, 0, 5, 0, 0});  // 2020-12-31 20:00 UTC
  }
  {
    ScopedTimeZone zone(vorn_test::kMinusEight);
    ExpectRecord(Local(0), {1969, 12, 31, 16, 0, 0, 3, 364, 0});
  }
}

TEST(TimeToTimestamp, FollowsDaylightSavingButNeverReportsIt) {
  ScopedTimeZone zone(vorn_test::kCentralEurope);
  ExpectRecord(Local(1610712000), {2021, 1, 15, 13, 0, 0, 5, 14, 0});
  ExpectRecord(Local(1623758400), {2021, 6, 15, 14, 0, 0, 2, 165, 0});
  // Spring forward at 2021-03-28 01:00 UTC, fall back at 2021-10-31 01:00 UTC.
  ExpectRecord(Local(1616893199), {2021, 3, 28, 1, 59, 59, 0, 86, 0});
  ExpectRecord(Local(1616893200), {2021, 3, 28, 3, 0, 0, 0, 86, 0});
  ExpectRecord(Local(1635641999), {2021, 10, 31, 2, 59, 59, 0, 303, 0});
  ExpectRecord(Local(1635642000), {2021, 10, 31, 2, 0, 0, 0, 303, 0});
  // Past 2038 the rule still applies.
  ExpectRecord(Local(4107542400UL + 180 * 86400), {2100, 8, 28, 2, 0, 0, 6, 239, 0});
}

TEST(TimeToTimestamp, ReadsTheZoneAtTheMomentOfTheCall) {
  ScopedTimeZone zone(vorn_test::kUtc);
  EXPECT_EQ(Local(0).tm_hour, 0);
  setenv("TZ", vorn_test::kPlusFiveThirty, 1);  // no tzset: the library must notice
  EXPECT_EQ(Local(0).tm_hour, 5);
}

TEST(TimeToTimestamp, RoundTripsOnlyWhereTheZoneIsUtc) {
  {
    ScopedTimeZone zone(vorn_test::kUtc);
    for (unsigned long seconds :
         {0UL, 951868800UL, 1623758409UL, 2147483648UL, 4107542400UL, 4294967295UL}) {
      std::tm t = Local(seconds);
      EXPECT_EQ(VornUtil::TimestampToTime(&t), seconds);
    }
  }
  ScopedTimeZone zone(vorn_test::kCentralEurope);
  std::tm t = Local(1623758400);
  EXPECT_EQ(VornUtil::TimestampToTime(&t), 1623758400UL + 7200);
}

// ---------------------------------------------------------------- VornDateTime

TEST(DateTime, EqualityComparesAllSixFields) {
  VornDateTime const base = {9, 5, 14, 15, 6, 2021};
  VornDateTime same = base;
  EXPECT_TRUE(base == same);
  EXPECT_FALSE(base != same);
  short VornDateTime::*const fields[] = {&VornDateTime::Second, &VornDateTime::Minute,
                                         &VornDateTime::Hour,   &VornDateTime::Day,
                                         &VornDateTime::Month,  &VornDateTime::Year};
  for (auto field : fields) {
    VornDateTime other = base;
    other.*field = static_cast<short>(other.*field + 1);
    EXPECT_FALSE(base == other);
    EXPECT_TRUE(base != other);
  }
}

TEST(DateTime, ConversionsRestoreTheRecordAndResetTheDerivedFields) {
  std::tm parsed{};
  ASSERT_TRUE(VornUtil::ParseTimestamp(&parsed, "2021-06-15 14:05:09"));
  VornDateTime const d = VornUtil::TimestampToDateTime(parsed);
  EXPECT_EQ(d, (VornDateTime{9, 5, 14, 15, 6, 2021}));
  ExpectRecord(VornUtil::DateTimeToTimestamp(d), {2021, 6, 15, 14, 5, 9, 0, 0, -1});

  ScopedTimeZone zone(vorn_test::kUtc);
  std::tm const local = Local(1623758409);  // carries a weekday, a day of year, isdst 0
  ExpectRecord(VornUtil::DateTimeToTimestamp(VornUtil::TimestampToDateTime(local)),
               {2021, 6, 15, 12, 0, 9, 0, 0, -1});
}

TEST(DateTime, ConversionsCutTo16BitsAndSignExtendWithoutChecks) {
  std::tm t{};
  t.tm_year = 70000;  // year 71900 cut to 16 bits
  t.tm_mon = 12;
  t.tm_sec = 65537;
  t.tm_mday = -3;
  VornDateTime const d = VornUtil::TimestampToDateTime(t);
  EXPECT_EQ(d.Year, 6364);
  EXPECT_EQ(d.Month, 13);
  EXPECT_EQ(d.Second, 1);
  EXPECT_EQ(d.Day, -3);

  std::tm const back = VornUtil::DateTimeToTimestamp(VornDateTime{-1, 99, -2, 0, 0, -5});
  ExpectRecord(back, {-5, 0, 0, -2, 99, -1, 0, 0, -1});
}

}  // namespace
