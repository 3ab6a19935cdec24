#include <vorn/foundation/exception.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <exception>

namespace {

TEST(VornException, DetailsFollowTheSeparator) {
  char const* const none = nullptr;
  struct Case {
    VornException e;
    char const* message;
  } const cases[] = {
      {VornException("Out of range", 5002, "row 3"), "Out of range : row 3"},
      {VornException("Out of range", 5002, none), "Out of range : "},
      {VornException(nullptr, 5006, "Not supported"), " : Not supported"},
      {VornException("Parameter is NULL", 5003, 42), "Parameter is NULL : "},  // int dropped
      {VornException("Out of range", 5002, -1234567890123LL), "Out of range : -1234567890123"},
      {VornException("v", 1, 0LL), "v : 0"},
      {VornException("v", 1, LLONG_MIN), "v : -9223372036854775808"},
      {VornException("v", 1, std::int64_t{-5}), "v : -5"},
      {VornException("v", 1, 5L), "v : 5"},
  };
  for (Case const& c : cases) EXPECT_STREQ(c.e.Message(), c.message);
  EXPECT_EQ(cases[3].e.ErrorCode(), 5003);
}

TEST(VornException, CopiesOwnTheirMessage) {
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

TEST(VornException, DefaultHasNoMessageUntilAssignedToAnother) {
  VornException const none;
  EXPECT_EQ(none.ErrorCode(), -1);
  EXPECT_STREQ(VornException(nullptr, 7).Message(), "");
  // No buffer: Message() is the shared static "", and a copy keeps that state.
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

TEST(VornUtilErrors, GetErrorStringKnowsTheSevenCodesAndGivesEmptyTextOtherwise) {
  char const* const texts[] = {"Unknown error",   "Out of range",  "Parameter is NULL",
                               "Not initialized", "Out of Memory", "Not supported",
                               "Wrong coordinate system"};
  for (int code = 5001; code <= 5007; ++code) {
    EXPECT_STREQ(VornUtilErrors::GetErrorString(code), texts[code - 5001]);
  }
  for (int code : {5000, 5008, -1, 0, INT_MIN, INT_MAX}) {
    EXPECT_STREQ(VornUtilErrors::GetErrorString(code), "") << code;  // never null
  }
}

}  // namespace
