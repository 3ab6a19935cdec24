// Sets the process time zone (TZ, POSIX rule strings, no zoneinfo files needed) for the
// lifetime of the object and restores the previous setting afterwards.
#ifndef VORN_TESTS_UTIL_SCOPED_TIME_ZONE_H
#define VORN_TESTS_UTIL_SCOPED_TIME_ZONE_H

#include <stdlib.h>
#include <time.h>

#include <string>

namespace vorn_test {

class ScopedTimeZone {
public:
  explicit ScopedTimeZone(char const* zone)
      : had_previous_(getenv("TZ") != nullptr), previous_(had_previous_ ? getenv("TZ") : "") {
    setenv("TZ", zone, 1);
    tzset();
  }
  ~ScopedTimeZone() {
    had_previous_ ? setenv("TZ", previous_.c_str(), 1) : unsetenv("TZ");
    tzset();
  }
  ScopedTimeZone(ScopedTimeZone const&) = delete;
  ScopedTimeZone& operator=(ScopedTimeZone const&) = delete;

private:
  bool const had_previous_;
  std::string const previous_;
};

// No offset; a fixed half-hour offset east of UTC; a fixed offset west of UTC; central
// European rules, daylight saving from the last Sunday of March to that of October.
constexpr char const* kUtc = "UTC0";
constexpr char const* kPlusFiveThirty = "ABC-05:30";
constexpr char const* kMinusEight = "XYZ+08";
constexpr char const* kCentralEurope = "CET-1CEST,M3.5.0,M10.5.0/3";

}  // namespace vorn_test

#endif
