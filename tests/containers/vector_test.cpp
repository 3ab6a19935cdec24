#include <vorn/containers/vector.h>

#include <gtest/gtest.h>

#include <climits>
#include <tuple>
#include <vector>

#include "containers/tracked.h"
#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::CopyError;
using vorn_test::ScopedFailure;
using vorn_test::Tracked;
using vorn_test::TrackedLifetime;
using Ints = std::vector<int>;

template <class V>
Ints Values(V const& v) {
  return Ints(v.begin(), v.end());
}

// Appends by push_back until the vector holds count elements: a new one holds 0 .. count-1.
template <class T, class G>
void Fill(Vorn::vector<T, Vorn::allocator, G>& v, int count) {
  for (int i = static_cast<int>(v.size()); i < count; ++i) ASSERT_TRUE(v.push_back(T(i)));
}

// Block, size, capacity and contents: equal snapshots prove an operation changed nothing.
template <class T>
auto Snapshot(Vorn::vector<T> const& v) {
  return std::make_tuple(v.begin(), v.size(), v.capacity(), Values(v));
}

TEST(Vector, GrowthAddsHalfTheSizeWithAFloorOfTen) {
  Vorn::vector<int> v;
  EXPECT_EQ(v.begin(), nullptr);
  std::vector<unsigned int> capacities;
  for (int i = 0; i < 74; ++i) {
    ASSERT_TRUE(v.push_back(i));
    if (capacities.empty() || capacities.back() != v.capacity()) capacities.push_back(v.capacity());
  }
  EXPECT_EQ(capacities, (std::vector<unsigned int>{10, 15, 22, 33, 49, 73, 109}));
  EXPECT_EQ(Vorn::vector<int>(3).capacity(), 10u);
  EXPECT_EQ(Vorn::vector<int*>(2)[1], nullptr);
  EXPECT_EQ(Vorn::vector<int>(25, 7, Vorn::allocator()).capacity(), 25u);
  Vorn::vector<int, Vorn::allocator, Vorn::incremental_growth<10>> step(2u);
  EXPECT_EQ(step.capacity(), 12u);
}

