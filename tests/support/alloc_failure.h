// Test-only allocation-failure injection.
//
// Linking vorn_test_support into a test executable replaces malloc and every global
// operator new of the process with counting versions. A test arms one channel so that
// the n-th allocation on it from now on fails (malloc and nothrow new return null,
// throwing new throws std::bad_alloc). Allocations are
// counted per channel while counting is on, so a test can measure how many
// allocations an operation makes and then sweep every failure point. Counting is on
// unless a test turns it off (ScopedCounting): allocations made while it is off are
// neither counted nor failed, which lets a test's own bookkeeping allocate freely
// between the operations it measures.
//
// Not thread-safe: arm and disarm from the thread that runs the operation.
#pragma once

namespace vorn_test {

// Malloc: malloc, and so VornMalloc and string buffers. NothrowNew: scalar operator new,
// nothrow or throwing. ArrayNew: operator new[], nothrow or throwing.
enum class Channel { Malloc, NothrowNew, ArrayNew };

// Makes the n-th allocation (1-based, counted from this call) on `channel` fail; n = 0
// arms nothing.
void FailNth(Channel channel, unsigned long n);
// Disarms every channel and zeroes the counters.
void Reset();
// Allocations seen on `channel` since the last Reset.
unsigned long Count(Channel channel);
// Whether an armed failure on `channel` has fired since it was armed.
bool Fired(Channel channel);
// Turns counting (and with it failing) on or off; returns the previous setting.
bool SetCounting(bool on);

// Sets counting for the lifetime of the guard and restores the previous setting on exit.
class ScopedCounting {
public:
  explicit ScopedCounting(bool on) : previous_(SetCounting(on)) {}
  ~ScopedCounting() { SetCounting(previous_); }

private:
  bool const previous_;
};

// Arms a channel for the lifetime of the guard; disarms everything on exit.
class ScopedFailure {
public:
  ScopedFailure(Channel channel, unsigned long n) { FailNth(channel, n); }
  ~ScopedFailure() { Reset(); }
};

}  // namespace vorn_test
