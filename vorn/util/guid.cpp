#include <vorn/util/guid.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <vorn/util/date_time.h>

int VornUtilGuid::GuidSeed = 2;

namespace {

std::chrono::steady_clock::duration MonotonicNow() {
  return std::chrono::steady_clock::now().time_since_epoch();
}

// Milliseconds of the monotonic clock, wrapping at 32 bits like a system tick count.
std::uint32_t MillisecondTick() {
  auto const ms = std::chrono::duration_cast<std::chrono::milliseconds>(MonotonicNow());
  return static_cast<std::uint32_t>(ms.count());
}

// The high-resolution counter: the monotonic clock in nanoseconds, 64 bits.
std::uint64_t HighResolutionCounter() {
  auto const ns = std::chrono::duration_cast<std::chrono::nanoseconds>(MonotonicNow());
  return static_cast<std::uint64_t>(ns.count());
}

std::uint32_t LowWord(std::uint64_t value) { return static_cast<std::uint32_t>(value); }

std::uint32_t HighWord(std::uint64_t value) { return static_cast<std::uint32_t>(value >> 32); }

// Writes count digits, each rand() % 16 as '0'-'9' or 'A'-'F'; returns the end.
char* WriteRandomDigits(char* out, int count) {
  for (int i = 0; i < count; ++i) {
    int const digit = std::rand() % 16;
    *out++ = static_cast<char>(digit < 10 ? '0' + digit : 'A' + (digit - 10));
  }
  return out;
}

}  // namespace

char* VornUtilGuid::GenerateGuid(char* buffer) {
  unsigned long const now = static_cast<unsigned long>(std::time(nullptr));
  std::tm const local = VornUtilTime::TimeToTimestamp(&now);
  std::uint32_t const tick = MillisecondTick();

  // Three seeds per identifier: the first group follows the counter's low word, the
  // second and third its slowly changing high word (so consecutive identifiers often
  // share them), the fourth and the start of the fifth the wrapping sum of both words.
  char* out = buffer;
  std::srand(LowWord(HighResolutionCounter()));
  out = WriteRandomDigits(out, 8);

  std::srand(HighWord(HighResolutionCounter()));
  *out++ = '-';
  out = WriteRandomDigits(out, 4);
  *out++ = '-';
  out = WriteRandomDigits(out, 4);

  std::uint64_t const counter = HighResolutionCounter();
  std::srand(HighWord(counter) + LowWord(counter));
  *out++ = '-';
  out = WriteRandomDigits(out, 4);
  *out++ = '-';
  out = WriteRandomDigits(out, 3);

  // Hour 0..23, minute and second 0..60 and the tick modulo 1000 always fill exactly
  // 2, 2, 2 and 3 digits, so the text is always 36 characters.
  std::snprintf(out, 10, "%02X%02X%02X%03X", static_cast<unsigned>(local.tm_hour),
                static_cast<unsigned>(local.tm_min), static_cast<unsigned>(local.tm_sec),
                static_cast<unsigned>(tick % 1000u));
  return buffer;
}

stringbase<char, astringfuncs> VornUtilGuid::GenerateGuid() {
  char buffer[37];
  return stringbase<char, astringfuncs>(GenerateGuid(buffer));
}
