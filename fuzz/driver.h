// The libFuzzer entry point shared by the fuzz targets (each includes this header from its
// one source): it hands every input to the target's Run. A failed FUZZ_CHECK aborts, which
// libFuzzer records as a crash together with the input; checks do not depend on NDEBUG.
#pragma once

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

// libFuzzer prints the stack of the abort, whose frame in the target is the check's line.
#define FUZZ_CHECK(condition) ((condition) ? void() : std::abort())

namespace vorn_fuzz {

// The target: reads what it needs from `input` and checks every result.
void Run(FuzzedDataProvider&& input);

// A heap block of exactly `count` units copied from `text`, each converted to Unit, so
// that AddressSanitizer reports a read past its end.
template <class Unit, class From>
std::unique_ptr<Unit[]> Exact(From const* text, std::size_t count) {
  return std::unique_ptr<Unit[]>(std::copy(text, text + count, new Unit[count]) - count);
}

}  // namespace vorn_fuzz

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vorn_fuzz::Run(FuzzedDataProvider(data, size));
  return 0;
}
