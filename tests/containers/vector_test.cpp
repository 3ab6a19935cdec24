#include <vorn/containers/vector.h>

#include <gtest/gtest.h>

#include <climits>
#include <vector>

#include "containers/tracked.h"
#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::CopyError;
using vorn_test::ScopedFailure;
using vorn_test::Tracked;

int Number(int v) { return v; }
int Number(Tracked const& v) { return v.value; }

template <class T, class G>
std::vector<int> Values(Vorn::vector<T, Vorn::allocator, G> const& v) {
  std::vector<int> out;
  for (T const* p = v.begin(); p != v.end(); ++p) out.push_back(Number(*p));
  return out;
}

// Appends 0, 1, ..., count - 1.
template <class V>
void Fill(V& v, int count) {
  using T = std::remove_reference_t<decltype(v[0])>;
  for (int i = 0; i < count; ++i) ASSERT_TRUE(v.push_back(T(i)));
}

// Begin, size, capacity and contents, to prove an operation changed nothing.
template <class T>
struct Snapshot {
  explicit Snapshot(Vorn::vector<T> const& v)
      : begin(v.begin()), size(v.size()), capacity(v.capacity()), values(Values(v)) {}
  bool operator==(Snapshot const& o) const {
    return begin == o.begin && size == o.size && capacity == o.capacity && values == o.values;
  }
  T const* begin;
  unsigned int size;
  unsigned int capacity;
  std::vector<int> values;
};

class VectorLifetime : public ::testing::Test {
protected:
  void SetUp() override { Tracked::ResetCounters(); }
  void TearDown() override { EXPECT_EQ(Tracked::live, 0) << "an element leaked"; }
};

TEST(Vector, GrowthAddsHalfTheSizeWithAFloorOfTen) {
  Vorn::vector<int> v;
  EXPECT_EQ(v.begin(), nullptr);
  std::vector<unsigned int> capacities;
  for (int i = 0; i < 74; ++i) {
    ASSERT_TRUE(v.push_back(i));
    if (capacities.empty() || capacities.back() != v.capacity()) capacities.push_back(v.capacity());
  }
  EXPECT_EQ(capacities, (std::vector<unsigned int>{10, 15, 22, 33, 49, 73, 109}));
  EXPECT_EQ(v.size(), 74u);
  EXPECT_EQ(v[73], 73);
}

TEST(Vector, GrowthPolicies) {
  EXPECT_EQ(Vorn::exponential_growth<10>::get_growth(33, 0, 1), 16u);
  EXPECT_EQ(Vorn::exponential_growth<10>::get_growth(33, 0, 20), 20u);
  Vorn::vector<int, Vorn::allocator, Vorn::incremental_growth<10>> v;
  ASSERT_TRUE(v.push_back(1));
  EXPECT_EQ(v.capacity(), 11u);
  for (int i = 0; i < 11; ++i) ASSERT_TRUE(v.push_back(i));
  EXPECT_EQ(v.capacity(), 22u);
}

TEST(Vector, SizedConstructorsGrowFromEmpty) {
  Vorn::vector<int> three(3);
  EXPECT_EQ(three.size(), 3u);
  EXPECT_EQ(three.capacity(), 10u);
  EXPECT_EQ(Values(three), (std::vector<int>{0, 0, 0}));

  Vorn::vector<int> filled(25, 7, Vorn::allocator());
  EXPECT_EQ(filled.capacity(), 25u);
  EXPECT_EQ(filled.back(), 7);

  Vorn::vector<int*> pointers(2);
  EXPECT_EQ(pointers[0], nullptr);
  EXPECT_EQ(pointers[1], nullptr);
}