TEST(Vector, CopyAssignAndReserveAllocateExactly) {
  Vorn::vector<int> v;
  Fill(v, 11);
  Vorn::vector<int> copy(v);
  Vorn::vector<int> assigned(40);
  assigned = v;
  EXPECT_TRUE(v.assign(v));
  for (auto const* exact : {&copy, &assigned, &v}) {
    EXPECT_EQ(exact->capacity(), 11u);
    EXPECT_EQ(Values(*exact), (Ints{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  }
  EXPECT_TRUE(assigned.assign(Vorn::vector<int>()));
  EXPECT_EQ(assigned.capacity(), 0u);
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  EXPECT_TRUE(v.reserve(11));
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations);
  EXPECT_TRUE(v.reserve(12));
  EXPECT_EQ(v.capacity(), 12u);
  EXPECT_EQ(Values(v), Values(copy));
}

TEST(Vector, ShrinkingErasingAndClearingKeepTheCapacity) {
  Vorn::vector<int> v;
  Fill(v, 12);
  EXPECT_TRUE(v.resize(4));
  EXPECT_TRUE(v.resize(6, 9));
  EXPECT_EQ(v.erase(v.begin() + 1), v.begin() + 1);
  EXPECT_EQ(v.erase(v.begin() + 1, v.begin() + 3), v.begin() + 1);
  v.pop_back();
  EXPECT_EQ(Values(v), (Ints{0, 9}));
  EXPECT_EQ(Ints(v.rbegin(), v.rend()), (Ints{9, 0}));
  v.clear();
  EXPECT_TRUE(v.empty());
  EXPECT_EQ(v.capacity(), 15u);
}

TEST(Vector, InsertReturnsThePositionInThePossiblyNewBlock) {
  Vorn::vector<int> v;
  int* const& end = v.end();
  Fill(v, 4);
  EXPECT_EQ(end, v.begin() + 4) << "end() is a reference to the field";
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  EXPECT_TRUE(v.insert(v.begin() + 1, 0u, 42));
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations);
  EXPECT_TRUE(v.insert(v.begin() + 1, 3u, v[2]));  // an own element is copied first
  EXPECT_EQ(v.insert(v.begin() + 7, 8), v.begin() + 7);
  ASSERT_TRUE(v.insert(v.end(), 2u, 5));  // full now
  int* const grown = v.insert(v.begin() + 2, v.back());
  EXPECT_EQ(v.capacity(), 15u);
  EXPECT_EQ(grown, v.begin() + 2);
  EXPECT_EQ(Values(v), (Ints{0, 2, 5, 2, 2, 1, 2, 3, 8, 5, 5}));
}

TEST_F(TrackedLifetime, VectorDestroysEveryElementExactlyOnce) {
  Vorn::vector<Tracked> v;
  Fill(v, 11);  // one relocation into 15 slots
  ASSERT_TRUE(v.insert(v.begin() + 2, 3u, Tracked(-1)));  // shifts the tail up in place
  v.erase(v.begin() + 1, v.begin() + 5);                  // copies the tail down
  EXPECT_EQ(Values(v), (Ints{0, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  v.erase(v.begin() + 1, v.begin() + 9);  // the tail is shorter than the gap
  EXPECT_EQ(Tracked::live, 2);
  ASSERT_TRUE(v.resize(20));  // relocation with value-initialised elements
  v.pop_back();
  ASSERT_TRUE(v.resize(5));
  Vorn::vector<Tracked> copy(v);
  EXPECT_TRUE(copy.assign(copy));
  EXPECT_EQ(Tracked::live, 10);
  v.clear();
  EXPECT_EQ(Tracked::live, 5);
}

TEST_F(TrackedLifetime, VectorCopyThatThrowsDuringGrowthChangesNothing) {
  Vorn::vector<Tracked> v;
  Fill(v, 10);
  auto const before = Snapshot(v);
  Tracked const extra(99);
  for (int failing : {4, 11}) {  // an old element; the last one, after the new element
    Tracked::throwAfter = failing;
    EXPECT_THROW(v.insert(v.begin() + 9, extra), CopyError);
  }
  Tracked::throwAfter = 6;
  EXPECT_THROW(v.reserve(40), CopyError);
  Vorn::vector<Tracked> target(v);
  auto const targetBefore = Snapshot(target);
  Tracked::throwAfter = 10;
  EXPECT_THROW(target.assign(v), CopyError);
  EXPECT_EQ(Snapshot(v), before);
  EXPECT_EQ(Snapshot(target), targetBefore);
}

TEST_F(TrackedLifetime, VectorCopyThatThrowsInPlaceKeepsTheElementsBeforePos) {
  Vorn::vector<Tracked> v;
  Fill(v, 4);
  Tracked::throwAfter = 1;
  EXPECT_THROW(v.push_back(Tracked(7)), CopyError);
  EXPECT_EQ(Values(v), (Ints{0, 1, 2, 3})) << "appending loses nothing";
  Tracked::throwAfter = 5;  // the tail (3 elements) is shifted, the second value copy fails
  EXPECT_THROW(v.insert(v.begin() + 1, 2u, Tracked(7)), CopyError);
  EXPECT_EQ(Values(v), (Ints{0}));
  ASSERT_TRUE(v.insert(v.end(), 3u, Tracked(1)));
  Tracked::throwAfter = 2;  // while copying the tail down
  EXPECT_THROW(v.erase(v.begin()), CopyError);
  EXPECT_EQ(Values(v), (Ints{1}));
}

TEST(VectorExhaustion, FailedAllocationChangesNothing) {
  Vorn::vector<int> v;
  Fill(v, 10);
  auto const before = Snapshot(v);
  Vorn::vector<int> source;
  Fill(source, 3);
  {
    ScopedFailure failure(Channel::NothrowNew);
    EXPECT_FALSE(v.reserve(11));
    EXPECT_FALSE(v.push_back(1));
    EXPECT_EQ(v.insert(v.begin(), 1), v.end());
    EXPECT_FALSE(v.insert(v.begin(), 2u, 1));
    EXPECT_FALSE(v.resize(12, 3));
    EXPECT_FALSE(v.assign(source));
    v = source;
    Vorn::vector<int> const sized(5);
    EXPECT_EQ(sized.capacity(), 0u);
    Vorn::vector<int> const copy(source);
    EXPECT_EQ(copy.begin(), nullptr);
    EXPECT_EQ(copy.end(), nullptr);
  }
  EXPECT_EQ(Snapshot(v), before);
}

// 64 KiB elements put the 32-bit byte limit at 65535 elements, reachable without
// allocating anything, on every target.
struct Block {
  unsigned char bytes[65536];
};

TEST(VectorExhaustion, ABlockBeyondThirtyTwoBitsOrAWrappingCapacityIsRefused) {
  static Block const block = {};
  unsigned long const allocations = vorn_test::Count(Channel::NothrowNew);
  Vorn::vector<Block> blocks;
  EXPECT_FALSE(blocks.insert(blocks.end(), 65536u, block));
  EXPECT_FALSE(blocks.resize(65536));
  EXPECT_FALSE(blocks.reserve(65536));
  Vorn::vector<char> chars;
  ASSERT_TRUE(chars.push_back('a'));
  EXPECT_FALSE(chars.insert(chars.end(), UINT_MAX, 'b'));  // 1 + UINT_MAX wraps to 0
  Vorn::vector<char, Vorn::allocator, Vorn::incremental_growth<10>> step;
  EXPECT_FALSE(step.insert(step.end(), UINT_MAX - 5, 'b'));  // the growth itself wraps
  EXPECT_EQ(vorn_test::Count(Channel::NothrowNew), allocations + 1);
  EXPECT_EQ(blocks.capacity(), 0u);
  EXPECT_EQ(chars.size(), 1u);
  ScopedFailure failure(Channel::NothrowNew);
  EXPECT_FALSE(blocks.reserve(65535));  // fits in 32 bits, so the block is asked for
  EXPECT_TRUE(vorn_test::Fired(Channel::NothrowNew));
}

}  // namespace
