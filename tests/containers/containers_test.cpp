// The library's two containers: the contiguous vector and the circular list.
#include <vorn/containers/list.h>
#include <vorn/containers/vector.h>

#include <string>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"

namespace {

// An element that counts its live objects and can be armed to throw from its copy
// constructor: when throwAfter is positive, the copy that brings it to zero throws.
struct Tracked {
  static inline int live = 0, throwAfter = 0;
  Tracked(int v = 0) : value(v) { ++live; }
  Tracked(Tracked const& other) : Tracked(other.value) {
    if (throwAfter > 0 && --throwAfter == 0) throw value;
  }
  ~Tracked() { --live; }
  operator int() const { return value; }
  int value;
};

// Every test ends with each element destroyed exactly once.
struct Containers : testing::Test {
  void TearDown() override { EXPECT_EQ(Tracked::live, 0); }
};

// The elements front to back, one digit each. Every way to read them must agree:
// mutable and const iterators forward with postfix ++ and back with postfix --, reverse
// iterators, front and back, size() and empty().
template <class C>
std::string Show(C&& c) {
  auto const& k = c;
  std::string fwd, back, constFwd, constBack;
  for (auto it = c.begin(); it != c.end();) fwd += std::to_string(*it++);
  for (auto it = c.end(); it-- != c.begin();) back = std::to_string(*it) + back;
  for (auto it = k.begin(); it != c.end();) constFwd += std::to_string(*it++);
  for (auto it = k.end(); it-- != k.begin();) constBack = std::to_string(*it) + constBack;
  EXPECT_TRUE(back == fwd && constFwd == fwd && constBack == fwd && fwd.size() == k.size());
  EXPECT_TRUE(k.empty() || (&c.front() == &*std::prev(k.rend()) && &c.back() == &*k.rbegin() &&
                            &k.front() == &*std::prev(c.rend()) && &k.back() == &*c.rbegin()));
  return fwd;
}

// The elements, then "/capacity".
auto const State = [](auto&& v) { return Show(v) + "/" + std::to_string(v.capacity()); };

// The same edits on a trivially copyable element, which is moved as raw bytes, and on
// one that is copy-constructed and destroyed slot by slot.
template <class T>
void Edit() {
  Vorn::vector<T> v;
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(v.push_back(T(i)));
  EXPECT_TRUE(v.insert(v.begin() + 1, 2u, v[2]));  // an own element, read before the shift
  EXPECT_EQ(v.insert(v.begin() + 5, v.front()), v.begin() + 5);  // one that does not move
  EXPECT_TRUE(v.insert(v.end(), 3u, T(5)) && v.insert(v.begin(), 0u, T(6)));  // full now
  T* const grown = v.insert(v.begin() + 1, v.back());  // returned in the new block
  EXPECT_EQ(State(v) + std::to_string(grown - v.begin()), "05221203555/151");
  EXPECT_EQ(v.erase(v.begin() + 2, v.begin() + 9), v.begin() + 2);  // a tail shorter than the gap
  v.pop_back();
  EXPECT_TRUE(v.resize(6, T(9)) && v.resize(5, T(8)) && v.resize(4));
  EXPECT_EQ(State(v) + State(Vorn::vector<T>(v)), "0559/150559/4");
}

// Growth adds half the size, at least 10 (or the count plus 10 with incremental_growth);
// copies, assign and reserve allocate exactly what they need. Exhaustion is reported by
// the result and changes nothing. Note: so is a block of 2^32 bytes or more, or a
// capacity that wraps, on every target.
TEST_F(Containers, VectorEditsKeepTheOrderAndGrowByHalfTheSize) {
  Edit<int>();
  Edit<Tracked>();
  Vorn::vector<int> v{Vorn::allocator()};
  for (int i = 0; i < 74; ++i) ASSERT_TRUE(v.push_back(i));
  EXPECT_EQ(v.capacity(), 109u);  // 10, 15, 22, 33, 49, 73, 109
  EXPECT_TRUE(v.resize(3) && v.assign(v) && v.reserve(2) && v.reserve(4) && v.push_back(9));
  EXPECT_EQ(State(v) + State(Vorn::vector<int>(40u, v.get_allocator()) = v), "0129/40129/4");
  Vorn::vector<int, Vorn::allocator, Vorn::incremental_growth<10>> step(1u, 1);
  // Only the last insert may ask for a block, and that one is refused: an oversized one
  // asked for would take the refusal and let the last insert succeed.
  vorn_test::FailNth(vorn_test::Channel::NothrowNew, 1);
  EXPECT_FALSE(v.reserve(1u << 30) || v.resize(1u << 30) || v.insert(v.end(), UINT_MAX, 1) ||
               step.insert(step.end(), UINT_MAX - 5, 1) || v.insert(v.begin(), 1) != v.end());
  EXPECT_EQ(State(v) + State(step), "0129/41/11");
}

// A copy constructor that throws while a new block is filled changes nothing, nor does
// one that throws while appending. One that throws while elements move within the block
// keeps the elements before pos (insert) or before the failing slot (erase).
TEST_F(Containers, VectorCopyThatThrowsChangesNothingOrKeepsAPrefix) {
  Vorn::vector<Tracked> v(8);
  for (int i = 0; i < 8; ++i) v[i].value = i;
  // Runs edit with the n-th element copy throwing, then reads the vector.
  auto const throwing = [&v](int n, auto edit) {
    Tracked::throwAfter = n;
    EXPECT_THROW(edit(), int);
    return State(v);
  };
  EXPECT_EQ(throwing(3, [&] { v.reserve(20); }), "01234567/10");
  EXPECT_EQ(throwing(2, [&] { Vorn::vector<Tracked>{v}; }), "01234567/10");
  EXPECT_EQ(throwing(1, [&] { v.push_back(Tracked(9)); }), "01234567/10");
  EXPECT_EQ(throwing(4, [&] { v.erase(v.begin()); }), "123/10");  // while copying down
  EXPECT_EQ(throwing(2, [&] { v.insert(v.begin() + 1, 1u, Tracked(7)); }), "12/10");  // moving up
  EXPECT_EQ(throwing(3, [&] { v.insert(v.begin() + 1, 2u, Tracked(7)); }), "1/10");   // filling
}

using List = Vorn::list<Tracked>;

// Appends through insert(end()), the way the collections fill a list.
List Make(std::initializer_list<int> values) {
  List list{Vorn::allocator()};
  for (int v : values) list.insert(list.end())->value = v;
  return list;
}

List::iterator At(List& list, int index) { return std::next(list.begin(), index); }

TEST_F(Containers, ListInsertEraseAndRemoveKeepTheRingInOrder) {
  List list = Make({7, 1, 7, 7, 2, 3});
  EXPECT_EQ(list.insert(At(list, 1))->value, 0);  // value-initialised, for the caller to fill
  list.remove(list.front());  // adjacent ones too; the value is an element itself
  list.pop_front();
  list.pop_back();
  List copy(list);
  EXPECT_TRUE(copy.insert(copy.end(), list.begin(), list.end()) && copy.assign(copy));
  // On exhaustion assign is all or nothing, while a copy keeps what it copied.
  vorn_test::FailNth(vorn_test::Channel::NothrowNew, 2);
  EXPECT_FALSE(list.assign(copy));
  vorn_test::FailNth(vorn_test::Channel::NothrowNew, 2);
  List const partial(copy);
  EXPECT_EQ(Show(list) + "|" + Show(partial), "12|1");
  list = copy;
  // A copy that throws frees its node again; the list keeps what it had.
  Tracked::throwAfter = 2;
  EXPECT_THROW(copy.insert(copy.end(), list.begin(), list.end()), int);
  EXPECT_EQ(Show(list) + "|" + Show(copy), "1212|12121");
  // remove compares strings by their text: the same length is not enough.
  Vorn::list<stringbase<char, astringfuncs>> texts;
  for (auto text : {"ab", "abc", "ac", "ab"}) *texts.insert(texts.end()) = text;
  texts.front() = nullptr;  // empty, no longer "ab"
  texts.remove("ab");
  EXPECT_EQ(texts.size(), 3u);  // "", "abc" and "ac"
}

// Splicing moves nodes and their count. It leaves the list as it is when the element or
// range would stay where it is (pos is it or the one after it, pos is first or last) or
// when there is nothing to move (the list itself, an empty list).
TEST_F(Containers, ListSpliceAndSwapRelinkNodes) {
  List list = Make({1, 2, 3});
  List other = Make({4, 5, 6, 7});
  list.splice(At(list, 2), list, At(list, 1));
  list.splice(At(list, 1), list, At(list, 1));
  list.splice(list.begin(), list, At(list, 1), At(list, 1));
  list.splice(At(list, 2), list, list.begin(), At(list, 2));
  list.splice(list.begin(), list, list.begin(), At(list, 2));
  list.splice(list.begin(), list);
  list.splice(list.begin(), list, At(list, 1), list.end());
  list.splice(list.end(), list, list.begin());
  list.splice(At(list, 1), other, At(other, 1), At(other, 3));
  list.splice(list.begin(), other, other.begin());
  list.splice(list.end(), other);
  list.splice(list.begin(), other);
  other.swap(list);
  EXPECT_EQ(Show(list) + "|" + Show(other), "|4356127");
}

}  // namespace
