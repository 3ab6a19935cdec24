// Vorn::list: the library's circular doubly linked list.
//
// Each element lives in its own heap node, obtained from the global non-throwing
// operator new (Vorn::detail::allocate_bytes). The list owns its nodes and, for value
// types such as the wide string, the elements in them; for pointer element types it
// owns the pointers, never the pointees (the owning collections decide about those).
// Running out of memory is reported by the result (end() or false), never by an
// exception, and no member throws std::bad_alloc.
//
// There is no allocated head node: the sentinel is the list object itself. Nodes and
// the list both derive from list_impl::_ListLinks, and the list's own _ListLinks base
// is the sentinel, so an empty list is that base linked to itself. A list therefore
// holds pointers to itself and is only ever copied through its copy constructor,
// assign or swap. size() is constant-time through a stored count.
//
// The only single-element insertion is insert(pos), which inserts a value-initialised
// element that the caller then fills through the returned iterator.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CONTAINERS_LIST_H
#define VORN_CONTAINERS_LIST_H

#include <cassert>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <utility>

#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>

namespace Vorn {
namespace list_impl {

// The two links every node has, and the sentinel's links inside the list object.
struct VORN_API _ListLinks {
  _ListLinks* next;
  _ListLinks* prev;
};

// One element's heap block. Layout: the links (next, then prev) as the base, then the
// value. The links come first so that the sentinel, which has no value, is a complete
// links object inside the list rather than a node pretended into place. The value is
// constructed and destroyed by the list, not by the node, so a node can be linked
// before its value exists.
template <class T>
struct VORN_API _ListNode : _ListLinks {
  _ListNode() noexcept {}
  ~_ListNode() {}
  _ListNode(_ListNode const&) = delete;
  _ListNode& operator=(_ListNode const&) = delete;

  union {
    T value;
  };
};

// Links node immediately before pos.
inline void _Link(_ListLinks* node, _ListLinks* pos) noexcept {
  node->next = pos;
  node->prev = pos->prev;
  pos->prev->next = node;
  pos->prev = node;
}

inline void _Unlink(_ListLinks* node) noexcept {
  node->prev->next = node->next;
  node->next->prev = node->prev;
}

// Moves [first, last) before pos, keeping its order. pos must not lie in [first, last].
inline void _Transfer(_ListLinks* pos, _ListLinks* first, _ListLinks* last) noexcept {
  _ListLinks* const before = pos->prev;
  first->prev->next = last;
  last->prev->next = pos;
  before->next = first;
  pos->prev = last->prev;
  last->prev = first->prev;
  first->prev = before;
}

// After ring took over other's links, points the neighbours back at ring, or makes ring
// empty when the links it took were other's own (other was empty).
inline void _Rehome(_ListLinks& ring, _ListLinks const& other) noexcept {
  if (ring.next == &other) {
    ring.next = ring.prev = &ring;
  } else {
    ring.next->prev = &ring;
    ring.prev->next = &ring;
  }
}

// Element equality for remove: operator== for most types; strings compare by text.
template <class T>
bool _Equal(T const& a, T const& b) {
  return a == b;
}
template <class C, class F>
bool _Equal(stringbase<C, F> const& a, stringbase<C, F> const& b) {
  return a.length() == b.length() && std::memcmp(a.c_str(), b.c_str(), a.length() * sizeof(C)) == 0;
}

template <class T>
class VORN_API iterator {
public:
  typedef std::bidirectional_iterator_tag iterator_category;
  typedef T value_type;
  typedef std::ptrdiff_t difference_type;
  typedef T* pointer;
  typedef T& reference;

  iterator() noexcept = default;
  explicit iterator(_ListLinks* node) noexcept : node_(node) {}

  // Note: dereferencing end() is not guarded.
  T& operator*() const { return static_cast<_ListNode<T>*>(node_)->value; }
  T* operator->() const { return std::addressof(**this); }
  iterator& operator++() noexcept {
    node_ = node_->next;
    return *this;
  }
  iterator operator++(int) noexcept {
    iterator const before = *this;
    node_ = node_->next;
    return before;
  }
  iterator& operator--() noexcept {
    node_ = node_->prev;
    return *this;
  }
  iterator operator--(int) noexcept {
    iterator const before = *this;
    node_ = node_->prev;
    return before;
  }
  friend bool operator==(iterator a, iterator b) noexcept { return a.node_ == b.node_; }
  friend bool operator!=(iterator a, iterator b) noexcept { return a.node_ != b.node_; }

  // The node (or the sentinel) this iterator stands on.
  _ListLinks* _Node() const noexcept { return node_; }

private:
  _ListLinks* node_ = nullptr;
};

template <class T>
class VORN_API const_iterator {
public:
  typedef std::bidirectional_iterator_tag iterator_category;
  typedef T value_type;
  typedef std::ptrdiff_t difference_type;
  typedef T const* pointer;
  typedef T const& reference;

  const_iterator() noexcept = default;
  explicit const_iterator(_ListLinks const* node) noexcept : node_(node) {}
  const_iterator(iterator<T> it) noexcept : node_(it._Node()) {}

