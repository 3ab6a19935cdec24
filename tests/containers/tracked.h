// Element type for container tests: counts live objects, flags a destructor that runs
// twice or on storage that never held an object, and can be armed to throw from its
// copy constructor.
#ifndef VORN_TESTS_CONTAINERS_TRACKED_H
#define VORN_TESTS_CONTAINERS_TRACKED_H

#include <gtest/gtest.h>

namespace vorn_test {

struct CopyError {};

class Tracked {
public:
  static inline int live = 0;
  // When positive, the copy that brings it to zero throws CopyError.
  static inline int throwAfter = 0;

  explicit Tracked(int v = 0) : value(v) { ++live; }
  Tracked(Tracked const& other) : value(other.value) {
    EXPECT_EQ(other.state_, kAlive) << "copy from a dead element";
    if (throwAfter > 0 && --throwAfter == 0) throw CopyError();
    ++live;
  }
  Tracked& operator=(Tracked const& other) = default;
  ~Tracked() {
    EXPECT_EQ(state_, kAlive) << "destroyed twice or never constructed";
    state_ = kDead;
    --live;
  }
  friend bool operator==(Tracked const& a, Tracked const& b) { return a.value == b.value; }
  operator int() const { return value; }

  int value;

private:
  static constexpr unsigned int kAlive = 0xA11CE5u;
  static constexpr unsigned int kDead = 0xDEADu;
  unsigned int state_ = kAlive;
};

// Fixture for element-lifetime tests: every element must be gone at the end.
class TrackedLifetime : public ::testing::Test {
protected:
  void SetUp() override { Tracked::live = Tracked::throwAfter = 0; }
  void TearDown() override { EXPECT_EQ(Tracked::live, 0) << "an element leaked"; }
};

}  // namespace vorn_test

#endif
