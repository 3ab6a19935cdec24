// Vorn::vector: the library's contiguous, growable array.
//
// A vector owns one heap block and the elements constructed in it; for pointer element
// types it owns the pointers, never the pointees. Blocks come from the global
// non-throwing operator new (Vorn::detail::allocate_bytes), so running out of memory is
// reported by a false result (or end() from the single-element insert) and leaves the
// vector exactly as it was; no member throws std::bad_alloc. An element copy
// constructor that throws while a new block is being filled leaves the vector unchanged
// as well: the partly built block is destroyed and released and the exception goes on.
//
// Growth adds max(n, size < 10 ? 10 : size / 2) slots to the size (not to the old
// capacity), so repeated push_back from empty gives capacities 10, 15, 22, 33, 49, ...
// Copying, assign and reserve allocate exactly what they need.
//
// Trivially copyable elements are relocated with memcpy/memmove and never destroyed;
// other elements are copy-constructed into their new slot and the source destroyed.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CONTAINERS_VECTOR_H
#define VORN_CONTAINERS_VECTOR_H

#include <cassert>
#include <climits>
#include <cstddef>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <type_traits>

#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>

namespace Vorn {

// Growth policy: grows by half the current size, but by at least N and by at least the
// number of elements being inserted.
template <unsigned int N>
struct VORN_API exponential_growth {
  exponential_growth() = default;
  exponential_growth(exponential_growth const&) = default;
  exponential_growth& operator=(exponential_growth const&) { return *this; }

  // The capacity argument is ignored.
  static unsigned int get_growth(unsigned int size, unsigned int, unsigned int count) {
    unsigned int const step = size < N ? N : size / 2;
    return count > step ? count : step;
  }
};

// Growth policy: grows by the number of elements being inserted plus N.
template <unsigned int N>
struct VORN_API incremental_growth {
  incremental_growth() = default;
  incremental_growth(incremental_growth const&) = default;
  incremental_growth& operator=(incremental_growth const&) { return *this; }

  // The size and capacity arguments are ignored. Wraps modulo 2^32 for huge counts;
  // the vector treats a growth smaller than the count as an overflow.
  static unsigned int get_growth(unsigned int, unsigned int, unsigned int count) {
    return count + N;
  }
};

// Both policies are instantiated once, inside the library, and exported from it.
extern template struct VORN_API exponential_growth<10>;
extern template struct VORN_API incremental_growth<10>;

template <class T, class A = allocator, class G = exponential_growth<10>>
class VORN_API vector : private A {
  static_assert(alignof(T) <= alignof(std::max_align_t),
                "vector blocks are only aligned for fundamental types");

public:
  typedef std::reverse_iterator<T*> reverse_iterator;
  typedef std::reverse_iterator<T const*> const_reverse_iterator;

  vector() noexcept = default;
  explicit vector(A const&) noexcept {}
  // Empty, then resize(n); a failed resize leaves the vector empty.
  explicit vector(unsigned int n) { resize(n); }
  vector(unsigned int n, A const&) { resize(n); }
  // Empty, then resize(n, value); a failed resize leaves the vector empty.
  vector(unsigned int n, T const& value) { resize(n, value); }
  vector(unsigned int n, T const& value, A const&) { resize(n, value); }
  // Capacity equals other.size(). If the block cannot be allocated the copy is empty
  // with a null begin.
  vector(vector const& other);
  ~vector();

  // assign(other); a failed assign leaves *this unchanged.
  vector& operator=(vector const& other) {
    assign(other);
    return *this;
  }

  // Replaces the contents with copies of other's elements in a new block of exactly
  // other.size() slots (a zero-sized block when other is empty), then destroys the old
  // elements. All or nothing: false on exhaustion with *this unchanged. Safe when other
  // is *this.
  bool assign(vector const& other);

  // Grows the capacity to exactly n. Never shrinks: n <= capacity() returns true and
  // changes nothing. False on exhaustion with the vector unchanged.
  // Note: a block larger than 2^32 - 1 bytes counts as exhaustion on every target.
  bool reserve(unsigned int n);

  // Appends value-initialised elements up to n, or erases the tail down to n (the
  // capacity is kept). False only when growing fails; the vector is then unchanged.
  bool resize(unsigned int n) {
    if (n > size()) return _Insert_dispatch(end_, n - size(), T(), std::true_type());
    erase(begin_ + n, end_);
    return true;
  }
  bool resize(unsigned int n, T const& value) {
    if (n > size()) return _Insert_dispatch(end_, n - size(), value, std::true_type());
    erase(begin_ + n, end_);
    return true;
  }

  // Inserts a copy of value before pos. Returns the new element's position (in the new
  // block if the vector grew), or end() on exhaustion with the vector unchanged.
  T* insert(T* pos, T const& value) {
    std::ptrdiff_t const offset = pos - begin_;
    if (!_Insert_dispatch(pos, 1, value, std::true_type())) return end_;
    return begin_ + offset;
  }

