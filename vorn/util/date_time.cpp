#include <vorn/util/date_time.h>

#include <time.h>

#include <cstdint>

namespace {

// Year, month, day, hour, minute, second: their widths in the timestamp text, which
// puts exactly one separator character between neighbouring fields.
constexpr int kFieldCount = 6;
constexpr int kFieldWidths[kFieldCount] = {4, 2, 2, 2, 2, 2};

// The result for a record whose month or year cannot be converted.
constexpr unsigned long kUnusableRecord = 4294967295UL;

constexpr std::uint32_t kMonthLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

// Reads the six fields of a timestamp text. Every position, separators included, is
// tested for the terminator before the parse moves past it, so a short text is
// rejected without reading beyond its end.
bool ReadFields(char const* text, int (&values)[kFieldCount]) {
  for (int field = 0; field < kFieldCount; ++field) {
    if (field > 0) {
      if (*text == '\0') return false;
      ++text;  // the separator itself is not examined
    }
    int value = 0;
    for (int i = 0; i < kFieldWidths[field]; ++i, ++text) {
      if (*text == '\0') return false;
      // Lenient on purpose: any character adds its code minus '0'. Read as signed char
      // so that bytes above 127 give the same value on every target.
      value = value * 10 + (static_cast<signed char>(*text) - 48);
    }
    values[field] = value;
  }
  return true;
}

bool ParseRecord(char const* text, std::tm* record) {
  int values[kFieldCount];
  if (!ReadFields(text, values)) return false;
  std::tm parsed{};
  parsed.tm_year = values[0] - 1900;
  parsed.tm_mon = values[1] - 1;
  parsed.tm_mday = values[2];
  parsed.tm_hour = values[3];
  parsed.tm_min = values[4];
  parsed.tm_sec = values[5];
  parsed.tm_isdst = -1;
  *record = parsed;
  return true;
}

bool IsLeapYear(long long year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// Leap years among 1 .. year, for year >= 0.
long long LeapYearsThrough(long long year) { return year / 4 - year / 100 + year / 400; }

// Days from 1970-01-01 to 1 January of year (year >= 1970), wrapped to 32 bits.
std::uint32_t DaysBeforeYear(long long year) {
  long long const days = 365 * (year - 1970) + LeapYearsThrough(year - 1) - LeapYearsThrough(1969);
  return static_cast<std::uint32_t>(days);
}

std::uint32_t Wrap(int value) { return static_cast<std::uint32_t>(value); }

}  // namespace

bool operator==(VornDateTime const& a, VornDateTime const& b) {
  return a.Second == b.Second && a.Minute == b.Minute && a.Hour == b.Hour && a.Day == b.Day &&
         a.Month == b.Month && a.Year == b.Year;
}

bool operator!=(VornDateTime const& a, VornDateTime const& b) { return !(a == b); }

bool VornUtilTime::ParseTimestamp(std::tm* out, char const* text) { return ParseRecord(text, out); }

bool VornUtilTime::ParseTimestamp(VornDateTime*, char const* text) {
  std::tm ignored;
  return ParseRecord(text, &ignored);
}

unsigned long VornUtilTime::TimestampToTime(std::tm* t) {
  if (t->tm_mon < 0 || t->tm_mon > 11 || t->tm_year < 70) return kUnusableRecord;

  long long const year = static_cast<long long>(t->tm_year) + 1900;
  std::uint32_t monthDays = 0;
  for (int month = 0; month < t->tm_mon; ++month) monthDays += kMonthLengths[month];
  t->tm_yday = static_cast<int>(Wrap(t->tm_mday) + monthDays);

  std::uint32_t days = DaysBeforeYear(year) + monthDays;
  if (t->tm_mon >= 2 && IsLeapYear(year)) ++days;

  // Unsigned 32-bit throughout: out-of-range fields add their weight and the total
  // wraps modulo 2^32 exactly as on a 32-bit target.
  std::uint32_t seconds = days + Wrap(t->tm_mday) - 1u;
  seconds = seconds * 24u + Wrap(t->tm_hour);
  seconds = seconds * 60u + Wrap(t->tm_min);
  seconds = seconds * 60u + Wrap(t->tm_sec);
  return seconds;
}

std::tm VornUtilTime::TimeToTimestamp(unsigned long const* seconds) {
  static_assert(sizeof(std::time_t) >= 8, "seconds reach 2106: 32-bit targets need _TIME_BITS=64");
  std::time_t const instant = static_cast<std::time_t>(static_cast<std::uint32_t>(*seconds));
  // Re-read TZ on every call: localtime_r alone may keep a zone read earlier.
  tzset();
  std::tm local{};
  localtime_r(&instant, &local);

  std::tm result{};
  result.tm_sec = local.tm_sec;
  result.tm_min = local.tm_min;
  result.tm_hour = local.tm_hour;
  result.tm_mday = local.tm_mday;
  result.tm_mon = local.tm_mon;
  result.tm_year = local.tm_year;
  result.tm_wday = local.tm_wday;
  result.tm_yday = local.tm_yday;
  result.tm_isdst = 0;
  return result;
}

VornDateTime VornUtilTime::TimestampToDateTime(std::tm const& t) {
  VornDateTime d;
  d.Second = static_cast<short>(t.tm_sec);
  d.Minute = static_cast<short>(t.tm_min);
  d.Hour = static_cast<short>(t.tm_hour);
  d.Day = static_cast<short>(t.tm_mday);
  d.Month = static_cast<short>(Wrap(t.tm_mon) + 1u);
  d.Year = static_cast<short>(Wrap(t.tm_year) + 1900u);
  return d;
}

std::tm VornUtilTime::DateTimeToTimestamp(VornDateTime const& d) {
  std::tm t{};
  t.tm_sec = d.Second;
  t.tm_min = d.Minute;
  t.tm_hour = d.Hour;
  t.tm_mday = d.Day;
  t.tm_mon = d.Month - 1;
  t.tm_year = d.Year - 1900;
  t.tm_isdst = -1;
  return t;
}
