// VornCoordinateVector: the ordered coordinates of a line, a polygon ring or any other
// geometry with vertices, together with their envelope.
//
// The coordinates live in one contiguous block owned by the vector, so the whole array
// can be handed out as a VornCoordinate* (valid until the next operation that grows the
// vector). The vector is a VornBoundbox, whose part comes first, and answers the box
// queries itself. The envelope follows one rule per operation: Add, AddRange and the
// constructors widen it with every coordinate they store; Transform and RecalcBoundbox
// rebuild it exactly; Clear resets it; assignment copies the source's box; RemoveAt,
// RemoveDuplicates, ReverseOrder and Resize leave it as it was, so it may be stale
// (larger than the coordinates, or ignoring new ones) until RecalcBoundbox.
//
// Running out of memory never throws. Add widens the box before it appends, so a
// coordinate that could not be stored is still in the box. AddRange reserves room for
// the whole range once; if that fails it still widens the box with every coordinate and
// appends each one the growth policy finds room for. Reserve and Resize report it
// through their result.
//
// Not thread-safe: use one object from one thread at a time.
#ifndef VORN_CORE_COORDINATE_VECTOR_H
#define VORN_CORE_COORDINATE_VECTOR_H

#include <iterator>

#include <vorn/containers/vector.h>
#include <vorn/core/boundbox.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/transform_callback.h>
#include <vorn/foundation/export.h>
#include <vorn/foundation/memory.h>

class VORN_API VornCoordinateVector : public VornBoundbox {
public:
  // Empty, with an uninitialised box; allocates nothing.
  VornCoordinateVector();
  // Empty, then AddRange(coords, count): throws VornException("Parameter is NULL", 5003)
  // for a null array.
  VornCoordinateVector(VornCoordinate* coords, int count);
  // Empty, then AddRange(v).
  explicit VornCoordinateVector(
      Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> const& v);
  // Empty, then AddRange(other). Note: the box is recomputed from the coordinates, so a
  // copy of a vector with a stale box has an exact one.
  VornCoordinateVector(VornCoordinateVector const& other);
  ~VornCoordinateVector();

  // Empties this vector first (capacity kept). If other is empty, stops there.
  // Note: the box then keeps its old extent and state on purpose. Otherwise copies
  // other's coordinates as one block and then assigns other's box, which throws
  // VornException("Boundbox not initialized", 5004) after the coordinates were copied
  // when other's box is uninitialised. Because this vector is emptied before other is
  // read, assigning a vector to itself empties it and keeps its box. If the storage
  // cannot be obtained the vector stays empty and the box unchanged.
  VornCoordinateVector const& operator=(VornCoordinateVector const& other);

  // The first coordinate; null while nothing was ever allocated.
  operator VornCoordinate*() const { return const_cast<VornCoordinate*>(m_coords.begin()); }
  unsigned int Count() const { return m_coords.size(); }

  // Widens the box with (x, y), then appends it.
  void Add(double x, double y) { Add(VornCoordinate{x, y}); }
  void Add(VornCoordinate const& c);

  // Appends coords[0] .. coords[count - 1] (all of them), widening the box with each,
  // after reserving room for the whole range once (see above for a failed reservation). Throws
  // VornException("Parameter is NULL", 5003) for a null array, whatever the count; a count below 1
  // adds nothing.
  void AddRange(VornCoordinate* coords, int count);
  // Appends every element of v, first to last, widening the box with each.
  void AddRange(
      Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> const& v);
  // Appends other's coordinates, widening this box with each; other's box is not used.
  // Appending a vector to itself doubles it.
  void AddRange(VornCoordinateVector const& other);

  // Removes every coordinate (capacity kept) and marks the box uninitialised.
  void Clear();
  // Rebuilds the box exactly from the coordinates; uninitialised when there are none.
  void RecalcBoundbox();
  // Removes the coordinate at index; later ones move down one place. Throws
  // VornException("Index out of range", 5002), changing nothing, when index >= Count().
  // Note: the box is left as it was (possibly larger than the coordinates).
  void RemoveAt(unsigned int index);
  // Collapses each run of consecutive equal coordinates (exact ==) to its first one;
  // A, A, B, B, A becomes A, B, A. Capacity and box are kept.
  void RemoveDuplicates();
  // Makes the capacity at least n; true when it now reaches n. Never shrinks.
  bool Reserve(unsigned int n);
  // Grows with (0, 0) coordinates or drops the tail; true when Count() is now n.
  // Note: the box is left as it was and ignores added coordinates.
  bool Resize(unsigned int n);
  // Reverses the order in place; a middle element stays. The box is left as it was.
  void ReverseOrder();

  // Replaces every coordinate, first to last, by callback(X, Y, &outX, &outY, context),
  // storing the outputs into the element after the call returns, and rebuilds the box
  // from the results. Throws VornException("Parameter is NULL", 5003), before anything
  // changes, for a null callback. If the callback throws, the coordinates before it stay
  // transformed, the one it threw on keeps its value and the box covers only the
  // transformed ones. The outputs are scratch doubles, not seeded with the input: the
  // callback must write both, and an axis it leaves unwritten becomes NaN.
  // Note: the box is brought up to date once per block of coordinates, not after every
  // call; a callback that reads this vector's box during the transformation sees it lag.
  void Transform(VornTransformCallback callback, void* context);

  VornCoordinate* begin() { return m_coords.begin(); }
  VornCoordinate const* begin() const { return m_coords.begin(); }
  VornCoordinate* end() { return m_coords.end(); }
  VornCoordinate const* end() const { return m_coords.end(); }
  std::reverse_iterator<VornCoordinate*> rbegin() { return m_coords.rbegin(); }
  std::reverse_iterator<VornCoordinate const*> rbegin() const { return m_coords.rbegin(); }
  std::reverse_iterator<VornCoordinate*> rend() { return m_coords.rend(); }
  std::reverse_iterator<VornCoordinate const*> rend() const { return m_coords.rend(); }

private:
  void Append(VornCoordinate const* first, unsigned int count);

  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> m_coords;
};

// The box is widened first, so a coordinate that cannot be stored still widens it.
// push_back copies c before growth releases the old block, so c may be one of our own
// elements.
inline void VornCoordinateVector::Add(VornCoordinate const& c) {
  AddCoordinate(c);
  m_coords.push_back(c);
}

#endif
