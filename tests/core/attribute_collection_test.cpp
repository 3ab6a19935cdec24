#include <vorn/core/attribute_collection.h>

#include <cstdint>
#include <ctime>
#include <string>
#include <type_traits>
#include <utility>

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

template <class Value, class = void>
struct CanAdd : std::false_type {};
template <class Value>
struct CanAdd<Value, std::void_t<decltype(std::declval<VornAttributeCollection&>().Add(
                         std::declval<unsigned short const*>(), std::declval<Value>()))>>
    : std::true_type {};
// A wide name with narrow text (or any other pointer) would silently add a Bool.
static_assert(!CanAdd<char const (&)[5]>::value && !CanAdd<char16_t const*>::value);
static_assert(CanAdd<unsigned short const*>::value && CanAdd<std::int64_t>::value);

// The names in iteration order, forwards and backwards, through the const interface.
std::u16string Names(VornAttributeCollection const& c) {
  std::u16string names;
  for (auto it = c.begin(); it != c.end(); ++it) names += U16((*it)->Name.c_str());
  names += u"|";
  for (auto it = c.rbegin(); it != c.rend(); ++it) names += U16((*it)->Name.c_str());
  return names;
}

TEST(AttributeCollection, EveryAddAppendsItsKindInOrder) {
  VornAttributeCollection c;
  unsigned char const bytes[2] = {1, 2};
  c.Add(W(u"a"), W(u"text"));
  c.Add("b", "narrow");
  c.Add(W(u"c"), 1.5);
  c.Add(W(u"d"), 1);
  c.Add(W(u"e"), std::int64_t{1} << 40);
  c.Add(W(u"f"), true);
  c.Add(W(u"g"), VornDateTime{1, 2, 3, 4, 5, 2006});
  c.Add(W(u"h"), std::tm{});
  c.Add(W(u"i"), bytes, 2);
  c.Add(VornAttribute(W(u"j"), 2LL));
  std::string kinds;
  for (unsigned int i = 0; i < c.Count(); ++i) kinds += std::to_string(c[i].DataType());
  EXPECT_EQ(kinds, "0012345563");
  EXPECT_EQ(Names(c), u"abcdefghij|jihgfedcba");
  EXPECT_EQ(U16(c[1].ValueString()), u"narrow");
}

TEST(AttributeCollection, PositionsAreCheckedAndNamesNeedNotBeUnique) {
  VornAttributeCollection c;
  EXPECT_EQ(c.GetIndexOfKey(W(u"A")), -1);
  EXPECT_FALSE(c.KeyExists(W(u"A")) || c.IsCaselessCompare());
  EXPECT_TRUE(ThrowsVornException([&] { (void)c[0]; }, "Index out of range", 5002));
  for (int value : {1, 2, 3}) c.Add(W(u"A"), value);
  c.Add(W(u"B"), 4);
  EXPECT_EQ(c.GetIndexOfKey(W(u"A")), 0);  // the earliest of the duplicates
  c.Remove(W(u"A"));
  c.RemoveAt(1);
  EXPECT_EQ(c[0].ValueInt32() * 10 + c[1].ValueInt32(), 24);
  EXPECT_TRUE(ThrowsVornException([&] { c.RemoveAt(2); }, "Index out of range", 5002));
  EXPECT_TRUE(ThrowsVornException([&] { c.RemoveReference(2); }, "Index out of range", 5002));
  EXPECT_TRUE(ThrowsVornException([&] { c.Remove(W(u"C")); }, "No Attribute of this name", -1));
  EXPECT_EQ(c.Count(), 2u);
}

