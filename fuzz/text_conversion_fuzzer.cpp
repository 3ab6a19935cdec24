// UTF-8 <-> UTF-16 conversion on arbitrary input, in every overload, against a reference
// codec written here independently of the library's.
//
// The input gives a limit, a buffer size and a text; the text is read both as UTF-8 bytes
// and as little-endian UTF-16 units. Every argument is copied into a heap block of exactly
// the size the call may read (a counted narrow text gets no terminator when the count
// ends conversion inside it), so AddressSanitizer reports any over-read. Checked:
//   - well-formed input converts to exactly the reference encoding, and round-trips;
//   - malformed input gives the allocated "" (0 and a lone terminator from the buffer
//     form), while a limit that ends conversion first leaves the rest unread;
//   - a limit (units produced, bytes written) never splits a character, and the buffer
//     form writes nothing past the terminator it reports.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <vorn/util/vorn_util.h>

#include "fuzz_check.h"

namespace {

using WideString = stringbase<unsigned short, wstringfuncs>;
using NarrowString = stringbase<char, astringfuncs>;
using Units = std::vector<unsigned short>;
using Bytes = std::string;

// ---- Reference codec --------------------------------------------------------------

// Decodes a complete candidate sequence; false unless it is the shortest form of a scalar
// value (no surrogates, nothing above U+10FFFF).
bool DecodeSequence(unsigned char const* s, std::size_t length, char32_t& code) {
  static char32_t const kLeadMask[5] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  static char32_t const kSmallest[5] = {0, 0, 0x80, 0x800, 0x10000};
  code = s[0] & kLeadMask[length];
  for (std::size_t i = 1; i < length; ++i) {
    if ((s[i] & 0xC0) != 0x80) return false;
    code = (code << 6) | (s[i] & 0x3F);
  }
  return code >= kSmallest[length] && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if ((lead & 0xE0) == 0xC0) return 2;
  if ((lead & 0xF0) == 0xE0) return 3;
  if ((lead & 0xF8) == 0xF0) return 4;
  return 0;
}

void AppendUtf16(char32_t code, Units& out) {
  if (code < 0x10000) {
    out.push_back(static_cast<unsigned short>(code));
  } else {
    out.push_back(static_cast<unsigned short>(0xD800 + ((code - 0x10000) >> 10)));
    out.push_back(static_cast<unsigned short>(0xDC00 + ((code - 0x10000) & 0x3FF)));
  }
}

void AppendUtf8(char32_t code, Bytes& out) {
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (code >> 18));
    out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
}

// Zero-terminated UTF-8 to UTF-16 in at most `limit` units; the first character that does
// not fit ends the conversion, after being checked. Returns false for malformed input.
// `read` is how many bytes a conversion that stops where this one does needs to look at:
// up to the terminator, or up to the end of the character that ended it. DecodeSequence
// stops at the first byte that is no continuation, so a terminator ends it as malformed.
bool ReferenceWiden(Bytes const& text, std::size_t limit, Units& out, std::size_t& read) {
  out.clear();
  auto const* s = reinterpret_cast<unsigned char const*>(text.c_str());
  std::size_t i = 0;
  read = std::strlen(text.c_str()) + 1;
  while (out.size() < limit && s[i] != 0) {
    std::size_t const length = SequenceLength(s[i]);
    char32_t code;
    if (length == 0 || !DecodeSequence(s + i, length, code)) return false;
    if ((code < 0x10000 ? 1u : 2u) > limit - out.size()) {
      read = i + length;
      return true;
    }
    AppendUtf16(code, out);
    i += length;
  }
  if (s[i] != 0) read = i;
  return true;
}

// Zero-terminated UTF-16 to UTF-8 in at most `limit` bytes; the first character that does
// not fit ends the conversion, after being checked. Returns false for malformed input.
bool ReferenceNarrow(Units const& text, std::size_t limit, Bytes& out) {
  out.clear();
  std::size_t i = 0;
  while (i < text.size() && text[i] != 0) {
    char32_t code = text[i];
    std::size_t units = 1;
    if (code >= 0xDC00 && code <= 0xDFFF) return false;
    if (code >= 0xD800 && code <= 0xDBFF) {
      char32_t const low = i + 1 < text.size() ? text[i + 1] : 0;
      if (!(low >= 0xDC00 && low <= 0xDFFF)) return false;
      code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
      units = 2;
    }
    Bytes encoded;
    AppendUtf8(code, encoded);
    if (out.size() + encoded.size() > limit) break;
    out += encoded;
    i += units;
  }
  return true;
}

// ---- Checks -------------------------------------------------------------------------

Units UnitsOf(WideString const& s) {
  return Units(s.c_str(), s.c_str() + s.length());
}

Bytes BytesOf(NarrowString const& s) {
  return Bytes(s.c_str(), s.length());
}

// A string result: exactly `expected`, or the allocated "" for malformed input.
void CheckWide(WideString const& result, bool wellFormed, Units const& expected) {
  FUZZ_CHECK(!result.empty());
  FUZZ_CHECK(result.c_str()[result.length()] == 0);
  if (wellFormed) {
    FUZZ_CHECK(UnitsOf(result) == expected);
  } else {
    FUZZ_CHECK(result.length() == 0);
  }
}

