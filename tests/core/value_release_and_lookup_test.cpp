// Attribute values changing kind by assignment, copies of every scalar kind and of a
// BLOB whose buffer never came, null texts and null keys, and switching the caseless
// comparison back off.
#include <vorn/core/attribute.h>
#include <vorn/core/attribute_collection.h>

#include <cstring>

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

TEST(AttributeValueRelease, AssigningOverABlobReleasesItsBufferAndTakesTheNewKind) {
  unsigned char const bytes[] = {1, 2, 3};
  VornAttribute target(W(u"data"), bytes, 3);
  VornAttribute const text(W(u"note"), W(u"hello"));
  target = text;  // the leak check of the sanitizer build sees a buffer kept here
  EXPECT_EQ(target.DataType(), String);
  EXPECT_EQ(U16(target.ValueString()), u"hello");
  EXPECT_EQ(target.Length(), 5);
  target = VornAttribute(W(u"data"), bytes, 3);
  target = VornAttribute(W(u"count"), 4);
  EXPECT_EQ(target.DataType(), Int32);
  EXPECT_EQ(target.ValueInt32(), 4);
}

TEST(AttributeValueRelease, CopiesKeepEveryScalarKindAndValue) {
  VornAttribute const sources[] = {
      VornAttribute(W(u"i"), -5),          VornAttribute(W(u"t"), true),
      VornAttribute(W(u"f"), false),       VornAttribute(W(u"l"), -(1LL << 40)),
      VornAttribute(W(u"d"), 2.5)};
  for (VornAttribute const& source : sources) {
    VornAttribute const copy(source);
    EXPECT_EQ(copy.DataType(), source.DataType());
    EXPECT_EQ(copy.ValueInt64(), source.ValueInt64());
    EXPECT_EQ(U16(copy.Name.c_str()), U16(source.Name.c_str()));
  }
  EXPECT_TRUE(VornAttribute(sources[1]).ValueBool());
  EXPECT_FALSE(VornAttribute(sources[2]).ValueBool());
}

TEST(AttributeValueRelease, ACopyOfABlobWithoutBufferHoldsZeroBytesOfItsLength) {
  VornAttribute broken;
  unsigned char const bytes[] = {7, 7, 7, 7};
  {
    ScopedFailure failure(Channel::ArrayNew, 1);
    EXPECT_TRUE(ThrowsVornException([&] { broken.SetValue(bytes, 4); }, "Out of Memory", 5005));
  }
  ASSERT_EQ(broken.ValueBLOB(), nullptr);
  VornAttribute const copy(broken);
  ASSERT_EQ(copy.DataType(), BLOB);
  ASSERT_EQ(copy.Length(), 4);
  unsigned char const zeros[4] = {};
  EXPECT_EQ(std::memcmp(copy.ValueBLOB(), zeros, 4), 0);
}

TEST(AttributeValueRelease, NullNarrowTextsStoreTheEmptyText) {
  VornAttribute const value(W(u"name"), static_cast<char const*>(nullptr));
  EXPECT_EQ(value.DataType(), String);
  EXPECT_EQ(value.Length(), 0);
  EXPECT_EQ(U16(value.ValueString()), u"");
  VornAttribute const both(static_cast<char const*>(nullptr), static_cast<char const*>(nullptr));
  EXPECT_EQ(U16(both.Name.c_str()), u"");
  EXPECT_EQ(both.DataType(), String);
}

TEST(AttributeCollectionLookup, ANullKeyMatchesNothing) {
  VornAttributeCollection attributes;
  attributes.Add(W(u""), 1);
  EXPECT_EQ(attributes.GetIndexOfKey(nullptr), -1);
  EXPECT_FALSE(attributes.KeyExists(nullptr));
  EXPECT_TRUE(ThrowsVornException([&] { attributes.Remove(nullptr); },
                                  "No Attribute of this name", -1));
  EXPECT_EQ(attributes.Count(), 1u);
}

TEST(AttributeCollectionLookup, TurningCaselessOffRestoresExactMatching) {
  VornAttributeCollection attributes;
  attributes.Add(W(u"Area"), 3);
  attributes.SetCaselessCompare(true);
  EXPECT_EQ(attributes.GetIndexOfKey(W(u"AREA")), 0);
  attributes.SetCaselessCompare(false);
  EXPECT_FALSE(attributes.IsCaselessCompare());
  EXPECT_EQ(attributes.GetIndexOfKey(W(u"AREA")), -1);
  EXPECT_EQ(attributes.GetIndexOfKey(W(u"Area")), 0);
}

}  // namespace