  // Inserts n copies of value before pos. n == 0 returns true and changes nothing.
  // False on exhaustion or size overflow with the vector unchanged. value may refer to
  // an element of this vector.
  // Note: should an element copy constructor throw while the tail is shifted within the
  // block, the vector keeps the elements before pos (at least) and destroys the rest;
  // appending never loses elements.
  bool insert(T* pos, unsigned int n, T const& value) {
    return _Insert_dispatch(pos, n, value, std::true_type());
  }

  // Appends a copy of value; false on exhaustion with the vector unchanged.
  bool push_back(T const& value) {
    if (end_ == capacity_end_) return _Insert_dispatch(end_, 1, value, std::true_type());
    ::new (static_cast<void*>(end_)) T(value);
    ++end_;
    return true;
  }

  // Note: unchecked, like front() and back(); the vector must not be empty.
  void pop_back() {
    assert(!empty());
    erase(end_ - 1);
  }

  T* erase(T* pos) { return erase(pos, pos + 1); }
  // Removes [first, last), moving the tail down; the capacity is kept. Returns first.
  // Note: should a tail element's copy constructor throw, the vector keeps the
  // elements before the failing slot and the rest are destroyed.
  T* erase(T* first, T* last);

  // Destroys every element; the capacity is kept.
  void clear() { erase(begin_, end_); }

  void swap(vector& other) noexcept {
    std::swap(begin_, other.begin_);
    std::swap(end_, other.end_);
    std::swap(capacity_end_, other.capacity_end_);
  }

  T* begin() noexcept { return begin_; }
  T const* begin() const noexcept { return begin_; }
  // A reference to the end field itself.
  T* const& end() noexcept { return end_; }
  T const* end() const noexcept { return end_; }
  T& front() {
    assert(!empty());
    return *begin_;
  }
  T const& front() const {
    assert(!empty());
    return *begin_;
  }
  T& back() {
    assert(!empty());
    return end_[-1];
  }
  T const& back() const {
    assert(!empty());
    return end_[-1];
  }
  reverse_iterator rbegin() noexcept { return reverse_iterator(end_); }
  const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end_); }
  reverse_iterator rend() noexcept { return reverse_iterator(begin_); }
  const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin_); }

  // Note: no bounds check; the owning classes check and raise their own errors.
  T& operator[](unsigned int i) {
    assert(i < size());
    return begin_[i];
  }
  T const& operator[](unsigned int i) const {
    assert(i < size());
    return begin_[i];
  }

  unsigned int size() const noexcept { return static_cast<unsigned int>(end_ - begin_); }
  unsigned int capacity() const noexcept {
    return static_cast<unsigned int>(capacity_end_ - begin_);
  }
  bool empty() const noexcept { return begin_ == end_; }
  A const& get_allocator() const noexcept { return *this; }

private:
  static constexpr bool kPlain = std::is_trivially_copyable<T>::value;
  // The largest element count whose block size fits in 32 bits.
  static constexpr unsigned int kMaxElements = static_cast<unsigned int>(UINT_MAX / sizeof(T));

  // The one insertion routine: in place when n slots are free, otherwise through a new
  // block of size + growth slots. False on exhaustion or overflow, nothing changed.
  bool _Insert_dispatch(T* pos, unsigned int n, T const& value, std::true_type const&) {
    assert(begin_ <= pos && pos <= end_);
    unsigned int const room = static_cast<unsigned int>(capacity_end_ - end_);
    return n <= room ? _InsertInPlace(pos, n, value) : _Grow(pos, n, value);
  }
  bool _InsertInPlace(T* pos, unsigned int n, T const& value);
  [[gnu::noinline]] bool _Grow(T* pos, unsigned int n, T const& value);
  // Builds a block of `capacity` slots holding [begin, pos), n copies of *value, then
  // [pos, end), and swaps it in. False if the block cannot be allocated.
  bool _Rebuild(unsigned int capacity, T* pos, unsigned int n, T const* value);

  // Relocates [first, end) to start at dest > first, from the last element down.
  // end_ is not moved. Should a copy throw, end_ is cut to the failing source + 1.
  void _MoveForward(T* first, T* dest);
  // Relocates [src, end) to start at dest < src, from src upward, then destroys the
  // elements left between the new end and the old end. end_ is not moved. Should a
  // copy throw, the elements from the failing slot on are destroyed and end_ is cut there.
  void _MoveBackward(T* src, T* dest);
  // Runs the element destructor on [first, last); nothing for plain types.
  static void _Destroy(T* first, T* last) noexcept {
    if constexpr (!std::is_trivially_destructible<T>::value) {
      for (; first != last; ++first) first->~T();
    }
  }
  // Copies [first, last) into raw slots at dest and returns the end of the copies. A
  // throwing copy destroys what was built and rethrows.
  static T* _CopyInto(T const* first, T const* last, T* dest) {
    if constexpr (kPlain) {
      if (first == last) return dest;
      std::memcpy(static_cast<void*>(dest), first,
                  static_cast<std::size_t>(last - first) * sizeof(T));
      return dest + (last - first);
    } else {
      return std::uninitialized_copy(first, last, dest);
    }
  }
  static T* _Allocate(unsigned int count) noexcept {
    return static_cast<T*>(detail::allocate_bytes(static_cast<std::size_t>(count) * sizeof(T)));
  }
  // Whether value is one of the elements in [pos, end).
  bool _Holds(T* pos, T const& value) const {
    std::less<T const*> const before;
    return !before(std::addressof(value), pos) && before(std::addressof(value), end_);
  }

  // Field order is part of the contract: begin <= end <= capacity_end, and the slots in
  // [end, capacity_end) hold no constructed elements.
  T* begin_ = nullptr;
  T* end_ = nullptr;
  T* capacity_end_ = nullptr;
};