TEST(Vector, CopiesAndAssignAllocateExactly) {
  Vorn::vector<int> v;
  Fill(v, 11);
  ASSERT_EQ(v.capacity(), 15u);

  Vorn::vector<int> copy(v);
  EXPECT_EQ(copy.capacity(), 11u);
  EXPECT_EQ(Values(copy), Values(v));

  Vorn::vector<int> assigned(40);
  assigned = v;
  EXPECT_EQ(assigned.capacity(), 11u);
  EXPECT_EQ(Values(assigned), Values(v));

  Vorn::vector<int> const empty;
  EXPECT_TRUE(assigned.assign(empty));
  EXPECT_EQ(assigned.size(), 0u);
  EXPECT_EQ(assigned.capacity(), 0u);
}

TEST(Vector, AssignToItselfKeepsTheElementsAndFitsTheCapacity) {
  Vorn::vector<int> v;
  Fill(v, 11);
  EXPECT_TRUE(v.assign(v));
  EXPECT_EQ(v.capacity(), 11u);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(Vector, ReserveIsExactAndNeverShrinks) {
  Vorn::vector<int> v;
  Fill(v, 3);
  int* const before = v.begin();
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  EXPECT_TRUE(v.reserve(4));
  EXPECT_EQ(v.capacity(), 10u);
  EXPECT_EQ(v.begin(), before);
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations);

  EXPECT_TRUE(v.reserve(12));
  EXPECT_EQ(v.capacity(), 12u);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2}));
}

TEST(Vector, ShrinkingKeepsTheCapacity) {
  Vorn::vector<int> v;
  Fill(v, 12);
  EXPECT_TRUE(v.resize(4));
  EXPECT_EQ(v.size(), 4u);
  EXPECT_EQ(v.capacity(), 15u);
  EXPECT_TRUE(v.resize(4));
  EXPECT_TRUE(v.resize(6, 9));
  EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3, 9, 9}));
  v.clear();
  EXPECT_TRUE(v.empty());
  EXPECT_EQ(v.capacity(), 15u);
}

TEST(Vector, InsertPlacesElementsBeforePos) {
  Vorn::vector<int> v;
  Fill(v, 4);
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  EXPECT_TRUE(v.insert(v.begin() + 1, 0u, 42));
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3}));

  EXPECT_TRUE(v.insert(v.begin() + 1, 2u, 7));
  EXPECT_EQ(Values(v), (std::vector<int>{0, 7, 7, 1, 2, 3}));
  int* const at = v.insert(v.begin() + 6, 8);
  EXPECT_EQ(at, v.begin() + 6);

  Fill(v, 3);  // size 10, full
  ASSERT_EQ(v.capacity(), 10u);
  int* const grown = v.insert(v.begin() + 2, 5);
  EXPECT_EQ(v.capacity(), 15u);
  EXPECT_EQ(grown, v.begin() + 2);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 7, 5, 7, 1, 2, 3, 8, 0, 1, 2}));
}

TEST(Vector, InsertingAnOwnElementCopiesItFirst) {
  Vorn::vector<int> v;
  Fill(v, 4);
  EXPECT_TRUE(v.insert(v.begin(), 3u, v[1]));
  EXPECT_EQ(Values(v), (std::vector<int>{1, 1, 1, 0, 1, 2, 3}));
  Fill(v, 3);  // full
  EXPECT_NE(v.insert(v.begin(), v.back()), v.end());
  EXPECT_EQ(v[0], 2);
  EXPECT_EQ(v.size(), 11u);
}

TEST(Vector, EraseMovesTheTailDown) {
  Vorn::vector<int> v;
  Fill(v, 6);
  EXPECT_EQ(v.erase(v.begin() + 1), v.begin() + 1);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 2, 3, 4, 5}));
  EXPECT_EQ(v.erase(v.begin() + 1, v.begin() + 3), v.begin() + 1);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 4, 5}));
  EXPECT_EQ(v.erase(v.begin(), v.begin()), v.begin());
  v.pop_back();
  EXPECT_EQ(Values(v), (std::vector<int>{0, 4}));
  EXPECT_EQ(v.capacity(), 10u);
}

