#include <vorn/core/attribute.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <limits>
#include <memory>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <vorn/foundation/exception.h>

#include "support/alloc_failure.h"
#include "support/wide.h"
#include "support/vorn_exception_matcher.h"

namespace vorn_test {

// Stores a kind number that no public member can produce.
struct AttributePeer {
  static void SetKind(VornAttribute& attribute, int kind) {
    attribute.m_dataType = static_cast<VornDatatypeEnum>(kind);
  }
};

}  // namespace vorn_test

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;
using vorn_test::U16;
using vorn_test::W;

template <class T, class = void>
struct CanSetValue : std::false_type {};
template <class T>
struct CanSetValue<T, std::void_t<decltype(std::declval<VornAttribute&>().SetValue(
                          std::declval<T>()))>> : std::true_type {};

// Pointers that would silently become bool are rejected at compile time.
static_assert(std::is_constructible<VornAttribute, unsigned short const*, char const*>::value);
static_assert(!std::is_constructible<VornAttribute, unsigned short const*, char16_t const*>::value);
static_assert(!std::is_constructible<VornAttribute, unsigned short const*, wchar_t const*>::value);
static_assert(
    !std::is_constructible<VornAttribute, unsigned short const*, unsigned char const*>::value);
static_assert(CanSetValue<unsigned short const*>::value && CanSetValue<unsigned short*>::value);
static_assert(!CanSetValue<char const*>::value && !CanSetValue<char16_t const*>::value);

TEST(Attribute, DefaultIsInt32ZeroWithAnEmptyTextNeverNull) {
  VornAttribute const a;
  EXPECT_EQ(a.DataType(), Int32);
  EXPECT_EQ(a.ValueInt32(), 0);
  ASSERT_NE(a.ValueString(), nullptr);
  EXPECT_EQ(U16(a.ValueString()), u"");
  EXPECT_EQ(a.Name.length(), 0u);
}

TEST(Attribute, Int32IsSignExtendedAndReadWithoutConversion) {
  VornAttribute const five(W(u"A"), 5);
  EXPECT_EQ(five.DataType(), 2);
  EXPECT_EQ(five.ValueInt32(), 5);
  EXPECT_EQ(five.ValueInt64(), 5);
  EXPECT_EQ(five.Length(), 0);
  EXPECT_EQ(VornAttribute(W(u"A"), -1).ValueInt64(), -1);
  // The slot's bits read as a double: the smallest subnormal, not 1.0.
  EXPECT_EQ(VornAttribute(W(u"A"), 1).ValueDouble(), std::numeric_limits<double>::denorm_min());
}

TEST(Attribute, EverySixtyFourBitIntegerTypeStoresInt64) {
  long long const big = (1LL << 40) + 7;
  EXPECT_EQ(VornAttribute(W(u"A"), std::int64_t{big}).DataType(), Int64);
  EXPECT_EQ(VornAttribute(W(u"A"), big).DataType(), Int64);
  EXPECT_EQ(VornAttribute(W(u"A"), 3L).DataType(), Int64);
  VornAttribute a;
  a.SetValue(std::int64_t{big});
  EXPECT_EQ(a.DataType(), Int64);
  EXPECT_EQ(a.ValueInt64(), big);
  EXPECT_EQ(a.ValueInt32(), 7);  // the low 32 bits
}

TEST(Attribute, SettersLeaveTheOtherKindsStorageStale) {
  VornAttribute a(W(u"A"), 1);
  a.SetValue(W(u"Hello"));
  EXPECT_EQ(a.DataType(), String);
  EXPECT_EQ(a.Length(), 5);
  EXPECT_EQ(U16(a.ValueString()), u"Hello");
  a.SetValue(7);
  EXPECT_EQ(a.DataType(), Int32);
  EXPECT_EQ(a.Length(), 0);
  EXPECT_EQ(U16(a.ValueString()), u"Hello");
  EXPECT_EQ(U16(a.Name.c_str()), u"A");
}

TEST(Attribute, BoolIsOneOrZeroAndValueBoolTestsEveryBit) {
  VornAttribute a;
  a.SetValue(true);
  EXPECT_EQ(a.ValueInt64(), 1);
  a.SetValue(-0.0, 0, 0);
  EXPECT_TRUE(a.ValueBool());
  a.SetValue(0.0, 0, 0);
  EXPECT_FALSE(a.ValueBool());
}

TEST(Attribute, CopiesDropTheWidthAndDecimalsOfADouble) {
  VornAttribute source;
  source.SetValue(2.5, 8, 3);
  EXPECT_EQ(source.Length(), 8);
  EXPECT_EQ(source.Decimal(), 3);
  VornAttribute assigned(W(u"B"), W(u"text"));
  assigned = source;
  VornAttribute const constructed(source);
  for (VornAttribute const* copy : {&std::as_const(assigned), &constructed}) {
    EXPECT_EQ(copy->DataType(), Double);
    EXPECT_EQ(copy->ValueDouble(), 2.5);
    EXPECT_EQ(copy->Length(), 0);
    EXPECT_EQ(copy->Decimal(), 0);
  }
}

