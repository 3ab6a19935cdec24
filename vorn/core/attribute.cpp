#include <vorn/core/attribute.h>

#include <cstddef>
#include <cstring>
#include <new>

#include <vorn/foundation/exception.h>
#include <vorn/util/vorn_util.h>

// Every member of the attribute array, exported as declared in attribute.h.
template class Vorn::vector<VornAttribute, Vorn::allocator, Vorn::exponential_growth<10>>;

namespace {

// Narrow UTF-8 text as wide text; a null text converts to the empty text.
VornAttribute::WideString Widen(char const* text) {
  if (text == nullptr) return VornAttribute::WideString();
  return VornUtil::StringToWString(text);
}

long long DoubleBits(double value) {
  long long bits;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

}  // namespace

VornAttribute::VornAttribute(unsigned short const* name, double value) : Name(name) {
  SetValue(value, 0, 0);
}

VornAttribute::VornAttribute(unsigned short const* name, int value) : Name(name) {
  SetValue(value);
}

VornAttribute::VornAttribute(unsigned short const* name, long long value) : Name(name) {
  SetValue(value);
}

VornAttribute::VornAttribute(unsigned short const* name, bool value) : Name(name) {
  SetValue(value);
}

VornAttribute::VornAttribute(unsigned short const* name, VornDateTime const& value) : Name(name) {
  SetValue(value);
}

VornAttribute::VornAttribute(unsigned short const* name, std::tm value) : Name(name) {
  SetValue(value);
}

VornAttribute::VornAttribute(unsigned short const* name, unsigned char const* data, int length)
    : Name(name) {
  SetValue(data, length);
}

VornAttribute::VornAttribute(unsigned short const* name, unsigned short const* text) : Name(name) {
  SetValue(text);
}

VornAttribute::VornAttribute(unsigned short const* name, char const* text) : Name(name) {
  StoreText(Widen(text).c_str());
}

VornAttribute::VornAttribute(char const* name, char const* text) : Name(Widen(name)) {
  StoreText(Widen(text).c_str());
}

VornAttribute::VornAttribute(VornAttribute const& other) { *this = other; }

VornAttribute::~VornAttribute() {
  if (m_dataType == BLOB) delete[] BlobBuffer();
}

// Releases before it reads other, so an attribute assigned to itself loses its text (and
// a Double its width) like any target. A BLOB is the exception: it would copy the buffer
// it has just released, so it keeps itself.
VornAttribute const& VornAttribute::operator=(VornAttribute const& other) {
  if (this == &other && m_dataType == BLOB) return *this;
  ReleaseValue();
  Name = other.Name;
  switch (other.m_dataType) {
    case String:
      StoreText(other.ValueString());
      break;
    case Double:
    case Int64:
      StoreScalar(other.m_dataType, other.m_value);
      break;
    case Int32:
      StoreScalar(Int32, other.ValueInt32());
      break;
    case Bool:
      StoreScalar(Bool, other.ValueBool() ? 1 : 0);
      break;
    case DateTime:
      SetValue(other.m_dateTime);
      break;
    case BLOB:
      SetValue(other.ValueBLOB(), other.m_length);
      break;
    default:
      // A BLOB target keeps its kind, so the slot must stop naming the released buffer.
      if (m_dataType == BLOB) m_value = 0;
      throw VornException(VornUtil::GetErrorString(5006), 5006);
  }
  return *this;
}

void VornAttribute::SetValue(double value, int length, int decimal) {
  StoreScalar(Double, DoubleBits(value));
  m_length = length;
  m_decimal = decimal;
}

void VornAttribute::SetValue(int value) { StoreScalar(Int32, value); }

void VornAttribute::SetValue(long long value) { StoreScalar(Int64, value); }

void VornAttribute::SetValue(bool value) { StoreScalar(Bool, value ? 1 : 0); }

void VornAttribute::SetValue(VornDateTime const& value) {
  m_dataType = DateTime;
  m_dateTime = value;
  m_length = 0;
  m_decimal = 0;
}

void VornAttribute::SetValue(std::tm const& value) {
  SetValue(VornUtil::TimestampToDateTime(value));
}

void VornAttribute::SetValue(unsigned char const* data, int length) {
  m_decimal = 0;
  m_dataType = BLOB;
  m_length = length;
  std::size_t const bytes = static_cast<std::size_t>(length);
  unsigned char* buffer = length >= 0 ? new (std::nothrow) unsigned char[bytes] : nullptr;
  StoreBlobBuffer(buffer);
  if (buffer == nullptr) throw VornException(VornUtil::GetErrorString(5005), 5005);
  // A null source (only reachable by copying a BLOB whose own allocation failed) gives
  // zero bytes rather than a read through null.
  if (data != nullptr) {
    std::memcpy(buffer, data, bytes);
  } else {
    std::memset(buffer, 0, bytes);
  }
}

void VornAttribute::SetValue(unsigned short const* text) { StoreText(text); }

void VornAttribute::StoreBlobBuffer(unsigned char* buffer) {
  m_value = static_cast<long long>(reinterpret_cast<std::intptr_t>(buffer));
}

void VornAttribute::StoreText(unsigned short const* text) {
  m_dataType = String;
  m_stringValue = text;
  m_length = static_cast<int>(m_stringValue.length());
  m_decimal = 0;
}

void VornAttribute::StoreScalar(VornDatatypeEnum kind, long long bits) {
  m_dataType = kind;
  m_value = bits;
  m_length = 0;
  m_decimal = 0;
}

void VornAttribute::ReleaseValue() {
  if (m_dataType == BLOB) {
    delete[] BlobBuffer();  // the slot keeps the stale address, as every other kind's does
  } else if (m_dataType == String) {
    m_stringValue.clear();
  }
}

bool operator==(VornAttribute const&, VornAttribute const&) { return false; }

bool operator<(VornAttribute const&, VornAttribute const&) { return false; }
