#include <vorn/foundation/exception.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <exception>

namespace {

TEST(VornException, DefaultHasNoMessageAndCodeMinusOne) {
  VornException const e;
  EXPECT_EQ(e.ErrorCode(), -1);
  EXPECT_STREQ(e.Message(), "");
  EXPECT_STREQ(VornException(nullptr, 7).Message(), "");
}

TEST(VornException, DetailsFollowTheSeparator) {
  EXPECT_STREQ(VornException("Out of range", 5002, "row 3").Message(), "Out of range : row 3");
  EXPECT_STREQ(VornException("Out of range", 5002, static_cast<char const*>(nullptr)).Message(),
               "Out of range : ");
  EXPECT_STREQ(VornException(nullptr, 1, "Not supported").Message(), " : Not supported");
  VornException const dropped("Parameter is NULL", 5003, 42);
  EXPECT_STREQ(dropped.Message(), "Parameter is NULL : ");
  EXPECT_EQ(dropped.ErrorCode(), 5003);
}

TEST(VornException, SixtyFourBitDetailIsWrittenInDecimal) {
  EXPECT_STREQ(VornException("Out of range", 5002, -1234567890123LL).Message(),
               "Out of range : -1234567890123");
  EXPECT_STREQ(VornException("v", 1, 0LL).Message(), "v : 0");
  EXPECT_STREQ(VornException("v", 1, LLONG_MAX).Message(), "v : 9223372036854775807");
  EXPECT_STREQ(VornException("v", 1, LLONG_MIN).Message(), "v : -9223372036854775808");
}

TEST(VornException, Int64AndLongPickTheSixtyFourBitForm) {
  EXPECT_STREQ(VornException("m", 1, std::int64_t{-5}).Message(), "m : -5");
  EXPECT_STREQ(VornException("m", 1, 5L).Message(), "m : 5");
  EXPECT_STREQ(VornException("m", 1, 5).Message(), "m : ");
}

TEST(VornException, CopyKeepsMessageAndCode) {
  VornException const original("Parameter is NULL", 5003);
  VornException const copy(original);
  EXPECT_STREQ(copy.Message(), "Parameter is NULL");
  EXPECT_NE(copy.Message(), original.Message());
  EXPECT_EQ(copy.ErrorCode(), 5003);
  VornException target("Old", 1);
  VornException const& alias = target;
  target = copy;
  target = alias;
  EXPECT_STREQ(target.Message(), "Parameter is NULL");
  EXPECT_EQ(target.ErrorCode(), 5003);
}

TEST(VornException, AssigningADefaultExceptionAllocatesAnEmptyMessage) {
  VornException const none;
  // No buffer: Message() is the shared static "", and a copy keeps that state.
  EXPECT_EQ(none.Message(), astringfuncs::empty_text);
  EXPECT_EQ(VornException(none).Message(), astringfuncs::empty_text);
  VornException target("Old", 1);
  target = none;
  EXPECT_STREQ(target.Message(), "");
  EXPECT_NE(target.Message(), astringfuncs::empty_text);
  EXPECT_EQ(target.ErrorCode(), -1);
}

TEST(VornException, WhatIsNeverTheMessage) {
  try {
    throw VornException("Out of range", 5002);
  } catch (std::exception const& e) {
    EXPECT_STREQ(e.what(), std::exception().what());
    auto const* vorn = dynamic_cast<VornException const*>(&e);
    ASSERT_NE(vorn, nullptr);
    EXPECT_STREQ(vorn->Message(), "Out of range");
  }
}

TEST(VornUtilErrors, GetErrorStringKnowsTheSevenCodes) {
  char const* const texts[] = {"Unknown error",   "Out of range",  "Parameter is NULL",
                               "Not initialized", "Out of Memory", "Not supported",
                               "Wrong coordinate system"};
  for (int code = Vorn::ErrorCodes::UnknownError; code <= Vorn::ErrorCodes::WrongCoordinateSystem;
       ++code) {
    EXPECT_STREQ(VornUtilErrors::GetErrorString(code), texts[code - 5001]);
  }
  EXPECT_STREQ(VornUtilErrors::GetErrorString(Vorn::ErrorCodes::OutOfMemory), "Out of Memory");
  for (int code : {5000, 5008, -1, 0, INT_MIN, INT_MAX}) {
    char const* text = VornUtilErrors::GetErrorString(code);
    ASSERT_NE(text, nullptr) << code;
    EXPECT_STREQ(text, "") << code;
  }
}

}  // namespace
