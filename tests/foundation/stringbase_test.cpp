#include <vorn/foundation/stringbase.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <type_traits>
#include <vector>

#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::W;

// Tests run on both forms; Text<S>("abc") is the ASCII text in S's code units.
template <class S>
using Unit = std::remove_const_t<std::remove_pointer_t<decltype(S().c_str())>>;

template <class S>
std::vector<Unit<S>> Text(char const* ascii) {
  return std::vector<Unit<S>>(ascii, ascii + std::strlen(ascii) + 1);
}

// length(), c_str(), the conversion operator and operator[] must all agree with ascii.
template <class S>
::testing::AssertionResult Holds(S const& s, char const* ascii) {
  Unit<S> const* text = s;
  if (text == nullptr || text != s.c_str() || s.length() != std::strlen(ascii)) {
    return ::testing::AssertionFailure() << "null, aliases differ or length " << s.length();
  }
  for (unsigned int i = 0; i <= s.length(); ++i) {
    if (text[i] != ascii[i] || (i < s.length() && s[i] != text[i])) {
      return ::testing::AssertionFailure() << "differs at " << i;
    }
  }
  return ::testing::AssertionSuccess();
}

// The index error is a bare char* (so a handler for char* catches it), never a VornException.
template <class S, class I>
void ExpectIndexThrows(S const& s, I index) {
  try {
    (void)s[index];
    ADD_FAILURE() << "no exception for index " << index;
  } catch (char* text) {
    EXPECT_STREQ(text, "Index out of Range");
  }
}

template <class S>
class StringForms : public ::testing::Test {};
using Forms =
    ::testing::Types<stringbase<char, astringfuncs>, stringbase<unsigned short, wstringfuncs>>;
TYPED_TEST_SUITE(StringForms, Forms, );

TYPED_TEST(StringForms, EmptyAndAllocatedEmptyDifferOnlyInEmpty) {
  using S = TypeParam;
  S s;
  EXPECT_TRUE(s.empty());
  EXPECT_TRUE(Holds(s, ""));
  s = Text<S>("").data();
  EXPECT_FALSE(s.empty());
  EXPECT_TRUE(Holds(s, ""));
  EXPECT_FALSE(S(s).empty());
  s = static_cast<Unit<S> const*>(nullptr);
  EXPECT_TRUE(s.empty());
  EXPECT_TRUE(S(s).empty());
}

TYPED_TEST(StringForms, IndexOutOfRangeThrowsTheBareNarrowText) {
  using S = TypeParam;
  S const s(Text<S>("abc").data());
  ExpectIndexThrows(s, 3u);
  ExpectIndexThrows(s, -1);
  ExpectIndexThrows(s, static_cast<long long>(UINT_MAX) + 1);  // must not wrap to 0
  ExpectIndexThrows(S(), 0);
  ExpectIndexThrows(S(Text<S>("").data()), 0u);
}

TYPED_TEST(StringForms, AppendConcatenatesAndAnEmptyOperandChangesNothing) {
  using S = TypeParam;
  S s(Text<S>("ab").data());
  s += S();
  s += S(Text<S>("cd").data());
  EXPECT_TRUE(Holds(s + Text<S>("ef").data(), "abcdef"));
  EXPECT_TRUE(Holds(s + nullptr, "abcd"));
  S target;
  target += S();
  target += static_cast<Unit<S> const*>(nullptr);
  EXPECT_TRUE((target + nullptr).empty());
  // Appending to an empty string is a plain copy, so "" gives the allocated "".
  target += Text<S>("").data();
  EXPECT_FALSE(target.empty());
}

TYPED_TEST(StringForms, CopiesOwnTheirBufferAndSelfAssignmentIsSafe) {
  using S = TypeParam;
  S s(Text<S>("abc").data());
  S const& alias = s;
  S const copy(s);
  EXPECT_NE(copy.c_str(), s.c_str());
  s = alias;
  s += alias;
  EXPECT_TRUE(Holds(s, "abcabc"));
  s.append(s.c_str() + 4);
  s = s.c_str() + 5;
  EXPECT_TRUE(Holds(s, "cbc"));
  Unit<S> const unterminated[2] = {'x', 'y'};  // nothing past the count is read
  s.copy(unterminated, 2);
  EXPECT_TRUE(Holds(s, "xy"));
}

TYPED_TEST(StringForms, FailedAllocationLeavesTheStringEmpty) {
  using S = TypeParam;
  auto const abc = Text<S>("abc");
  S appended(abc.data());
  S assigned(abc.data());
  {
    ScopedFailure failure(Channel::Malloc);
    EXPECT_TRUE(S(abc.data()).empty());
    appended += abc.data();
    assigned = abc.data();
  }
  EXPECT_TRUE(appended.empty());
  EXPECT_TRUE(assigned.empty());
}

TEST(NarrowText, IndexingReadsHighBytesAsNegativeOnEveryTarget) {
  stringbase<char, astringfuncs> const s("\xC3\xA9z");  // plain char is unsigned on ARM
  static_assert(std::is_same<decltype(s[0u]), signed char>::value, "signed on every target");
  EXPECT_EQ(s[0u], -61);
  EXPECT_EQ(s[1], -87);
  EXPECT_EQ((stringbase<unsigned short, wstringfuncs>(W(u"\xffff"))[0u]), 0xFFFF);
}

TEST(WideText, MeasuresAndComparesSixteenBitUnits) {
  // A 32-bit wchar_t measure would run past the zero unit after "ab".
  EXPECT_EQ((stringbase<unsigned short, wstringfuncs>(W(u"ab\0cd")).length()), 2u);
  EXPECT_EQ(Vorn::text::length(W(u"")), 0u);
  EXPECT_EQ(Vorn::text::compare(W(u"abc"), W(u"abc")), 0);
  EXPECT_LT(Vorn::text::compare(W(u"ab"), W(u"abc")), 0);
  EXPECT_GT(Vorn::text::compare(W(u"\xffff"), W(u"z")), 0);  // unsigned unit order
  EXPECT_EQ(Vorn::text::compare_caseless(W(u"Name_1"), W(u"nAME_1")), 0);
  EXPECT_LT(Vorn::text::compare_caseless(W(u"ab"), W(u"ABC")), 0);
  // 'A' compares as 'a', after '_', although its own code is below it.
  EXPECT_GT(Vorn::text::compare_caseless(W(u"A"), W(u"_")), 0);
  EXPECT_NE(Vorn::text::compare_caseless(W(u"\u00c9"), W(u"\u00e9")), 0);
}

}  // namespace
