#include <vorn/foundation/memory.h>

#include <climits>
#include <cstdlib>

void* VornMalloc(unsigned int size) { return std::malloc(size); }

void VornFree(void* ptr) { std::free(ptr); }

void* VornAllocator::operator new(std::size_t size) noexcept {
  if constexpr (sizeof(std::size_t) > sizeof(unsigned int)) {
    if (size > UINT_MAX) return nullptr;
  }
  return VornMalloc(static_cast<unsigned int>(size));
}

void VornAllocator::operator delete(void* ptr) noexcept { VornFree(ptr); }
