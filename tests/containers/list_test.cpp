#include <vorn/containers/list.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "containers/tracked.h"
#include "support/alloc_failure.h"
#include "support/wide.h"

namespace {

using vorn_test::Channel;
using vorn_test::CopyError;
using vorn_test::ScopedFailure;
using vorn_test::Tracked;
using vorn_test::TrackedLifetime;
using vorn_test::W;
using WString = stringbase<unsigned short, wstringfuncs>;
using IntList = Vorn::list<int>;
using Ints = std::vector<int>;

// Appends the values in order through insert(end()), the way the collections do.
template <class T>
void Append(Vorn::list<T>& list, Ints const& values) {
  for (int v : values) {
    auto const it = list.insert(list.end());
    ASSERT_NE(it, list.end());
    *it = T(v);
  }
}

IntList Make(Ints const& values) {
  IntList list;
  Append(list, values);
  return list;
}

// The contents, after checking that the ring is consistent both ways and matches size().
Ints Values(IntList const& list) {
  Ints forward(list.begin(), list.end());
  Ints backward(list.rbegin(), list.rend());
  std::reverse(backward.begin(), backward.end());
  EXPECT_EQ(forward, backward);
  EXPECT_EQ(forward.size(), list.size());
  EXPECT_EQ(list.empty(), forward.empty());
  return forward;
}

IntList::iterator At(IntList& list, int index) { return std::next(list.begin(), index); }

TEST(List, InsertGivesAValueInitialisedElementToFill) {
  Vorn::list<int*> pointers;
  EXPECT_EQ(pointers.begin(), pointers.end());
  auto const it = pointers.insert(pointers.end());
  ASSERT_NE(it, pointers.end());
  EXPECT_EQ(*it, nullptr);
  Vorn::list<WString> strings{Vorn::allocator()};
  EXPECT_TRUE(strings.insert(strings.end())->empty());
  IntList numbers = Make({1, 2});
  *numbers.insert(At(numbers, 1)) += 5;
  EXPECT_EQ(Values(numbers), (Ints{1, 5, 2}));
}

TEST(List, RangeInsertCopyAndAssignKeepTheOrder) {
  IntList source = Make({1, 2, 3});
  IntList list = Make({9});
  EXPECT_TRUE(list.insert(list.begin(), source.begin(), source.end()));
  IntList const& constSource = source;
  EXPECT_TRUE(list.insert(list.end(), std::next(constSource.begin()), constSource.end()));
  EXPECT_TRUE(list.insert(list.end(), source.end(), source.end()));
  EXPECT_EQ(Values(list), (Ints{1, 2, 3, 9, 2, 3}));
  EXPECT_EQ(Values(IntList(constSource)), (Ints{1, 2, 3}));
  list = source;
  EXPECT_TRUE(list.assign(list));
  EXPECT_EQ(Values(list), (Ints{1, 2, 3}));
}

TEST(List, EraseRemoveAndAccessors) {
  IntList list = Make({7, 1, 7, 7, 2, 3, 4});
  list.remove(list.front());  // every equal element, adjacent ones too; value is in the list
  EXPECT_EQ(*list.erase(At(list, 1)), 3);
  auto const last = At(list, 1);
  EXPECT_EQ(list.erase(list.begin(), last), last);
  EXPECT_EQ(Values(list), (Ints{3, 4}));
  EXPECT_EQ(list.front(), 3);
  EXPECT_EQ(list.back(), 4);
  list.pop_front();
  list.pop_back();
  EXPECT_TRUE(Values(list).empty());
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
  EXPECT_EQ(Values(list), (Ints{1, 2, 3}));
  EXPECT_TRUE(Values(empty).empty());
}

TEST(List, SpliceRelinksAndMovesExactlyTheNodeCount) {
  IntList list = Make({1, 2, 3});
  list.splice(list.begin(), list, At(list, 1), list.end());
  list.splice(list.end(), list, list.begin());
  EXPECT_EQ(Values(list), (Ints{3, 1, 2}));
  IntList other = Make({4, 5, 6, 7});
  list.splice(At(list, 1), other, At(other, 1), At(other, 3));
  list.splice(list.begin(), other, other.begin());
  EXPECT_EQ(Values(other), (Ints{7}));
  list.splice(list.end(), other);
  EXPECT_EQ(Values(list), (Ints{4, 3, 5, 6, 1, 2, 7}));
  EXPECT_TRUE(Values(other).empty());
}

TEST(List, SwapRelinksBothRings) {
  IntList a = Make({1, 2});
  IntList b;
  a.swap(b);
  a.swap(a);
  EXPECT_TRUE(Values(a).empty());
  EXPECT_EQ(Values(b), (Ints{1, 2}));
  Append(a, {3});
  a.swap(b);
  EXPECT_EQ(Values(a), (Ints{1, 2}));
  EXPECT_EQ(Values(b), (Ints{3}));
}

TEST(ListExhaustion, InsertAndAssignReportFailure) {
  IntList list = Make({1});
  IntList source = Make({2, 3, 4});
  for (unsigned long n = 1; n <= 3; ++n) {
    ScopedFailure failure(Channel::NothrowNew, n);
    EXPECT_FALSE(list.assign(source));
  }
  {
    ScopedFailure failure(Channel::NothrowNew);
    EXPECT_EQ(list.insert(list.begin()), list.end());
    list = source;
  }
  EXPECT_EQ(Values(list), (Ints{1})) << "all or nothing";
  {
    ScopedFailure failure(Channel::NothrowNew, 3);
    EXPECT_FALSE(list.insert(list.end(), source.begin(), source.end()));
  }
  EXPECT_EQ(Values(list), (Ints{1, 2, 3})) << "range insert keeps what it inserted";
  vorn_test::FailNth(Channel::NothrowNew, 3);
  IntList const copy(source);
  vorn_test::Reset();
  EXPECT_EQ(Values(copy), (Ints{2, 3})) << "a copy is partial";
}

TEST_F(TrackedLifetime, ListDestroysEveryElementExactlyOnce) {
  Vorn::list<Tracked> list;
  Append(list, {1, 2, 1, 3, 4});
  list.remove(Tracked(1));
  EXPECT_EQ(Tracked::live, 3);
  list.erase(list.begin());
  list.pop_back();
  Vorn::list<Tracked> copy(list);
  EXPECT_TRUE(copy.assign(list));
  EXPECT_EQ(Tracked::live, 2);
  Tracked::throwAfter = 1;  // a throwing copy frees its node again
  EXPECT_THROW(copy.assign(list), CopyError);
  Tracked::throwAfter = 2;
  Append(list, {5});
  EXPECT_THROW(copy.insert(copy.end(), list.begin(), list.end()), CopyError);
  EXPECT_EQ(copy.size(), 2u);
  EXPECT_EQ(copy.back().value, 3);
  copy.clear();
  EXPECT_EQ(Tracked::live, 2);
}

TEST(WideStringList, RemoveComparesTheText) {
  Vorn::list<WString> list;
  for (char16_t const* text : {u"alpha", u"beta", u"alpha"}) *list.insert(list.end()) = W(text);
  list.remove(WString(W(u"alpha")));  // equal text in other buffers
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(vorn_test::U16(list.front().c_str()), u"beta");
}

}  // namespace
