#include <vorn/foundation/stringbase.h>

#include <cassert>
#include <climits>
#include <cstdint>
#include <cstdlib>

namespace Vorn {
namespace text {

unsigned int length(unsigned short const* text) {
  assert(text != nullptr);
  unsigned short const* end = text;
  while (*end != 0) ++end;
  return static_cast<unsigned int>(end - text);
}

namespace {

inline int FoldCase(unsigned short unit) {
  return unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit;
}

}  // namespace

int compare(unsigned short const* a, unsigned short const* b) {
  assert(a != nullptr && b != nullptr);
  while (*a != 0 && *a == *b) {
    ++a;
    ++b;
  }
  return static_cast<int>(*a) - static_cast<int>(*b);
}

int compare_caseless(unsigned short const* a, unsigned short const* b) {
  assert(a != nullptr && b != nullptr);
  while (*a != 0 && FoldCase(*a) == FoldCase(*b)) {
    ++a;
    ++b;
  }
  return FoldCase(*a) - FoldCase(*b);
}

}  // namespace text

namespace detail {

void throw_string_index_error() {
  static char text[] = "Index out of Range";
  throw static_cast<char*>(text);
}

}  // namespace detail
}  // namespace Vorn

namespace {

// A block for count units plus a terminator, or null when malloc fails or the size
// does not fit in size_t.
template <class C>
C* AllocateUnits(unsigned long long count) {
  if (count >= SIZE_MAX / sizeof(C)) return nullptr;
  return static_cast<C*>(std::malloc(static_cast<std::size_t>(count + 1) * sizeof(C)));
}

}  // namespace

template <class C, class F>
stringbase<C, F>::~stringbase() {
  clear();
}

template <class C, class F>
void stringbase<C, F>::clear() {
  std::free(buffer_);
  buffer_ = nullptr;
  length_ = 0;
}

// The new block is filled before the old one is freed, so copying from this string's
// own buffer (self-assignment) is safe.
template <class C, class F>
void stringbase<C, F>::copy(C const* text, unsigned int count) {
  if (text == nullptr) {
    clear();
    return;
  }
  if (count == 0) count = F::length(text);
  C* block = AllocateUnits<C>(count);
  if (block != nullptr) {
    std::memcpy(block, text, count * sizeof(C));
    block[count] = 0;
  }
  std::free(buffer_);
  buffer_ = block;
  length_ = block != nullptr ? count : 0;
}

// One exact-size block holds the old contents and text; text is read before the old
// block is freed, so appending the string to itself is safe.
template <class C, class F>
void stringbase<C, F>::append(C const* text) {
  if (text == nullptr) return;
  if (buffer_ == nullptr) {
    copy(text, 0);
    return;
  }
  unsigned int const added = F::length(text);
  unsigned long long const total = static_cast<unsigned long long>(length_) + added;
  C* block = total < UINT_MAX ? AllocateUnits<C>(total) : nullptr;
  if (block != nullptr) {
    std::memcpy(block, buffer_, length_ * sizeof(C));
    std::memcpy(block + length_, text, (added + 1) * static_cast<std::size_t>(sizeof(C)));
  }
  std::free(buffer_);
  buffer_ = block;
  length_ = block != nullptr ? static_cast<unsigned int>(total) : 0;
}

template <class C, class F>
C* stringbase<C, F>::prepare(unsigned int count) {
  clear();
  C* block = AllocateUnits<C>(count);
  if (block == nullptr) return nullptr;
  block[count] = 0;
  buffer_ = block;
  length_ = count;
  return block;
}

template class stringbase<char, astringfuncs>;
template class stringbase<unsigned short, wstringfuncs>;

// vtable pointer, buffer, length (padded to pointer alignment).
static_assert(sizeof(stringbase<char, astringfuncs>) == 3 * sizeof(void*),
              "narrow string layout: vtable pointer, buffer, length");
static_assert(sizeof(stringbase<unsigned short, wstringfuncs>) == 3 * sizeof(void*),
              "wide string layout: vtable pointer, buffer, length");
