// Checks shared by the fuzz targets. A failed check prints what was expected and aborts,
// which libFuzzer records as a crash together with the input that caused it. The checks
// do not depend on NDEBUG.
#ifndef VORN_FUZZ_FUZZ_CHECK_H
#define VORN_FUZZ_FUZZ_CHECK_H

#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <vorn/foundation/exception.h>

#define FUZZ_CHECK(condition)                                                          \
  do {                                                                                 \
    if (!(condition)) {                                                                \
      std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition); \
      std::abort();                                                                    \
    }                                                                                  \
  } while (false)

namespace vorn_fuzz {

// What a call is expected to raise: nothing, or a VornException with this message and code.
struct Expected {
  char const* message;
  int code;
};

constexpr Expected kNoThrow{nullptr, 0};
constexpr Expected kOutOfRange{"Index out of range", 5002};
constexpr Expected kParameterIsNull{"Parameter is NULL", 5003};

// Runs call() and checks that it raises exactly `expected`; returns whether it raised.
template <class Call>
bool Raises(Expected expected, Call call) {
  try {
    call();
  } catch (VornException const& e) {
    if (expected.message == nullptr || std::strcmp(e.Message(), expected.message) != 0 ||
        e.ErrorCode() != expected.code) {
      std::fprintf(stderr, "unexpected VornException \"%s\" (%d), expected \"%s\" (%d)\n",
                   e.Message(), e.ErrorCode(), expected.message ? expected.message : "none",
                   expected.code);
      std::abort();
    }
    return true;
  }
  if (expected.message != nullptr) {
    std::fprintf(stderr, "expected VornException \"%s\" (%d), nothing raised\n",
                 expected.message, expected.code);
    std::abort();
  }
  return false;
}

// Whether `object` is held by one of the sessions' models (each side's `model`, whose
// entries name their `object`) or by the pool of detached objects the session owns.
template <class Object, class Sides, class Pool>
bool IsKnownObject(Object const* object, Sides const& sides, Pool const& pool) {
  for (auto const& side : sides) {
    for (auto const& entry : side.model) {
      if (entry.object == object) return true;
    }
  }
  for (Object const* pooled : pool) {
    if (pooled == object) return true;
  }
  return false;
}

// The body of an operation-sequence target: one Session fed by the whole input, stepped
// until the input runs out or `maxSteps` steps have run.
template <class Session>
int RunSession(std::uint8_t const* data, std::size_t size, int maxSteps) {
  FuzzedDataProvider input(data, size);
  Session session(input);
  for (int step = 0; step < maxSteps && input.remaining_bytes() > 0; ++step) session.Step();
  return 0;
}

}  // namespace vorn_fuzz

#endif
