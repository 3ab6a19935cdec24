// Reading the containers backwards and through const references, the constructors that
// take an allocator, and the rarer insert and resize forms: each alias must see the same
// elements as the forward, mutable path the collections use.
#include <vorn/containers/list.h>
#include <vorn/containers/vector.h>

#include <gtest/gtest.h>

#include <iterator>
#include <vector>

#include "containers/tracked.h"
#include "support/wide.h"

namespace {

using vorn_test::CopyError;
using vorn_test::Tracked;
using vorn_test::TrackedLifetime;
using vorn_test::W;
using Ints = std::vector<int>;

struct Cell {
  int value;
};

Vorn::list<Cell> MakeList(Ints const& values) {
  Vorn::list<Cell> list;
  for (int v : values) list.insert(list.end())->value = v;
  return list;
}

template <class V>
Ints Values(V const& v) {
  Ints values;
  for (auto it = v.begin(); it != v.end(); ++it) values.push_back(*it);
  return values;
}

TEST(ListTraversal, BothIteratorKindsStepBackwardsAndPostfixYieldsThePositionBefore) {
  Vorn::list<Cell> list = MakeList({1, 2, 3});
  Ints backward;
  for (auto it = list.end(); it != list.begin();) backward.push_back((--it)->value);
  EXPECT_EQ(backward, (Ints{3, 2, 1}));

  auto it = std::prev(list.end());
  EXPECT_EQ((it--)->value, 3);
  EXPECT_EQ(it->value, 2);

  Vorn::list<Cell> const& view = list;
  auto c = view.begin();
  EXPECT_EQ((c++)->value, 1);
  EXPECT_EQ(c->value, 2);
  EXPECT_EQ((c--)->value, 2);
  EXPECT_EQ(c, view.begin());
  EXPECT_EQ((--view.end())->value, 3);

  Ints reversed;
  for (auto r = list.rbegin(); r != list.rend(); ++r) reversed.push_back(r->value);
  EXPECT_EQ(reversed, (Ints{3, 2, 1}));
}

TEST(ListTraversal, ConstFrontAndBackReadTheEnds) {
  Vorn::list<Cell> list = MakeList({4, 5, 6});
  Vorn::list<Cell> const& view = list;
  EXPECT_EQ(view.front().value, 4);
  EXPECT_EQ(view.back().value, 6);
  list.back().value = 9;
  EXPECT_EQ(view.back().value, 9);
}

TEST(ListTraversal, RemoveTellsApartTextsOfTheSameLength) {
  Vorn::list<stringbase<unsigned short, wstringfuncs>> list;
  for (char16_t const* text : {u"abc", u"abd", u"abc"}) *list.insert(list.end()) = W(text);
  list.remove(stringbase<unsigned short, wstringfuncs>(W(u"abc")));
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(vorn_test::U16(list.front().c_str()), u"abd");
}

TEST(VectorConstruction, AllocatorFormsBuildTheSameAsThePlainOnes) {
  Vorn::allocator const allocator;
  Vorn::vector<int> const empty(allocator);
  EXPECT_TRUE(empty.empty());
  Vorn::vector<int> const zeros(3u, allocator);
  EXPECT_EQ(Values(zeros), (Ints{0, 0, 0}));
  Vorn::vector<int> const sevens(2u, 7, allocator);
  EXPECT_EQ(Values(sevens), (Ints{7, 7}));
  Vorn::vector<int> const nines(2u, 9);
  EXPECT_EQ(Values(nines), (Ints{9, 9}));
}

TEST(VectorConstruction, ResizeWithAValueFillsOrCutsTheTailAndKeepsTheCapacity) {
  Vorn::vector<int> v;
  ASSERT_TRUE(v.resize(4, 5));
  unsigned int const capacity = v.capacity();
  ASSERT_TRUE(v.resize(2, 8));
  EXPECT_EQ(Values(v), (Ints{5, 5}));
  EXPECT_EQ(v.capacity(), capacity);
}

TEST(VectorConstruction, EndsAndReverseIterationAgreeOnBothPaths) {
  Vorn::vector<int> v;
  for (int i = 1; i <= 3; ++i) ASSERT_TRUE(v.push_back(i));
  v.front() = 10;
  Vorn::vector<int> const& view = v;
  EXPECT_EQ(view.front(), 10);
  EXPECT_EQ(view.back(), 3);
  EXPECT_EQ(Ints(view.rbegin(), view.rend()), (Ints{3, 2, 10}));
  EXPECT_EQ(Ints(v.rbegin(), v.rend()), (Ints{3, 2, 10}));
}

TEST_F(TrackedLifetime, VectorInsertOfItsOwnElementReadsItBeforeShifting) {
  Vorn::vector<Tracked> v;
  ASSERT_TRUE(v.reserve(10));
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(v.push_back(Tracked(i)));
  ASSERT_TRUE(v.insert(v.begin() + 1, 2u, v[2]));  // the value moves while the tail shifts
  EXPECT_EQ(Values(v), (Ints{0, 2, 2, 1, 2}));
  ASSERT_TRUE(v.insert(v.begin() + 3, 1u, v[0]));  // the value stays where it is
  EXPECT_EQ(Values(v), (Ints{0, 2, 2, 0, 1, 2}));
}

TEST_F(TrackedLifetime, VectorCopyThatThrowsWhileShiftingTheTailKeepsAPrefix) {
  Vorn::vector<Tracked> v;
  ASSERT_TRUE(v.reserve(10));
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(v.push_back(Tracked(i)));
  Tracked::throwAfter = 2;  // the second element moved up, from the back, fails
  EXPECT_THROW(v.insert(v.begin() + 1, 1u, Tracked(7)), CopyError);
  Ints const kept = Values(v);
  ASSERT_GE(kept.size(), 1u) << "the elements before pos survive";
  ASSERT_LE(kept.size(), 4u);
  Ints prefix{0, 1, 2, 3};
  prefix.resize(kept.size());
  EXPECT_EQ(kept, prefix);
}

}  // namespace
