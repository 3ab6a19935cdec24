// VornBoundbox: an axis-aligned envelope with an "initialised" flag.
//
// Coordinate vectors and geometry collections keep one of these current as coordinates
// are added. The box stores its four extents and exposes them through the public
// reference members MinX, MaxX, MinY and MaxY, which every constructor binds to the
// box's own stored values; assignment copies values and never rebinds them. Wherever
// four doubles describe a box they come in the order minimum X, maximum X, minimum Y,
// maximum Y (not min-corner/max-corner). Comparisons are exact, with no tolerance.
//
// The adding operations keep min <= max on both axes while the box is initialised;
// the four-double constructor and Set store what they are given unchecked. Reset only
// clears the flag: the stale numbers stay until the next add or Set overwrites them.
// A box allocates nothing.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CORE_BOUNDBOX_H
#define VORN_CORE_BOUNDBOX_H

#include <cstddef>

#include <vorn/containers/vector.h>
#include <vorn/core/coordinate.h>
#include <vorn/foundation/export.h>

class VORN_API VornBoundbox {
public:
  // Read-write views of the stored extents, bound in every constructor to this box's
  // own values (MinX to the stored minimum X, and so on).
  double& MinX;
  double& MaxX;
  double& MinY;
  double& MaxY;

  // An uninitialised box with all four stored values 0.0.
  VornBoundbox();
  // An initialised box holding the four values as given; min > max is not rejected.
  VornBoundbox(double minX, double maxX, double minY, double maxY);
  // Member-wise copy for the collections that copy their boxes this way.
  // Note: the copy's reference members keep referring to the source's stored values,
  // while its own stored values are copies. Do not let such a copy outlive its source.
  VornBoundbox(VornBoundbox const& other) = default;
  ~VornBoundbox() = default;

  // Stores the four values as given (no min <= max check) and marks the box initialised.
  void Set(double minX, double maxX, double minY, double maxY);
  // Marks the box uninitialised. Note: the stored values keep their stale numbers.
  void Reset() { m_init = false; }
  bool IsInit() const { return m_init; }

  // Widens the box to include (x, y); the first point of an uninitialised box becomes
  // its whole extent (a NaN included). Note: on each axis the maximum is tested only
  // when the value is not below the minimum, which matters only after Set stored
  // min > max. A NaN never widens an initialised box.
  void AddCoordinate(double x, double y);
  void AddCoordinate(VornCoordinate const& c) { AddCoordinate(c.X, c.Y); }

  // Widens the box by coords[0] .. coords[count - 2]; nothing for count <= 1. The array
  // is not checked for null.
  // Note: the last coordinate is deliberately not added; callers that want every point
  // use AddCoordinate in a loop or VornCoordinateVector::AddRange.
  void AddCoordinates(VornCoordinate* coords, int count);
  // Widens the box by every element of `coords`, first to last.
  void AddCoordinates(
      Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>>& coords);

  // Widens the box to include the given extent, each bound tested on its own; an
  // uninitialised box takes the four values as given.
  void AddBoundbox(double minX, double maxX, double minY, double maxY);
  // AddBoundbox(other.MinX, other.MaxX, other.MinY, other.MaxY), read through other's
  // references. Note: other's initialised flag is ignored, so an uninitialised argument
  // contributes its stored (possibly stale or zero) numbers.
  void AddBoundbox(VornBoundbox const& other);

  // Inclusive containment: edges and corners are inside. A box with min > max contains
  // nothing. Throws VornException("Boundbox not initialized", 5004) when this box is
  // not initialised.
  bool IsPointInBoundbox(double x, double y) const;
  bool IsPointInBoundbox(VornCoordinate const& c) const;

  // Overlap test in which touching along an edge or at a corner counts. Throws
  // VornException("Boundbox not initialized", 5004) when this box is not initialised.
  bool HasIntersection(double minX, double maxX, double minY, double maxY) const;
  // Same test against other's stored values. Note: other's initialised flag is ignored.
  bool HasIntersection(VornBoundbox const& other) const;

  // Copies other's four stored values and marks this box initialised; the references
  // stay bound where they were. Throws VornException("Boundbox not initialized", 5004),
  // changing nothing, when other is not initialised.
  VornBoundbox const& operator=(VornBoundbox const& other);

protected:
  // Widens the box by coords[0] .. coords[count - 1], in order: exactly the result of
  // AddCoordinate on each, with the extents held in registers for the whole run.
  void AddCoordinateRun(VornCoordinate const* coords, std::size_t count);

private:
  // One axis of AddCoordinate on an initialised box: a value below the minimum lowers
  // it, otherwise a value above the maximum raises it; a NaN changes neither.
  // Note: branches on purpose, for extents that live in memory: a select would store on
  // every call and chain each coordinate's comparison to the previous one's store, while
  // a new extreme is rare in a caller's stream of Adds, so both tests are marked unlikely
  // and the common case runs straight through.
  static void WidenAxis(double value, double& low, double& high) {
    if (__builtin_expect(value < low, 0)) {
      low = value;
    } else if (__builtin_expect(value > high, 0)) {
      high = value;
    }
  }

  bool m_init;
  double m_minX;
  double m_maxX;
  double m_minY;
  double m_maxY;
};

// On the path of every coordinate added anywhere: two comparisons per axis at most.
inline void VornBoundbox::AddCoordinate(double x, double y) {
  if (!m_init) {
    m_minX = m_maxX = x;
    m_minY = m_maxY = y;
    m_init = true;
    return;
  }
  WidenAxis(x, m_minX, m_maxX);
  WidenAxis(y, m_minY, m_maxY);
}

#endif
