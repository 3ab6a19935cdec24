#include <vorn/foundation/memory.h>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"

namespace {

using vorn_test::Channel;
using vorn_test::ScopedFailure;

struct Counted : VornAllocator {
  static inline int constructed = 0;
  Counted() { ++constructed; }
};

TEST(Memory, EachChannelReportsExhaustionAsNull) {
  VornFree(nullptr);
  {
    ScopedFailure failure(Channel::Malloc);
    EXPECT_EQ(VornMalloc(16), nullptr);
    EXPECT_EQ(new Counted, nullptr);  // class-level new goes through VornMalloc
  }
  EXPECT_EQ(Counted::constructed, 0) << "no constructor runs on a null block";
  {
    ScopedFailure failure(Channel::NothrowNew);
    EXPECT_EQ(Vorn::detail::allocate_bytes(16), nullptr);  // never std::bad_alloc
  }
  delete new Counted;
  EXPECT_EQ(Counted::constructed, 1);
}

}  // namespace
