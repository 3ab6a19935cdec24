// VornAttribute: one named, typed value of an object's attribute table.
//
// An attribute holds a wide-text Name and one value of one of seven kinds (text, double,
// 32-bit integer, 64-bit integer, bool, date-time, byte block), plus the Length and
// Decimal that describe how a value is laid out. Every value is copied in: the attribute
// owns its two strings and, while its kind is BLOB, its byte buffer (array new of exactly
// Length() bytes). Nothing the caller passes is kept.
//
// The scalar kinds and the BLOB pointer share one 64-bit slot, and the storage is
// deliberately not cleared when the kind changes: a setter writes only the fields of the
// new kind, so the text, the slot and the date-time keep whatever an earlier value put
// there. The accessors neither check the kind nor convert; each reinterprets the storage
// it names, so callers look at DataType() first.
//
// Running out of memory: a BLOB buffer that cannot be allocated throws
// VornException("Out of Memory", 5005); a name or text whose buffer cannot be allocated
// is stored empty (Length() 0 for a text) without a report, as the library's strings do.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CORE_ATTRIBUTE_H
#define VORN_CORE_ATTRIBUTE_H

#include <cstdint>
#include <cstring>
#include <ctime>

#include <vorn/containers/vector.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>
#include <vorn/foundation/stringbase.h>
#include <vorn/util/date_time.h>

// The kind of an attribute's value; the numbers are part of the interface. The
// underlying type is fixed to int so that any kind number, also one outside 0..6 found
// in a damaged record, is a valid value of the type; assignment rejects such numbers.
enum VornDatatypeEnum : int { String = 0, Double, Int32, Int64, Bool, DateTime, BLOB };

class VORN_API VornAttribute {
public:
  typedef stringbase<unsigned short, wstringfuncs> WideString;

  // Kind Int32 with value 0 and an empty Name. Every field a constructor does not set
  // starts at zero, so no accessor ever reads indeterminate storage.
  VornAttribute() = default;

  // Each constructor copies `name` (a zero-terminated wide text) into Name and sets the
  // value as the matching SetValue does, with Length() and Decimal() 0 unless said.
  VornAttribute(unsigned short const* name, double value);
  VornAttribute(unsigned short const* name, int value);
  VornAttribute(unsigned short const* name, long long value);
  // A long is stored as Int64 on every target, so std::int64_t (long on LP64 targets)
  // picks the 64-bit form without ambiguity and the kind never depends on the target.
  VornAttribute(unsigned short const* name, long value)
      : VornAttribute(name, static_cast<long long>(value)) {}
  VornAttribute(unsigned short const* name, bool value);
  VornAttribute(unsigned short const* name, VornDateTime const& value);
  VornAttribute(unsigned short const* name, std::tm value);
  // A BLOB holding a copy of data[0 .. length-1]; throws as SetValue(data, length).
  VornAttribute(unsigned short const* name, unsigned char const* data, int length);
  // String; Length() is the number of 16-bit units of text.
  VornAttribute(unsigned short const* name, unsigned short const* text);
  // String converted from narrow UTF-8 text; text that cannot be converted, and a null
  // text, store the empty text. Length() is the number of wide units stored.
  VornAttribute(unsigned short const* name, char const* text);
  // As above, with the name converted the same way.
  VornAttribute(char const* name, char const* text);
  // Note: deliberately deleted. Any other pointer as the value (u"text", L"text", a byte
  // pointer without its length) would otherwise convert silently to bool.
  template <class T>
  VornAttribute(unsigned short const* name, T const* value) = delete;

  // A deep copy: as a default attribute followed by operator=(other), and throws as it.
  VornAttribute(VornAttribute const& other);
  // Releases the BLOB buffer (kind BLOB only) and both strings.
  ~VornAttribute();

  // Releases this attribute's BLOB buffer (kind BLOB) or text (kind String), copies
  // other's Name and then other's value by kind: text and BLOB bytes are copied deeply,
  // Int32 and Bool are normalised (sign extension, 0 or 1). Length() is the text length
  // or the BLOB size, else 0; Decimal() is 0.
  // Note: the width and decimals of a Double are deliberately not carried over.
  // Throws VornException(VornUtil::GetErrorString(5006), 5006) ("Not supported") when
  // other's kind is outside 0..6, after the Name was copied; a failed BLOB copy throws
  // as SetValue(data, length). A released BLOB's address stays in the 64-bit slot.
  // Note: the target is released before other is read, so an attribute assigned to
  // itself ends with empty text (String) or Length() and Decimal() 0; a BLOB assigned to
  // itself is left unchanged rather than copy a buffer it has released.
  VornAttribute const& operator=(VornAttribute const& other);

