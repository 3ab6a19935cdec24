#include <vorn/core/boundbox.h>

#include <vorn/foundation/exception.h>

namespace {

[[noreturn]] void ThrowNotInitialized() { throw VornException("Boundbox not initialized", 5004); }

}  // namespace

VornBoundbox::VornBoundbox()
    : MinX(m_minX), MaxX(m_maxX), MinY(m_minY), MaxY(m_maxY),
      m_init(false), m_minX(0.0), m_maxX(0.0), m_minY(0.0), m_maxY(0.0) {}

VornBoundbox::VornBoundbox(double minX, double maxX, double minY, double maxY)
    : MinX(m_minX), MaxX(m_maxX), MinY(m_minY), MaxY(m_maxY),
      m_init(true), m_minX(minX), m_maxX(maxX), m_minY(minY), m_maxY(maxY) {}

void VornBoundbox::Set(double minX, double maxX, double minY, double maxY) {
  m_minX = minX;
  m_maxX = maxX;
  m_minY = minY;
  m_maxY = maxY;
  m_init = true;
}

void VornBoundbox::AddCoordinates(VornCoordinate* coords, int count) {
  for (int i = 0; i + 1 < count; ++i) AddCoordinate(coords[i]);
}

void VornBoundbox::AddCoordinates(
    Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>& coords) {
  for (VornCoordinate const* c = coords.begin(); c != coords.end(); ++c) AddCoordinate(*c);
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
