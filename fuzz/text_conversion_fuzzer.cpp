// UTF-8 <-> UTF-16 conversion in every overload, against a reference codec written here.
// The input is a count, which also sizes the buffer form's buffer, and a text, read both
// as UTF-8 bytes and as little-endian UTF-16 units, each up to its first zero. Every
// argument lies in a heap block of exactly the units the call may read (a counted text
// ends, unterminated, with the last character the count lets the conversion look at), so
// AddressSanitizer reports any over-read. Checked: well-formed text converts to exactly
// the reference result and round-trips; malformed text gives the allocated "" (0 and a
// lone terminator from the buffer form); a count never splits a character; the buffer
// form writes nothing past its terminator.
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

#include <vorn/util/vorn_util.h>

#include "driver.h"

namespace vorn_fuzz {

using Char = std::pair<char32_t, std::size_t>;  // a code point and its length in units

void Put(char32_t code, std::u16string& out) {
  if (code >= 0x10000) out.push_back(static_cast<char16_t>(0xD7C0 + (code >> 10)));
  out.push_back(static_cast<char16_t>(code >= 0x10000 ? 0xDC00 + (code & 0x3FF) : code));
}

void Put(char32_t code, std::string& out) {
  static unsigned char const kLead[5] = {0, 0, 0xC0, 0xE0, 0xF0};
  int const n = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
  out.push_back(static_cast<char>(kLead[n] | code >> (6 * n - 6)));
  for (int shift = 6 * n - 12; shift >= 0; shift -= 6)
    out.push_back(static_cast<char>(0x80 | (code >> shift & 0x3F)));
}

// The character at `text`, length 0 when malformed. In UTF-8 the lead byte's leading ones
// give the length (none: ASCII), and only the shortest form of a scalar value (no
// surrogates, nothing above U+10FFFF) is well formed: the sequence must be what Put makes
// of its value, which rules out stray continuations, overlong forms and cut sequences.
Char At(char const* text) {
  auto const* s = reinterpret_cast<unsigned char const*>(text);
  std::size_t n = 0;
  while ((s[0] << n) & 0x80) ++n;
  n += n == 0;
  char32_t code = s[0] & (0xFFu >> (n + (n > 1)));
  for (std::size_t i = 1; i < n && s[i - 1] != 0; ++i) code = code << 6 | (s[i] & 0x3Fu);
  std::string shortest;
  Put(code, shortest);
  bool const scalar = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  return {code, scalar && std::strncmp(shortest.c_str(), text, n) == 0 ? n : 0};
}

Char At(char16_t const* s) {
  bool const high = s[0] >= 0xD800 && s[0] < 0xDC00;
  bool const low = s[high] >= 0xDC00 && s[high] < 0xE000;  // the unit after a high one
  if (high != low) return {0, 0};
  return {high ? 0x10000 + ((s[0] - 0xD800u) << 10) + (s[1] - 0xDC00u) : s[0], high ? 2 : 1};
}

// Converts the zero-terminated text into at most `limit` units, all or nothing for
// malformed text, and returns how many units a conversion that stops there needs:
// through the terminator, or through the first character that no longer fits (it is
// checked first); from UTF-8, none of a character met with no room left.
template <class In, class Out>
std::size_t Convert(In const* text, std::size_t limit, Out& out) {
  std::size_t read = 0;
  for (out.clear(); text[read] != 0 && (sizeof(In) > 1 || out.size() < limit);) {
    Out one;
    Char const c = At(text + read);
    Put(c.first, one);
    read += c.second;
    if (c.second == 0) {  // malformed: all of the text is read for nothing
      out.clear();
      return std::char_traits<In>::length(text) + 1;
    }
    if (one.size() > limit - out.size()) return read;
    out += one;
  }
  return read + (text[read] == 0);
}

// A result: the allocated, terminated `expected`.
template <class Result, class Text>
bool Is(Result const& r, Text const& expected) {
  return !r.empty() && std::equal(r.c_str(), r.c_str() + r.length() + 1, expected.c_str(),
                                  expected.c_str() + expected.size() + 1);
}

auto const kWiden = [](auto const&... a) { return VornUtil::StringToWString(a...); };
auto const kNarrow = [](auto const&... a) { return VornUtil::WStringToString(a...); };

// Every overload of `convert` (kWiden from UTF-8 in char, kNarrow from UTF-16 in
// char16_t) on `text`; whether the text is well formed, with its conversion in `whole`.
// The UTF-16 buffer form gets count + 1 bytes, filled beforehand so that a stray write
// shows.
template <class In, class Out, class Library>
bool Check(In const* text, Library convert, unsigned int count, std::basic_string<Out>& whole) {
  using Unit = std::conditional_t<sizeof(In) == 1, char, unsigned short>;
  using String = stringbase<Unit, std::conditional_t<sizeof(In) == 1, astringfuncs, wstringfuncs>>;
  auto const exact = Exact<Unit>(text, Convert(text, SIZE_MAX, whole));
  String const string(exact.get());
  FUZZ_CHECK(Is(convert(exact.get()), whole) && Is(convert(string), whole));
  std::basic_string<Out> part;
  FUZZ_CHECK(Is(convert(Exact<Unit>(text, Convert(text, count, part)).get(), count), part));
  if constexpr (sizeof(In) == 2) {
    auto const buffer = Exact<char>(std::string(count + 1, '~').c_str(), count + 1);
    FUZZ_CHECK(VornUtil::WStringToString(string, buffer.get(), count) == part.size());
    FUZZ_CHECK(std::string(buffer.get(), count + 1) ==
               part + '\0' + std::string(count - part.size(), '~'));
  }
  return whole.empty() == (*text == 0);
}

void Run(FuzzedDataProvider&& input) {
  unsigned int const count = input.ConsumeIntegral<std::uint8_t>();
  std::string const text = input.ConsumeRemainingBytesAsString();
  std::u16string widened, wide(text.size() / 2, u'\0');
  std::memcpy(&wide[0], text.data(), wide.size() * 2);  // the fuzzers run little-endian
  std::string narrowed;
  FUZZ_CHECK(!Check(text.c_str(), kWiden, count, widened) ||
             (Check(widened.c_str(), kNarrow, count, narrowed) && narrowed == text.c_str()));
  FUZZ_CHECK(!Check(wide.c_str(), kNarrow, count, narrowed) ||
             (Check(narrowed.c_str(), kWiden, count, widened) && widened == wide.c_str()));
}

}  // namespace vorn_fuzz
