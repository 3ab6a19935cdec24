// The leap day in an ordinary leap year (divisible by 4, not a century): seconds after
// February count it, and the day-of-year that TimestampToTime writes back still does not.
#include <vorn/util/vorn_util.h>

#include <ctime>

#include <gtest/gtest.h>

namespace {

std::tm Record(int year, int month, int day) {
  std::tm t{};
  t.tm_year = year - 1900;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  return t;
}

TEST(LeapDay, AnOrdinaryLeapYearCountsItsTwentyNinthOfFebruary) {
  std::tm february = Record(2024, 2, 28);
  std::tm march = Record(2024, 3, 1);
  EXPECT_EQ(VornUtil::TimestampToTime(&february), 1709078400UL);
  EXPECT_EQ(VornUtil::TimestampToTime(&march), 1709251200UL);
  EXPECT_EQ(march.tm_yday, 60);  // 31 + 28 + 1: the leap day is deliberately left out
  std::tm leapDay = Record(2024, 2, 29);
  leapDay.tm_hour = 12;
  EXPECT_EQ(VornUtil::TimestampToTime(&leapDay), 1709208000UL);
}

}  // namespace
