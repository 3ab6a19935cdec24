// Wide-text helpers for tests: the library's wide text is 16-bit unsigned short code
// units, which u"..." literals hold as char16_t.
#ifndef VORN_TESTS_SUPPORT_WIDE_H
#define VORN_TESTS_SUPPORT_WIDE_H

#include <string>

namespace vorn_test {

inline unsigned short const* W(char16_t const* text) {
  return reinterpret_cast<unsigned short const*>(text);
}

inline std::u16string U16(unsigned short const* text) {
  return std::u16string(reinterpret_cast<char16_t const*>(text));
}

}  // namespace vorn_test

#endif
