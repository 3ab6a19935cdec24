// The treatment classes: both grids, the zone and area collections, the treatment map and
// the treatment kinds in the object collection. The two grids run side by side through the
// same steps, so that what they share (Transform and the frame of copying) cannot drift
// apart. The reliability tests cover running out of memory in general and the size limits;
// the out-of-memory results the headers single out are pinned here. FailNth makes exactly
// one allocation fail, and each one armed here fires in the next call.
#include <vorn/vorn.h>

#include <functional>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "support/alloc_failure.h"
#include "support/helpers.h"

namespace {

using namespace vorn_test;

// <vorn/vorn.h>, the one library include of this file, declares the whole public interface.
// Named here is a type from each header it gathers that no other header includes (the
// factories are reached by the sweep): every other header comes with one of these, so that
// a header left out of <vorn/vorn.h> whose types nothing else brings in breaks this build.
using OnePerHeader =
    std::tuple<VornUtil, VornPoint, VornMultiPoint, VornMultiLine, VornMultiPolygonVector,
               VornObjectCollection, VornTreatmentGrid, VornTreatmentGridEx, VornTreatmentMap>;

// One cell as a number, for either grid.
double CellOf(VornTreatmentGrid const& grid, int c, int r) { return grid.GetZoneIndex(c, r); }
double CellOf(VornTreatmentGridEx const& grid, int c, int r) { return grid.GetZone(c, r).Rate; }

// A grid's box, rows x columns of cell height x width, Tag, attribute count and, while it
// is initialised, every cell row by row.
template <class Grid>
std::string Show(Grid const& g) {
  std::ostringstream out;
  out << Box(g.Boundbox) << ' ' << g.NumRows() << 'x' << g.NumColumns() << " of " << g.CellHeight()
      << 'x' << g.CellWidth() << " '" << g.Tag.c_str() << "' " << g.Attributes.Count() << ':';
  for (int i = 0; g.IsInit() && i < g.NumRows() * g.NumColumns(); ++i)
    out << ' ' << CellOf(g, i % g.NumColumns(), i / g.NumColumns());
  return out.str();
}

// The areas' box, then each area's box; "null" for a null member.
std::string Show(VornTreatmentPolygonCollection const& areas) {
  std::string out = Box(areas.Boundbox) + ":";
  for (auto const* a : areas) out += a ? " " + Box(a->Area.Polygons.Boundbox) : " null";
  return out;
}

// A map's attribute count, areas and Tag.
std::string Show(VornTreatmentMap const& m) {
  return std::to_string(m.Attributes.Count()) + ' ' + Show(m.TreatmentPolygons) + m.Tag.c_str();
}

// An area over the unit square at (x, y), with zone 1 "Low".
VornTreatmentPolygon Square(double x, double y) {
  VornCoordinate ring[] = {{x, y}, {x + 1, y}, {x + 1, y + 1}, {x, y + 1}, {x, y}};
  return {VornPolygon(ring, 5), VornTreatmentZone(1, 1.0, W(u"Low"), nullptr, 0)};
}

// x -> 10 - 2x, y -> 2y + 20: mirrors X.
void MirrorX(double x, double y, double* outX, double* outY, void*) {
  *outX = 10 - 2 * x;
  *outY = 2 * y + 20;
}

// Every checked precondition, each message and code written once; then what the two grids
// share: Transform moves the south-west and the north-east corner, and a copy keeps the
// frame. The byte grid's cells are written one by one and by row (whole buffers are written
// by copying), and the rate grid loses row 0 and has both cell writers used.
TEST(TreatmentGrids, CheckedPreconditionsRaiseTheirCodesAndCopiesKeepTheFrame) {
  std::pair<char const*, int> const range{"Index out of range", 5002},
      null{"Parameter is NULL", 5003}, notInit{"Object not initialized", 5004};
  VornTreatmentGrid grid;
  ASSERT_TRUE(grid.InitGrid(100, 200, 10, 5, 3, 2));  // south, west, height, width, columns, rows
  grid.Zones.Add(10, 1.5);
  VornTreatmentGridEx rates;
  FailNth(Channel::ArrayNew, 2);  // row 0; the row table was the first
  // Note: true all the same, with row 0 null.
  ASSERT_TRUE(rates.InitGrid(100, 200, 10, 5, 3, 2) && rates.GetZonesInRow(0) == nullptr);
  VornTreatmentGridEx released(rates);
  released.UnInit();
  VornTreatmentMap map;
  map.TreatmentPolygons.Add(Square(0, 0));
  // The second field makes that malloc fail inside the call.
  std::tuple<std::pair<char const*, int>, unsigned long, std::function<void()>> const cases[] = {
      {notInit, 0, [&] { grid = VornTreatmentGrid(); }},  // copying from an empty grid
      {notInit, 0, [&] { rates = VornTreatmentGridEx(); }},
      {notInit, 0, [&] { VornTreatmentGrid().SetZones(grid); }},
      {notInit, 0, [&] { VornTreatmentGrid().SetZoneRow(5, grid); }},  // before the row
      {range, 0, [&] { grid.SetZoneRow(2, nullptr); }},                // the row before the source
      {range, 0, [&] { grid.SetZoneRow(-1, nullptr); }},
      {null, 0, [&] { grid.SetZoneRow(0, nullptr); }},
      {null, 0, [&] { grid.SetZones(nullptr); }},
      {null, 0, [&] { grid.Transform(nullptr, nullptr); }},
      {null, 0, [&] { rates.Transform(nullptr, nullptr); }},
      {range, 0, [&] { rates.GetZone(3, 0); }},  // the position before the missing row
      {notInit, 0, [&] { rates.SetZoneInfo(0, 0, 1.0, 1); }},
      {range, 0, [&] { rates.SetZoneInfo(0, 2, {}); }},
      {notInit, 0, [&] { released.GetZonesInRow(1); }},
      {range, 0, [&] { grid.Zones[1]; }},
      {null, 0, [&] { grid.Zones.AddReference(nullptr); }},
      {null, 1, [&] { grid.Zones.Add(4, 4.0); }},  // where Add reports a copy it cannot make
      {null, 1, [&] { grid.Zones.Add(grid.Zones[0]); }},
      // No test of its own: the first area refuses a null callback.
      {null, 0, [&] { map.Transform(nullptr, nullptr); }},
  };
  for (auto const& c : cases) {
    auto const& [error, failing, call] = c;
    FailNth(Channel::Malloc, failing);
    EXPECT_TRUE(ThrowsVornException(call, error.first, error.second)) << "case " << &c - cases;
  }
  grid.SetZoneIndex(2, 0, 7);
  grid.SetZoneRow(1, grid);  // the buffer itself: row 0 into row 1
  grid.Tag = "grid";
  rates.SetZoneInfo(0, 1, 7.25, 9);
  rates.SetZoneInfo(2, 1, VornTreatmentZoneEx(7.5, 9));
  rates.Attributes.Add("crop", "wheat");
  VornObjectCollection objects;  // which copies every kind as AddRange does
  objects.AddReference(new VornTreatmentMap(map));
  objects.AddReference(new VornTreatmentGrid(grid));
  objects.AddReference(new VornTreatmentGridEx(rates));
  objects.Transform(MirrorX, nullptr);  // taken as they come: MinX > MaxX, a negative width
  objects.AddRange(objects);
  auto const& copy = static_cast<VornTreatmentGrid const&>(objects[4]);
  // Note: no self-assignment test: the cells, attributes and zones reset.
  grid = std::as_const(grid);
  rates = std::as_const(rates);
  EXPECT_EQ(Show(copy) + " zone " + std::to_string(copy.GetZone(1, 0).ZoneNumber) + " / " +
                Show(grid) + " zones " + std::to_string(grid.Zones.Count()),
            "-390..-420x220..260 2x3 of 20x-10 'grid' 0: 0 0 7 0 0 7 zone 10 / "
            "200..215x100..120 2x3 of 10x5 'grid' 0: 0 0 0 0 0 0 zones 0");
  // A copy skips the missing row.
  EXPECT_EQ(Show(static_cast<VornTreatmentGridEx const&>(objects[5])) + " / " + Show(rates),
            "-390..-420x220..260 2x3 of 20x-10 '' 1: 0 0 0 7.25 0 7.5 / "
            "200..215x100..120 2x3 of 10x5 '' 0: 0 0 0 0 0 0");
}

// Note: AddRange makes a null entry of a zone it cannot copy, so that later positions
// still line up, and stops where it cannot get a list node; null entries are copied as null
// and skipped by RemoveAt and the destructor.
TEST(TreatmentZoneCollection, AddRangeKeepsPositionsWhenCopiesFail) {
  VornTreatmentZone mine(3, 3.0);
  VornTreatmentZoneCollection zones;
  zones.Add(VornTreatmentZone(1, 1.0, 5));
  zones.AddReference(&mine);
  zones.AddRange(zones);     // Note: one copy of each zone it held before the call: 1 3 1 3
  zones.RemoveReference(1);  // detached, not deleted: the caller's again
  VornTreatmentZoneCollection const copy(zones);
  zones = std::as_const(zones);  // Note: no self-assignment test, so it empties
  FailNth(Channel::Malloc, 1);   // the first zone is not copied: - 1 3
  zones.AddRange(copy);
  FailNth(Channel::NothrowNew, 2);  // the null entry is copied, then there is no second node
  zones.AddRange(zones);
  zones.RemoveAt(0);  // a null entry: 1 3 -
  zones.RemoveAt(1);  // a zone: 1 -
  EXPECT_TRUE(zones.Count() == 2 && zones[0].UserValue == 5 && *zones.at(1) == nullptr);
}

// The map's areas are a treatment polygon collection: it leaves positions unchecked and
// keeps a copy it cannot make as a null member, which copies and Transform step over.
TEST(TreatmentMap, AreasKeepACopyThatCannotBeMadeAsNullAndCopiesLeaveTheTag) {
  VornTreatmentMap map;
  VornTreatmentPolygonCollection manual(false);  // boxes left to the caller, also when copying
  VornTreatmentPolygon lost = Square(-5, 0);
  manual.Transform(nullptr, nullptr);  // nothing to map, so the callback is not looked at
  map.TreatmentPolygons.Add(Square(0, 0));
  FailNth(Channel::Malloc, 1);  // Note: a null member, the box widened all the same
  map.TreatmentPolygons.Add(lost);
  map.TreatmentPolygons.Add(Square(2, 2).Area, VornTreatmentZone(3, 3.0));
  map.TreatmentPolygons.RemoveAt(3);  // positions beyond the end are ignored
  map.TreatmentPolygons.RemoveReference(3);
  EXPECT_EQ(Show(map.TreatmentPolygons), "-5..3x0..3: 0..1x0..1 null 2..3x2..3");
  manual = map.TreatmentPolygons;  // deep, without the null member
  map.Tag = "mine";
  map.Attributes.Add("crop", "wheat");
  map.Transform(MirrorX, nullptr);  // every walk steps over the null member
  // Note: a copy does not take the Tag.
  EXPECT_EQ(Show(VornTreatmentMap(map)) + " / " + Show(manual),
            "1 4..10x20..26: 8..10x20..22 4..6x24..26 / -: 0..1x0..1 2..3x2..3");
  // Note: none of these three tests for self-assignment: the map and the areas empty, and
  // a treatment polygon empties its area but keeps its zone (which does test for it).
  manual = std::as_const(manual);
  map = std::as_const(map);
  lost = std::as_const(lost);
  EXPECT_EQ(Show(manual) + " / " + Show(map), "-: / 0 -:mine");
  EXPECT_TRUE(lost.Area.Polygons.Count() == 0 && U16(lost.Zone.GetDesignator()) == u"Low");
}

}  // namespace