void CheckNarrow(NarrowString const& result, bool wellFormed, Bytes const& expected) {
  FUZZ_CHECK(!result.empty());
  FUZZ_CHECK(result.c_str()[result.length()] == '\0');
  if (wellFormed) {
    FUZZ_CHECK(BytesOf(result) == expected);
  } else {
    FUZZ_CHECK(result.length() == 0);
  }
}

// Every narrow-to-wide overload on `text` (which may hold zero bytes); returns the
// conversion of the whole text up to its first zero byte when it is well formed.
bool CheckWiden(Bytes const& text, unsigned int count, Units& whole) {
  std::size_t unused;
  bool const wellFormed = ReferenceWiden(text, SIZE_MAX, whole, unused);

  // Measured: exactly the text and its terminator.
  std::unique_ptr<char[]> const exact(new char[text.size() + 1]);
  std::memcpy(exact.get(), text.c_str(), text.size() + 1);
  CheckWide(VornUtil::StringToWString(exact.get()), wellFormed, whole);

  NarrowString narrow(exact.get());
  CheckWide(VornUtil::StringToWString(narrow), wellFormed, whole);

  // Counted: when the count ends conversion inside the text, the block ends with the last
  // character looked at, unterminated.
  Units prefix;
  std::size_t readable;
  bool const prefixWellFormed = ReferenceWiden(text, count, prefix, readable);
  std::unique_ptr<char[]> const counted(new char[readable == 0 ? 1 : readable]);
  std::memcpy(counted.get(), text.c_str(), readable);
  WideString const result = VornUtil::StringToWString(counted.get(), count);
  CheckWide(result, prefixWellFormed, prefix);
  FUZZ_CHECK(result.length() <= count);
  return wellFormed;
}

// Every wide-to-narrow overload on the zero-terminated `text`; returns the conversion of
// the whole text when it is well formed.
bool CheckNarrowing(Units const& text, unsigned int count, unsigned int size, Bytes& whole) {
  Units terminated(text);
  terminated.push_back(0);
  bool const wellFormed = ReferenceNarrow(terminated, SIZE_MAX, whole);

  std::unique_ptr<unsigned short[]> const exact(new unsigned short[terminated.size()]);
  std::memcpy(exact.get(), terminated.data(), terminated.size() * sizeof(unsigned short));
  CheckNarrow(VornUtil::WStringToString(exact.get()), wellFormed, whole);

  WideString const wide(exact.get());
  CheckNarrow(VornUtil::WStringToString(wide), wellFormed, whole);

  Bytes limited;
  bool const limitedWellFormed = ReferenceNarrow(terminated, count, limited);
  NarrowString const result = VornUtil::WStringToString(exact.get(), count);
  CheckNarrow(result, limitedWellFormed, limited);
  FUZZ_CHECK(result.length() <= count);

  // Buffer form: size + 1 bytes, pre-filled so that stray writes show.
  Bytes fitted;
  bool const fittedWellFormed = ReferenceNarrow(terminated, size, fitted);
  std::size_t const blockSize = static_cast<std::size_t>(size) + 1;
  std::unique_ptr<char[]> const buffer(new char[blockSize]);
  std::memset(buffer.get(), 0x7E, blockSize);
  unsigned int const written = VornUtil::WStringToString(wide, buffer.get(), size);
  if (!fittedWellFormed) fitted.clear();
  FUZZ_CHECK(written == fitted.size());
  FUZZ_CHECK(std::memcmp(buffer.get(), fitted.data(), fitted.size()) == 0);
  FUZZ_CHECK(buffer[written] == '\0');
  for (std::size_t i = written + 1; i < blockSize; ++i) FUZZ_CHECK(buffer[i] == 0x7E);
  return wellFormed;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  FuzzedDataProvider input(data, size);
  unsigned int const count = input.ConsumeIntegral<std::uint8_t>();
  unsigned int const bufferSize = input.ConsumeIntegral<std::uint8_t>();
  Bytes const text = input.ConsumeRemainingBytesAsString();

  // The bytes as UTF-8, and the same bytes as UTF-16 (an odd last byte is dropped).
  Units wide;
  if (CheckWiden(text, count, wide)) {
    Bytes back;
    FUZZ_CHECK(CheckNarrowing(wide, count, bufferSize, back));
    FUZZ_CHECK(back == Bytes(text.c_str()));
  }

  Units units;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    units.push_back(static_cast<unsigned short>(static_cast<unsigned char>(text[i]) |
                                                static_cast<unsigned char>(text[i + 1]) << 8));
  }
  Bytes narrow;
  if (CheckNarrowing(units, count, bufferSize, narrow)) {
    Units back;
    FUZZ_CHECK(CheckWiden(narrow, count, back));
    Units const original(units.begin(), std::find(units.begin(), units.end(), 0));
    FUZZ_CHECK(back == original);
  }
  return 0;
}