TEST(AttributeCollection, CaselessSettingBelongsToTheCollectionNotItsContents) {
  VornAttributeCollection caseless;
  caseless.Add(W(u"Area"), 1);
  EXPECT_EQ(caseless.GetIndexOfKey(W(u"AREA")), -1);
  caseless.SetCaselessCompare(true);
  EXPECT_EQ(caseless.GetIndexOfKey(W(u"AREA")), 0);
  VornAttributeCollection const copy(caseless);  // a copy compares exactly
  EXPECT_FALSE(copy.IsCaselessCompare());
  EXPECT_EQ(copy.GetIndexOfKey(W(u"AREA")), -1);
  EXPECT_NE(&copy[0], &caseless[0]);
  VornAttributeCollection exact;
  exact.Add(W(u"B"), 2);
  caseless = exact;  // the target stays caseless
  caseless.Remove(W(u"b"));
  EXPECT_TRUE(caseless.IsCaselessCompare() && caseless.Count() == 0);
}

TEST(AttributeCollection, RangesFollowTheirNullRulesAndSelfAssignmentEmpties) {
  VornAttributeCollection c;
  c.AddRange(nullptr, 0);
  c.AddRange(nullptr, -1);
  EXPECT_EQ(c.Count(), 0u);
  EXPECT_TRUE(ThrowsVornException([&] { c.AddRange(nullptr, 2); }, "Parameter is NULL", 5003));
  EXPECT_TRUE(ThrowsVornException([] { VornAttributeCollection bad(nullptr, 0); },
                                  "Parameter is NULL", 5003));
  VornAttribute attrs[2] = {VornAttribute(W(u"A"), 1), VornAttribute(W(u"B"), 2)};
  EXPECT_EQ(Names(VornAttributeCollection(attrs, 2)), u"AB|BA");
  VornAttributeCollection::AttributeVector v;
  ASSERT_TRUE(v.push_back(attrs[1]) && v.push_back(attrs[0]));
  c.AddRange(v);
  c.AddRange(c);  // one copy of what it held before the call
  EXPECT_EQ(Names(c), u"BABA|ABAB");
  VornAttributeCollection& alias = c;
  c = alias;  // cleared before it is read
  EXPECT_EQ(c.Count(), 0u);
}

TEST(AttributeCollection, AddStoresACopyAndAddReferenceAdopts) {
  VornAttributeCollection c;
  VornAttribute mine(W(u"A"), 1);
  c.Add(mine);
  (*c.begin())->SetValue(9);
  EXPECT_EQ(mine.ValueInt32(), 1);
  EXPECT_TRUE(ThrowsVornException([&] { c.AddReference(nullptr); }, "Parameter is NULL", 5003));
  VornAttribute* const adopted = new VornAttribute(W(u"B"), 2);
  c.AddReference(adopted);
  EXPECT_EQ(&c[1], adopted);
  c.RemoveReference(1);
  EXPECT_EQ(adopted->ValueInt32(), 2);  // detached, not deleted: the caller's again
  c.AddReference(adopted);
  c.Clear();  // deletes the adopted attribute too (the leak check would catch it)
  EXPECT_EQ(c.Count(), 0u);
}

// Under the leak check: whichever allocation fails, nothing made before it is left over.
TEST(AttributeCollection, ExhaustionWhileAddingIsParameterIsNullAndKeepsEarlierAttributes) {
  VornAttributeCollection c;
  c.Add(W(u"A"), 1);
  c.Add(W(u"B"), W(u"text"));
  for (unsigned long n : {1ul, 2ul}) {  // the attribute, then its list node
    ScopedFailure failure(Channel::NothrowNew, n);
    EXPECT_TRUE(ThrowsVornException([&] { c.Add(W(u"C"), 3); }, "Parameter is NULL", 5003));
  }
  for (unsigned long n : {1ul, 2ul, 3ul, 4ul}) {  // a copy that fails part way
    ScopedFailure failure(Channel::NothrowNew, n);
    EXPECT_TRUE(ThrowsVornException([&] { VornAttributeCollection copy(c); },
                                    "Parameter is NULL", 5003));
  }
  EXPECT_EQ(Names(c), u"AB|BA");
  unsigned char const bytes[3] = {1, 2, 3};
  ScopedFailure failure(Channel::ArrayNew, 1);
  EXPECT_TRUE(ThrowsVornException([&] { c.Add(W(u"D"), bytes, 3); }, "Out of Memory", 5005));
  EXPECT_EQ(c.Count(), 2u);
}

}  // namespace
