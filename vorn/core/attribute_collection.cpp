#include <vorn/core/attribute_collection.h>

#include <new>

#include <vorn/foundation/exception.h>
#include <vorn/foundation/stringbase.h>

namespace {

[[noreturn]] void ThrowParameterIsNull() { throw VornException("Parameter is NULL", 5003); }

[[noreturn]] void ThrowIndexOutOfRange() { throw VornException("Index out of range", 5002); }

// Walks from first to the first attribute whose name matches key under compare (the
// attribute's name first, the key second; only a result of 0 counts) and stores its
// position in *index, or -1 with last returned when none matches.
template <class Iterator>
Iterator FindKey(Iterator first, Iterator last, VornAttributeCollection::Compare compare,
                 unsigned short const* key, int* index) {
  int position = 0;
  if (key != nullptr) {
    for (; first != last; ++first, ++position) {
      if (compare((*first)->Name.c_str(), key) == 0) {
        *index = position;
        return first;
      }
    }
  }
  *index = -1;
  return last;
}

// The position index steps after first; the caller has checked the range.
template <class Iterator>
Iterator Advance(Iterator first, unsigned int index) {
  for (; index != 0; --index) ++first;
  return first;
}

}  // namespace

VornAttributeCollection::VornAttributeCollection()
    : m_compare(Vorn::text::compare), m_caseless(false) {}

// The filling constructors delegate to the default one, so that should an addition
// throw part way, the destructor runs and deletes the copies already made.
VornAttributeCollection::VornAttributeCollection(VornAttribute* attrs, int count)
    : VornAttributeCollection() {
  if (attrs == nullptr) ThrowParameterIsNull();
  AddRange(attrs, count);
}

VornAttributeCollection::VornAttributeCollection(AttributeVector const& v)
    : VornAttributeCollection() {
  AddRange(v);
}

VornAttributeCollection::VornAttributeCollection(VornAttributeCollection const& other)
    : VornAttributeCollection() {
  AddRange(other);
}

VornAttributeCollection::~VornAttributeCollection() { Clear(); }

VornAttributeCollection const& VornAttributeCollection::operator=(
    VornAttributeCollection const& other) {
  Clear();
  for (const_iterator it = other.begin(); it != other.end(); ++it) Add(**it);
  return *this;
}

void VornAttributeCollection::SetCaselessCompare(bool caseless) {
  m_caseless = caseless;
  m_compare = caseless ? Vorn::text::compare_caseless : Vorn::text::compare;
}

int VornAttributeCollection::GetIndexOfKey(unsigned short const* key) const {
  int index;
  FindKey(begin(), end(), m_compare, key, &index);
  return index;
}

VornAttribute const& VornAttributeCollection::operator[](unsigned int index) const {
  if (index >= Count()) ThrowIndexOutOfRange();
  return **Advance(begin(), index);
}

VornAttributeCollection::iterator VornAttributeCollection::at(unsigned int index) {
  if (index >= Count()) ThrowIndexOutOfRange();
  return Advance(begin(), index);
}

VornAttributeCollection::iterator VornAttributeCollection::at(unsigned short const* key) {
  int index;
  iterator const found = FindKey(begin(), end(), m_compare, key, &index);
  if (index < 0) throw VornException("No Attribute of this name", -1);
  return found;
}

void VornAttributeCollection::AddReference(VornAttribute* attr) {
  if (attr == nullptr) ThrowParameterIsNull();
  iterator const slot = m_list.insert(m_list.end());
  if (slot == m_list.end()) ThrowParameterIsNull();
  *slot = attr;
}

void VornAttributeCollection::AddCopy(VornAttribute* copy) {
  try {
    AddReference(copy);
  } catch (...) {
    delete copy;
    throw;
  }
}

void VornAttributeCollection::Add(VornAttribute const& attr) {
  AddCopy(new (std::nothrow) VornAttribute(attr));
}

void VornAttributeCollection::Add(unsigned short const* name, unsigned short const* text) {
  AddCopy(new (std::nothrow) VornAttribute(name, text));
}

void VornAttributeCollection::Add(char const* name, char const* text) {
  AddCopy(new (std::nothrow) VornAttribute(name, text));
}

void VornAttributeCollection::Add(unsigned short const* name, double value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, int value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, long long value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, bool value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, VornDateTime const& value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, std::tm value) {
  AddCopy(new (std::nothrow) VornAttribute(name, value));
}

void VornAttributeCollection::Add(unsigned short const* name, unsigned char const* data,
                                  int length) {
  AddCopy(new (std::nothrow) VornAttribute(name, data, length));
}

void VornAttributeCollection::AddRange(VornAttributeCollection const& other) {
  // Bounded by the count taken up front, so that appending a collection to itself ends.
  const_iterator it = other.begin();
  for (unsigned int left = other.Count(); left != 0; --left, ++it) Add(**it);
}

void VornAttributeCollection::AddRange(VornAttribute* attrs, int count) {
  if (count <= 0) return;
  if (attrs == nullptr) ThrowParameterIsNull();
  for (int i = 0; i < count; ++i) Add(attrs[i]);
}

void VornAttributeCollection::AddRange(AttributeVector const& v) {
  for (VornAttribute const* it = v.begin(); it != v.end(); ++it) Add(*it);
}

void VornAttributeCollection::RemoveAt(unsigned int index) {
  iterator const it = at(index);
  delete *it;
  m_list.erase(it);
}

void VornAttributeCollection::Remove(unsigned short const* key) {
  iterator const it = at(key);
  delete *it;
  m_list.erase(it);
}

void VornAttributeCollection::RemoveReference(unsigned int index) { m_list.erase(at(index)); }

void VornAttributeCollection::Clear() {
  for (iterator it = begin(); it != end(); ++it) delete *it;
  m_list.clear();
}
