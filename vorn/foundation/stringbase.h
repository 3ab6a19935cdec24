// stringbase: the library's small owning string, one template for narrow and wide text.
//
// stringbase<char, astringfuncs> holds narrow UTF-8 text (exception messages, identifier
// strings); stringbase<unsigned short, wstringfuncs> holds wide text as 16-bit code
// units (attribute names and values, zone designators and unit names). A string is an
// exact-size buffer plus a length: no spare capacity, no sharing, no moves. Each string
// owns its buffer exclusively; buffers come from malloc and go back through free.
//
// A string is in one of two "nothing" states that both print as "": empty (no buffer,
// the state after default construction, clear() or copying a null pointer) and an
// allocated "" (after copying ""), which is not empty(). Code that tells the two apart
// relies on this on purpose.
//
// When a buffer cannot be allocated the string is left empty; nothing is reported.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_FOUNDATION_STRINGBASE_H
#define VORN_FOUNDATION_STRINGBASE_H

#include <cstddef>
#include <cstring>
#include <type_traits>

#include <vorn/foundation/export.h>

// The library's own 16-bit text functions. The platform's wide functions work on the
// 32-bit wchar_t and cannot be used on this text. Every argument must be a non-null,
// zero-terminated text.
namespace Vorn {
namespace text {

// Number of code units before the terminating zero unit.
VORN_API unsigned int length(unsigned short const* text);

// Compares code unit by code unit: negative, zero or positive as a sorts before, equal
// to or after b.
VORN_API int compare(unsigned short const* a, unsigned short const* b);

// As compare, with A-Z folded to a-z first; every other code unit compares as it is.
VORN_API int compare_caseless(unsigned short const* a, unsigned short const* b);

}  // namespace text

namespace detail {

// Throws the string's index error: a bare char* to the static text "Index out of Range",
// so that handlers for char* and for char const* both catch it.
[[noreturn]] VORN_API void throw_string_index_error();

}  // namespace detail
}  // namespace Vorn

// Traits of the narrow form: measures with strlen. Its operator[] yields a signed char on
// every target, also where plain char is unsigned (32-bit ARM), so that bytes from 0x80
// up read as the same negative numbers everywhere.
struct VORN_API astringfuncs {
  using unit_value = signed char;
  static unsigned int length(char const* text) {
    return static_cast<unsigned int>(std::strlen(text));
  }
  static constexpr char empty_text[1] = {0};
};

// Traits of the wide form: measures 16-bit units with Vorn::text::length.
struct VORN_API wstringfuncs {
  using unit_value = unsigned short;
  static unsigned int length(unsigned short const* text) { return Vorn::text::length(text); }
  static constexpr unsigned short empty_text[1] = {0};
};

class VornUtilText;

template <class C, class F>
class stringbase {
public:
  stringbase() = default;
  stringbase(C const* text) { copy(text, 0); }
  stringbase(stringbase const& other) { copy(other.buffer_, other.length_); }
  // Frees the buffer; the string is empty afterwards.
  virtual ~stringbase();

  // Replaces the contents with the first `count` units of `text` and a terminator. A
  // null text leaves the string empty. A count of 0 means "measure text", so copying ""
  // gives the allocated "" and an explicit zero-length copy of a longer text is
  // impossible. text[0 .. count-1] must exist; text[count] is never read.
  void copy(C const* text, unsigned int count);

  stringbase const& operator=(stringbase const& other) {
    copy(other.buffer_, other.length_);
    return *this;
  }
  // Both pointer forms are the same operation, copy(text, 0).
  stringbase const& operator=(C* text) {
    copy(text, 0);
    return *this;
  }
  stringbase const& operator=(C const* text) {
    copy(text, 0);
    return *this;
  }
  // `s = nullptr` empties the string (the two pointer forms alone would be ambiguous).
  stringbase const& operator=(std::nullptr_t) {
    clear();
    return *this;
  }

  // Appends a zero-terminated text; null appends nothing. Appending to an empty string
  // is a plain copy, so the result can be the allocated "" when text is "".
  void append(C const* text);

  // Appends other's text. Note: an empty other (no buffer) changes nothing, also when
  // this string is empty, so the result stays empty rather than becoming "".
  stringbase const& operator+=(stringbase const& other) {
    append(other.buffer_);
    return *this;
  }
  stringbase const& operator+=(C const* text) {
    append(text);
    return *this;
  }

  // A copy of this string with text appended; s + nullptr is a plain copy of s.
  // There is deliberately no operator+ taking a stringbase.
  stringbase operator+(C const* text) const {
    stringbase result(*this);
    result.append(text);
    return result;
  }

  // The code unit at index, by value. Throws a bare char* pointing at the static text
  // "Index out of Range" (capital R; not a VornException, and the same narrow text for
  // both forms) when index >= length(), so s[0] throws on an empty string.
  typename F::unit_value operator[](unsigned int index) const {
    if (index >= length_) Vorn::detail::throw_string_index_error();
    return static_cast<typename F::unit_value>(buffer_[index]);
  }
  // Any other integer type: the same check, with negative indexes out of range too.
  // Without this, s[0] would compete with subscripting the converted pointer.
  template <class I,
            std::enable_if_t<std::is_integral<I>::value && !std::is_same<I, unsigned int>::value,
                             int> = 0>
  typename F::unit_value operator[](I index) const {
    if constexpr (std::is_signed<I>::value) {
      if (index < 0) Vorn::detail::throw_string_index_error();
    }
    if (static_cast<unsigned long long>(index) >= length_) {
      Vorn::detail::throw_string_index_error();
    }
    return static_cast<typename F::unit_value>(buffer_[index]);
  }

  // The text, or a static "" of the matching width when the string is empty: never null.
  C const* c_str() const { return buffer_ != nullptr ? buffer_ : F::empty_text; }
  operator C const*() const { return c_str(); }

  // Number of code units, not counting the terminator.
  unsigned int length() const { return length_; }
  // True exactly when there is no buffer. Note: a string holding an allocated "" is not
  // empty although its length is 0.
  bool empty() const { return buffer_ == nullptr; }
  // Frees the buffer; the string is empty afterwards.
  void clear();

private:
  // The conversion functions fill their result in place.
  friend class VornUtilText;

  // Replaces the contents with an uninitialised block for `count` units plus a written
  // terminator and returns it for the caller to fill; null, with the string left empty,
  // when the block cannot be obtained.
  C* prepare(unsigned int count);

  // Layout is part of the exported interface: the vtable pointer (virtual destructor
  // only), then these two fields in this order.
  C* buffer_ = nullptr;      // length_ + 1 units from malloc, or null
  unsigned int length_ = 0;  // units held, not counting the terminator
};

// The two forms are instantiated once, inside the library, and exported from it.
extern template class VORN_API stringbase<char, astringfuncs>;
extern template class VORN_API stringbase<unsigned short, wstringfuncs>;

#endif
