#include "support/alloc_failure.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

// The allocator underneath the replacement malloc: the sanitizer's when the tests are
// sanitized (so its free and leak checks see every block), the C runtime's otherwise.
#if defined(VORN_TEST_SANITIZED)
#define VORN_TEST_REAL_MALLOC __interceptor_malloc
#else
#define VORN_TEST_REAL_MALLOC __libc_malloc
#endif
extern "C" void* VORN_TEST_REAL_MALLOC(std::size_t size);

namespace vorn_test {
namespace {

// Per channel: the allocations seen and the one that fails (0 while disarmed: no
// allocation is the 0th). It has failed once as many have been seen, as it can fail only
// while counting.
struct ChannelState {
  unsigned long seen, failing;
};

ChannelState states[3];
bool counting = true;

ChannelState& State(Channel channel) { return states[static_cast<int>(channel)]; }

}  // namespace

void FailNth(Channel c, unsigned long n) { State(c) = {Count(c), n ? Count(c) + n : 0}; }
void Reset() { std::fill(states, states + 3, ChannelState{}); }
unsigned long Count(Channel channel) { return State(channel).seen; }
bool Fired(Channel c) { return State(c).failing != 0 && State(c).seen >= State(c).failing; }
bool SetCounting(bool on) { return std::exchange(counting, on); }

}  // namespace vorn_test

namespace {

using vorn_test::Channel;
constexpr Channel kNew = Channel::NothrowNew, kArray = Channel::ArrayNew;

// Counts one allocation on `channel` (while counting is on) and makes it fail if armed:
// null, or std::bad_alloc when `throwing`.
void* Allocate(Channel channel, std::size_t size, bool throwing) {
  vorn_test::ChannelState& state = vorn_test::State(channel);
  bool const fail = vorn_test::counting && ++state.seen == state.failing;
  if (fail && throwing) throw std::bad_alloc();
  return fail ? nullptr : VORN_TEST_REAL_MALLOC(size == 0 ? 1 : size);
}

}  // namespace

using std::nothrow_t, std::size_t;

extern "C" void* malloc(size_t size) noexcept { return Allocate(Channel::Malloc, size, false); }
void* operator new(size_t size) { return Allocate(kNew, size, true); }
void* operator new[](size_t size) { return Allocate(kArray, size, true); }
void* operator new(size_t size, nothrow_t const&) noexcept { return Allocate(kNew, size, false); }
void* operator new[](size_t n, nothrow_t const&) noexcept { return Allocate(kArray, n, false); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, size_t) noexcept { std::free(block); }
void operator delete[](void* block, size_t) noexcept { std::free(block); }
void operator delete(void* block, nothrow_t const&) noexcept { std::free(block); }
void operator delete[](void* block, nothrow_t const&) noexcept { std::free(block); }
