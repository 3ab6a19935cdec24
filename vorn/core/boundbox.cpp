#include <vorn/core/boundbox.h>

#include <vorn/foundation/exception.h>

namespace {

[[noreturn]] void ThrowNotInitialized() { throw VornException("Boundbox not initialized", 5004); }

}  // namespace

VornBoundbox::VornBoundbox()
    : MinX(m_minX), MaxX(m_maxX), MinY(m_minY), MaxY(m_maxY), m_init(false), m_minX(0.0),
      m_maxX(0.0), m_minY(0.0), m_maxY(0.0) {}

VornBoundbox::VornBoundbox(double minX, double maxX, double minY, double maxY)
    : MinX(m_minX), MaxX(m_maxX), MinY(m_minY), MaxY(m_maxY), m_init(true), m_minX(minX),
      m_maxX(maxX), m_minY(minY), m_maxY(maxY) {}

void VornBoundbox::Set(double minX, double maxX, double minY, double maxY) {
  m_minX = minX;
  m_maxX = maxX;
  m_minY = minY;
  m_maxY = maxY;
  m_init = true;
}

void VornBoundbox::AddCoordinates(VornCoordinate* coords, int count) {
  if (count > 1) AddCoordinateRun(coords, static_cast<std::size_t>(count) - 1);
}

void VornBoundbox::AddCoordinates(
    Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>& coords) {
  AddCoordinateRun(coords.begin(), coords.size());
}

// While min <= max holds on both axes (no NaN among the extents), a value below the
// minimum cannot be above the maximum, so the axis step reduces to an independent
// minimum and maximum, which compile to branch-free min/max instructions; the step keeps
// that order. Any other box takes the exact step of AddCoordinate.
void VornBoundbox::AddCoordinateRun(VornCoordinate const* coords, std::size_t count) {
  if (count == 0) return;
  if (!m_init) {
    AddCoordinate(coords[0]);
    ++coords;
    --count;
  }
  double minX = m_minX;
  double maxX = m_maxX;
  double minY = m_minY;
  double maxY = m_maxY;
  if (minX <= maxX && minY <= maxY) {
    for (VornCoordinate const* c = coords; c != coords + count; ++c) {
      minX = c->X < minX ? c->X : minX;
      maxX = c->X > maxX ? c->X : maxX;
      minY = c->Y < minY ? c->Y : minY;
      maxY = c->Y > maxY ? c->Y : maxY;
    }
  } else {
    for (VornCoordinate const* c = coords; c != coords + count; ++c) {
      WidenAxis(c->X, minX, maxX);
      WidenAxis(c->Y, minY, maxY);
    }
  }
  m_minX = minX;
  m_maxX = maxX;
  m_minY = minY;
  m_maxY = maxY;
}

void VornBoundbox::AddBoundbox(double minX, double maxX, double minY, double maxY) {
  if (!m_init) {
    Set(minX, maxX, minY, maxY);
    return;
  }
  if (minX < m_minX) m_minX = minX;
  if (maxX > m_maxX) m_maxX = maxX;
  if (minY < m_minY) m_minY = minY;
  if (maxY > m_maxY) m_maxY = maxY;
}

void VornBoundbox::AddBoundbox(VornBoundbox const& other) {
  AddBoundbox(other.MinX, other.MaxX, other.MinY, other.MaxY);
}

bool VornBoundbox::IsPointInBoundbox(double x, double y) const {
  if (!m_init) ThrowNotInitialized();
  return m_minX <= x && x <= m_maxX && m_minY <= y && y <= m_maxY;
}

bool VornBoundbox::IsPointInBoundbox(VornCoordinate const& c) const {
  return IsPointInBoundbox(c.X, c.Y);
}

bool VornBoundbox::HasIntersection(double minX, double maxX, double minY, double maxY) const {
  if (!m_init) ThrowNotInitialized();
  return !(m_maxX < minX || maxX < m_minX || m_maxY < minY || maxY < m_minY);
}

bool VornBoundbox::HasIntersection(VornBoundbox const& other) const {
  return HasIntersection(other.m_minX, other.m_maxX, other.m_minY, other.m_maxY);
}

VornBoundbox const& VornBoundbox::operator=(VornBoundbox const& other) {
  if (!other.m_init) ThrowNotInitialized();
  m_minX = other.m_minX;
  m_maxX = other.m_maxX;
  m_minY = other.m_minY;
  m_maxY = other.m_maxY;
  m_init = true;
  return *this;
}
