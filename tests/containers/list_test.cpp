#include <vorn/containers/list.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <vector>

#include "containers/tracked.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::CopyError;
using vorn_test::ScopedFailure;
using vorn_test::Tracked;
using vorn_test::W;
using WString = stringbase<unsigned short, wstringfuncs>;
using IntList = Vorn::list<int>;

static_assert(std::is_same<std::iterator_traits<IntList::iterator>::iterator_category,
                           std::bidirectional_iterator_tag>::value);
static_assert(std::is_convertible<IntList::iterator, IntList::const_iterator>::value);
static_assert(!std::is_convertible<IntList::const_iterator, IntList::iterator>::value);

// Appends the values in order through insert(end()).
template <class T>
void Append(Vorn::list<T>& list, std::vector<int> const& values) {
  for (int v : values) {
    auto const it = list.insert(list.end());
    ASSERT_NE(it, list.end());
    *it = T(v);
  }
}

IntList Make(std::vector<int> const& values) {
  IntList list;
  Append(list, values);
  return list;
}

// The contents, after checking that the ring is consistent both ways and matches size().
std::vector<int> Values(IntList const& list) {
  std::vector<int> forward(list.begin(), list.end());
  std::vector<int> backward(list.rbegin(), list.rend());
  std::reverse(backward.begin(), backward.end());
  EXPECT_EQ(forward, backward);
  EXPECT_EQ(forward.size(), list.size());
  EXPECT_EQ(list.empty(), forward.empty());
  return forward;
}

IntList::iterator At(IntList& list, int index) { return std::next(list.begin(), index); }

TEST(List, NewListIsEmpty) {
  IntList list;
  EXPECT_EQ(list.begin(), list.end());
  EXPECT_EQ(list.size(), 0u);
  EXPECT_TRUE(list.empty());
  IntList const other{Vorn::allocator()};
  EXPECT_EQ(other.begin(), other.end());
}

TEST(List, InsertGivesAValueInitialisedElementToFill) {
  int target = 3;
  Vorn::list<int*> pointers;
  auto const it = pointers.insert(pointers.end());
  ASSERT_NE(it, pointers.end());
  EXPECT_EQ(*it, nullptr);
  *it = &target;
  EXPECT_EQ(pointers.front(), &target);
  EXPECT_EQ(pointers.size(), 1u);

  IntList numbers = Make({1, 2});
  *numbers.insert(numbers.begin()) += 5;
  EXPECT_EQ(Values(numbers), (std::vector<int>{5, 1, 2}));

  Vorn::list<WString> strings;
  auto const text = strings.insert(strings.end());
  ASSERT_NE(text, strings.end());
  EXPECT_TRUE(text->empty());
}

TEST(List, RangeInsertCopiesInOrder) {
  IntList source = Make({1, 2, 3});
  IntList list = Make({9});
  EXPECT_TRUE(list.insert(list.begin(), source.begin(), source.end()));
  IntList const& constSource = source;
  EXPECT_TRUE(list.insert(list.end(), std::next(constSource.begin()), constSource.end()));
  EXPECT_TRUE(list.insert(list.end(), source.end(), source.end()));
  EXPECT_EQ(Values(list), (std::vector<int>{1, 2, 3, 9, 2, 3}));
}