  // Setters: each replaces the kind and writes only that kind's fields; none touches
  // Name. Length() and Decimal() become 0 unless said otherwise.
  // Double, with the caller's width and number of decimals as Length() and Decimal().
  void SetValue(double value, int length, int decimal);
  // Int32, stored sign-extended to 64 bits.
  void SetValue(int value);
  void SetValue(long long value);
  void SetValue(long value) { SetValue(static_cast<long long>(value)); }
  // Bool, stored as 1 or 0.
  void SetValue(bool value);
  void SetValue(VornDateTime const& value);
  // DateTime converted with VornUtil::TimestampToDateTime.
  void SetValue(std::tm const& value);
  // BLOB: Length() = length, Decimal() = 0, then a new buffer of length bytes receives a
  // copy of data (a null data gives zero bytes). Throws
  // VornException(VornUtil::GetErrorString(5005), 5005) ("Out of Memory") when the buffer
  // cannot be allocated (also for a negative length); kind and Length() have then
  // already changed and ValueBLOB() is null.
  // Note: a buffer held before is deliberately not released (by this or any setter);
  // only assignment and the destructor release a BLOB buffer.
  void SetValue(unsigned char const* data, int length);
  // String; Length() = the number of 16-bit units; a null text stores the empty text.
  void SetValue(unsigned short const* text);
  // Note: deliberately deleted, so that narrow or other character pointers do not
  // convert silently to bool. Narrow text goes through the constructors.
  template <class T>
  void SetValue(T const* value) = delete;

  VornDatatypeEnum DataType() const { return m_dataType; }
  int Length() const { return m_length; }
  int Decimal() const { return m_decimal; }

  // The slot's 64 bits as a double. Note: no conversion: for Int32 1 this is the
  // smallest subnormal, not 1.0.
  double ValueDouble() const {
    double value;
    std::memcpy(&value, &m_value, sizeof value);
    return value;
  }
  // The slot's 64 bits as a signed integer (the same read as ValueDouble).
  long long ValueInt64() const { return m_value; }
  // The low 32 bits of the slot; for a BLOB, the low 32 bits of the buffer address.
  int ValueInt32() const { return static_cast<int>(static_cast<unsigned int>(m_value)); }
  // The slot as the BLOB buffer address (the same read as ValueInt32, at full pointer
  // width).
  unsigned char const* ValueBLOB() const { return BlobBuffer(); }
  // True when any of the slot's 64 bits is set, so a Double -0.0 is true.
  bool ValueBool() const { return m_value != 0; }
  VornDateTime const& ValueDateTime() const { return m_dateTime; }
  // The text; never null (an empty text when none was stored).
  unsigned short const* ValueString() const { return m_stringValue.c_str(); }

  WideString Name;  // the key by which collections find the attribute

private:
  unsigned char* BlobBuffer() const {
    return reinterpret_cast<unsigned char*>(static_cast<std::intptr_t>(m_value));
  }
  void StoreBlobBuffer(unsigned char* buffer);
  void StoreText(unsigned short const* text);
  void StoreScalar(VornDatatypeEnum kind, long long bits);
  void ReleaseValue();

  int m_length = 0;   // text units, BLOB bytes, or the width given with a Double
  int m_decimal = 0;  // the decimals given with a Double
  VornDatatypeEnum m_dataType = Int32;
  WideString m_stringValue;
  // The shared 64-bit slot: Double bits, Int32 sign-extended, Int64, Bool as 0 or 1, or
  // the BLOB buffer address (sign-extended on 32-bit targets).
  long long m_value = 0;
  VornDateTime m_dateTime{};
};

static_assert(sizeof(long long) == 8 && sizeof(double) == 8,
              "the value slot holds a double and a 64-bit integer in the same 8 bytes");
static_assert(sizeof(void*) <= sizeof(long long), "the value slot must hold a pointer");

// Deliberately always false, an attribute compared with itself included: attributes
// have no equality and no order.
VORN_API bool operator==(VornAttribute const& a, VornAttribute const& b);
VORN_API bool operator<(VornAttribute const& a, VornAttribute const& b);

// The attribute array that collections are filled from. It is compiled once, with every
// member, in attribute.cpp and exported from there; declared directly after the element
// type so that the export attribute precedes every use of the array.
extern template class VORN_API
    Vorn::vector<VornAttribute, Vorn::allocator, Vorn::exponential_growth<10>>;

#endif
