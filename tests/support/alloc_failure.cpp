#include "support/alloc_failure.h"

#include <cstddef>
#include <cstdlib>
#include <new>

// The allocator underneath the replacement malloc: the sanitizer's when the tests are
// sanitized (so its free and leak checks see every block), the C runtime's otherwise.
#if defined(VORN_TEST_SANITIZED)
extern "C" void* __interceptor_malloc(std::size_t size);
#define VORN_TEST_REAL_MALLOC __interceptor_malloc
#else
extern "C" void* __libc_malloc(std::size_t size);
#define VORN_TEST_REAL_MALLOC __libc_malloc
#endif

namespace vorn_test {
namespace {

struct ChannelState {
  unsigned long seen = 0;
  unsigned long failAt = 0;  // 0: never; otherwise the seen count that fails
  bool failAll = false;
  bool fired = false;
};

ChannelState states[3];
bool counting = true;

ChannelState& State(Channel channel) { return states[static_cast<int>(channel)]; }

// Counts one allocation and tells whether it must fail.
bool ShouldFail(Channel channel) {
  if (!counting) return false;
  ChannelState& state = State(channel);
  ++state.seen;
  bool const fail = state.failAll || (state.failAt != 0 && state.seen == state.failAt);
  if (fail) state.fired = true;
  return fail;
}

void* RealMalloc(std::size_t size) { return VORN_TEST_REAL_MALLOC(size); }

void* CountedNew(Channel channel, std::size_t size) noexcept {
  if (ShouldFail(channel)) return nullptr;
  return RealMalloc(size == 0 ? 1 : size);
}

}  // namespace

void FailNth(Channel channel, unsigned long n) {
  ChannelState& state = State(channel);
  state.failAt = state.seen + n;
  state.fired = false;
}

void FailAll(Channel channel) {
  State(channel).failAll = true;
  State(channel).fired = false;
}

void Reset() {
  for (ChannelState& state : states) state = ChannelState{};
}

unsigned long Count(Channel channel) { return State(channel).seen; }

bool Fired(Channel channel) { return State(channel).fired; }

bool SetCounting(bool on) {
  bool const previous = counting;
  counting = on;
  return previous;
}

}  // namespace vorn_test

using vorn_test::Channel;

extern "C" void* malloc(std::size_t size) noexcept {
  if (vorn_test::ShouldFail(Channel::Malloc)) return nullptr;
  return vorn_test::RealMalloc(size);
}

void* operator new(std::size_t size) {
  void* block = vorn_test::CountedNew(Channel::NothrowNew, size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* operator new[](std::size_t size) {
  void* block = vorn_test::CountedNew(Channel::ArrayNew, size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
  return vorn_test::CountedNew(Channel::NothrowNew, size);
}

void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
  return vorn_test::CountedNew(Channel::ArrayNew, size);
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { std::free(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { std::free(block); }
