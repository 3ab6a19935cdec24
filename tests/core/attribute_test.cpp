#include <vorn/core/attribute.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/vorn_exception_matcher.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;
using vorn_test::U16;
using vorn_test::W;

// Pointers that would silently become bool are rejected at compile time.
static_assert(std::is_constructible<VornAttribute, unsigned short const*, char const*>::value);
static_assert(!std::is_constructible<VornAttribute, unsigned short const*, char16_t const*>::value);
static_assert(
    !std::is_constructible<VornAttribute, unsigned short const*, unsigned char const*>::value);

// Kind, Length() and Decimal() as "kind/length/decimal".
std::string Layout(VornAttribute const& a) {
  return std::to_string(a.DataType()) + "/" + std::to_string(a.Length()) + "/" +
         std::to_string(a.Decimal());
}

TEST(Attribute, ScalarsShareOneSlotReadWithoutConversion) {
  VornAttribute a;
  EXPECT_EQ(Layout(a), "2/0/0");
  EXPECT_EQ(U16(a.ValueString()), u"");  // never null
  EXPECT_EQ(VornAttribute(W(u"A"), -1).ValueInt64(), -1);  // sign-extended
  EXPECT_EQ(VornAttribute(W(u"A"), 1).ValueDouble(), std::numeric_limits<double>::denorm_min());
  // Every 64-bit integer type, std::int64_t included, picks the Int64 forms.
  EXPECT_EQ(VornAttribute(W(u"A"), std::int64_t{3}).DataType(), Int64);
  EXPECT_EQ(VornAttribute(W(u"A"), 3L).DataType(), Int64);
  a.SetValue(std::int64_t{(1LL << 40) + 7});
  EXPECT_EQ(a.DataType(), Int64);
  EXPECT_EQ(a.ValueInt32(), 7);  // the low 32 bits
  a.SetValue(true);
  EXPECT_EQ(a.ValueInt64(), 1);
  a.SetValue(-0.0, 0, 0);
  EXPECT_TRUE(a.ValueBool());  // a bit is set
  a.SetValue(0.0, 0, 0);
  EXPECT_FALSE(a.ValueBool());
  EXPECT_FALSE(a == a || a < a);  // attributes have no equality and no order
}

TEST(Attribute, SettersLeaveTheOtherKindsStorageStale) {
  VornAttribute a(W(u"A"), 1);
  a.SetValue(W(u"Hello"));
  EXPECT_EQ(Layout(a), "0/5/0");
  a.SetValue(7);
  EXPECT_EQ(Layout(a), "2/0/0");
  EXPECT_EQ(U16(a.ValueString()), u"Hello");
  EXPECT_EQ(U16(a.Name.c_str()), u"A");
}

TEST(Attribute, CopiesDropTheWidthAndDecimalsOfADouble) {
  VornAttribute source;
  source.SetValue(2.5, 8, 3);
  EXPECT_EQ(Layout(source), "1/8/3");
  VornAttribute assigned(W(u"B"), W(u"text"));
  assigned = source;
  VornAttribute const constructed(source);
  EXPECT_EQ(Layout(assigned) + " " + Layout(constructed), "1/0/0 1/0/0");
  EXPECT_TRUE(assigned.ValueDouble() == 2.5 && constructed.ValueDouble() == 2.5);
  VornAttribute& alias = source;
  source = alias;  // released before it is read, like any target
  EXPECT_EQ(Layout(source), "1/0/0");
  VornAttribute text(W(u"T"), W(u"text"));
  VornAttribute& textAlias = text;
  text = textAlias;
  EXPECT_EQ(Layout(text), "0/0/0");
  EXPECT_EQ(U16(text.ValueString()) + U16(text.Name.c_str()), u"T");
}