TEST(Attribute, TextFromNarrowOrWideIsStoredWide) {
  VornAttribute const wide(W(u"N"), W(u"abc"));
  EXPECT_EQ(wide.Length(), 3);
  VornAttribute const narrow(W(u"N"), "h\xC3\xA9llo");  // two-byte UTF-8 character
  EXPECT_EQ(U16(narrow.ValueString()), u"h\u00E9llo");
  EXPECT_EQ(narrow.Length(), 5);
  VornAttribute const both("Name", "x");
  EXPECT_EQ(U16(both.Name.c_str()), u"Name");
  EXPECT_EQ(U16(both.ValueString()), u"x");
  VornAttribute const malformed(W(u"N"), "\xFF");
  EXPECT_EQ(malformed.DataType(), String);
  EXPECT_EQ(malformed.Length(), 0);
  EXPECT_EQ(VornAttribute(W(u"N"), static_cast<char const*>(nullptr)).Length(), 0);
}

TEST(Attribute, DateTimeFromARecordIsConverted) {
  std::tm record{};
  record.tm_year = 121;
  record.tm_mon = 5;
  record.tm_mday = 15;
  record.tm_hour = 14;
  VornAttribute const a(W(u"When"), record);
  EXPECT_EQ(a.DataType(), DateTime);
  VornDateTime const expected{0, 0, 14, 15, 6, 2021};
  EXPECT_TRUE(a.ValueDateTime() == expected);
  VornAttribute b;
  b.SetValue(record);
  EXPECT_TRUE(b.ValueDateTime() == expected);
}

TEST(Attribute, BlobCopiesAreDeepAndIndependent) {
  unsigned char const bytes[3] = {1, 2, 3};
  auto source = std::make_unique<VornAttribute>(W(u"B"), bytes, 3);
  EXPECT_NE(source->ValueBLOB(), bytes);
  VornAttribute copy;
  copy = *source;
  EXPECT_EQ(copy.DataType(), BLOB);
  EXPECT_EQ(copy.Length(), 3);
  EXPECT_NE(copy.ValueBLOB(), source->ValueBLOB());
  auto const address = reinterpret_cast<std::uintptr_t>(copy.ValueBLOB());
  EXPECT_EQ(copy.ValueInt32(), static_cast<int>(static_cast<std::uint32_t>(address)));
  source.reset();
  EXPECT_EQ(std::memcmp(copy.ValueBLOB(), bytes, 3), 0);
}

TEST(Attribute, SetValueLeavesAnEarlierBlobBufferToItsHolder) {
  unsigned char const first[2] = {7, 8};
  unsigned char const second[1] = {9};
  VornAttribute a(W(u"B"), first, 2);
  unsigned char const* const kept = a.ValueBLOB();
  a.SetValue(second, 1);
  EXPECT_EQ(a.Length(), 1);
  EXPECT_EQ(kept[1], 8);  // still allocated: the attribute no longer owns it
  delete[] kept;
}

TEST(Attribute, SelfAssignmentKeepsTheValue) {
  unsigned char const bytes[2] = {4, 5};
  VornAttribute a(W(u"B"), bytes, 2);
  VornAttribute& alias = a;
  a = alias;
  EXPECT_EQ(a.ValueBLOB()[1], 5);
  EXPECT_EQ(U16(a.Name.c_str()), u"B");
}

TEST(Attribute, EqualityAndOrderAreAlwaysFalse) {
  VornAttribute const a(W(u"A"), 1);
  VornAttribute const b(W(u"A"), 1);
  EXPECT_FALSE(a == b);
  EXPECT_FALSE(a == a);
  EXPECT_FALSE(a < b);
  EXPECT_FALSE(b < a);
}

TEST(Attribute, AnUnknownKindIsNotSupportedAfterTheNameWasCopied) {
  VornAttribute source(W(u"Source"), 1);
  vorn_test::AttributePeer::SetKind(source, 9);
  VornAttribute target(W(u"Target"), W(u"text"));
  EXPECT_TRUE(ThrowsVornException([&] { target = source; }, "Not supported", 5006));
  EXPECT_EQ(U16(target.Name.c_str()), u"Source");
  EXPECT_TRUE(ThrowsVornException([&] { VornAttribute copy(source); }, "Not supported", 5006));
}

TEST(Attribute, BlobAllocationFailureIsOutOfMemoryWithKindAndLengthChanged) {
  unsigned char const bytes[4] = {1, 2, 3, 4};
  VornAttribute a(W(u"A"), 1);
  {
    ScopedFailure failure(Channel::ArrayNew, 1);
    EXPECT_TRUE(ThrowsVornException([&] { a.SetValue(bytes, 4); }, "Out of Memory", 5005));
  }
  EXPECT_EQ(a.DataType(), BLOB);
  EXPECT_EQ(a.Length(), 4);
  EXPECT_EQ(a.ValueBLOB(), nullptr);
  EXPECT_TRUE(ThrowsVornException([&] { a.SetValue(bytes, -1); }, "Out of Memory", 5005));

  VornAttribute const blob(W(u"B"), bytes, 4);
  ScopedFailure failure(Channel::ArrayNew, 1);
  EXPECT_TRUE(ThrowsVornException([&] { VornAttribute copy(blob); }, "Out of Memory", 5005));
}

}  // namespace
