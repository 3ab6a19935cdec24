// Calendar values and timestamps.
//
// VornDateTime is the compact calendar value that date-time attributes store: six
// 16-bit fields, plain data, no validation. VornUtilTime moves a point in time between
// four forms: timestamp text ("YYYY?MM?DD?hh?mm?ss"), the C runtime's calendar record
// std::tm (called a timestamp throughout the interface), VornDateTime, and unsigned
// 32-bit seconds since 1970-01-01 00:00:00 UTC. Applications reach these members as
// VornUtil::ParseTimestamp and so on (see vorn/util/vorn_util.h).
//
// Seconds travel as unsigned long but are 32-bit everywhere: every result wraps modulo
// 2^32 and a 64-bit unsigned long carries the same value a 32-bit one would.
//
// No member keeps state or throws, and none tests its pointers for null: a null text,
// record or seconds pointer is a caller error. TimeToTimestamp reads the process's
// time zone (TZ) at the moment of the call.
#ifndef VORN_UTIL_DATE_TIME_H
#define VORN_UTIL_DATE_TIME_H

#include <ctime>
#include <type_traits>

#include <vorn/foundation/export.h>

// A calendar value as six signed 16-bit fields. Any values may be stored. The field
// order and the 12-byte size are part of the interface: the record is copied and
// compared as plain data inside attribute storage.
struct VORN_API VornDateTime {
  short Second;  // 0..59 by convention
  short Minute;  // 0..59
  short Hour;    // 0..23
  short Day;     // day of month, 1..31
  short Month;   // 1..12, January is 1
  short Year;    // full year, e.g. 2021

  // Assignment copies all six fields and returns the target. It is the implicit one, so
  // that the record stays a trivially copyable aggregate.
};

static_assert(sizeof(VornDateTime) == 12, "VornDateTime is six 16-bit fields, no padding");
static_assert(std::is_trivially_copyable<VornDateTime>::value &&
                  std::is_standard_layout<VornDateTime>::value,
              "VornDateTime must stay plain data");

// True when all six fields are equal. There is no ordering.
VORN_API bool operator==(VornDateTime const& a, VornDateTime const& b);
// The exact negation of operator==.
VORN_API bool operator!=(VornDateTime const& a, VornDateTime const& b);

class VORN_API VornUtilTime {
public:
  VornUtilTime() = delete;

  // Parses the 19-character layout YYYY?MM?DD?hh?mm?ss, where each ? is one separator
  // character of any kind (space, 'T', '-', ':', '/', '.'). On success fills *out with
  // tm_year = year - 1900, tm_mon = month - 1, the other four fields as read,
  // tm_wday = tm_yday = 0 and tm_isdst = -1, and returns true. Returns false, leaving
  // *out untouched, when the text ends before its nineteenth character.
  // Note: digits are deliberately not validated: each character adds (code - 48), so a
  // month "0A" reads as 17. Bytes count as signed char on every target. No field is
  // range-checked, anything after position 18 (fractions, 'Z', a zone offset) is
  // ignored, and no time zone is ever applied.
  static bool ParseTimestamp(std::tm* out, char const* text);

  // Runs the same parse and returns its result.
  // Note: *out is deliberately never written; this overload only tests whether the text
  // is a well-formed timestamp. Parse into a std::tm and use TimestampToDateTime to get
  // the value.
  static bool ParseTimestamp(VornDateTime* out, char const* text);

  // Seconds since 1970-01-01 00:00:00 with *t read as universal time (Gregorian leap
  // years), wrapped to 32 bits. tm_mday, tm_hour, tm_min and tm_sec are not
  // range-checked: each adds its weight (tm_sec 75 adds 75 seconds). tm_wday and
  // tm_isdst are ignored. Returns 4294967295 when tm_mon is outside 0..11 or tm_year is
  // below 70; that value is also the real instant 2106-02-07 06:28:15.
  // Note: on a usable record it writes tm_yday = tm_mday + the days of the months
  // before tm_mon. That value deliberately counts from 1 (1 January gives 1) and ignores
  // the leap day.
  static unsigned long TimestampToTime(std::tm* t);

  // The local calendar time, in the process's current time zone, of *seconds (seconds
  // since 1970-01-01 00:00:00 UTC; only the low 32 bits count, so every value up to
  // 2106-02-07 06:28:15 converts on every target). tm_wday and the 0-based tm_yday
  // describe the local date; glibc's extra fields are zero.
  // Note: tm_isdst is always 0, also while daylight saving is in effect, and
  // TimestampToTime reads its record as universal time: a round trip returns the
  // starting seconds only where the zone is UTC.
  static std::tm TimeToTimestamp(unsigned long const* seconds);

  // Year = tm_year + 1900, Month = tm_mon + 1, Day, Hour, Minute and Second from the
  // record, each cut to 16 bits without any check.
  static VornDateTime TimestampToDateTime(std::tm const& t);

  // The record form of d: tm_year = Year - 1900, tm_mon = Month - 1, the other four
  // fields as stored, tm_isdst = -1. tm_wday and tm_yday are not computed and are 0.
  static std::tm DateTimeToTimestamp(VornDateTime const& d);
};

#endif