  T const& operator*() const { return static_cast<_ListNode<T> const*>(node_)->value; }
  T const* operator->() const { return std::addressof(**this); }
  const_iterator& operator++() noexcept {
    node_ = node_->next;
    return *this;
  }
  const_iterator operator++(int) noexcept {
    const_iterator const before = *this;
    node_ = node_->next;
    return before;
  }
  const_iterator& operator--() noexcept {
    node_ = node_->prev;
    return *this;
  }
  const_iterator operator--(int) noexcept {
    const_iterator const before = *this;
    node_ = node_->prev;
    return before;
  }
  friend bool operator==(const_iterator a, const_iterator b) noexcept { return a.node_ == b.node_; }
  friend bool operator!=(const_iterator a, const_iterator b) noexcept { return a.node_ != b.node_; }

  _ListLinks const* _Node() const noexcept { return node_; }

private:
  _ListLinks const* node_ = nullptr;
};

}  // namespace list_impl

template <class T, class A = allocator>
class VORN_API list : private A, private list_impl::_ListLinks {
public:
  typedef list_impl::iterator<T> iterator;
  typedef list_impl::const_iterator<T> const_iterator;
  typedef std::reverse_iterator<iterator> reverse_iterator;
  typedef std::reverse_iterator<const_iterator> const_reverse_iterator;

  list() noexcept : _ListLinks{this, this} {}
  explicit list(A const&) noexcept : list() {}
  // Copies other's elements in order. Note: on exhaustion the copy is partial (it holds
  // the elements copied so far); use assign for all-or-nothing.
  list(list const& other) : list() { insert(begin(), other.begin(), other.end()); }
  ~list() { clear(); }

  // assign(other); a failed assign leaves *this unchanged.
  list& operator=(list const& other) {
    assign(other);
    return *this;
  }

  // Replaces the contents with copies of other's elements, all or nothing: the copies
  // are built in a temporary list first, so on exhaustion this returns false with *this
  // unchanged. Safe when other is *this.
  bool assign(list const& other);

  // Inserts a value-initialised element (null pointer, empty string) before pos and
  // returns an iterator to it for the caller to fill; end() on exhaustion.
  iterator insert(iterator pos) {
    list_impl::_ListNode<T>* const node = _Emplace(pos._Node());
    return node != nullptr ? iterator(node) : end();
  }
  // Inserts copies of [first, last) before pos, in order. Returns false at the first
  // element that cannot be inserted; the elements inserted before it stay. An empty
  // range returns true. The range must not come from this list.
  bool insert(iterator pos, iterator first, iterator last) {
    return _InsertRange(pos, first, last);
  }
  bool insert(iterator pos, const_iterator first, const_iterator last) {
    return _InsertRange(pos, first, last);
  }

  // Destroys the element at pos and frees its node; returns the following position.
  // pos must not be end().
  iterator erase(iterator pos);
  // Erases [first, last) one node at a time; returns last.
  iterator erase(iterator first, iterator last) {
    while (first != last) first = erase(first);
    return last;
  }
  void clear() { erase(begin(), end()); }
  // Note: unchecked, like front() and back(); the list must not be empty.
  void pop_front() {
    assert(!empty());
    erase(begin());
  }
  void pop_back() {
    assert(!empty());
    erase(iterator(prev));
  }

  T& front() {
    assert(!empty());
    return *begin();
  }
  T const& front() const {
    assert(!empty());
    return *begin();
  }
  T& back() {
    assert(!empty());
    return *iterator(prev);
  }
  T const& back() const {
    assert(!empty());
    return *const_iterator(prev);
  }

  iterator begin() noexcept { return iterator(next); }
  const_iterator begin() const noexcept { return const_iterator(next); }
  iterator end() noexcept { return iterator(_Head()); }
  const_iterator end() const noexcept { return const_iterator(_Head()); }
  reverse_iterator rbegin() noexcept { return reverse_iterator(end()); }
  const_reverse_iterator rbegin() const noexcept { return const_reverse_iterator(end()); }
  reverse_iterator rend() noexcept { return reverse_iterator(begin()); }
  const_reverse_iterator rend() const noexcept { return const_reverse_iterator(begin()); }

  unsigned int size() const noexcept { return size_; }
  bool empty() const noexcept { return size_ == 0; }

  // Erases every element equal to value (pointer equality for pointers, equal text for
  // strings), adjacent ones included; the others keep their order. value may be an
  // element of this list.
  void remove(T const& value);

  // Moves all of other's elements before pos in constant time. Splicing a list into
  // itself, or an empty list, does nothing.
  void splice(iterator pos, list& other) {
    if (&other != this && !other.empty()) {
      _Splice(pos, other, other.begin(), other.end(), other.size_);
    }
  }
  // Moves the element at it (in other) before pos. Does nothing when it is other.end()
  // or when the element already sits right before pos (pos is it or the node after it).
  void splice(iterator pos, list& other, iterator it) {
    iterator const last = std::next(it);
    if (it != other.end() && pos != it && pos != last) _Splice(pos, other, it, last, 1);
  }
  // Moves [first, last) (in other) before pos; from another list this walks the range
  // once to count it. Does nothing for an empty range or when pos is last or first (the
  // range would stay where it is). Within one list, pos must not lie inside the range.
  void splice(iterator pos, list& other, iterator first, iterator last) {
    if (first == last || pos == last || pos == first) return;
    unsigned int const count =
        &other != this ? static_cast<unsigned int>(std::distance(first, last)) : 0;
    _Splice(pos, other, first, last, count);
  }

