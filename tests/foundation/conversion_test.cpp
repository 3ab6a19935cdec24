#include <vorn/foundation/conversion.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::W;

using WideString = stringbase<unsigned short, wstringfuncs>;
using NarrowString = stringbase<char, astringfuncs>;

// U+00E9, U+20AC and U+1F600 in both encodings.
std::string const kEAcute = "\xC3\xA9";
std::string const kEuro = "\xE2\x82\xAC";
std::string const kGrin = "\xF0\x9F\x98\x80";
std::u16string const kGrinPair = u"\xD83D\xDE00";

std::u16string Units(WideString const& s) { return vorn_test::U16(s.c_str()); }
std::string Bytes(NarrowString const& s) { return s.c_str(); }

// An empty conversion result is the allocated "", never the bufferless empty string.
template <class S>
::testing::AssertionResult AllocatedEmpty(S const& s) {
  if (s.length() == 0 && !s.empty()) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "length " << s.length() << ", empty " << s.empty();
}

TEST(StringToWString, ConvertsAsciiNonAsciiAndSupplementary) {
  EXPECT_EQ(Units(VornUtilText::StringToWString("Field 7")), u"Field 7");
  std::string const text = "caf" + kEAcute + " 5" + kEuro + kGrin;
  EXPECT_EQ(Units(VornUtilText::StringToWString(text.c_str())), u"caf\u00e9 5\u20ac" + kGrinPair);
  EXPECT_EQ(Units(VornUtilText::StringToWString(NarrowString(text.c_str()))),
            u"caf\u00e9 5\u20ac" + kGrinPair);
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString("")));
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(NarrowString())));
}

TEST(StringToWString, CountLimitsBytesReadWithoutSplitting) {
  EXPECT_EQ(Units(VornUtilText::StringToWString("abcdef", 3)), u"abc");
  EXPECT_EQ(Units(VornUtilText::StringToWString("ab\0cd", 5)), u"ab");
  std::string const text = "a" + kEAcute;
  EXPECT_EQ(Units(VornUtilText::StringToWString(text.c_str(), 2)), u"a");
  EXPECT_EQ(Units(VornUtilText::StringToWString(text.c_str(), 3)), u"a\u00e9");
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(kGrin.c_str(), 3)));
  EXPECT_EQ(Units(VornUtilText::StringToWString(kGrin.c_str(), 4)), kGrinPair);
  // Nothing at or past the count is read (no terminator follows these bytes).
  char const cut[3] = {'x', 'y', '\xC3'};
  EXPECT_EQ(Units(VornUtilText::StringToWString(cut, 2)), u"xy");
  EXPECT_EQ(Units(VornUtilText::StringToWString(cut, 3)), u"xy");
  EXPECT_EQ(Units(VornUtilText::StringToWString("ab\xFF", 2)), u"ab");
}

TEST(StringToWString, MalformedInputGivesAnEmptyResult) {
  char const* const malformed[] = {
      "a\xFF",             // never a UTF-8 byte
      "a\x80",             // continuation without a lead
      "a\xC3",             // sequence cut by the terminator
      "\xC3(",             // bad continuation
      "\xC0\xAF",          // overlong '/'
      "\xE0\x80\xAF",      // overlong, three bytes
      "\xF0\x80\x80\xAF",  // overlong, four bytes
      "\xED\xA0\x80",      // encoded surrogate U+D800
      "\xF4\x90\x80\x80",  // above U+10FFFF
  };
  for (char const* text : malformed) {
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(text))) << text;
  }
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(NarrowString("a\xC3"))));
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString("a\xC3", 5)));
}

TEST(WStringToString, MeasuredFormsConvertTheWholeText) {
  std::u16string const text = u"\u20ac\u20ac\u20ac";
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(text.c_str()))), kEuro + kEuro + kEuro);
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(WideString(W(text.c_str())))),
            kEuro + kEuro + kEuro);
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W((u"caf\u00e9 " + kGrinPair).c_str()))),
            "caf" + kEAcute + " " + kGrin);
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(WideString())));
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(W(u""))));
}

TEST(WStringToString, EncodingBoundariesRoundTrip) {
  std::pair<char16_t const*, char const*> const cases[] = {
      {u"\u007f", "\x7F"},           {u"\u0080", "\xC2\x80"},
      {u"\u07ff", "\xDF\xBF"},       {u"\u0800", "\xE0\xA0\x80"},
      {u"\ud7ff", "\xED\x9F\xBF"},   {u"\ue000", "\xEE\x80\x80"},
      {u"\uffff", "\xEF\xBF\xBF"},   {u"\xD800\xDC00", "\xF0\x90\x80\x80"},
      {u"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
  };
  for (auto const& [wide, narrow] : cases) {
    EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(wide))), narrow);
    EXPECT_EQ(Units(VornUtilText::StringToWString(narrow)), wide);
  }
}

TEST(WStringToString, CountLimitsBytesWrittenWithoutSplitting) {
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"abcdef"), 3)), "abc");
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"a\u00e9"), 2)), "a");
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"a\u00e9"), 3)), "a" + kEAcute);
  std::u16string const grin = u"a" + kGrinPair;
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(grin.c_str()), 4)), "a");
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(grin.c_str()), 5)), "a" + kGrin);
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(W(u"\u20ac"), 2)));
}

TEST(WStringToString, UnpairedSurrogatesGiveAnEmptyResult) {
  unsigned short const loneHigh[] = {'a', 0xD800, 0};
  unsigned short const loneLow[] = {'a', 0xDC00, 'b', 0};
  unsigned short const highThenText[] = {0xD83D, 'x', 0};
  for (unsigned short const* text : {loneHigh, loneLow, highThenText}) {
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(text)));
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(text, 8)));
  }
}

TEST(WStringToStringBuffer, WritesAtMostSizeBytesAndATerminator) {
  char buffer[8] = "#######";
  EXPECT_EQ(VornUtilText::WStringToString(WideString(W(u"abcdef")), buffer, 4), 4u);
  EXPECT_EQ(std::string(buffer, 6), std::string("abcd\0#", 6));
  EXPECT_EQ(VornUtilText::WStringToString(WideString(W(u"a\u00e9")), buffer, 2), 1u);
  EXPECT_STREQ(buffer, "a");
  EXPECT_EQ(VornUtilText::WStringToString(WideString(), buffer, 4), 0u);
  EXPECT_STREQ(buffer, "");
}

TEST(WStringToStringBuffer, MalformedTextReturnsZeroAndWritesOnlyTheTerminator) {
  unsigned short const loneLow[] = {'a', 'b', 0xDC00, 0};
  char buffer[8] = "#######";
  EXPECT_EQ(VornUtilText::WStringToString(WideString(loneLow), buffer, 7), 0u);
  EXPECT_EQ(std::string(buffer, 3), std::string("\0##", 3));
}

TEST(Conversion, FailedAllocationGivesAnEmptyString) {
  vorn_test::ScopedFailure failure(vorn_test::Channel::Malloc, 1);
  EXPECT_TRUE(VornUtilText::StringToWString("abc").empty());
  EXPECT_FALSE(VornUtilText::StringToWString("abc").empty());
}

}  // namespace