TEST(Vector, AccessorsAndIteration) {
  Vorn::vector<int> v;
  int* const& end = v.end();
  Fill(v, 3);
  EXPECT_EQ(end, v.begin() + 3) << "end() is a reference to the field";
  EXPECT_EQ(v.front(), 0);
  EXPECT_EQ(v.back(), 2);
  EXPECT_EQ(std::vector<int>(v.rbegin(), v.rend()), (std::vector<int>{2, 1, 0}));
  Vorn::vector<int> const& cv = v;
  EXPECT_EQ(std::vector<int>(cv.rbegin(), cv.rend()), (std::vector<int>{2, 1, 0}));
  EXPECT_EQ(cv[1], 1);

  Vorn::vector<int> other;
  Fill(other, 11);
  v.swap(other);
  EXPECT_EQ(v.size(), 11u);
  EXPECT_EQ(v.capacity(), 15u);
  EXPECT_EQ(Values(other), (std::vector<int>{0, 1, 2}));
  Vorn::allocator const& allocator = v.get_allocator();
  (void)allocator;
}

TEST_F(VectorLifetime, EveryElementIsDestroyedExactlyOnce) {
  {
    Vorn::vector<Tracked> v;
    Fill(v, 11);  // one relocation into a block of 15
    EXPECT_EQ(Tracked::live, 11);
    ASSERT_TRUE(v.insert(v.begin() + 2, 3u, Tracked(-1)));  // in place, shifts the tail up
    EXPECT_EQ(Tracked::live, 14);
    v.erase(v.begin() + 1, v.begin() + 5);  // copies the tail down over the gap
    EXPECT_EQ(Tracked::live, 10);
    EXPECT_EQ(Values(v), (std::vector<int>{0, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    v.erase(v.begin() + 1, v.begin() + 9);  // the tail is shorter than the gap
    EXPECT_EQ(Values(v), (std::vector<int>{0, 10}));
    EXPECT_EQ(Tracked::live, 2);
    ASSERT_TRUE(v.insert(v.begin() + 1, v[1]));
    ASSERT_TRUE(v.resize(20));  // relocation with value-initialised elements
    EXPECT_EQ(Tracked::live, 20);
    v.pop_back();
    ASSERT_TRUE(v.resize(5));
    EXPECT_EQ(Tracked::live, 5);
    Vorn::vector<Tracked> copy(v);
    EXPECT_TRUE(copy.assign(v));
    EXPECT_TRUE(copy.assign(copy));
    EXPECT_EQ(Tracked::live, 10);
    v.clear();
    EXPECT_EQ(Tracked::live, 5);
  }
}

TEST_F(VectorLifetime, CopyThatThrowsDuringGrowthLeavesTheVectorUnchanged) {
  Vorn::vector<Tracked> v;
  Fill(v, 10);
  Snapshot<Tracked> const before(v);
  Tracked const extra(99);

  Tracked::throwAfter = 4;  // fails while the old elements are copied
  EXPECT_THROW(v.push_back(extra), CopyError);
  EXPECT_TRUE(Snapshot<Tracked>(v) == before);

  Tracked::throwAfter = 11;  // fails on the last element, after the new one
  EXPECT_THROW(v.insert(v.begin() + 9, extra), CopyError);
  EXPECT_TRUE(Snapshot<Tracked>(v) == before);

  Tracked::throwAfter = 6;
  EXPECT_THROW(v.reserve(40), CopyError);
  EXPECT_TRUE(Snapshot<Tracked>(v) == before);

  Vorn::vector<Tracked> target;
  Fill(target, 3);
  Snapshot<Tracked> const targetBefore(target);
  Tracked::throwAfter = 10;
  EXPECT_THROW(target.assign(v), CopyError);
  EXPECT_TRUE(Snapshot<Tracked>(target) == targetBefore);
  EXPECT_EQ(Tracked::live, 14);
}

TEST_F(VectorLifetime, CopyThatThrowsInPlaceKeepsTheElementsBeforePos) {
  Vorn::vector<Tracked> v;
  Fill(v, 4);
  Snapshot<Tracked> const before(v);
  Tracked::throwAfter = 1;
  EXPECT_THROW(v.push_back(Tracked(7)), CopyError);
  EXPECT_TRUE(Snapshot<Tracked>(v) == before) << "appending loses nothing";

  Tracked::throwAfter = 3;  // while shifting the tail up: element 1 fails
  EXPECT_THROW(v.insert(v.begin() + 1, 2u, Tracked(7)), CopyError);
  EXPECT_EQ(Values(v), (std::vector<int>{0, 1}));
  EXPECT_EQ(Tracked::live, 2);

  Fill(v, 3);
  Tracked::throwAfter = 5;  // the tail (4 elements) is shifted, the value copy fails
  EXPECT_THROW(v.insert(v.begin() + 1, 2u, Tracked(7)), CopyError);
  EXPECT_EQ(Values(v), (std::vector<int>{0}));
  EXPECT_EQ(Tracked::live, 1);

  Fill(v, 3);
  Tracked::throwAfter = 2;  // while copying the tail down
  EXPECT_THROW(v.erase(v.begin()), CopyError);
  EXPECT_EQ(Values(v), (std::vector<int>{0}));
  EXPECT_EQ(Tracked::live, 1);
}

// The vector must come out of every failed growth exactly as it went in.
TEST(VectorExhaustion, FailedAllocationChangesNothing) {
  Vorn::vector<int> v;
  Fill(v, 10);
  Snapshot<int> const before(v);
  Vorn::vector<int> source;
  Fill(source, 3);
  {
    ScopedFailure failure(Channel::NothrowNew);
    EXPECT_FALSE(v.reserve(11));
    EXPECT_FALSE(v.push_back(1));
    EXPECT_EQ(v.insert(v.begin(), 1), v.end());
    EXPECT_FALSE(v.insert(v.begin(), 2u, 1));
    EXPECT_FALSE(v.resize(12));
    EXPECT_FALSE(v.resize(12, 3));
    EXPECT_FALSE(v.assign(source));
    v = source;
  }
  EXPECT_TRUE(Snapshot<int>(v) == before);
}

TEST(VectorExhaustion, FailedConstructionGivesAnEmptyVector) {
  ScopedFailure failure(Channel::NothrowNew, 1);
  Vorn::vector<int> v(5);
  EXPECT_TRUE(v.empty());
  EXPECT_EQ(v.capacity(), 0u);
}

TEST(VectorExhaustion, FailedCopyHasANullBlock) {
  Vorn::vector<int> v;
  Fill(v, 3);
  ScopedFailure failure(Channel::NothrowNew, 1);
  Vorn::vector<int> copy(v);
  EXPECT_EQ(copy.begin(), nullptr);
  EXPECT_EQ(copy.end(), nullptr);
  EXPECT_EQ(copy.capacity(), 0u);
}

// 64 KiB elements put the 32-bit byte limit at 65535 elements, reachable without
// allocating anything, on every target.
struct Block {
  unsigned char bytes[65536];
};

TEST(VectorOverflow, ABlockBeyondThirtyTwoBitsIsRefused) {
  static Block const block = {};
  Vorn::vector<Block> v;
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  EXPECT_FALSE(v.insert(v.end(), 65536u, block));
  EXPECT_FALSE(v.resize(65536));
  EXPECT_FALSE(v.reserve(65536));
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations);
  EXPECT_EQ(v.capacity(), 0u);
}

TEST(VectorOverflow, ACapacityThatWrapsIsRefused) {
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  Vorn::vector<char> v;
  ASSERT_TRUE(v.push_back('a'));
  EXPECT_FALSE(v.insert(v.end(), UINT_MAX, 'b'));  // 1 + UINT_MAX wraps to 0

  Vorn::vector<char, Vorn::allocator, Vorn::incremental_growth<10>> w;
  EXPECT_FALSE(w.insert(w.end(), UINT_MAX - 5, 'b'));  // the growth itself wraps
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations + 1);
  EXPECT_EQ(v.size(), 1u);
  EXPECT_TRUE(w.empty());
}

}  // namespace
