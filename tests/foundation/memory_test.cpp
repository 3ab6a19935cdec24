#include <vorn/foundation/memory.h>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;

struct Counted : VornAllocator {
  static int constructed;
  Counted() { ++constructed; }
  int payload = 7;
};
int Counted::constructed = 0;

TEST(Memory, VornMallocAndVornFreeGoThroughTheCRuntime) {
  void* block = VornMalloc(16);
  ASSERT_NE(block, nullptr);
  VornFree(block);
  VornFree(nullptr);
}

TEST(Memory, VornMallocReportsExhaustionAsNull) {
  ScopedFailure failure(Channel::Malloc, 1);
  EXPECT_EQ(VornMalloc(16), nullptr);
}

TEST(Memory, ClassLevelNewThatFailsRunsNoConstructor) {
  Counted::constructed = 0;
  {
    ScopedFailure failure(Channel::Malloc, 1);
    Counted* object = new Counted;
    EXPECT_EQ(object, nullptr);
  }
  EXPECT_EQ(Counted::constructed, 0);
  Counted* object = new Counted;
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->payload, 7);
  delete object;
}

TEST(Memory, AllocatorAssignmentChangesNothing) {
  VornAllocator a;
  VornAllocator b;
  EXPECT_EQ(&(a = b), &a);
  Vorn::allocator c;
  Vorn::allocator d;
  EXPECT_EQ(&(c = d), &c);
}

}  // namespace