  // Exchanges the elements and sizes by relinking; no node is allocated or copied.
  void swap(list& other) noexcept {
    std::swap(next, other.next);
    std::swap(prev, other.prev);
    list_impl::_Rehome(*this, other);
    list_impl::_Rehome(other, *this);
    std::swap(size_, other.size_);
  }

  A const& get_allocator() const noexcept { return *this; }

protected:
  // Allocates a node and links it before pos (a node or the sentinel, hence the links
  // type), counting it in size(). The value is left unconstructed for the caller.
  // Null on exhaustion, with nothing changed.
  list_impl::_ListNode<T>* _Buynode(list_impl::_ListLinks* pos);
  // Releases a node's block: no unlinking, and the element is not destroyed.
  static void _Freenode(list_impl::_ListNode<T>* node) noexcept {
    node->~_ListNode();
    detail::release_bytes(node);
  }
  // Relinks [first, last) before pos; moves count from other's size to this one's when
  // other is another list (count is 0 within one list).
  void _Splice(iterator pos, list& other, iterator first, iterator last, unsigned int count) {
    if (&other != this) {
      size_ += count;
      other.size_ -= count;
    }
    list_impl::_Transfer(pos._Node(), first._Node(), last._Node());
  }

private:
  list_impl::_ListLinks* _Head() noexcept { return this; }
  list_impl::_ListLinks const* _Head() const noexcept { return this; }

  // _Buynode, then constructs the value from args (value-initialised when there are
  // none). A throwing constructor unlinks and frees the node again.
  template <class... Args>
  list_impl::_ListNode<T>* _Emplace(list_impl::_ListLinks* pos, Args const&... args);

  template <class It>
  bool _InsertRange(iterator pos, It first, It last) {
    for (; first != last; ++first) {
      if (_Emplace(pos._Node(), *first) == nullptr) return false;
    }
    return true;
  }

  // Layout: the allocator base takes no space, the _ListLinks base (next, prev) is the
  // sentinel, then the element count.
  unsigned int size_ = 0;
};

template <class T, class A>
bool list<T, A>::assign(list const& other) {
  list copy;
  bool const complete = copy.insert(copy.end(), other.begin(), other.end());
  if (complete) swap(copy);
  return complete;
}

template <class T, class A>
typename list<T, A>::iterator list<T, A>::erase(iterator pos) {
  assert(pos != end());
  list_impl::_ListLinks* const node = pos._Node();
  iterator const following(node->next);
  list_impl::_Unlink(node);
  list_impl::_ListNode<T>* const element = static_cast<list_impl::_ListNode<T>*>(node);
  element->value.~T();
  _Freenode(element);
  --size_;
  return following;
}

template <class T, class A>
void list<T, A>::remove(T const& value) {
  // The node holding value itself, if any, goes last so that value stays readable.
  iterator self = end();
  for (iterator it = begin(); it != end();) {
    iterator const current = it++;
    if (!list_impl::_Equal(*current, value)) continue;
    if (std::addressof(*current) == std::addressof(value)) {
      self = current;
    } else {
      erase(current);
    }
  }
  if (self != end()) erase(self);
}

template <class T, class A>
list_impl::_ListNode<T>* list<T, A>::_Buynode(list_impl::_ListLinks* pos) {
  void* const block = detail::allocate_bytes(sizeof(list_impl::_ListNode<T>));
  if (block == nullptr) return nullptr;
  list_impl::_ListNode<T>* const node = ::new (block) list_impl::_ListNode<T>;
  list_impl::_Link(node, pos);
  ++size_;
  return node;
}

template <class T, class A>
template <class... Args>
list_impl::_ListNode<T>* list<T, A>::_Emplace(list_impl::_ListLinks* pos, Args const&... args) {
  list_impl::_ListNode<T>* const node = _Buynode(pos);
  if (node == nullptr) return nullptr;
  try {
    ::new (static_cast<void*>(std::addressof(node->value))) T(args...);
  } catch (...) {
    list_impl::_Unlink(node);
    --size_;
    _Freenode(node);
    throw;
  }
  return node;
}

// The wide-string list is instantiated once, inside the library, and exported from it.
namespace list_impl {
extern template struct VORN_API _ListNode<stringbase<unsigned short, wstringfuncs>>;
extern template class VORN_API iterator<stringbase<unsigned short, wstringfuncs>>;
extern template class VORN_API const_iterator<stringbase<unsigned short, wstringfuncs>>;
}  // namespace list_impl
extern template class VORN_API list<stringbase<unsigned short, wstringfuncs>>;

}  // namespace Vorn

#endif
