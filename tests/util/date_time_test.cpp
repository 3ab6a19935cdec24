#include <vorn/util/vorn_util.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "scoped_time_zone.h"

namespace {

using vorn_test::ScopedTimeZone;

constexpr unsigned long kUnusable = 4294967295UL;

// A record read from timestamp text (so tm_isdst is -1).
std::tm Record(char const* text) {
  std::tm t{};
  EXPECT_TRUE(VornUtil::ParseTimestamp(&t, text)) << text;
  return t;
}

unsigned long Seconds(char const* text) {
  std::tm t = Record(text);
  return VornUtil::TimestampToTime(&t);
}

std::tm Local(unsigned long seconds) { return VornUtil::TimeToTimestamp(&seconds); }

// Every field of a record, as "year-month-day hour:minute:second wday yday isdst" with
// the calendar year and month.
std::string Show(std::tm const& t) {
  char text[96];
  std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d w%d y%d dst%d", t.tm_year + 1900,
                t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec, t.tm_wday, t.tm_yday,
                t.tm_isdst);
  return text;
}

TEST(ParseTimestamp, ReadsSixFieldsOverAnySeparatorAndIgnoresTheRest) {
  for (char const* text : {"2021-06-15 14:05:09", "2021/06/15T14.05.09Z",
                           "2021-06-15 14:05:09.250+02:00", "2021x06x15x14x05x09-08:00"}) {
    std::tm t;
    std::memset(&t, 0x5A, sizeof t);
    ASSERT_TRUE(VornUtil::ParseTimestamp(&t, text)) << text;
    EXPECT_EQ(Show(t), "2021-6-15 14:5:9 w0 y0 dst-1") << text;
  }
}

TEST(ParseTimestamp, RejectsEveryShorterTextWithoutReadingPastItsEnd) {
  // Exact-size heap copies, so that a read past the terminator is caught under ASan;
  // terminators on digit and on separator positions ("2021-06-15") alike.
  std::string const full = "2021-06-15 14:05:09";
  for (std::size_t length = 0; length < full.size(); ++length) {
    std::unique_ptr<char[]> text(new char[length + 1]);
    std::memcpy(text.get(), full.c_str(), length);
    text[length] = '\0';
    std::tm t = Record("1999-01-02 03:04:05");
    EXPECT_FALSE(VornUtil::ParseTimestamp(&t, text.get())) << text.get();
    EXPECT_EQ(Show(t), "1999-1-2 3:4:5 w0 y0 dst-1") << text.get();
  }
  VornDateTime d = {1, 2, 3, 4, 5, 1999};
  EXPECT_TRUE(VornUtil::ParseTimestamp(&d, full.c_str()));  // only tests the text
  EXPECT_EQ(d, (VornDateTime{1, 2, 3, 4, 5, 1999}));
}

TEST(ParseTimestamp, TakesAnyCharacterAsADigitAndChecksNoRange) {
  std::tm t{};
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "2021-0A-15 14:05:09"));
  EXPECT_EQ(t.tm_mon, 16);  // 0 * 10 + ('A' - '0') = 17
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "0000-13-00 99:60:99"));
  EXPECT_EQ(Show(t), "0-13-0 99:60:99 w0 y0 dst-1");
  // Bytes above 127 count as negative codes on every target: 0 * 10 + (-80 - 48).
  ASSERT_TRUE(VornUtil::ParseTimestamp(&t, "2021-06-15 14:05:0\xB0"));
  EXPECT_EQ(t.tm_sec, -128);
}

TEST(TimestampToTime, CountsGregorianDaysAsUniversalTimeWrappingAt32Bits) {
  EXPECT_EQ(Seconds("1970-01-01 00:00:00"), 0UL);
  EXPECT_EQ(Seconds("2000-03-01 00:00:00"), 951868800UL);  // 2000 is a leap year
  EXPECT_EQ(Seconds("2100-03-01 00:00:00"), 4107542400UL);
  EXPECT_EQ(Seconds("2100-03-01 00:00:00") - Seconds("2100-02-28 00:00:00"), 86400UL);
  EXPECT_EQ(Seconds("2106-02-07 06:28:15"), kUnusable);  // a real instant, too
  EXPECT_EQ(Seconds("2106-02-07 06:28:16"), 0UL);
  EXPECT_EQ(Seconds("2200-01-01 00:00:00"), 2963151104UL);  // 7258118400 mod 2^32
  EXPECT_EQ(Seconds("1970-01-32 25:00:75"), 31 * 86400UL + 90075);  // no range check
  EXPECT_EQ(Seconds("1970-01-00 00:00:00"), 4294880896UL);
}

