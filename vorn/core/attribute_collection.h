// VornAttributeCollection: the attribute table of one object, an ordered list of
// VornAttribute found by position or by name.
//
// The collection owns every attribute it holds, however it got there: Add and AddRange
// store heap copies, AddReference adopts the caller's heap object (created with new)
// itself. RemoveAt, Remove, Clear, assignment and the destructor delete what they take
// out; RemoveReference is the one way to take an attribute out without deleting it, and
// the caller must hold its pointer already (for example from begin()).
//
// Names are compared exactly or, per collection, without regard to A-Z letter case.
// Names need not be unique: every Add appends, and a lookup by name finds the earliest
// match. Positional and name lookups are linear, which suits tables of a few dozen
// attributes; adopting and detaching never moves or copies the other attributes.
//
// Running out of memory while adding is reported as VornException("Parameter is NULL",
// 5003), with the attributes added before it kept and nothing leaked.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CORE_ATTRIBUTE_COLLECTION_H
#define VORN_CORE_ATTRIBUTE_COLLECTION_H

#include <ctime>
#include <iterator>

#include <vorn/containers/list.h>
#include <vorn/containers/vector.h>
#include <vorn/core/attribute.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/util/date_time.h>

class VORN_API VornAttributeCollection {
public:
  typedef Vorn::vector<VornAttribute, Vorn::allocator, Vorn::exponential_growth<10>>
      AttributeVector;
  typedef Vorn::list_impl::iterator<VornAttribute*> iterator;
  typedef Vorn::list_impl::const_iterator<VornAttribute*> const_iterator;
  typedef std::reverse_iterator<iterator> reverse_iterator;
  typedef std::reverse_iterator<const_iterator> const_reverse_iterator;
  // A name comparison: 0 when the two zero-terminated texts are the same key.
  typedef int (*Compare)(unsigned short const* a, unsigned short const* b);

  // Empty, comparing names exactly.
  VornAttributeCollection();
  // Copies of attrs[0] .. attrs[count - 1]. Throws VornException("Parameter is NULL",
  // 5003) when attrs is null, whatever count is.
  VornAttributeCollection(VornAttribute* attrs, int count);
  // Copies of every element of v, first to last.
  explicit VornAttributeCollection(AttributeVector const& v);
  // Deep copies of other's attributes.
  // Note: other's caseless setting is deliberately not copied; the copy compares exactly.
  VornAttributeCollection(VornAttributeCollection const& other);
  // Deletes every attribute.
  ~VornAttributeCollection();

  // Clear(), then Add(*a) for each attribute of other in order. This collection keeps
  // its own caseless setting.
  // Note: because the target is cleared first, assigning a collection to itself empties
  // it.
  VornAttributeCollection const& operator=(VornAttributeCollection const& other);

  // Chooses caseless (A-Z folded to a-z) or exact name comparison for later lookups.
  // Attributes already held are not re-checked; names that become equal all stay.
  void SetCaselessCompare(bool caseless);
  bool IsCaselessCompare() const { return m_caseless; }

  unsigned int Count() const { return m_list.size(); }
  // Position of the first attribute whose name matches key, or -1. A null key matches
  // nothing.
  int GetIndexOfKey(unsigned short const* key) const;
  bool KeyExists(unsigned short const* key) const { return GetIndexOfKey(key) >= 0; }
  // The attribute at index. Throws VornException("Index out of range", 5002) when
  // index >= Count().
  VornAttribute const& operator[](unsigned int index) const;

  // The attribute pointers in insertion order.
  iterator begin() { return m_list.begin(); }
  iterator end() { return m_list.end(); }
  const_iterator begin() const { return m_list.begin(); }
  const_iterator end() const { return m_list.end(); }
  reverse_iterator rbegin() { return reverse_iterator(end()); }
  reverse_iterator rend() { return reverse_iterator(begin()); }
  const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
  const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

  // Appends attr itself; the collection owns it from now on. Throws
  // VornException("Parameter is NULL", 5003) when attr is null, and also when the list
  // cannot grow; attr then stays the caller's.
  void AddReference(VornAttribute* attr);

  // Each Add appends a heap copy (or a new attribute built from the arguments, as the
  // matching VornAttribute constructor does) through AddReference, without looking at
  // the names present.
  // Note: a copy that cannot be allocated is deliberately reported as AddReference
  // reports a null pointer, VornException("Parameter is NULL", 5003). A BLOB whose bytes
  // cannot be copied throws VornException("Out of Memory", 5005). Nothing is added then.
  void Add(VornAttribute const& attr);
  void Add(unsigned short const* name, unsigned short const* text);
  // Narrow name and text, both converted to wide text.
  void Add(char const* name, char const* text);
  // Double with Length() and Decimal() 0.
  void Add(unsigned short const* name, double value);
  void Add(unsigned short const* name, int value);
  void Add(unsigned short const* name, long long value);
  // A long is added as Int64 on every target, so std::int64_t (long on LP64 targets)
  // picks the 64-bit form without ambiguity.
  void Add(unsigned short const* name, long value) { Add(name, static_cast<long long>(value)); }
  void Add(unsigned short const* name, bool value);
  void Add(unsigned short const* name, VornDateTime const& value);
  // DateTime converted with VornUtil::TimestampToDateTime.
  void Add(unsigned short const* name, std::tm value);
  // BLOB holding a copy of data[0 .. length-1].
  void Add(unsigned short const* name, unsigned char const* data, int length);
  // Note: deliberately deleted. A wide name with narrow text, Add(name, "text"), or with
  // any pointer other than wide text (u"text", L"text", bytes without a length) would
  // otherwise convert silently to bool. Use wide text, or a narrow name with narrow text.
  template <class T>
  void Add(unsigned short const* name, T const* value) = delete;

  // Add(*a) for each attribute of other, in order. Appending a collection to itself
  // appends one copy of each attribute it held before the call.
  void AddRange(VornAttributeCollection const& other);
  // Copies of attrs[0] .. attrs[count - 1]. A count below 1 adds nothing (a null attrs
  // is then accepted); otherwise a null attrs throws VornException("Parameter is NULL",
  // 5003).
  void AddRange(VornAttribute* attrs, int count);
  // Copies of every element of v, first to last.
  void AddRange(AttributeVector const& v);

  // Deletes the attribute at index. Throws VornException("Index out of range", 5002)
  // when index >= Count().
  void RemoveAt(unsigned int index);
  // Deletes the first attribute whose name matches key; later duplicates stay. Throws
  // VornException("No Attribute of this name", -1) when none matches.
  void Remove(unsigned short const* key);
  // Takes the attribute at index out without deleting it; it belongs to the caller
  // again. Throws VornException("Index out of range", 5002) when index >= Count().
  void RemoveReference(unsigned int index);
  // Deletes every attribute, adopted ones included.
  void Clear();

private:
  // The node at index; throws VornException("Index out of range", 5002) when
  // index >= Count().
  iterator at(unsigned int index);
  // The first attribute whose name matches key; throws VornException("No Attribute of
  // this name", -1) when none matches.
  iterator at(unsigned short const* key);
  // Appends a copy made by Add: on failure the copy is deleted before the exception
  // goes on, so nothing leaks.
  void AddCopy(VornAttribute* copy);

  Compare m_compare;                                   // the name comparison in force
  Vorn::list<VornAttribute*, Vorn::allocator> m_list;  // owned attributes, insertion order
  bool m_caseless;
};

#endif
