// Timestamp parsing on any bytes, in a heap block of exactly their length plus the
// terminator. Checked: both ParseTimestamp overloads succeed exactly when the first
// nineteen characters are present; the std::tm then holds a direct reading of the layout
// YYYY?MM?DD?hh?mm?ss, every field (code - 48) accumulated without validation, and is
// untouched on failure; the VornDateTime overload never writes. TimestampToTime of each
// parsed record matches the C library's timegm wrapped to 32 bits, or the refusal value,
// and writes nothing but its 1-based, leap-blind tm_yday. TimestampToDateTime and back
// keep every field as far as it survives the cut to 16 bits.
#include <array>
#include <cstring>
#include <ctime>

#include <vorn/util/vorn_util.h>

#include "driver.h"

namespace vorn_fuzz {

std::array<int, 9> Fields(std::tm const& t) {
  return {t.tm_year, t.tm_mon,  t.tm_mday, t.tm_hour, t.tm_min,
          t.tm_sec,  t.tm_wday, t.tm_yday, t.tm_isdst};
}

void Run(FuzzedDataProvider&& input) {
  std::string const bytes = input.ConsumeRemainingBytesAsString();
  auto const text = Exact<char>(bytes.c_str(), bytes.size() + 1);
  bool const complete = std::strlen(text.get()) >= 19;

  std::tm record;
  std::memset(&record, 0xA5, sizeof record);
  std::tm const untouched = record;
  VornDateTime const unwritten = {-1, -2, -3, -4, -5, -6};
  VornDateTime value = unwritten;
  FUZZ_CHECK(VornUtil::ParseTimestamp(&record, text.get()) == complete);
  FUZZ_CHECK(VornUtil::ParseTimestamp(&value, text.get()) == complete);
  FUZZ_CHECK(std::memcmp(&value, &unwritten, sizeof value) == 0);
  if (!complete) return FUZZ_CHECK(std::memcmp(&record, &untouched, sizeof record) == 0);

  // The fields as parsed, each character adding (code - 48) read as signed char, and as
  // they survive the compact form's 16 bits. Field i is text[kStart[i]] up to the
  // separator before kStart[i + 1].
  static int const kStart[7] = {0, 5, 8, 11, 14, 17, 20}, kOffset[6] = {1900, 1, 0, 0, 0, 0};
  std::array<int, 9> parsed = {0, 0, 0, 0, 0, 0, 0, 0, -1}, cut = parsed;
  for (std::size_t i = 0; i < 6; ++i) {
    for (int k = kStart[i]; k < kStart[i + 1] - 1; ++k)
      parsed[i] = parsed[i] * 10 + static_cast<signed char>(text.get()[k]) - '0';
    cut[i] = static_cast<short>(parsed[i]) - kOffset[i];
    parsed[i] -= kOffset[i];
  }
  FUZZ_CHECK(Fields(record) == parsed);
  FUZZ_CHECK(Fields(VornUtil::DateTimeToTimestamp(VornUtil::TimestampToDateTime(record))) == cut);

  // Usable records: month 0..11, year from 1970 on.
  static int const kDaysBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
  std::tm converted = record, utc = record, expected = record;
  unsigned long const seconds = VornUtil::TimestampToTime(&converted);
  bool const usable = static_cast<unsigned int>(record.tm_mon) < 12 && record.tm_year >= 70;
  if (usable) expected.tm_yday = record.tm_mday + kDaysBefore[record.tm_mon];
  FUZZ_CHECK(seconds == (usable ? static_cast<std::uint32_t>(timegm(&utc)) : 4294967295UL));
  FUZZ_CHECK(std::memcmp(&converted, &expected, sizeof expected) == 0);
}

}  // namespace vorn_fuzz