TEST(TimestampToTime, WritesOnlyADayOfYearThatCountsFromOneAndSkipsTheLeapDay) {
  std::tm records[] = {Record("2021-01-01 00:00:00"), Record("2000-03-01 00:00:00"),
                       Record("2000-12-31 00:00:00")};
  for (std::tm& t : records) VornUtil::TimestampToTime(&t);
  EXPECT_EQ(Show(records[0]), "2021-1-1 0:0:0 w0 y1 dst-1");
  EXPECT_EQ(Show(records[1]), "2000-3-1 0:0:0 w0 y60 dst-1");
  EXPECT_EQ(Show(records[2]), "2000-12-31 0:0:0 w0 y365 dst-1");
  for (char const* text : {"2021-13-01 00:00:00", "2021-00-01 00:00:00", "1969-12-31 23:59:59"}) {
    std::tm t = Record(text);
    t.tm_yday = -7;
    EXPECT_EQ(VornUtil::TimestampToTime(&t), kUnusable);  // and nothing is written
    EXPECT_EQ(t.tm_yday, -7);
  }
}

TEST(TimeToTimestamp, GivesTheUtcCalendarOfTheLow32BitsAndRoundTripsUnderUtc) {
  ScopedTimeZone zone(vorn_test::kUtc);
  EXPECT_EQ(Show(Local(0)), "1970-1-1 0:0:0 w4 y0 dst0");
  EXPECT_EQ(Show(Local(951868800)), "2000-3-1 0:0:0 w3 y60 dst0");
  EXPECT_EQ(Show(Local(4294967295UL)), "2106-2-7 6:28:15 w0 y37 dst0");
  // 2^32 + 5 where unsigned long is 64-bit, plain 5 where it is 32-bit.
  EXPECT_EQ(Show(Local(static_cast<unsigned long>((std::uint64_t{1} << 32) + 5))),
            "1970-1-1 0:0:5 w4 y0 dst0");
  for (unsigned long seconds : {0UL, 1623758409UL, 4107542400UL, 4294967295UL}) {
    std::tm t = Local(seconds);
    EXPECT_EQ(VornUtil::TimestampToTime(&t), seconds);
  }
}

TEST(TimeToTimestamp, AppliesTheCurrentFixedOffsetAcrossYearBoundaries) {
  {
    ScopedTimeZone zone(vorn_test::kPlusFiveThirty);  // 2020-12-31 20:00 UTC
    EXPECT_EQ(Show(Local(1609444800)), "2021-1-1 1:30:0 w5 y0 dst0");
  }
  ScopedTimeZone zone(vorn_test::kMinusEight);
  EXPECT_EQ(Show(Local(0)), "1969-12-31 16:0:0 w3 y364 dst0");
  setenv("TZ", vorn_test::kUtc, 1);  // no tzset: the zone is read at the moment of the call
  EXPECT_EQ(Show(Local(0)), "1970-1-1 0:0:0 w4 y0 dst0");
}

TEST(TimeToTimestamp, FollowsDaylightSavingButNeverReportsIt) {
  ScopedTimeZone zone(vorn_test::kCentralEurope);
  // Spring forward at 2021-03-28 01:00 UTC, fall back at 2021-10-31 01:00 UTC.
  EXPECT_EQ(Show(Local(1616893199)), "2021-3-28 1:59:59 w0 y86 dst0");
  EXPECT_EQ(Show(Local(1616893200)), "2021-3-28 3:0:0 w0 y86 dst0");
  EXPECT_EQ(Show(Local(1635641999)), "2021-10-31 2:59:59 w0 y303 dst0");
  EXPECT_EQ(Show(Local(1635642000)), "2021-10-31 2:0:0 w0 y303 dst0");
  std::tm t = Local(1623758400);  // local summer time read back as universal time
  EXPECT_EQ(VornUtil::TimestampToTime(&t), 1623758400UL + 7200);
}

TEST(DateTime, EqualityComparesAllSixFields) {
  VornDateTime const base = {9, 5, 14, 15, 6, 2021};
  EXPECT_TRUE(base == VornDateTime(base) && !(base != VornDateTime(base)));
  for (short VornDateTime::*field : {&VornDateTime::Second, &VornDateTime::Minute,
                                     &VornDateTime::Hour, &VornDateTime::Day,
                                     &VornDateTime::Month, &VornDateTime::Year}) {
    VornDateTime other = base;
    other.*field = static_cast<short>(other.*field + 1);
    EXPECT_TRUE(!(base == other) && base != other);
  }
}

TEST(DateTime, ConversionsCutTo16BitsAndResetTheDerivedFields) {
  ScopedTimeZone zone(vorn_test::kUtc);
  std::tm const local = Local(1623758409);  // carries a weekday, a day of year, isdst 0
  VornDateTime const d = VornUtil::TimestampToDateTime(local);
  EXPECT_EQ(d, (VornDateTime{9, 0, 12, 15, 6, 2021}));
  EXPECT_EQ(Show(VornUtil::DateTimeToTimestamp(d)), "2021-6-15 12:0:9 w0 y0 dst-1");
  std::tm t{};
  t.tm_year = 70000;  // year 71900 cut to 16 bits
  t.tm_sec = 65537;
  t.tm_mday = -3;
  EXPECT_EQ(VornUtil::TimestampToDateTime(t), (VornDateTime{1, 0, 0, -3, 1, 6364}));
  EXPECT_EQ(Show(VornUtil::DateTimeToTimestamp(VornDateTime{-1, 99, -2, 0, 0, -5})),
            "-5-0-0 -2:99:-1 w0 y0 dst-1");
}

}  // namespace
