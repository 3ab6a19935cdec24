// Test helper: checks that an operation raises a VornException with an exact message
// and code. Used as EXPECT_TRUE(ThrowsVornException([&] { ... }, "text", code)) so that
// a failure is reported at the caller's line.
#ifndef VORN_TESTS_SUPPORT_VORN_EXCEPTION_MATCHER_H
#define VORN_TESTS_SUPPORT_VORN_EXCEPTION_MATCHER_H

#include <cstring>

#include <gtest/gtest.h>
#include <vorn/foundation/exception.h>

namespace vorn_test {

template <class Operation>
::testing::AssertionResult ThrowsVornException(Operation&& operation, char const* message,
                                               int code) {
  try {
    operation();
  } catch (VornException const& e) {
    if (std::strcmp(e.Message(), message) == 0 && e.ErrorCode() == code) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure()
           << "threw \"" << e.Message() << "\" (" << e.ErrorCode() << "), expected \""
           << message << "\" (" << code << ")";
  }
  return ::testing::AssertionFailure() << "threw nothing, expected \"" << message << "\"";
}

}  // namespace vorn_test

#endif