TEST(Attribute, NarrowTextAndRecordsAreConverted) {
  VornAttribute const narrow("N", "h\xC3\xA9llo");  // two-byte UTF-8 character
  EXPECT_EQ(U16(narrow.Name.c_str()) + U16(narrow.ValueString()), u"Nh\u00E9llo");
  EXPECT_EQ(Layout(narrow), "0/5/0");
  EXPECT_EQ(Layout(VornAttribute(W(u"N"), "\xFF")), "0/0/0");  // malformed: empty text
  std::tm record{};
  record.tm_year = 121;
  VornAttribute const when(W(u"When"), record);
  EXPECT_EQ(Layout(when), "5/0/0");
  EXPECT_EQ(when.ValueDateTime(), (VornDateTime{0, 0, 0, 0, 1, 2021}));
  record = std::tm{};
  record.tm_sec = 6;  // every field lands in its own place
  record.tm_min = 5;
  record.tm_hour = 4;
  record.tm_mday = 3;
  record.tm_mon = 1;
  record.tm_year = 99;
  VornAttribute set(W(u"Set"), W(u"text"));
  set.SetValue(record);
  EXPECT_EQ(set.ValueDateTime(), (VornDateTime{6, 5, 4, 3, 2, 1999}));
  EXPECT_EQ(U16(set.ValueString()), u"text");  // the text stays behind
}

TEST(Attribute, BlobCopiesAreDeepAndSettersLeaveTheOldBuffer) {
  unsigned char const bytes[3] = {1, 2, 3};
  auto source = std::make_unique<VornAttribute>(W(u"B"), bytes, 3);
  VornAttribute copy;
  copy = *source;
  EXPECT_EQ(Layout(copy), "6/3/0");
  auto const address = reinterpret_cast<std::uintptr_t>(copy.ValueBLOB());
  EXPECT_EQ(copy.ValueInt32(), static_cast<int>(static_cast<std::uint32_t>(address)));
  source.reset();
  EXPECT_EQ(std::memcmp(copy.ValueBLOB(), bytes, 3), 0);
  VornAttribute& alias = copy;
  copy = alias;  // a BLOB assigned to itself keeps its buffer
  unsigned char const* const kept = copy.ValueBLOB();
  EXPECT_EQ(kept[2], 3);
  copy.SetValue(bytes, 1);
  EXPECT_EQ(kept[2], 3);  // still allocated: the attribute no longer owns it
  delete[] kept;
  long long const released = copy.ValueInt64();
  copy = VornAttribute(W(u"S"), W(u"s"));
  EXPECT_EQ(copy.ValueInt64(), released);  // the slot keeps the released buffer's address
}

// Stores `kind` as the kind number of `attribute`, as a damaged record would hold it.
// The kind is the one field in which an Int32 and an Int64 zero differ.
void DamageKind(VornAttribute& attribute, int kind) {
  alignas(VornAttribute) unsigned char int32[sizeof(VornAttribute)] = {};
  alignas(VornAttribute) unsigned char int64[sizeof(VornAttribute)] = {};
  (new (int32) VornAttribute)->SetValue(0);
  (new (int64) VornAttribute)->SetValue(0LL);
  std::size_t offset = 0;
  while (int32[offset] == int64[offset]) ++offset;
  offset -= offset % sizeof(int);
  std::memcpy(reinterpret_cast<unsigned char*>(&attribute) + offset, &kind, sizeof kind);
}

TEST(Attribute, AnUnknownKindIsNotSupportedAfterTheNameWasCopied) {
  VornAttribute source(W(u"Source"), 1);
  DamageKind(source, 9);
  ASSERT_EQ(source.DataType(), 9);
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
  EXPECT_EQ(Layout(a), "6/4/0");
  EXPECT_EQ(a.ValueBLOB(), nullptr);
  EXPECT_TRUE(ThrowsVornException([&] { a.SetValue(bytes, -1); }, "Out of Memory", 5005));
  VornAttribute const blob(W(u"B"), bytes, 4);
  ScopedFailure failure(Channel::ArrayNew, 1);
  EXPECT_TRUE(ThrowsVornException([&] { VornAttribute copy(blob); }, "Out of Memory", 5005));
}

}  // namespace
