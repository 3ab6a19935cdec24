// The geometry objects and their collections (the factory functions are run, every allocation
// failing in turn, by the allocation-failure sweep). Whole states are compared as one string: a
// box as "minX..maxXxminY..maxY" ("-" when uninitialised), an object as its box ("H" marks a
// hole), a collection as its elements ("null" for an empty slot), then "|" and its own box.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <type_traits>

#include <vorn/vorn.h>

#include "support/alloc_failure.h"
#include "support/helpers.h"

// The errors of the checked preconditions, each written down once.
#define EXPECT_VORN_ERROR(statement, message, code) \
  EXPECT_TRUE(vorn_test::ThrowsVornException([&] { statement; }, message, code))
#define EXPECT_NULL_PARAMETER(statement) EXPECT_VORN_ERROR(statement, "Parameter is NULL", 5003)
#define EXPECT_OUT_OF_RANGE(statement) EXPECT_VORN_ERROR(statement, "Index out of range", 5002)

namespace {

using vorn_test::Box;

std::string Geometry(VornPoint p) { return Box(VornCoordinateVector(&p.Coordinate, 1)); }
std::string Geometry(VornLine const& line) { return Box(line.Coordinates); }
std::string Geometry(VornPolygon const& p) { return Box(p.Coordinates) + (p.IsHole ? "H" : ""); }
std::string Geometry(VornMultiPoint const& points) { return Box(points.Coordinates); }
std::string Geometry(VornMultiLine const& lines) { return Box(lines.Lines.Boundbox); }
std::string Geometry(VornMultiPolygon const& area) { return Box(area.Polygons.Boundbox); }

template <class Collection>
std::string Show(Collection const& collection) {
  std::string out;
  for (auto const* e : collection) out += (e == nullptr ? "null" : Geometry(*e)) + " ";
  return out + "| " + Box(collection.Boundbox);
}

// Adds (10, 20) to every coordinate.
void Shift(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 10;
  *outY = y + 20;
}

using vorn_test::Channel;  // Malloc: copies and coordinates; NothrowNew: list nodes and slots

// Runs `call` with the first allocation on each of `channels` failing.
template <Channel... channels, class Call>
void Starved(Call call) {
  vorn_test::ScopedFailure disarm(Channel::Malloc, 0);  // arms nothing, disarms all on exit
  (vorn_test::FailNth(channels, 1), ...);
  call();
}

// ends and ends + 1 give two geometries, shiftedEnds the first one shifted.
VornCoordinate ends[3] = {{1, 2}, {3, 5}, {40, 40}}, shiftedEnds[2] = {{11, 22}, {13, 25}};

// Gives an object of each kind the geometry of two coordinates.
void Fill(VornPoint& o, VornCoordinate* c) { o.Coordinate = VornCoordinateVector(c, 2).begin()[1]; }
void Fill(VornLine& o, VornCoordinate* c) { o = VornLine(VornCoordinateVector(c, 2)); }
void Fill(VornPolygon& o, VornCoordinate* c) { o = VornPolygon(VornCoordinateVector(c, 2), true); }
void Fill(VornMultiPoint& o, VornCoordinate* c) { o = VornMultiPoint(c, 2); }
void Fill(VornMultiLine& o, VornCoordinate* c) { o.Lines.Add(c, 2); }
void Fill(VornMultiPolygon& o, VornCoordinate* c) { o.Polygons.Add(c, 2, true); }

template <class T>
T Filled(VornCoordinate* c) {
  T o;
  Fill(o, c);
  return o;
}

// Tag, attribute count and geometry of an object.
auto const Describe = [](auto const& o) {
  return o.Tag.c_str() + (" " + std::to_string(o.Attributes.Count())) + " " + Geometry(o);
};

template <class T>
class GeometryObject : public ::testing::Test {};
using GeometryKinds = ::testing::Types<VornPoint, VornLine, VornPolygon, VornMultiPoint,
                                       VornMultiLine, VornMultiPolygon>;
TYPED_TEST_SUITE(GeometryObject, GeometryKinds);

// Copies and assignment carry Tag, geometry and attributes, and so does assigning an object to
// itself, except that a multi-polygon deliberately has no self-assignment test and loses its rings
// and attributes. An object collection adopts each kind through its own overload, copies it deep by
// kind, and transforms it (the geometry only). Every kind built from coordinates rejects a null
// array (the polygon collection from the constructor, the line collection before it allocates).
TYPED_TEST(GeometryObject, CopiesAssignsAndTransforms) {
  TypeParam source = Filled<TypeParam>(ends);
  // It has coordinates, so that the comparisons below mean something.
  EXPECT_NE(Geometry(source)[0], '-');
  source.Tag = "tag";
  source.Attributes.Add("A", "a");
  TypeParam assigned;
  assigned = TypeParam(source);
  assigned = static_cast<TypeParam const&>(assigned);
  bool const empties = std::is_same<TypeParam, VornMultiPolygon>::value;
  EXPECT_EQ(Describe(assigned), empties ? "tag 0 -" : Describe(source));
  VornObjectCollection objects;
  objects.AddReference(new TypeParam(source));
  objects.AddRange(objects);
  objects.Transform(Shift, nullptr);
  EXPECT_EQ(Describe(static_cast<TypeParam const&>(objects[1])),
            "tag 1 " + Geometry(Filled<TypeParam>(shiftedEnds)));
  EXPECT_NULL_PARAMETER(source.Transform(nullptr, nullptr));
  EXPECT_NULL_PARAMETER(Fill(source, nullptr));
}

// Upper-case rings are holes. SortHoles never visits the last ring; RemoveHoles resumes at the
// second ring after each removal and rebuilds the box only when a ring went.
TEST(MultiPolygon, SortHolesAndRemoveHolesFollowTheirDefinedScan) {
  char const* const cases[][3] = {{"aBC", "aCB", "a 0..0x0..0"},
                                  {"ABCd", "dABC", "Bd 0..0x0..0"},
                                  {"Ab", "bA", "b 0..0x0..0"},
                                  {"A", "A", " -"},
                                  {"ab", "ab", "ab 7..7x7..7"}};
  for (auto const& c : cases) {
    VornMultiPolygon sorted;
    for (char const* n = c[0]; *n != 0; ++n) sorted.Polygons.Add(VornCoordinateVector(), *n < 'a');
    char const* name = c[0];
    for (VornPolygon* ring : sorted.Polygons) ring->Tag = std::string(1, *name++).c_str();
    VornMultiPolygon pruned(sorted);
    pruned.Polygons.Boundbox.Set(7, 7, 7, 7);
    sorted.SortHoles();
    pruned.RemoveHoles();
    std::string names;  // all of the sorted rings, then what RemoveHoles left
    for (VornPolygon const* ring : sorted.Polygons) names += ring->Tag.c_str();
    for (VornPolygon const* ring : pruned.Polygons) names += ring->Tag.c_str();
    EXPECT_EQ(names + " " + Box(pruned.Polygons.Boundbox), std::string(c[1]) + c[2]);
  }
}

// An object of a kind the collection does not know (9 is the first number past them).
struct UnknownObject : IVornObject {
  VornObjectType GetType() const override { return static_cast<VornObjectType>(9); }
  void Transform(VornTransformCallback, void*) override {}
};

// Add stores a copy, or a null member when the copy cannot be made and nothing when no node can be
// had; AddReference appends as it is, nothing when no node can be had. Null members are skipped by
// AddRange and Transform. RemoveAt deletes and RemoveReference hands back, both ignoring an index
// past the end (that the deleted ones are freed is left to the leak checks of the sanitizer and
// valgrind stages). Copies share the members, and assignment deliberately leaves the ones it
// replaces to the caller. An unknown kind is rejected by AddRange, keeping the copies before it,
// and by RemoveAt and Clear, which keep it; a collection destroyed with it ends the program. The
// base's copy constructor copies Tag.
TEST(ObjectCollection, OwnsDetachesOrSkipsItsMembers) {
  UnknownObject unknown;
  unknown.Tag = "unknown";
  VornObjectCollection objects, copies;
  Starved<Channel::Malloc>([&] { objects.Add(VornLine()); });
  Starved<Channel::Malloc, Channel::NothrowNew>([&] { objects.Add(VornPoint()); });
  Starved<Channel::NothrowNew>([&] { objects.AddReference(&unknown); });
  objects.AddReference(new VornPoint());
  objects.AddReference(&unknown);
  objects.Transform(Shift, nullptr);
  copies.AddReference(&unknown);
  copies = objects;
  EXPECT_TRUE(std::equal(copies.begin(), copies.end(), objects.begin(), objects.end()));
  copies.RemoveAllReferences();
  EXPECT_DEATH(Vorn::Free_VornObjectCollection(new VornObjectCollection(objects)), "");
  EXPECT_VORN_ERROR(copies.AddRange(objects), "AddRange(): Unknown VornObject-Type", -1);
  char const* const free = "Free(): Unknown VornObject-Type";
  EXPECT_VORN_ERROR(objects.RemoveAt(2), free, -1);
  objects.RemoveAt(3);
  objects.RemoveReference(3);
  objects.RemoveAt(1);
  EXPECT_VORN_ERROR(objects.Clear(), free, -1);
  EXPECT_TRUE(copies.Count() == 1 && objects.Count() == 1);  // the copy made, the member kept
  EXPECT_STREQ(UnknownObject(unknown).Tag.c_str(), "unknown");
  objects.RemoveReference(0);
}

template <class C>
class OwningCollection : public ::testing::Test {};
using Collections = ::testing::Types<VornLineCollection, VornPolygonCollection>;
TYPED_TEST_SUITE(OwningCollection, Collections);

// Add copies and AddReference adopts, widening the box (an element without coordinates counts as
// 0..0x0..0); removals rebuild it. The copy constructor shares the elements, assignment copies
// them. Rejected calls change nothing; running out of memory on Add or AddReference is
// deliberately a null parameter. Deliberate differences: only the line collection guards against
// self-assignment, tests the callback before resetting the box, and honours its constructor's
// AutoBoundbox (here: no box for what assignment adds).
TYPED_TEST(OwningCollection, OwnsItsElementsAndKeepsTheBox) {
  using T = std::decay_t<decltype(TypeParam()[0])>;
  bool const isLine = std::is_same<TypeParam, VornLineCollection>::value;
  T mine(ends, 2);
  TypeParam c;
  c.Add(T());
  c.AddReference(&mine);
  c.AddReference(new T(shiftedEnds, 2));
  EXPECT_EQ(Show(c), "- 1..3x2..5 11..13x22..25 | 0..13x0..25");
  c.RemoveAt(0);
  c.RemoveReference(0);
  TypeParam shallow(c), manual(false);  // the polygon collection deliberately ignores false
  manual = c;
  EXPECT_TRUE(&shallow[0] == &c[0] && &manual[0] != &c[0]);
  shallow.RemoveAllReferences();
  std::string const copied = Show(manual);
  manual = static_cast<TypeParam const&>(manual);
  EXPECT_EQ(copied + " / " + Show(manual) + Show(shallow),
            isLine ? "11..13x22..25 | - / 11..13x22..25 | -| -"
                   : "11..13x22..25 | 11..13x22..25 / | -| -");
  EXPECT_OUT_OF_RANGE(c.RemoveAt(1));
  EXPECT_NULL_PARAMETER(c.AddReference(nullptr));
  EXPECT_NULL_PARAMETER(T(nullptr, 2));
  EXPECT_NULL_PARAMETER(Starved<Channel::NothrowNew>([&] { c.AddReference(&mine); }));
  EXPECT_NULL_PARAMETER(Starved<Channel::Malloc>([&] { c.Add(mine); }));
  EXPECT_NULL_PARAMETER(c.Transform(nullptr, nullptr));
  EXPECT_EQ(Box(c.Boundbox), isLine ? "11..13x22..25" : "-");
}

// Copies are deep, skip null elements and build their own box (appending a vector to itself is
// in the allocation-failure sweep). Additions widen the box, and a copy that cannot be made is a
// null slot all the same; RemoveAt deliberately keeps the box, the other removals rebuild it.
// Assignment clears first, stops at a null slot with the box reset, and throws for an uninitialised
// source box; assigning a vector to itself deliberately empties it. Running out of memory throws
// nothing: a copy that finds no slot is released, a reference stays with the caller. Transform and
// RemoveDuplicates deliberately do nothing at all.
TEST(MultiPolygonVector, OwnsItsAreasAndKeepsTheBox) {
  VornMultiPolygon mine = Filled<VornMultiPolygon>(ends), far = Filled<VornMultiPolygon>(ends + 1);
  Vorn::multi_polygon_pointers raw(2, &mine);
  raw[0] = nullptr;
  VornMultiPolygonVector areas(raw);
  areas.AddReference(nullptr);
  Starved<Channel::Malloc>([&] { areas.Add(VornMultiPolygon()); });
  areas.AddReference(new VornMultiPolygon(Filled<VornMultiPolygon>(shiftedEnds)));
  areas.AddReference(&far);
  EXPECT_EQ(Show(areas), "1..3x2..5 null 11..13x22..25 3..40x5..40 | 0..40x0..40");
  VornMultiPolygonVector copy(areas);
  EXPECT_EQ(Show(copy), "1..3x2..5 11..13x22..25 3..40x5..40 | 1..40x2..40");
  copy = areas;
  EXPECT_EQ(Show(copy), "1..3x2..5 | -");
  EXPECT_OUT_OF_RANGE(areas.RemoveAt(4));
  areas.RemoveReference(areas.begin() + 3);
  areas.RemoveAt(2);
  areas.RemoveAt(1);
  areas.Transform(Shift, nullptr);
  areas.Transform(nullptr, nullptr);
  areas.RemoveDuplicates();
  EXPECT_EQ(Show(areas), "1..3x2..5 | 1..13x2..25");
  // Deliberately typed as a multi-polygon pointer, though it points at the pointers.
  EXPECT_EQ(static_cast<void*>(static_cast<VornMultiPolygon*>(areas)), areas.begin());
  areas.Boundbox.Reset();
  EXPECT_VORN_ERROR(copy = areas, "Boundbox not initialized", 5004);
  copy = static_cast<VornMultiPolygonVector const&>(copy);
  EXPECT_EQ(Show(copy), "| -");
  EXPECT_TRUE(areas.Reserve(20) && areas.Resize(20));  // reserved exactly: full
  Starved<Channel::Malloc, Channel::NothrowNew>([&] { areas.Add(VornMultiPolygon()); });
  Starved<Channel::NothrowNew>([&] { areas.AddReference(&far); });
  EXPECT_EQ(Box(areas.Boundbox) + " " + std::to_string(areas.Count()), "0..0x0..0 20");
  areas.Remove(areas.begin());  // the box is rebuilt over the null slots that remain
  areas.AddReference(&far);
  EXPECT_EQ(Box(areas.Boundbox), "3..40x5..40");
  areas.RemoveAllReferences();
  EXPECT_EQ(Show(areas), "| -");
}

}  // namespace
