// Small helpers the tests share.
#pragma once

#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <vorn/core/boundbox.h>
#include <vorn/foundation/exception.h>

namespace vorn_test {

// The library's wide text is 16-bit unsigned short code units, which u"..." literals hold
// as char16_t: W views a literal as library text, U16 views library text as a literal.
inline auto W(char16_t const* s) { return reinterpret_cast<unsigned short const*>(s); }
inline std::u16string U16(unsigned short const* s) { return reinterpret_cast<char16_t const*>(s); }

// A box as "minX..maxXxminY..maxY", or "-" while it is uninitialised.
inline std::string Box(VornBoundbox const& b) {
  std::ostringstream out;
  out << b.MinX << ".." << b.MaxX << 'x' << b.MinY << ".." << b.MaxY;
  return b.IsInit() ? out.str() : "-";
}

// Whether op raises a VornException with exactly this message and code. Used as
// EXPECT_TRUE(ThrowsVornException([&] { ... }, "text", code)), so that a failure is
// reported at the caller's line.
template <class Operation>
testing::AssertionResult ThrowsVornException(Operation&& op, char const* message, int code) try {
  op();
  return testing::AssertionFailure() << "threw nothing, expected \"" << message << "\"";
} catch (VornException const& e) {
  bool const same = e.Message() == std::string(message) && e.ErrorCode() == code;
  return (same ? testing::AssertionSuccess() : testing::AssertionFailure())
         << "threw \"" << e.Message() << "\" (" << e.ErrorCode() << ")";
}

}  // namespace vorn_test
