// Strings, narrow/wide conversion, exceptions and the class-level allocator.
#include <vorn/foundation/conversion.h>
#include <vorn/foundation/exception.h>
#include <vorn/foundation/memory.h>

#include <gtest/gtest.h>

#include <climits>

#include "support/helpers.h"

namespace {

using vorn_test::W;
using Wide = stringbase<unsigned short, wstringfuncs>;
using Narrow = stringbase<char, astringfuncs>;

// The text, or "(none)" for a string without a buffer.
std::u16string Show(Wide const& s) { return s.empty() ? u"(none)" : vorn_test::U16(s.c_str()); }
std::string Show(Narrow const& s) { return s.empty() ? "(none)" : s.c_str(); }

char Sign(int order) { return order < 0 ? '-' : order > 0 ? '+' : '0'; }

// Wide text is measured up to its first zero unit, 16 bits at a time (not as a 32-bit
// wchar_t). An index of any integer type reads one unit; past the text it throws a bare
// char*, not a VornException. Narrow units read as signed char also where plain char is
// unsigned. A string may append or copy its own text. Note: only a string without a
// buffer is empty(), not the allocated ""; copies keep the difference, and appending an
// empty string changes neither state.
TEST(Strings, UnitsAreReadAsTheirOwnWidthAndTheAllocatedEmptyTextIsNotEmpty) {
  Wide s(W(u"field\0\xffff"));
  EXPECT_EQ((vorn_test::U16(s) + std::u16string{s[2u], s[2], s[2LL], s[short{4}]}), u"fieldeeed");
  for (long long index : {5LL, -1LL, 4294967296LL}) EXPECT_THROW((void)s[index], char*) << index;
  EXPECT_EQ(Narrow("\xC3\xA9")[1], -87);
  s += s;
  s = s.c_str() + 7;
  Wide const allocated(W(u""));
  EXPECT_EQ(Show(s + W(u"!")) + Show(s + nullptr) + Show(Wide(allocated) += Wide()), u"eld!eld");
  s = static_cast<unsigned short*>(nullptr);  // copying a null text empties
  EXPECT_EQ(Show(Wide(s) += Wide()), u"(none)");
}

// Comparison is by unsigned 16-bit units; caseless comparison folds A-Z only.
TEST(Strings, CompareTakesUnitsAsUnsignedAndFoldsOnlyAToZ) {
  // Equal, a prefix, equal but for case, unsigned units, '_' and 'A' ('a' when folded),
  // 'Z' and 'a', and a letter outside A-Z that is not folded.
  char16_t const* const pairs[][2] = {{u"ab", u"ab"},        {u"a", u"ab"}, {u"A_1", u"a_1"},
                                      {u"\xffff", u"z"},     {u"A", u"_"},  {u"Z", u"a"},
                                      {u"\u00c9", u"\u00e9"}};
  std::string signs;
  for (auto const& p : pairs)
    signs += {Sign(Vorn::text::compare(W(p[0]), W(p[1]))),
              Sign(Vorn::text::compare_caseless(W(p[0]), W(p[1])))};
  EXPECT_EQ(signs, "00---0++-+-+--");
}

// Both directions through every form. Malformed text gives the allocated "": invalid
// lead and continuation bytes, a sequence cut by the terminator, overlong forms, an
// encoded surrogate, a code point above U+10FFFF, and lone surrogates. Note: a count
// limits the units (bytes) produced and never splits a character.
TEST(Conversion, WellFormedTextRoundTripsAndACountNeverSplitsACharacter) {
  // The first and last code point of each UTF-8 length, U+D7FF and U+FFFF around the
  // surrogates, and two supplementary ones that take a pair of units.
  char16_t const wide[] = u"\u007f\u0080\u07ff\u0800\ud7ff\uffff\U00010000\U0010ffff";
  char const narrow[] = u8"\u007f\u0080\u07ff\u0800\ud7ff\uffff\U00010000\U0010ffff";
  EXPECT_EQ(Show(VornUtilText::WStringToString(W(wide))), narrow);
  EXPECT_EQ(Show(VornUtilText::WStringToString(Wide(W(wide)))), narrow);
  EXPECT_EQ(Show(VornUtilText::StringToWString(narrow)), wide);
  EXPECT_EQ(Show(VornUtilText::StringToWString(Narrow(narrow))), wide);
  for (char const* text : {"a\xFF", "a\x80", "a\xC3", "\xC3(", "\xC0\xAF", "\xF0\x80\x80\xAF",
                           "\xED\xA0\x80", "\xF4\x90\x80\x80"})
    EXPECT_EQ(Show(VornUtilText::StringToWString(text)), u"") << text;
  // Nothing after the last unit counted is read: here a byte that is never UTF-8, with
  // no terminator behind it.
  char const cut[] = {'a', '\xC3', '\xA9', '\xF0', '\x9F', '\x98', '\x80', '\xFF'};
  EXPECT_EQ(Show(VornUtilText::StringToWString(cut, 3)), u"a\u00e9");
  EXPECT_EQ(Show(VornUtilText::StringToWString(cut, 4)), u"a\u00e9\xD83D\xDE00");
  // Bytes for every count, then for the lone surrogates with room to spare; the buffer
  // form writes them, a zero behind them and no more.
  char16_t const* const malformed[] = {u"a\xD800", u"a\xDC00z", u"\xD83Dx"};
  std::string sizes;
  for (unsigned int count = 0; count <= 13; ++count) {
    Wide const from(W(count <= 10 ? u"a\u00e9\u20ac\xD83D\xDE00" : malformed[count - 11]));
    char buffer[13] = "############";
    unsigned int const size = VornUtilText::WStringToString(from, buffer, count);
    EXPECT_EQ(std::string(buffer, size + 2),
              Show(VornUtilText::WStringToString(from.c_str(), count)) + std::string("\0#", 2));
    sizes += std::to_string(size) + " ";
  }
  EXPECT_EQ(sizes, "0 1 1 3 3 3 6 6 6 6 10 0 0 0 ");
}

// Note: an int detail is dropped; a long long one (or a long) is written. Assigning gives
// the target a buffer of its own, "" from an exception without a message, whose copies
// have none. what() is never the message. The fixed texts of the codes are listed first.
TEST(VornException, ADetailFollowsTheSeparatorAndAssignmentAlwaysGivesABuffer) {
  VornException const cases[] = {
      {"a", 1, "row 3"}, {"a", 1, nullptr},   {nullptr, 1, "b"}, {"c", 1, 42},
      {"d", 1, 0LL},     {"e", 1, LLONG_MIN}, {"f", 1, -5L},     {}};
  std::string messages = VornUtilErrors::GetErrorString(-1);
  for (int c = 5000; c <= 5008; ++c) messages.append(VornUtilErrors::GetErrorString(c)) += '|';
  for (VornException const& e : cases) messages.append(e.Message()) += '|';
  EXPECT_EQ(messages,
            "|Unknown error|Out of range|Parameter is NULL|Not initialized|Out of Memory|"
            "Not supported|Wrong coordinate system||"
            "a : row 3|a : | : b|c : |d : 0|e : -9223372036854775808|f : -5||");
  VornException target("Parameter is NULL", 5003);
  target = cases[7];  // no message
  EXPECT_TRUE(target.ErrorCode() == -1 && target.Message() != astringfuncs::empty_text);
  EXPECT_EQ(VornException(cases[7]).Message(), astringfuncs::empty_text);
  EXPECT_STREQ(static_cast<std::exception const&>(target).what(), std::exception().what());
}

// A class-level allocation that does not fit in 32 bits is refused, not cut short.
TEST(Memory, ClassLevelNewRefusesARequestBeyondThirtyTwoBits) {
  if (sizeof(std::size_t) <= sizeof(unsigned int)) GTEST_SKIP() << "size_t is 32-bit here";
  EXPECT_EQ(VornAllocator::operator new (std::size_t{UINT_MAX} + 2), nullptr);
}

}  // namespace
