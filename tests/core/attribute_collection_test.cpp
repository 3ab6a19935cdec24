#include <vorn/core/attribute_collection.h>

#include <cstdint>
#include <ctime>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/wide.h"
#include "support/vorn_exception_matcher.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;
using vorn_test::ThrowsVornException;
using vorn_test::U16;
using vorn_test::W;

template <class Name, class Value, class = void>
struct CanAdd : std::false_type {};
template <class Name, class Value>
struct CanAdd<Name, Value,
              std::void_t<decltype(std::declval<VornAttributeCollection&>().Add(
                  std::declval<Name>(), std::declval<Value>()))>> : std::true_type {};

// A wide name with narrow text (or any other pointer) would silently add a Bool.
static_assert(!CanAdd<unsigned short const*, char const*>::value);
static_assert(!CanAdd<unsigned short const*, char const (&)[5]>::value);
static_assert(!CanAdd<unsigned short const*, char16_t const*>::value);
static_assert(CanAdd<unsigned short const*, unsigned short const*>::value);
static_assert(CanAdd<char const*, char const*>::value);

// The names in iteration order, forwards and backwards, through the const interface.
std::u16string Names(VornAttributeCollection const& c) {
  std::u16string names;
  for (auto it = c.begin(); it != c.end(); ++it) names += U16((*it)->Name.c_str());
  names += u"|";
  for (auto it = c.rbegin(); it != c.rend(); ++it) names += U16((*it)->Name.c_str());
  return names;
}

TEST(AttributeCollection, NewCollectionIsEmptyAndExact) {
  VornAttributeCollection const c;
  EXPECT_EQ(c.Count(), 0u);
  EXPECT_EQ(c.GetIndexOfKey(W(u"A")), -1);
  EXPECT_FALSE(c.KeyExists(W(u"A")));
  EXPECT_FALSE(c.IsCaselessCompare());
  EXPECT_TRUE(ThrowsVornException([&] { (void)c[0]; }, "Index out of range", 5002));
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
  VornDatatypeEnum const kinds[] = {String, String, Double, Int32, Int64,
                                    Bool,   DateTime, DateTime, BLOB, Int64};
  ASSERT_EQ(c.Count(), 10u);
  for (unsigned int i = 0; i < c.Count(); ++i) EXPECT_EQ(c[i].DataType(), kinds[i]) << i;
  EXPECT_EQ(Names(c), u"abcdefghij|jihgfedcba");
  EXPECT_EQ(U16(c[1].ValueString()), u"narrow");
}

TEST(AttributeCollection, DuplicateNamesAreKeptAndLookupsFindTheEarliest) {
  VornAttributeCollection c;
  c.Add(W(u"A"), 1);
  c.Add(W(u"A"), 2);
  EXPECT_EQ(c.Count(), 2u);
  EXPECT_EQ(c.GetIndexOfKey(W(u"A")), 0);
  c.Remove(W(u"A"));
  ASSERT_EQ(c.Count(), 1u);
  EXPECT_EQ(c[0].ValueInt32(), 2);
  EXPECT_TRUE(ThrowsVornException([&] { c.Remove(W(u"B")); }, "No Attribute of this name", -1));
  EXPECT_EQ(c.Count(), 1u);
}

TEST(AttributeCollection, CaselessSettingAffectsLaterLookups) {
  VornAttributeCollection c;
  c.Add(W(u"Area"), 1);
  EXPECT_EQ(c.GetIndexOfKey(W(u"AREA")), -1);
  c.SetCaselessCompare(true);
  EXPECT_TRUE(c.IsCaselessCompare());
  EXPECT_EQ(c.GetIndexOfKey(W(u"AREA")), 0);
  c.Remove(W(u"aREA"));
  EXPECT_EQ(c.Count(), 0u);
}

TEST(AttributeCollection, CopiesCompareExactlyAndAssignmentKeepsItsOwnSetting) {
  VornAttributeCollection caseless;
  caseless.SetCaselessCompare(true);
  caseless.Add(W(u"A"), 1);
  VornAttributeCollection const copy(caseless);
  EXPECT_FALSE(copy.IsCaselessCompare());
  EXPECT_EQ(copy.GetIndexOfKey(W(u"a")), -1);
  EXPECT_NE(&copy[0], &caseless[0]);

  VornAttributeCollection exact;
  exact.Add(W(u"B"), 2);
  caseless = exact;
  EXPECT_TRUE(caseless.IsCaselessCompare());
  EXPECT_EQ(caseless.GetIndexOfKey(W(u"b")), 0);
  EXPECT_EQ(caseless.Count(), 1u);
}