TEST(List, EraseAndAccessors) {
  IntList list = Make({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(*list.erase(At(list, 1)), 3);
  auto const last = At(list, 3);
  EXPECT_EQ(list.erase(list.begin(), last), last);
  EXPECT_EQ(Values(list), (std::vector<int>{5, 6}));
  list.pop_front();
  EXPECT_EQ(list.front(), 6);
  EXPECT_EQ(list.back(), 6);
  list.pop_back();
  EXPECT_TRUE(Values(list).empty());
  IntList reversed = Make({1, 2, 3});
  EXPECT_EQ(std::vector<int>(reversed.rbegin(), reversed.rend()), (std::vector<int>{3, 2, 1}));
  EXPECT_EQ(std::find(reversed.begin(), reversed.end(), 2), At(reversed, 1));
  IntList::const_iterator const converted = reversed.begin();
  EXPECT_TRUE(converted == reversed.begin());
  Vorn::allocator const& allocator = reversed.get_allocator();
  (void)allocator;
}

TEST(List, RemoveErasesEveryEqualElement) {
  int a = 0;
  int b = 0;
  Vorn::list<int*> list;
  for (int* p : {&a, &a, &b, &a, &b, &a}) *list.insert(list.end()) = p;
  list.remove(&a);
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(list.front(), &b);
  EXPECT_EQ(list.back(), &b);

  IntList numbers = Make({7, 1, 7, 7, 2});
  numbers.remove(numbers.front());  // the value lives in the list itself
  EXPECT_EQ(Values(numbers), (std::vector<int>{1, 2}));
  numbers.remove(5);
  EXPECT_EQ(Values(numbers), (std::vector<int>{1, 2}));
}

TEST(List, SpliceNoOps) {
  IntList list = Make({1, 2, 3});
  IntList empty;
  list.splice(list.begin(), list);
  list.splice(list.begin(), empty);
  list.splice(At(list, 2), list, At(list, 1));  // pos right after it
  list.splice(At(list, 1), list, At(list, 1));  // pos is it
  list.splice(list.begin(), empty, empty.end());
  list.splice(list.begin(), list, At(list, 1), At(list, 1));
  list.splice(At(list, 2), list, list.begin(), At(list, 2));  // pos is last
  list.splice(list.begin(), list, list.begin(), At(list, 2));  // pos is first
  EXPECT_EQ(Values(list), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(Values(empty).empty());
}

TEST(List, SpliceWithinOneListKeepsTheSize) {
  IntList list = Make({1, 2, 3, 4, 5});
  list.splice(list.begin(), list, At(list, 3), list.end());
  EXPECT_EQ(Values(list), (std::vector<int>{4, 5, 1, 2, 3}));
  list.splice(list.end(), list, list.begin());
  EXPECT_EQ(Values(list), (std::vector<int>{5, 1, 2, 3, 4}));
}

TEST(List, SpliceBetweenListsMovesTheCount) {
  IntList list = Make({1, 2});
  IntList other = Make({3, 4, 5, 6});
  list.splice(At(list, 1), other, At(other, 1), At(other, 3));
  EXPECT_EQ(Values(list), (std::vector<int>{1, 4, 5, 2}));
  EXPECT_EQ(Values(other), (std::vector<int>{3, 6}));
  list.splice(list.begin(), other, other.begin());
  EXPECT_EQ(Values(list), (std::vector<int>{3, 1, 4, 5, 2}));
  list.splice(list.end(), other);
  EXPECT_EQ(Values(list), (std::vector<int>{3, 1, 4, 5, 2, 6}));
  EXPECT_TRUE(Values(other).empty());
  other.splice(other.end(), list);
  EXPECT_EQ(Values(other).size(), 6u);
  EXPECT_TRUE(Values(list).empty());
}

TEST(List, SwapRelinksBothRings) {
  IntList a = Make({1, 2});
  IntList b = Make({3});
  a.swap(b);
  EXPECT_EQ(Values(a), (std::vector<int>{3}));
  EXPECT_EQ(Values(b), (std::vector<int>{1, 2}));
  IntList empty;
  a.swap(empty);
  EXPECT_TRUE(Values(a).empty());
  EXPECT_EQ(Values(empty), (std::vector<int>{3}));
  a.swap(empty);
  EXPECT_EQ(Values(a), (std::vector<int>{3}));
  EXPECT_TRUE(Values(empty).empty());
  IntList other;
  empty.swap(other);
  b.swap(b);
  EXPECT_TRUE(Values(empty).empty());
  EXPECT_EQ(Values(b), (std::vector<int>{1, 2}));
}

TEST(List, CopyAndAssign) {
  IntList const source = Make({1, 2, 3});
  IntList copy(source);
  EXPECT_EQ(Values(copy), (std::vector<int>{1, 2, 3}));
  IntList target = Make({9, 9});
  target = source;
  EXPECT_EQ(Values(target), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(target.assign(target));
  EXPECT_EQ(Values(target), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(target.assign(IntList()));
  EXPECT_TRUE(Values(target).empty());
}

TEST(ListExhaustion, InsertReportsFailureAndKeepsWhatWasInserted) {
  IntList list = Make({1});
  IntList const source = Make({2, 3, 4});
  {
    ScopedFailure failure(Channel::NothrowNew, 1);
    EXPECT_EQ(list.insert(list.begin()), list.end());
  }
  EXPECT_EQ(Values(list), (std::vector<int>{1}));
  {
    ScopedFailure failure(Channel::NothrowNew, 3);
    EXPECT_FALSE(list.insert(list.end(), source.begin(), source.end()));
  }
  EXPECT_EQ(Values(list), (std::vector<int>{1, 2, 3}));
}

TEST(ListExhaustion, AssignIsAllOrNothing) {
  IntList const source = Make({4, 5, 6});
  IntList target = Make({1, 2});
  for (unsigned long n = 1; n <= 3; ++n) {
    {
      ScopedFailure failure(Channel::NothrowNew, n);
      EXPECT_FALSE(target.assign(source));
    }
    EXPECT_EQ(Values(target), (std::vector<int>{1, 2}));
  }
  {
    ScopedFailure failure(Channel::NothrowNew);
    target = source;
  }
  EXPECT_EQ(Values(target), (std::vector<int>{1, 2}));
}

TEST(ListExhaustion, CopyIsPartial) {
  IntList const source = Make({4, 5, 6});
  ScopedFailure failure(Channel::NothrowNew, 3);
  IntList copy(source);
  EXPECT_EQ(copy.size(), 2u);
  EXPECT_EQ(copy.back(), 5);
}

class ListLifetime : public ::testing::Test {
protected:
  void SetUp() override { Tracked::ResetCounters(); }
  void TearDown() override { EXPECT_EQ(Tracked::live, 0) << "an element leaked"; }
};

TEST_F(ListLifetime, EveryElementIsDestroyedExactlyOnce) {
  Vorn::list<Tracked> list;
  Append(list, {1, 2, 1, 3, 4});
  EXPECT_EQ(Tracked::live, 5);
  list.remove(Tracked(1));
  EXPECT_EQ(Tracked::live, 3);
  list.erase(list.begin());
  list.pop_back();
  EXPECT_EQ(Tracked::live, 1);
  Vorn::list<Tracked> copy(list);
  EXPECT_TRUE(copy.assign(list));
  EXPECT_EQ(Tracked::live, 2);
  Append(copy, {5, 6});
  copy.clear();
  EXPECT_EQ(Tracked::live, 1);
}

TEST_F(ListLifetime, CopyThatThrowsFreesItsNode) {
  Vorn::list<Tracked> source;
  Append(source, {1, 2, 3});
  Vorn::list<Tracked> target;
  Append(target, {7});
  Tracked::throwAfter = 2;
  EXPECT_THROW(target.assign(source), CopyError);
  ASSERT_EQ(target.size(), 1u);
  EXPECT_EQ(target.front().value, 7);
  Tracked::throwAfter = 2;
  EXPECT_THROW(target.insert(target.end(), source.begin(), source.end()), CopyError);
  EXPECT_EQ(target.size(), 2u);
  EXPECT_EQ(target.back().value, 1);
  EXPECT_EQ(Tracked::live, 5);
}

TEST(WideStringList, HoldsAndComparesText) {
  Vorn::list<WString> list;
  for (char16_t const* text : {u"alpha", u"beta", u"alpha"}) {
    auto const it = list.insert(list.end());
    ASSERT_NE(it, list.end());
    *it = W(text);
  }
  Vorn::list<WString> copy(list);
  EXPECT_EQ(copy.size(), 3u);
  copy.remove(WString(W(u"alpha")));  // equal text, different buffer
  ASSERT_EQ(copy.size(), 1u);
  EXPECT_EQ(vorn_test::U16(copy.front().c_str()), u"beta");
  list.splice(list.begin(), copy);
  EXPECT_EQ(vorn_test::U16(list.front().c_str()), u"beta");
  list.erase(list.begin());
  EXPECT_EQ(list.size(), 3u);
  EXPECT_EQ(vorn_test::U16(list.back().c_str()), u"alpha");
}

}  // namespace
