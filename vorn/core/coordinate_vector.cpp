#include <vorn/core/coordinate_vector.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>

#include <vorn/foundation/exception.h>

namespace {

// Coordinates transformed before the box catches up with them: 2 KiB, well inside L1.
constexpr std::ptrdiff_t kTransformBlock = 128;

}  // namespace

VornCoordinateVector::VornCoordinateVector() : VornBoundbox(), m_coords() {}

VornCoordinateVector::VornCoordinateVector(VornCoordinate* coords, int count)
    : VornBoundbox(), m_coords() {
  AddRange(coords, count);
}

VornCoordinateVector::VornCoordinateVector(
    Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> const& v)
    : VornBoundbox(), m_coords() {
  AddRange(v);
}

// The base is default-constructed, not copied: the copy's references must bind to its
// own values, and its box is rebuilt from the coordinates.
VornCoordinateVector::VornCoordinateVector(VornCoordinateVector const& other)
    : VornBoundbox(), m_coords() {
  AddRange(other);
}

VornCoordinateVector::~VornCoordinateVector() = default;

VornCoordinateVector const& VornCoordinateVector::operator=(VornCoordinateVector const& other) {
  m_coords.clear();
  unsigned int const count = other.Count();
  if (count == 0) return *this;
  if (!m_coords.resize(count)) return *this;
  std::memcpy(m_coords.begin(), other.m_coords.begin(), count * sizeof(VornCoordinate));
  VornBoundbox::operator=(other);
  return *this;
}

void VornCoordinateVector::AddRange(VornCoordinate* coords, int count) {
  if (coords == nullptr) throw VornException("Parameter is NULL", 5003);
  if (count < 1) return;
  Append(coords, static_cast<unsigned int>(count));
}

void VornCoordinateVector::AddRange(
    Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> const& v) {
  if (v.empty()) return;
  Append(v.begin(), v.size());
}

void VornCoordinateVector::AddRange(VornCoordinateVector const& other) {
  Append(other.begin(), other.Count());
}

// Reserves room for the whole range first, so the range causes at most one reallocation.
// The source may lie in our own block (appending a vector to itself), so it is located
// by its offset whenever the block may have moved. With room reserved, the box is
// widened over the stored copies afterwards, in one run: nothing can fail or look at the
// vector in between, so the result is that of widening before each append. Without it,
// each coordinate widens the box and is then appended on its own, as far as the growth
// policy still obtains room, so the box covers coordinates that could not be stored.
void VornCoordinateVector::Append(VornCoordinate const* first, unsigned int count) {
  VornCoordinate const* const oldBegin = m_coords.begin();
  std::less<VornCoordinate const*> const before;
  bool const ownBlock =
      oldBegin != nullptr && !before(first, oldBegin) && before(first, m_coords.end());
  std::ptrdiff_t const offset = ownBlock ? first - oldBegin : 0;
  if (!m_coords.reserve(Count() + count)) {
    for (unsigned int i = 0; i < count; ++i) {
      Add(ownBlock ? m_coords.begin()[offset + i] : first[i]);
    }
    return;
  }
  if (ownBlock) first = m_coords.begin() + offset;
  for (unsigned int i = 0; i < count; ++i) {
    bool const stored = m_coords.push_back(first[i]);
    assert(stored && "room was reserved for the whole range");
    (void)stored;
  }
  AddCoordinateRun(m_coords.end() - count, count);
}

void VornCoordinateVector::Clear() {
  m_coords.clear();
  Reset();
}

void VornCoordinateVector::RecalcBoundbox() {
  Reset();
  AddCoordinateRun(m_coords.begin(), Count());
}

void VornCoordinateVector::RemoveAt(unsigned int index) {
  if (index >= Count()) throw VornException("Index out of range", 5002);
  m_coords.erase(m_coords.begin() + index);
}

void VornCoordinateVector::RemoveDuplicates() {
  unsigned int const count = Count();
  if (count < 2) return;
  VornCoordinate* const c = m_coords.begin();
  unsigned int next = 1;
  while (next < count && c[next] != c[next - 1]) ++next;
  if (next == count) return;
  unsigned int kept = next - 1;
  unsigned int removed = 0;
  for (; next < count; ++next) {
    if (c[next] != c[kept]) {
      c[++kept] = c[next];
    } else {
      ++removed;
    }
  }
  m_coords.resize(count - removed);
}

bool VornCoordinateVector::Reserve(unsigned int n) {
  if (n <= m_coords.capacity()) return true;
  m_coords.reserve(n);
  return m_coords.capacity() >= n;
}

bool VornCoordinateVector::Resize(unsigned int n) {
  m_coords.resize(n);
  return Count() == n;
}

void VornCoordinateVector::ReverseOrder() { std::reverse(m_coords.begin(), m_coords.end()); }

// The box is widened once per block of kTransformBlock coordinates, in one run over
// coordinates still in the cache, so that no extent has to live across the callback in
// memory and the per-coordinate loop is the call and the copy of its two results. If the
// callback throws, the box is widened by the part of the block already done.
void VornCoordinateVector::Transform(VornTransformCallback callback, void* context) {
  if (callback == nullptr) throw VornException("Parameter is NULL", 5003);
  Reset();
  VornCoordinate* c = m_coords.begin();
  VornCoordinate* const end = m_coords.end();
  while (c != end) {
    VornCoordinate* const blockBegin = c;
    VornCoordinate* const blockEnd = end - c > kTransformBlock ? c + kTransformBlock : end;
    for (; c != blockEnd; ++c) {
      // The scratch values are kept apart in memory so that they are read back one by
      // one: a single 16-byte read of the two 8-byte stores the callback has just made
      // would miss store forwarding and stall on every coordinate.
      double scratch[3] = {std::numeric_limits<double>::quiet_NaN(), 0.0,
                           std::numeric_limits<double>::quiet_NaN()};
      try {
        callback(c->X, c->Y, &scratch[0], &scratch[2], context);
      } catch (...) {
        AddCoordinateRun(blockBegin, static_cast<std::size_t>(c - blockBegin));
        throw;
      }
      c->X = scratch[0];
      c->Y = scratch[2];
    }
    AddCoordinateRun(blockBegin, static_cast<std::size_t>(blockEnd - blockBegin));
  }
}