TEST(AttributeCollection, SelfAssignmentEmptiesAndSelfAppendDoubles) {
  VornAttributeCollection c;
  c.Add(W(u"A"), 1);
  c.Add(W(u"B"), 2);
  c.AddRange(c);
  EXPECT_EQ(Names(c), u"ABAB|BABA");
  VornAttributeCollection& alias = c;
  c = alias;
  EXPECT_EQ(c.Count(), 0u);
}

TEST(AttributeCollection, ArrayAndVectorRangesFollowTheirNullRules) {
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
  EXPECT_EQ(Names(VornAttributeCollection(v)), u"BA|AB");
  c.AddRange(v);
  EXPECT_EQ(Names(c), u"BA|AB");
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
  EXPECT_EQ(c.Count(), 1u);
  EXPECT_EQ(adopted->ValueInt32(), 2);  // detached, not deleted: the caller's again
  c.AddReference(adopted);
  c.Clear();  // deletes the adopted attribute too (a leak check would catch it)
  EXPECT_EQ(c.Count(), 0u);
}

TEST(AttributeCollection, PositionalRemovalChecksTheIndex) {
  VornAttributeCollection c;
  c.Add(W(u"A"), 1);
  c.Add(W(u"B"), 2);
  c.Add(W(u"C"), 3);
  c.RemoveAt(1);
  EXPECT_EQ(Names(c), u"AC|CA");
  EXPECT_TRUE(ThrowsVornException([&] { c.RemoveAt(2); }, "Index out of range", 5002));
  EXPECT_TRUE(ThrowsVornException([&] { c.RemoveReference(2); }, "Index out of range", 5002));
  EXPECT_EQ(c.Count(), 2u);
}

// Runs add with the n-th scalar new failing, for every n that the operation reaches,
// and then once without failure. Each failure must report 5003 and leave c as it was.
// Returns the number of failure points.
template <class Add>
unsigned long ExpectEveryNewFailureIsParameterIsNull(VornAttributeCollection& c, Add add) {
  unsigned int const before = c.Count();
  for (unsigned long n = 1;; ++n) {
    bool threw = false;
    bool fired;
    {
      ScopedFailure failure(Channel::NothrowNew, n);
      try {
        add();
      } catch (VornException const& e) {
        threw = e.ErrorCode() == 5003;
      }
      fired = vorn_test::Fired(Channel::NothrowNew);
    }
    if (!fired) return n - 1;
    EXPECT_TRUE(threw) << "allocation " << n;
    EXPECT_EQ(c.Count(), before) << "allocation " << n;
  }
}

TEST(AttributeCollection, ExhaustionWhileAddingIsParameterIsNullAndKeepsEarlierAttributes) {
  VornAttributeCollection c;
  c.Add(W(u"A"), 1);
  // The attribute, then the list node: a failed node releases the attribute again.
  EXPECT_EQ(ExpectEveryNewFailureIsParameterIsNull(c, [&] { c.Add(W(u"B"), W(u"text")); }), 2u);
  EXPECT_EQ(ExpectEveryNewFailureIsParameterIsNull(c, [&] { c.Add(VornAttribute(W(u"C"), 3)); }),
            2u);
  EXPECT_EQ(Names(c), u"ABC|CBA");
  // A copy that fails part way releases what it has copied.
  EXPECT_EQ(ExpectEveryNewFailureIsParameterIsNull(c, [&] { VornAttributeCollection copy(c); }),
            6u);

  unsigned char const bytes[3] = {1, 2, 3};
  ScopedFailure failure(Channel::ArrayNew, 1);
  EXPECT_TRUE(ThrowsVornException([&] { c.Add(W(u"D"), bytes, 3); }, "Out of Memory", 5005));
  EXPECT_EQ(c.Count(), 3u);
}

}  // namespace
