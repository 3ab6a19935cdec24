// The library's allocation channels.
//
// Geometry and treatment objects live on the VornMalloc/VornFree channel (through the
// class-level operators of VornAllocator); attributes, vector blocks and list nodes use
// the global non-throwing operator new; string buffers use malloc directly. A block is
// always released through the channel that obtained it. No function here throws:
// exhaustion is a null result.
//
// Thread safety: as thread-safe as the C runtime's malloc and free.
#ifndef VORN_FOUNDATION_MEMORY_H
#define VORN_FOUNDATION_MEMORY_H

#include <cstddef>
#include <new>

#include <vorn/foundation/export.h>

// Returns malloc(size) unchanged: null on exhaustion, no zero-fill, and a size of 0 is
// passed on as 0 (whatever the C runtime returns for it).
VORN_API void* VornMalloc(unsigned int size);

// Returns ptr to the C runtime's free; null is harmless.
VORN_API void VornFree(void* ptr);

// Base of every class whose instances the library creates on the heap: a plain new or
// delete of such a class goes through VornMalloc/VornFree. The operator new is noexcept,
// so a null result skips the constructor and the new-expression yields null.
class VORN_API VornAllocator {
public:
  VornAllocator() = default;
  VornAllocator(VornAllocator const&) = default;
  // Deliberately does nothing: the allocator part carries no state.
  VornAllocator& operator=(VornAllocator const&) { return *this; }

  // Forwards to VornMalloc; a request beyond 32 bits yields null.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* ptr) noexcept;
  // Placement forms, so that factories can construct in storage they obtained.
  static void* operator new(std::size_t, void* where) noexcept { return where; }
  static void operator delete(void*, void*) noexcept {}
};

namespace Vorn {

// The containers' allocator parameter: empty and stateless. Containers hold it as an
// empty base and obtain storage through the functions below.
class VORN_API allocator {
public:
  allocator() = default;
  allocator(allocator const&) = default;
  allocator& operator=(allocator const&) { return *this; }
};

namespace detail {

// Raw storage for container blocks and nodes: the global non-throwing operator new,
// so exhaustion is a null result and never std::bad_alloc.
inline void* allocate_bytes(std::size_t bytes) noexcept {
  return ::operator new(bytes, std::nothrow);
}

inline void release_bytes(void* block) noexcept { ::operator delete(block); }

}  // namespace detail
}  // namespace Vorn

#endif
