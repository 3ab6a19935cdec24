#include <vorn/foundation/conversion.h>

#include <cassert>
#include <climits>

namespace {

using WideString = stringbase<unsigned short, wstringfuncs>;
using NarrowString = stringbase<char, astringfuncs>;

// Byte limit of the measured conversions: more than any encoding can need, with room
// left for the terminator.
constexpr unsigned int kWholeText = UINT_MAX - 1;

constexpr char32_t kFirstSupplementary = 0x10000;

bool IsHighSurrogate(char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

struct Decoded {
  bool wellFormed;
  unsigned int bytes;  // length of the sequence when well formed
  char32_t code;
};

// Decodes the character starting at text[0] (not zero). Only the well-formed sequences
// are accepted: no overlong forms, no surrogate code points, nothing above U+10FFFF.
// Reading stops at the first byte that cannot continue the sequence, so a zero byte
// inside a sequence ends it as malformed and nothing past a terminator is read.
Decoded DecodeUtf8(unsigned char const* text) {
  unsigned char const lead = text[0];
  if (lead < 0x80) return {true, 1, lead};
  unsigned int length = 0;
  char32_t code = 0;
  // The range the second byte must fall in; later bytes are always 0x80..0xBF.
  unsigned char low = 0x80;
  unsigned char high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    code = lead & 0x1Fu;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    code = lead & 0x0Fu;
    if (lead == 0xE0) low = 0xA0;   // overlong below U+0800
    if (lead == 0xED) high = 0x9F;  // surrogates U+D800..U+DFFF
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    code = lead & 0x07u;
    if (lead == 0xF0) low = 0x90;   // overlong below U+10000
    if (lead == 0xF4) high = 0x8F;  // above U+10FFFF
  } else {
    return {false, 0, 0};
  }
  for (unsigned int i = 1; i < length; ++i) {
    unsigned char const next = text[i];
    if (next < low || next > high) return {false, 0, 0};
    low = 0x80;
    high = 0xBF;
    code = (code << 6) | (next & 0x3Fu);
  }
  return {true, length, code};
}

// Writes code as one unit, or as a surrogate pair from U+10000 up.
void EncodeUtf16(char32_t code, unsigned short* out) {
  if (code < kFirstSupplementary) {
    out[0] = static_cast<unsigned short>(code);
    return;
  }
  char32_t const offset = code - kFirstSupplementary;
  out[0] = static_cast<unsigned short>(0xD800 + (offset >> 10));
  out[1] = static_cast<unsigned short>(0xDC00 + (offset & 0x3FF));
}

// Converts zero-terminated UTF-8 text into at most limit units of out (or only measures
// when out is null). Sets units to the result length; false when malformed. The
// character that no longer fits (a pair with one unit of room left) is still checked
// before conversion ends there; nothing behind it is read.
bool Utf8ToUtf16(char const* text, unsigned int limit, unsigned short* out, unsigned int& units) {
  auto const* bytes = reinterpret_cast<unsigned char const*>(text);
  units = 0;
  for (unsigned int read = 0; units < limit && bytes[read] != 0;) {
    Decoded const c = DecodeUtf8(bytes + read);
    if (!c.wellFormed) return false;
    unsigned int const length = c.code < kFirstSupplementary ? 1 : 2;
    if (length > limit - units) break;
    if (out != nullptr) EncodeUtf16(c.code, out + units);
    units += length;
    read += c.bytes;
  }
  return true;
}

unsigned int Utf8Length(char32_t code) {
  if (code < 0x80) return 1;
  if (code < 0x800) return 2;
  if (code < kFirstSupplementary) return 3;
  return 4;
}

void EncodeUtf8(char32_t code, unsigned int length, char* out) {
  static unsigned char const kLeadMarks[5] = {0, 0x00, 0xC0, 0xE0, 0xF0};
  for (unsigned int i = length - 1; i > 0; --i) {
    out[i] = static_cast<char>(0x80 | (code & 0x3F));
    code >>= 6;
  }
  out[0] = static_cast<char>(kLeadMarks[length] | code);
}

// Converts zero-terminated UTF-16 text into at most limit bytes of out (or only
// measures when out is null). Sets bytes to the result length; false when malformed.
// The character that no longer fits is still checked before conversion ends there.
bool Utf16ToUtf8(unsigned short const* text, unsigned int limit, char* out, unsigned int& bytes) {
  bytes = 0;
  for (unsigned int i = 0; text[i] != 0;) {
    char32_t code = text[i];
    unsigned int units = 1;
    if (IsLowSurrogate(code)) return false;
    if (IsHighSurrogate(code)) {
      // text[i] is not the terminator, so text[i + 1] exists.
      char32_t const low = text[i + 1];
      if (!IsLowSurrogate(low)) return false;
      code = kFirstSupplementary + ((code - 0xD800) << 10) + (low - 0xDC00);
      units = 2;
    }
    unsigned int const length = Utf8Length(code);
    if (length > limit - bytes) break;
    if (out != nullptr) EncodeUtf8(code, length, out + bytes);
    bytes += length;
    i += units;
  }
  return true;
}

}  // namespace

WideString VornUtilText::StringToWString(char const* text, unsigned int count) {
  assert(text != nullptr);
  WideString result;
  unsigned int units = 0;
  bool const wellFormed = Utf8ToUtf16(text, count, nullptr, units);
  unsigned short* out = result.prepare(wellFormed ? units : 0);
  if (wellFormed && out != nullptr) Utf8ToUtf16(text, count, out, units);
  return result;
}

// A character takes at least one byte per unit, so a byte length never limits the units.
WideString VornUtilText::StringToWString(char const* text) {
  assert(text != nullptr);
  return StringToWString(text, astringfuncs::length(text));
}

WideString VornUtilText::StringToWString(NarrowString const& text) {
  return StringToWString(text.c_str(), text.length());
}

NarrowString VornUtilText::WStringToString(unsigned short const* text, unsigned int count) {
  assert(text != nullptr);
  NarrowString result;
  unsigned int bytes = 0;
  bool const wellFormed = Utf16ToUtf8(text, count, nullptr, bytes);
  char* out = result.prepare(wellFormed ? bytes : 0);
  if (wellFormed && out != nullptr) Utf16ToUtf8(text, count, out, bytes);
  return result;
}

NarrowString VornUtilText::WStringToString(unsigned short const* text) {
  return WStringToString(text, kWholeText);
}

NarrowString VornUtilText::WStringToString(WideString const& text) {
  return WStringToString(text.c_str(), kWholeText);
}

unsigned int VornUtilText::WStringToString(WideString const& text, char* buffer,
                                           unsigned int size) {
  assert(buffer != nullptr);
  unsigned int bytes = 0;
  if (Utf16ToUtf8(text.c_str(), size, nullptr, bytes)) {
    Utf16ToUtf8(text.c_str(), size, buffer, bytes);
  } else {
    bytes = 0;
  }
  buffer[bytes] = '\0';
  return bytes;
}
