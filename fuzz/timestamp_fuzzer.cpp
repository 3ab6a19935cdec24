// Timestamp parsing on arbitrary bytes: both ParseTimestamp overloads against a direct
// reading of the layout YYYY?MM?DD?hh?mm?ss, and TimestampToTime of every parsed record
// against a days-from-civil count.
//
// The text is copied into a heap block of exactly its length plus the terminator, so
// AddressSanitizer reports any read past the terminator. Checked: the result is true
// exactly when the first nineteen characters are present; a false result leaves the
// std::tm untouched; the VornDateTime overload never writes; every parsed field is
// (code - 48) accumulated as read, without validation.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <memory>

#include <vorn/util/vorn_util.h>

#include "fuzz_check.h"

namespace {

// Start and width of the six fields: year, month, day, hour, minute, second.
constexpr int kFieldStart[6] = {0, 5, 8, 11, 14, 17};
constexpr int kFieldWidth[6] = {4, 2, 2, 2, 2, 2};
constexpr std::size_t kLayoutLength = 19;

int ReadField(char const* text, int field) {
  int value = 0;
  for (int i = 0; i < kFieldWidth[field]; ++i) {
    value = value * 10 + (static_cast<signed char>(text[kFieldStart[field] + i]) - '0');
  }
  return value;
}

// Days from 1970-01-01 to the given proleptic Gregorian date (month 1..12).
long long DaysFromCivil(long long year, long long month, long long day) {
  year -= month <= 2 ? 1 : 0;
  long long const era = (year >= 0 ? year : year - 399) / 400;
  long long const yearOfEra = year - era * 400;
  long long const dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  long long const dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

bool IsLeap(long long year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

// TimestampToTime of a parsed record: universal time, fields weighted without range
// checks, wrapped to 32 bits; and the tm_yday it writes back (1-based, no leap day).
void CheckSeconds(std::tm record) {
  std::tm const before = record;
  unsigned long const seconds = VornUtil::TimestampToTime(&record);
  if (before.tm_mon < 0 || before.tm_mon > 11 || before.tm_year < 70) {
    FUZZ_CHECK(seconds == 4294967295UL);
    FUZZ_CHECK(std::memcmp(&record, &before, sizeof record) == 0);
    return;
  }
  long long const year = before.tm_year + 1900LL;
  long long const month = before.tm_mon + 1LL;
  long long const firstOfMonth = DaysFromCivil(year, month, 1);
  long long const days = firstOfMonth + before.tm_mday - 1;
  long long const total =
      ((days * 24 + before.tm_hour) * 60 + before.tm_min) * 60 + before.tm_sec;
  FUZZ_CHECK(seconds == static_cast<std::uint32_t>(total));

  long long const monthDays = firstOfMonth - DaysFromCivil(year, 1, 1) -
                              (month > 2 && IsLeap(year) ? 1 : 0);
  FUZZ_CHECK(record.tm_yday == before.tm_mday + monthDays);
  record.tm_yday = before.tm_yday;
  FUZZ_CHECK(std::memcmp(&record, &before, sizeof record) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> const text(new char[size + 1]);
  if (size > 0) std::memcpy(text.get(), data, size);
  text[size] = '\0';

  bool const complete = std::strlen(text.get()) >= kLayoutLength;

  std::tm untouched;
  std::memset(&untouched, 0xA5, sizeof untouched);
  std::tm record = untouched;
  bool const parsed = VornUtil::ParseTimestamp(&record, text.get());
  FUZZ_CHECK(parsed == complete);
  if (!parsed) {
    FUZZ_CHECK(std::memcmp(&record, &untouched, sizeof record) == 0);
  } else {
    FUZZ_CHECK(record.tm_year == ReadField(text.get(), 0) - 1900);
    FUZZ_CHECK(record.tm_mon == ReadField(text.get(), 1) - 1);
    FUZZ_CHECK(record.tm_mday == ReadField(text.get(), 2));
    FUZZ_CHECK(record.tm_hour == ReadField(text.get(), 3));
    FUZZ_CHECK(record.tm_min == ReadField(text.get(), 4));
    FUZZ_CHECK(record.tm_sec == ReadField(text.get(), 5));
    FUZZ_CHECK(record.tm_wday == 0 && record.tm_yday == 0 && record.tm_isdst == -1);
  }

  VornDateTime value;
  std::memset(&value, 0x5A, sizeof value);
  VornDateTime const before = value;
  FUZZ_CHECK(VornUtil::ParseTimestamp(&value, text.get()) == complete);
  FUZZ_CHECK(std::memcmp(&value, &before, sizeof value) == 0);

  if (parsed) {
    CheckSeconds(record);
    // The compact form keeps each field cut to 16 bits; back to a record it restores the
    // six fields as far as they survived the cut.
    VornDateTime const compact = VornUtil::TimestampToDateTime(record);
    FUZZ_CHECK(compact.Year == static_cast<short>(record.tm_year + 1900));
    FUZZ_CHECK(compact.Second == static_cast<short>(record.tm_sec));
    std::tm const back = VornUtil::DateTimeToTimestamp(compact);
    FUZZ_CHECK(back.tm_year == compact.Year - 1900 && back.tm_mon == compact.Month - 1);
    FUZZ_CHECK(back.tm_mday == compact.Day && back.tm_hour == compact.Hour);
    FUZZ_CHECK(back.tm_min == compact.Minute && back.tm_sec == compact.Second);
    FUZZ_CHECK(back.tm_isdst == -1);
  }
  return 0;
}
