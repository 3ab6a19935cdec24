// Objects the geometry and treatment sweeps copy and collect, and the step shapes they
// share. Fixtures are built outside the counted operations, so they are always whole.
#ifndef VORN_TESTS_RELIABILITY_SWEEP_FIXTURES_H
#define VORN_TESTS_RELIABILITY_SWEEP_FIXTURES_H

#include <optional>
#include <string>

#include <vorn/vorn.h>

#include "reliability/snapshot.h"
#include "reliability/sweep.h"
#include "support/wide.h"

namespace vorn_sweep {

inline VornCoordinate* Square() {
  static VornCoordinate ring[] = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};
  return ring;
}

inline VornCoordinate* Pond() {
  static VornCoordinate ring[] = {{2, 2}, {2, 4}, {4, 4}, {2, 2}};
  return ring;
}

inline unsigned char const* Bytes() {
  static unsigned char const bytes[] = {1, 2, 3, 4};
  return bytes;
}

// Every fixture carries a Tag and a text attribute (a name and a value buffer); the
// polygons carry a BLOB as well, so that copying them can fail with "Out of Memory".
template <class T>
void Describe(T& object, char const* tag) {
  object.Tag = tag;
  object.Attributes.Add(vorn_test::W(u"Name"), vorn_test::W(u"Field 7"));
}

inline VornPoint PointFixture() {
  VornPoint p(3, 4);
  Describe(p, "pt");
  return p;
}

inline VornLine LineFixture() {
  VornLine l(Square(), 5);
  Describe(l, "ln");
  return l;
}

inline VornPolygon PolygonFixture(bool hole) {
  VornPolygon p(hole ? Pond() : Square(), hole ? 4 : 5, hole);
  Describe(p, hole ? "hole" : "outer");
  p.Attributes.Add(vorn_test::W(u"Bytes"), Bytes(), 4);
  return p;
}

inline VornMultiPoint MultiPointFixture() {
  VornMultiPoint m(Square(), 4);
  Describe(m, "mp");
  return m;
}

inline VornMultiLine MultiLineFixture() {
  VornMultiLine m;
  Describe(m, "ml");
  m.Lines.Add(LineFixture());
  m.Lines.Add(Pond(), 4);
  return m;
}

inline VornMultiPolygon MultiPolygonFixture() {
  VornMultiPolygon m;
  Describe(m, "mg");
  m.Polygons.Add(PolygonFixture(false));
  m.Polygons.Add(PolygonFixture(true));
  return m;
}

// The snapshot of what a build left: "none" when the constructor threw.
template <class T>
Tokens Built(std::optional<T> const& object) {
  return object ? Snap(*object) : Tokens{"none"};
}

// A construction into `slot` that must produce `model`; a constructor that throws leaves
// no object.
template <class T, class Construct>
void BuildStep(Run& run, std::string const& label, Allow const& allow, std::optional<T>& slot,
               Tokens const& model, Construct construct) {
  slot.reset();
  Outcome const o = run.Do(construct);
  run.Check(label, o, allow, Built(slot), {model, {"none"}});
}

// A factory call that must return an object like `model`; exhausted storage gives null,
// and so does a constructor that throws.
template <class T, class Alloc, class Free>
void FactoryStep(Run& run, std::string const& label, Allow const& allow, Tokens const& model,
                 Alloc alloc, Free release) {
  T* object = nullptr;
  Outcome const o = run.Do([&] { object = alloc(); });
  run.Check(label, o, allow, Snap(static_cast<T const*>(object)), {model, {"null"}, {{"null"}}});
  release(object);
}

// An operation on `target` that must leave it as `expected`.
template <class T, class Op>
void ChangeStep(Run& run, std::string const& label, Allow const& allow, T& target,
                Tokens const& expected, Op op) {
  Tokens const before = Snap(target);
  Outcome const o = run.Do(op);
  run.Check(label, o, allow, Snap(target), {expected, before});
}

// The shallow copy of an owning collection shares the source's members: a list node
// that cannot be allocated leaves it with the first ones. It lets go of them afterwards.
template <class Collection>
void ShallowCopyStep(Run& run, std::string const& label, Collection const& source) {
  std::optional<Collection> shared;
  Outcome const o = run.Do([&] { shared.emplace(source); });
  run.Check(label, o, Allow().New(kTruncated), Snap(*shared), {Snap(source)});
  shared->RemoveAllReferences();
}

}  // namespace vorn_sweep

#endif
