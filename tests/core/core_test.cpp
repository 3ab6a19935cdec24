// Coordinates, boxes, coordinate vectors, attributes and attribute tables.
#include <vorn/core/attribute_collection.h>
#include <vorn/core/coordinate_vector.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <new>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/helpers.h"

namespace {

using vorn_test::U16, vorn_test::W;
double const nan = std::numeric_limits<double>::quiet_NaN();
unsigned char const bytes[] = {'a', 'b', 'c'};

// A vector's coordinates, then the box as minX..maxX x minY..maxY, with a "-" in front
// while it is uninitialised.
template <class Box>
std::string Show(Box const& b) {
  std::ostringstream out;
  if constexpr (std::is_same_v<Box, VornCoordinateVector>)
    for (VornCoordinate const& c : b) out << c.X << ',' << c.Y << ' ';
  out << (b.IsInit() ? "" : "-") << b.MinX << ".." << b.MaxX << " x " << b.MinY << ".." << b.MaxY;
  return out.str();
}

// Kind/Length()/Decimal(), the year of the date-time, the slot (a BLOB's bytes rather
// than their address), then name:text.
std::string State(VornAttribute const& a) {
  char const* blob = a.DataType() == BLOB ? reinterpret_cast<char const*>(a.ValueBLOB()) : nullptr;
  std::ostringstream out;
  out << a.DataType() << '/' << a.Length() << '/' << a.Decimal() << ' ' << a.ValueDateTime().Year;
  out << ' ' << (blob ? std::string(blob, blob + a.Length()) : std::to_string(a.ValueInt64()));
  for (char16_t c : U16(a.Name.c_str()) + u":" + U16(a.ValueString())) out << static_cast<char>(c);
  return out.str();
}

// Runs each step in turn and checks the state it leaves.
void Steps(std::function<std::string()> const& show,
           std::initializer_list<std::pair<std::function<void()>, char const*>> steps) {
  for (auto const& [step, state] : steps) {
    step();
    EXPECT_EQ(show(), state);
  }
}

// The overloads deleted so that another pointer (narrow text after a wide name, u"..",
// bytes without a length) cannot silently turn into a bool.
[[maybe_unused]] auto add = [](auto v) -> decltype(VornAttributeCollection().Add(W(u""), v)) {};
[[maybe_unused]] auto set = [](auto v) -> decltype(VornAttribute().SetValue(v)) {};
template <class Call>
constexpr bool kIntOnly = std::is_invocable_v<Call, int> && !std::is_invocable_v<Call, char const*>;
static_assert(kIntOnly<decltype(add)> && kIntOnly<decltype(set)> &&
              !std::is_constructible_v<VornAttribute, unsigned short const*, char16_t const*>);

TEST(Coordinate, ComparisonIsExactAndOrdersNothing) {
  VornCoordinate const pairs[][2] = {{{1, 2}, {1, 2}},     {{1, 2}, {1, 3}},
                                     {{1, 2}, {3, 2}},     {{0.0, 0}, {-0.0, 0}},
                                     {{nan, 0}, {nan, 0}}, {{0, nan}, {0, nan}}};
  std::string seen;  // == and != side by side, so that they cannot disagree
  for (auto const& p : pairs) seen += std::to_string(p[0] == p[1]) + std::to_string(p[0] != p[1]);
  EXPECT_EQ(seen, "100101100101");
  // operator< is false both ways, so an ordered set sees every coordinate as the first.
  EXPECT_EQ((std::set<VornCoordinate>{{0, 0}, {1, 1}}.size()), 1u);
}

TEST(Boundbox, EachAddWidensOnlyTheBoundsItExceeds) {
  VornCoordinate points[] = {{1, 1}, {2, 3}, {100, 100}};
  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> last(1, points[2]);
  VornBoundbox box;
  Steps([&] { return Show(box); },
        {{[&] { box.AddCoordinates(points, 2); }, "1..1 x 1..1"},  // not the last coordinate
         {[&] { box.AddCoordinate(-1, 9); }, "-1..1 x 1..9"},
         {[&] { box.AddCoordinate(nan, nan); }, "-1..1 x 1..9"},  // NaN widens nothing
         {[&] { box.AddCoordinates(points, 3); }, "-1..2 x 1..9"},
         {[&] { box.AddBoundbox(VornBoundbox()); }, "-1..2 x 0..9"},  // its flag is ignored
         {[&] { box.AddCoordinates(last); }, "-1..100 x 0..100"},     // every element of a vector
         {[&] { box.AddCoordinate(3, -0.0); }, "-1..100 x 0..100"},   // -0 is not below 0
         {[&] { box.AddBoundbox(-5, 200, 3, 300); }, "-5..200 x 0..300"},
         {[&] { box.Reset(); }, "--5..200 x 0..300"},            // the stale numbers stay
         {[&] { box.AddBoundbox(3, 1, 4, 2); }, "3..1 x 4..2"},  // taken as given when reset
         // The maximum is tested only for a value not below the minimum.
         {[&] { box.AddCoordinate(2, 5); }, "2..1 x 4..5"},
         {[&] { box.Reset(); }, "-2..1 x 4..5"},
         {[&] { box.AddCoordinate(nan, 2); }, "nan..nan x 2..2"},  // a NaN first point counts
         {[&] { box.Set(5, 6, 7, 8); }, "5..6 x 7..8"}});
  // A copy reads through the references of its source but queries the values it copied.
  VornBoundbox const copy(box);
  box.Set(0, 1, 0, 1);
  EXPECT_EQ(Show(copy) + " " + std::to_string(copy.IsPointInBoundbox(5, 7)), "0..1 x 0..1 1");
}

// Per extent (minX, maxX, minY, maxY): whether its minimum corner lies in the box, then
// whether it overlaps the box, each through both overloads so that they cannot drift apart.
TEST(Boundbox, EdgesAndCornersAreInsideAndTouchingBoxesIntersect) {
  VornBoundbox const box(0, 10, 0, 5);
  double const extents[][4] = {{0, 1, 0, 1},   {10, 20, 5, 9}, {-5, 0, -3, 0},  // corners
                               {11, 20, 0, 5}, {-5, -1, 0, 5},                  // beside on x
                               {0, 10, 6, 9},  {0, 10, -3, -1}};                // beside on y
  std::string flags;
  for (auto const& [minX, maxX, minY, maxY] : extents) {
    flags += std::to_string(box.IsPointInBoundbox(minX, minY)) +
             std::to_string(box.IsPointInBoundbox({minX, minY})) +
             std::to_string(box.HasIntersection(minX, maxX, minY, maxY)) +
             std::to_string(box.HasIntersection(VornBoundbox(minX, maxX, minY, maxY))) + " ";
  }
  EXPECT_EQ(flags, "1111 1111 0011 0000 0000 0000 0000 ");
  EXPECT_TRUE(box.HasIntersection(VornBoundbox()));  // the argument's flag is not looked at
}

// Every checked precondition, with its exact message and code.
TEST(Core, CheckedPreconditionsRaiseTheirCodes) {
  VornCoordinateVector v;  // empty, so its box is uninitialised
  VornBoundbox box(1, 2, 3, 4);
  VornAttributeCollection c;
  VornAttribute blob(W(u"B"), bytes, 3);
  // A kind number outside 0..6, as a damaged record would hold it: built on zeroed bytes, a
  // default attribute (Int32 0, owning nothing) turned Int64 changes only the low byte of its
  // kind, which is then set to 9.
  alignas(VornAttribute) unsigned char raw[sizeof(VornAttribute)] = {};
  VornAttribute& damaged = *new (raw) VornAttribute;
  std::vector<unsigned char> const int32(raw, raw + sizeof raw);
  damaged.SetValue(0LL);
  *std::mismatch(raw, raw + sizeof raw, int32.begin()).first = 9;
  std::pair<std::pair<char const*, int>, std::vector<std::function<void()>>> const checks[] = {
      {{"Boundbox not initialized", 5004},
       {[&] { v.IsPointInBoundbox(0, 0); }, [&] { v.IsPointInBoundbox(VornCoordinate()); },
        [&] { v.HasIntersection(0, 1, 0, 1); }, [&] { v.HasIntersection(box); }, [&] { box = v; }}},
      {{"Parameter is NULL", 5003},
       {[&] { v.AddRange(nullptr, 0); }, [&] { v.AddRange(nullptr, 2); },
        [] { VornCoordinateVector(nullptr, 0); }, [&] { v.Transform(nullptr, nullptr); },
        [&] { c.AddReference(nullptr); }, [&] { c.AddRange(nullptr, 1); },
        [] { VornAttributeCollection(nullptr, 0); }}},
      {{"Index out of range", 5002},
       {[&] { v.RemoveAt(0); }, [&] { (void)c[0]; }, [&] { c.RemoveAt(0); },
        [&] { c.RemoveReference(0); }}},
      {{"No Attribute of this name", -1}, {[&] { c.Remove(W(u"C")); }, [&] { c.Remove(nullptr); }}},
      {{"Out of Memory", 5005}, {[] { VornAttribute(W(u"N"), bytes, -1); }}},
      {{"Not supported", 5006}, {[&] { VornAttribute copy(damaged); }, [&] { blob = damaged; }}}};
  for (auto const& [error, calls] : checks)
    for (auto const& call : calls)
      EXPECT_TRUE(vorn_test::ThrowsVornException(call, error.first, error.second));
  // Nothing was changed, but the (empty) name was copied before the kind was refused and the
  // released buffer is forgotten.
  EXPECT_EQ(Show(box) + " " + std::to_string(c.Count()) + " " + State(blob),
            "1..2 x 3..4 0 6/3/0 0 0:");
}

// Adds 10 to both axes and throws for x = 50. A vector given as context is checked to
// still have its reset box: Transform brings the box up to date once per block.
void Shift(double x, double y, double* outX, double* outY, void* self) {
  *outX = x + 10;
  *outY = y + 10;
  EXPECT_TRUE(self == nullptr || !static_cast<VornCoordinateVector*>(self)->IsInit());
  if (x == 50) throw 0;
}

// Writes only the x output, leaving y to be what Transform makes of that.
void NegateXOnly(double x, double, double* outX, double*, void*) { *outX = -x; }

// Adding widens the box; the other edits leave it as it was until RecalcBoundbox. A copy
// rebuilds the box from the coordinates, while assignment copies it as it is.
TEST(CoordinateVector, EachOperationLeavesItsCoordinatesAndBox) {
  VornCoordinate points[] = {{5, 5}, {2, 2}, {2, 2}, {-0.0, -0.0}, {0, 0}, {50, 4}};
  VornCoordinateVector stale(points, 2);
  stale.RemoveAt(1);  // 5,5 in the box 2..5
  VornCoordinateVector unset;
  ASSERT_TRUE(unset.Resize(2));  // coordinates in an uninitialised box
  VornCoordinateVector v;
  Steps(
      [&] { return Show(v); },
      {{[&] { v.AddRange(points, 3); }, "5,5 2,2 2,2 2..5 x 2..5"},
       {[&] { v.AddRange(points, -1); }, "5,5 2,2 2,2 2..5 x 2..5"},
       // Exactly full: the block moves while its own coordinates are read.
       {[&] { v.AddRange(v); }, "5,5 2,2 2,2 5,5 2,2 2,2 2..5 x 2..5"},
       {[&] { v.AddRange(points + 2, 3); }, "5,5 2,2 2,2 5,5 2,2 2,2 2,2 -0,-0 0,0 -0..5 x -0..5"},
       // Each run of equal neighbours keeps its first coordinate.
       {[&] { v.RemoveDuplicates(); }, "5,5 2,2 5,5 2,2 -0,-0 -0..5 x -0..5"},
       {[&] { v.ReverseOrder(); }, "-0,-0 2,2 5,5 2,2 5,5 -0..5 x -0..5"},
       {[&] { v.RemoveAt(0); }, "2,2 5,5 2,2 5,5 -0..5 x -0..5"},
       {[&] { EXPECT_TRUE(v.Resize(2) && v.Reserve(20) && v.Reserve(2)); },
        "2,2 5,5 -0..5 x -0..5"},
       {[&] { v.RecalcBoundbox(); }, "2,2 5,5 2..5 x 2..5"},
       {[&] { v = VornCoordinateVector(stale); }, "5,5 5..5 x 5..5"},  // the copy's box is exact
       {[&] { v = std::as_const(v); }, "5..5 x 5..5"},                 // emptied before it is read
       {[&] { v = stale; }, "5,5 2..5 x 2..5"},
       {[&] { v = VornCoordinateVector(); }, "2..5 x 2..5"},  // emptied; the box stays
       // A source with an uninitialised box throws after its coordinates were copied.
       {[&] { EXPECT_THROW(v = unset, VornException); }, "0,0 0,0 2..5 x 2..5"},
       {[&] { v.Clear(); }, "-2..5 x 2..5"},
       {[&] { v.RecalcBoundbox(); }, "-2..5 x 2..5"},
       {[&] { v.AddRange(points + 1, 2); }, "2,2 2,2 2..2 x 2..2"},
       {[&] { v.RemoveDuplicates(); }, "2,2 2..2 x 2..2"},
       // With min above max on y, 4 is both below the minimum and above the maximum.
       {[&] { v.Set(0, 10, 10, 0); }, "2,2 0..10 x 10..0"},
       {[&] { v.AddRange(points + 5, 1); }, "2,2 50,4 0..50 x 4..0"},
       // Transform rebuilds the box from the results, or from those it finished.
       {[&] { EXPECT_THROW(v.Transform(Shift, &v), int); }, "12,12 50,4 12..12 x 12..12"},
       // An axis the callback leaves unwritten is NaN, not a stale value.
       {[&] { v.Transform(NegateXOnly, nullptr); }, "-12,nan -50,nan -50..-12 x nan..nan"}});
  // Block by block over several blocks; an empty library vector adds nothing.
  Vorn::vector<VornCoordinate, Vorn::allocator, Vorn::exponential_growth<10>> many(300, {1, 2});
  many[150] = {-7, 9};
  many[299] = {40, 50};
  VornCoordinateVector large(many);
  large.AddRange(decltype(many)());
  large.Transform(Shift, nullptr);
  EXPECT_EQ(Show<VornBoundbox>(large), "3..50 x 12..60");
}

// Each Add stores its kind; a copy of the collection keeps every attribute. With the
// attribute's copy (1) or the list node (2) not to be had, each Add reports a null
// parameter and keeps nothing.
TEST(AttributeCollection, EveryAddStoresItsKindAndACopyKeepsIt) {
  std::tm record{};
  record.tm_year = 121;
  VornDateTime const date{0, 0, 0, 1, 1, 2006};
  std::function<void(VornAttributeCollection&)> const adds[] = {
      [](auto& c) { c.Add(W(u"a"), W(u"text")); },
      [](auto& c) { c.Add("b", "h\xC3\xA9!"); },  // UTF-8 to UTF-16
      [](auto& c) { c.Add("c", nullptr); },       // the empty text
      [](auto& c) { c.Add(W(u"d"), 1.0); },
      [](auto& c) { c.Add(W(u"e"), -1); },  // sign-extended
      [](auto& c) { c.Add(W(u"f"), 1LL << 40); },
      [](auto& c) { c.Add(W(u"g"), true); },
      [&](auto& c) { c.Add(W(u"h"), date); },
      [&](auto& c) { c.Add(W(u"i"), record); },
      [](auto& c) { c.Add(W(u"j"), bytes, 3); },
      [](auto& c) { c.Add(VornAttribute(W(u"k"), bytes, 0)); }};
  VornAttributeCollection c;
  for (auto const& each : adds) {
    each(c);
    for (unsigned long n : {1ul, 2ul}) {
      vorn_test::ScopedFailure failure(vorn_test::Channel::NothrowNew, n);
      EXPECT_TRUE(vorn_test::ThrowsVornException([&] { each(c); }, "Parameter is NULL", 5003));
    }
  }
  VornAttributeCollection const copy(c);
  std::string states;
  for (auto it = copy.rbegin(); it != copy.rend(); ++it) states.insert(0, State(**it) + " ");
  for (unsigned int i = 0; i < c.Count(); ++i) EXPECT_EQ(State(c[i]), State(copy[i]));
  EXPECT_EQ(states,
            "0/4/0 0 0a:text 0/3/0 0 0b:h\xE9! 0/0/0 0 0c: 1/0/0 0 4607182418800017408d: "
            "2/0/0 0 -1e: 3/0/0 0 1099511627776f: 4/0/0 0 1g: 5/0/0 2006 0h: 5/0/0 2021 0i: "
            "6/3/0 0 abcj: 6/0/0 0 k: ");
}

// Setters write only their own kind's fields, the accessors reinterpret the shared slot,
// and assignment releases the target before it reads the source.
TEST(Attribute, TheSlotIsSharedAndAssignmentReleasesTheTargetFirst) {
  VornAttribute a(W(u"A"), W(u"text"));
  a = std::as_const(a);  // a text assigned to itself is empty; so is malformed UTF-8
  EXPECT_EQ(State(a) + State(VornAttribute(W(u"N"), "\xFF")), "0/0/0 0 0A:0/0/0 0 0N:");
  a.SetValue(W(u"text"));
  a.SetValue(2.5, 8, 3);
  VornAttribute copy(W(u"C"), 7);
  copy = a;  // without the width and decimals of the Double
  EXPECT_EQ(State(a) + " " + State(copy),
            "1/8/3 0 4612811918334230528A:text 1/0/0 0 4612811918334230528A:");
  a.SetValue(1);
  EXPECT_EQ(a.ValueDouble(), 0x1p-1074);  // the bits of an Int32 1, not 1.0
  a.SetValue((1LL << 40) + 7);
  EXPECT_EQ(a.ValueInt32(), 7);  // the low 32 bits
  a.SetValue(-0.0, 0, 0);
  EXPECT_TRUE(a.ValueBool() && !(a == a) && !(a < a));  // a bit is set; no equality or order
  VornAttribute blob(W(u"B"), bytes, 3);
  blob = std::as_const(blob);  // a BLOB keeps itself
  unsigned char const* const kept = blob.ValueBLOB();
  blob.SetValue(bytes, 1);  // a setter does not release the old buffer
  EXPECT_EQ(std::string(reinterpret_cast<char const*>(kept), 3) + State(blob), "abc6/1/0 0 aB:");
  delete[] kept;
  long long const released = blob.ValueInt64();
  blob = VornAttribute(W(u"T"), W(u"t"));
  EXPECT_EQ(blob.ValueInt64(), released);  // the slot keeps the released buffer's address
}

TEST(AttributeCollection, RangesCopyInOrderAndRemovalDeletes) {
  VornAttribute attrs[2] = {VornAttribute(W(u"A"), 1), VornAttribute(W(u"B"), 2)};
  VornAttributeCollection::AttributeVector v;
  ASSERT_TRUE(v.push_back(attrs[1]) && v.push_back(attrs[0]));
  VornAttributeCollection c(v);
  c.AddRange(nullptr, 0);
  c.AddRange(VornAttributeCollection(attrs, 2));
  c.AddRange(c);      // one copy of what it held before the call
  c.Remove(W(u"B"));  // the first of the duplicates
  c.RemoveAt(1);
  VornAttribute* const adopted = new VornAttribute(W(u"D"), 2);
  c.AddReference(adopted);
  c.RemoveReference(6);  // detached, not deleted: the caller's again
  c.AddReference(adopted);
  std::string names;  // the first letter of each name, in order
  for (VornAttribute const* each : c) names += static_cast<char>(each->Name.c_str()[0]);
  EXPECT_EQ(names + (&c[6] == adopted ? "=" : "!"), "ABBAABD=");
  c = std::as_const(c);  // cleared, adopted attribute and all, before it is read
  EXPECT_EQ(c.Count(), 0u);
}

TEST(AttributeCollection, LookupsFindTheFirstMatchUnderTheCollectionsSetting) {
  VornAttributeCollection c;
  for (char16_t const* name : {u"Area", u"b", u"Area", u"B"}) c.Add(W(name), 1);
  auto const find = [](VornAttributeCollection const& in) {
    std::string found;
    for (char16_t const* key : {u"Area", u"AREA", u"B", u"b"})
      found += std::to_string(in.GetIndexOfKey(W(key))) + (in.KeyExists(W(key)) ? "+" : " ");
    return found + std::to_string(in.GetIndexOfKey(nullptr));
  };
  EXPECT_EQ(find(c), "0+-1 3+1+-1");
  c.SetCaselessCompare(true);
  VornAttributeCollection exact;
  exact = c;  // the target keeps its own setting, and a copy compares exactly
  EXPECT_EQ(find(c) + "|" + find(exact) + "|" + find(VornAttributeCollection(c)),
            "0+0+1+1+-1|0+-1 3+1+-1|0+-1 3+1+-1");
}

}  // namespace