template <class T, class A, class G>
vector<T, A, G>::vector(vector const& other) : A() {
  unsigned int const count = other.size();
  T* const block = _Allocate(count);
  if (block == nullptr) return;
  try {
    end_ = capacity_end_ = _CopyInto(other.begin_, other.end_, block);
  } catch (...) {
    detail::release_bytes(block);
    throw;
  }
  begin_ = block;
}

template <class T, class A, class G>
vector<T, A, G>::~vector() {
  _Destroy(begin_, end_);
  detail::release_bytes(begin_);
}

template <class T, class A, class G>
bool vector<T, A, G>::assign(vector const& other) {
  vector copy(other);
  if (copy.begin_ == nullptr) return false;
  swap(copy);
  return true;
}

template <class T, class A, class G>
bool vector<T, A, G>::reserve(unsigned int n) {
  if (n <= capacity()) return true;
  if (n > kMaxElements) return false;
  return _Rebuild(n, end_, 0, nullptr);
}

template <class T, class A, class G>
T* vector<T, A, G>::erase(T* first, T* last) {
  assert(begin_ <= first && first <= last && last <= end_);
  if (first == last) return first;
  T* const newEnd = end_ - (last - first);
  _MoveBackward(last, first);
  end_ = newEnd;
  return first;
}

template <class T, class A, class G>
bool vector<T, A, G>::_InsertInPlace(T* pos, unsigned int n, T const& value) {
  if (n == 0) return true;
  if (_Holds(pos, value)) {
    T const copy(value);
    return _InsertInPlace(pos, n, copy);
  }
  T* const oldEnd = end_;
  _MoveForward(pos, pos + n);
  if constexpr (kPlain) {
    for (T* slot = pos; slot != pos + n; ++slot) ::new (static_cast<void*>(slot)) T(value);
  } else {
    try {
      std::uninitialized_fill_n(pos, n, value);
    } catch (...) {
      _Destroy(pos + n, oldEnd + n);
      end_ = pos;
      throw;
    }
  }
  end_ = oldEnd + n;
  return true;
}

template <class T, class A, class G>
bool vector<T, A, G>::_Grow(T* pos, unsigned int n, T const& value) {
  unsigned int const count = size();
  unsigned int const growth = G::get_growth(count, capacity(), n);
  unsigned int const newCapacity = count + growth;
  if (growth < n || newCapacity < count || newCapacity > kMaxElements) return false;
  return _Rebuild(newCapacity, pos, n, &value);
}

template <class T, class A, class G>
bool vector<T, A, G>::_Rebuild(unsigned int capacity, T* pos, unsigned int n, T const* value) {
  T* const block = _Allocate(capacity);
  if (block == nullptr) return false;
  T* built = block;
  try {
    built = _CopyInto(begin_, pos, block);
    if (n != 0) built = std::uninitialized_fill_n(built, n, *value);
    built = _CopyInto(pos, end_, built);
  } catch (...) {
    _Destroy(block, built);
    detail::release_bytes(block);
    throw;
  }
  _Destroy(begin_, end_);
  detail::release_bytes(begin_);
  begin_ = block;
  end_ = built;
  capacity_end_ = block + capacity;
  return true;
}

template <class T, class A, class G>
void vector<T, A, G>::_MoveForward(T* first, T* dest) {
  assert(first < dest);
  if constexpr (kPlain) {
    if (first != end_) {
      std::memmove(static_cast<void*>(dest), first,
                   static_cast<std::size_t>(end_ - first) * sizeof(T));
    }
  } else {
    std::ptrdiff_t const shift = dest - first;
    for (T* src = end_; src != first;) {
      --src;
      try {
        ::new (static_cast<void*>(src + shift)) T(*src);
      } catch (...) {
        _Destroy(src + shift + 1, end_ + shift);
        end_ = src + 1;
        throw;
      }
      src->~T();
    }
  }
}

template <class T, class A, class G>
void vector<T, A, G>::_MoveBackward(T* src, T* dest) {
  assert(dest < src);
  if constexpr (kPlain) {
    if (src != end_) {
      std::memmove(static_cast<void*>(dest), src, static_cast<std::size_t>(end_ - src) * sizeof(T));
    }
  } else {
    for (; src != end_; ++src, ++dest) {
      dest->~T();
      try {
        ::new (static_cast<void*>(dest)) T(*src);
      } catch (...) {
        _Destroy(dest + 1, end_);
        end_ = dest;
        throw;
      }
    }
    _Destroy(dest, end_);
  }
}

}  // namespace Vorn

#endif
