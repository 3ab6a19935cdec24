#include "heap_counter.h"

#include <malloc.h>

#include <cerrno>
#include <cstddef>

// glibc's own entry points, which the replacements below forward to.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);
}

namespace {

std::size_t g_live = 0;
std::size_t g_peak = 0;

void* Counted(void* block) {
  if (block != nullptr) {
    g_live += malloc_usable_size(block);
    if (g_live > g_peak) g_peak = g_live;
  }
  return block;
}

void Uncount(void* block) {
  if (block != nullptr) g_live -= malloc_usable_size(block);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) { return Counted(__libc_malloc(size)); }

void* calloc(std::size_t count, std::size_t size) { return Counted(__libc_calloc(count, size)); }

void free(void* block) {
  Uncount(block);
  __libc_free(block);
}

void* realloc(void* block, std::size_t size) {
  std::size_t const before = block != nullptr ? malloc_usable_size(block) : 0;
  void* const moved = __libc_realloc(block, size);
  if (moved == nullptr && size != 0) return nullptr;  // failed: block is untouched
  g_live -= before;
  return Counted(moved);
}

void* memalign(std::size_t alignment, std::size_t size) {
  return Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return Counted(__libc_memalign(alignment, size));
}

int posix_memalign(void** result, std::size_t alignment, std::size_t size) {
  void* const block = Counted(__libc_memalign(alignment, size));
  if (block == nullptr) return ENOMEM;
  *result = block;
  return 0;
}

}  // extern "C"

namespace bench {

HeapWatch::HeapWatch() : m_start(g_live) { g_peak = g_live; }

HeapUsage HeapWatch::Stop() const {
  return HeapUsage{static_cast<long long>(g_live) - static_cast<long long>(m_start),
                   static_cast<long long>(g_peak) - static_cast<long long>(m_start)};
}

}  // namespace bench
