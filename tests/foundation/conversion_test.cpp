#include <vorn/foundation/conversion.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>

#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::W;
using WideString = stringbase<unsigned short, wstringfuncs>;
using NarrowString = stringbase<char, astringfuncs>;

// U+00E9 and U+1F600 (outside the BMP) in both encodings.
std::string const kEAcute = "\xC3\xA9";
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

TEST(Conversion, EveryFormConvertsNonAsciiAndSurrogatePairs) {
  std::string const narrow = "caf" + kEAcute + " " + kGrin;
  std::u16string const wide = u"caf\u00e9 " + kGrinPair;
  EXPECT_EQ(Units(VornUtilText::StringToWString(narrow.c_str())), wide);
  EXPECT_EQ(Units(VornUtilText::StringToWString(NarrowString(narrow.c_str()))), wide);
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(wide.c_str()))), narrow);
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(WideString(W(wide.c_str())))), narrow);
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString("")));
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(NarrowString())));
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(WideString())));
}

TEST(Conversion, EncodingBoundariesRoundTrip) {
  std::pair<char16_t const*, char const*> const cases[] = {
      {u"\u007f", "\x7F"},         {u"\u0080", "\xC2\x80"},     {u"\u07ff", "\xDF\xBF"},
      {u"\u0800", "\xE0\xA0\x80"}, {u"\ud7ff", "\xED\x9F\xBF"}, {u"\uffff", "\xEF\xBF\xBF"},
      {u"\xD800\xDC00", "\xF0\x90\x80\x80"}, {u"\xDBFF\xDFFF", "\xF4\x8F\xBF\xBF"},
  };
  for (auto const& [wide, narrow] : cases) {
    EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(wide))), narrow);
    EXPECT_EQ(Units(VornUtilText::StringToWString(narrow)), wide);
  }
}

TEST(Conversion, ACountNeverSplitsACharacter) {
  // Narrow to wide: the count limits the units produced; nothing behind the last
  // character looked at is read, so unterminated text that fills the count is fine.
  EXPECT_EQ(Units(VornUtilText::StringToWString("abcdef", 3)), u"abc");
  EXPECT_EQ(Units(VornUtilText::StringToWString("ab\0cd", 5)), u"ab");
  std::string const accents = kEAcute + kEAcute + kEAcute;
  EXPECT_EQ(Units(VornUtilText::StringToWString(accents.data(), 2)), u"\u00e9\u00e9");
  std::string const pairs = "a" + kGrin + "b";
  EXPECT_EQ(Units(VornUtilText::StringToWString(pairs.c_str(), 2)), u"a");  // not half a pair
  EXPECT_EQ(Units(VornUtilText::StringToWString(pairs.c_str(), 3)), u"a" + kGrinPair);
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(kGrin.c_str(), 1)));
  char const unterminated[3] = {'x', 'y', '\xC3'};
  EXPECT_EQ(Units(VornUtilText::StringToWString(unterminated, 2)), u"xy");
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString("xy\xC3", 3)));  // cut by the end
  // Wide to narrow: the count limits the bytes written.
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"abcdef"), 3)), "abc");
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"a\u00e9"), 2)), "a");
  std::u16string const grin = u"a" + kGrinPair;
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(grin.c_str()), 4)), "a");
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(grin.c_str()), 5)), "a" + kGrin);
  // The measured forms are not cut at the wide length (three units, nine bytes).
  EXPECT_EQ(Bytes(VornUtilText::WStringToString(W(u"\u20ac\u20ac\u20ac"))).size(), 9u);
}

TEST(Conversion, MalformedInputGivesAnEmptyResult) {
  char const* const malformed[] = {
      "a\xFF",             // never a UTF-8 byte
      "a\x80",             // continuation without a lead
      "a\xC3",             // sequence cut by the terminator
      "\xC3(",             // bad continuation
      "\xC0\xAF",          // overlong '/'
      "\xF0\x80\x80\xAF",  // overlong, four bytes
      "\xED\xA0\x80",      // encoded surrogate U+D800
      "\xF4\x90\x80\x80",  // above U+10FFFF
  };
  for (char const* text : malformed) {
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString(text))) << text;
  }
  EXPECT_TRUE(AllocatedEmpty(VornUtilText::StringToWString("a\xC3", 5)));
  unsigned short const loneHigh[] = {'a', 0xD800, 0};
  unsigned short const loneLow[] = {'a', 0xDC00, 'b', 0};
  unsigned short const highThenText[] = {0xD83D, 'x', 0};
  for (unsigned short const* text : {loneHigh, loneLow, highThenText}) {
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(text)));
    EXPECT_TRUE(AllocatedEmpty(VornUtilText::WStringToString(text, 8)));
  }
}

TEST(WStringToStringBuffer, WritesAtMostSizeBytesAndATerminatorBehindThem) {
  char buffer[8] = "#######";
  EXPECT_EQ(VornUtilText::WStringToString(WideString(W(u"abcdef")), buffer, 4), 4u);
  EXPECT_EQ(std::string(buffer, 6), std::string("abcd\0#", 6));
  EXPECT_EQ(VornUtilText::WStringToString(WideString(W(u"a\u00e9")), buffer, 2), 1u);
  EXPECT_STREQ(buffer, "a");
  EXPECT_EQ(VornUtilText::WStringToString(WideString(), buffer, 4), 0u);
  unsigned short const loneLow[] = {'a', 'b', 0xDC00, 0};
  std::memset(buffer, '#', 7);
  EXPECT_EQ(VornUtilText::WStringToString(WideString(loneLow), buffer, 7), 0u);
  EXPECT_EQ(std::string(buffer, 2), std::string("\0#", 2)) << "malformed: only the terminator";
}

TEST(Conversion, FailedAllocationGivesAnEmptyString) {
  vorn_test::ScopedFailure failure(vorn_test::Channel::Malloc, 1);
  EXPECT_TRUE(VornUtilText::StringToWString("abc").empty());
  EXPECT_FALSE(VornUtilText::StringToWString("abc").empty());
}

}  // namespace
