// Allocation-failure sweep over treatment zones, both grids, treatment polygons and maps,
// their factories, and the object collection holding the treatment kinds.
#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "reliability/snapshot.h"
#include "reliability/sweep.h"
#include "reliability/sweep_fixtures.h"
#include "support/wide.h"

namespace {

using namespace vorn_sweep;
using vorn_test::W;

VornTreatmentZone ZoneFixture(int number) {
  return VornTreatmentZone(number, 40.0 * number, W(u"High"), W(u"kg/ha"), 7);
}

void Zones(Run& run) {
  Allow const texts = Allow().Malloc(kLostText);
  VornTreatmentZone const zone = ZoneFixture(3);
  std::optional<VornTreatmentZone> z;
  BuildStep(run, "VornTreatmentZone(number, rate, designator, unit, value)", texts, z,
            Snap(zone), [&] { z.emplace(3, 120.0, W(u"High"), W(u"kg/ha"), 7); });
  BuildStep(run, "VornTreatmentZone(VornTreatmentZone)", texts, z, Snap(zone),
            [&] { z.emplace(zone); });
  VornTreatmentZone target(1, 1.0, W(u"Low"), W(u"l/ha"), 0);
  ChangeStep(run, "VornTreatmentZone = VornTreatmentZone", texts, target, Snap(zone),
             [&] { target = zone; });
  VornTreatmentZone renamed(zone);
  renamed.SetDesignator(W(u"Edge"));
  renamed.SetUnitName(W(u"t/ha"));
  VornTreatmentZone setters(zone);
  ChangeStep(run, "VornTreatmentZone::SetDesignator", texts, setters,
             Snap(VornTreatmentZone(3, 120.0, W(u"Edge"), W(u"kg/ha"), 7)),
             [&] { setters.SetDesignator(W(u"Edge")); });
  setters.SetDesignator(W(u"Edge"));  // whole again for the next step
  ChangeStep(run, "VornTreatmentZone::SetUnitName", texts, setters, Snap(renamed),
             [&] { setters.SetUnitName(W(u"t/ha")); });

  // Add refuses a copy it cannot allocate or link; AddRange keeps a copy that cannot be
  // allocated as a null entry and stops at the first node it cannot allocate.
  VornTreatmentZoneCollection zones;
  ChangeStep(run, "VornTreatmentZoneCollection::Add(zone)",
             Allow().Malloc(kThrewNull | kLostText).New(kThrewNull), zones,
             Appended(Snap(zones), Snap(zone)), [&] { zones.Add(zone); });
  ChangeStep(run, "VornTreatmentZoneCollection::Add(number, rate)",
             Allow().Malloc(kThrewNull).New(kThrewNull), zones,
             Appended(Snap(zones), Snap(VornTreatmentZone(4, 1.5))), [&] { zones.Add(4, 1.5); });
  VornTreatmentZone* adopted = new VornTreatmentZone(5, 2.5);
  Tokens const before = Snap(zones);
  Outcome o = run.Do([&] { zones.AddReference(adopted); });
  run.Check("VornTreatmentZoneCollection::AddReference", o, Allow().New(kThrewNull), Snap(zones),
            {Appended(before, Snap(*adopted)), before});
  if (o.threw) delete adopted;
  Allow const copying = Allow().Malloc(kNullMember | kLostText).New(kTruncated);
  VornTreatmentZoneCollection legend;
  legend.Add(ZoneFixture(1));
  legend.Add(ZoneFixture(2));
  // A node missing for the first zone appends nothing at all.
  ChangeStep(run, "VornTreatmentZoneCollection::AddRange", Allow(copying).New(kUnchanged), zones,
             WithMembers(Snap(zones), Members(Snap(legend)), 2), [&] { zones.AddRange(legend); });
  std::optional<VornTreatmentZoneCollection> copy;
  BuildStep(run, "VornTreatmentZoneCollection(VornTreatmentZoneCollection)", copying, copy,
            Snap(legend), [&] { copy.emplace(legend); });
  VornTreatmentZoneCollection assigned;
  assigned.Add(9, 9.0);
  ChangeStep(run, "VornTreatmentZoneCollection = VornTreatmentZoneCollection", copying, assigned,
             Snap(legend), [&] { assigned = legend; });

  FactoryStep<VornTreatmentZone>(run, "Alloc_VornTreatmentZone()", Allow().Malloc(kFailed),
                                 Snap(VornTreatmentZone()),
                                 [] { return Vorn::Alloc_VornTreatmentZone(); },
                                 Vorn::Free_VornTreatmentZone);
  FactoryStep<VornTreatmentZoneEx>(run, "Alloc_VornTreatmentZoneEx()", Allow().Malloc(kFailed),
                                   Snap(VornTreatmentZoneEx()),
                                   [] { return Vorn::Alloc_VornTreatmentZoneEx(); },
                                   Vorn::Free_VornTreatmentZoneEx);

  for (VornTreatmentZoneCollection* used : {&zones, &assigned}) {
    VornTreatmentZoneCollection const again(*used);
    EXPECT_EQ(Snap(again), Snap(*used));
  }
}

TEST(AllocationFailureSweep, TreatmentZones) { Sweep("treatment zones", Zones); }

// A 4 x 3 byte grid with a Tag, an attribute, two zones and every cell set.
VornTreatmentGrid GridFixture() {
  VornTreatmentGrid grid;
  grid.InitGrid(5000.0, 300.0, 10.0, 20.0, 4, 3);
  Describe(grid, "grid");
  grid.Zones.Add(ZoneFixture(1));
  grid.Zones.Add(ZoneFixture(2));
  unsigned char* cells = grid;
  for (int i = 0; i < 12; ++i) cells[i] = static_cast<unsigned char>(i % 2);
  return grid;
}

// The state a grid is left in by InitGrid with the fixture's layout when the cells (or
// rows) cannot be allocated: counts, sizes and box set, not initialised.
template <class Grid>
Tokens Uninitialised(Grid const& grid, Grid const& layout) {
  Grid model;
  if (grid.IsInit()) model = grid;
  model.Tag = grid.Tag;
  model.InitGrid(layout.Boundbox.MinY, layout.Boundbox.MinX, layout.CellHeight(),
                 layout.CellWidth(), layout.NumColumns(), layout.NumRows());
  model.UnInit();
  return Snap(model);
}

void Grids(Run& run) {
  VornTreatmentGrid const fixture = GridFixture();
  VornTreatmentGrid grid;
  grid.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2);
  bool result = false;
  Tokens before = Snap(grid);
  Outcome o = run.Do([&] { result = grid.InitGrid(5000.0, 300.0, 10.0, 20.0, 4, 3); });
  VornTreatmentGrid zeroed(fixture);
  unsigned char* cells = zeroed;
  for (int i = 0; i < 12; ++i) cells[i] = 0;
  zeroed.Tag = grid.Tag;
  zeroed.Attributes.Clear();
  zeroed.Zones.Clear();
  run.Check("VornTreatmentGrid::InitGrid", o, Allow().Malloc(kFailed),
            WithResult(result, Snap(grid)),
            {WithResult(true, Snap(zeroed)), {},
             {WithResult(false, Uninitialised(grid, fixture))}});

  // A copy is made whole or not at all, except for its zones: a zone that cannot be
  // copied becomes a null entry, and the zone copying stops at a missing node.
  std::optional<VornTreatmentGrid> copy;
  BuildStep(run, "VornTreatmentGrid(VornTreatmentGrid)",
            Allow().Malloc(kThrewGrid | kLostText | kNullMember).New(kThrewNull | kTruncated),
            copy, Snap(fixture), [&] { copy.emplace(fixture); });
  // The target already holds the fixture's attributes and zones, so that an assignment
  // failing among the attributes leaves them cut short, the zones as they were and the
  // cells zeroed by the new layout.
  VornTreatmentGrid target;
  target.InitGrid(0.0, 0.0, 1.0, 1.0, 2, 2);
  target.Tag = "old";
  target.Attributes = fixture.Attributes;
  target.Zones = fixture.Zones;
  VornTreatmentGrid blank(fixture);
  cells = blank;
  for (int i = 0; i < 12; ++i) cells[i] = 0;
  Tokens const blankTokens = Snap(blank);
  before = Snap(target);
  Tokens const failedInit = Uninitialised(target, fixture);
  o = run.Do([&] { target = fixture; });
  run.Check("VornTreatmentGrid = VornTreatmentGrid",
            o, Allow().Malloc(kThrewGrid | kLostText | kNullMember).New(kThrewPartial | kTruncated),
            Snap(target),
            {Snap(fixture), before, {failedInit},
             [&](Tokens const& actual) { return OneLoss(blankTokens, actual) == kTruncated; }});

  FactoryStep<VornTreatmentGrid>(run, "Alloc_VornTreatmentGrid()", Allow().Malloc(kFailed),
                                 Snap(VornTreatmentGrid()),
                                 [] { return Vorn::Alloc_VornTreatmentGrid(); },
                                 Vorn::Free_VornTreatmentGrid);
  VornObjectCollection objects;
  ChangeStep(run, "VornObjectCollection::Add(VornTreatmentGrid)",
             Allow().Malloc(kNullMember | kThrewGrid | kLostText)
                 .New(kThrewNull | kTruncated | kUnchanged),
             objects, Appended(Snap(objects), Snap(fixture)), [&] { objects.Add(fixture); });

  for (VornTreatmentGrid* used : {&grid, &target}) {
    used->Transform(Shift, nullptr);
    if (!used->IsInit()) continue;
    VornTreatmentGrid const again(*used);
    EXPECT_EQ(Snap(again), Snap(*used));
  }
  objects.Transform(Shift, nullptr);
}

TEST(AllocationFailureSweep, TreatmentGrids) { Sweep("treatment grids", Grids); }

// A 3 x 2 extended grid with a Tag, an attribute and every cell set.
VornTreatmentGridEx GridExFixture() {
  VornTreatmentGridEx grid;
  grid.InitGrid(5000.0, 300.0, 10.0, 20.0, 3, 2);
  Describe(grid, "rates");
  for (unsigned int row = 0; row < 2; ++row) {
    for (unsigned int column = 0; column < 3; ++column) {
      grid.SetZoneInfo(column, row, 10.0 * column + row, static_cast<int>(row));
    }
  }
  return grid;
}

void GridExs(Run& run) {
  VornTreatmentGridEx const fixture = GridExFixture();
  VornTreatmentGridEx grid;
  bool result = false;
  Outcome o = run.Do([&] { result = grid.InitGrid(5000.0, 300.0, 10.0, 20.0, 3, 2); });
  VornTreatmentGridEx defaults(fixture);
  for (unsigned int row = 0; row < 2; ++row) {
    for (unsigned int column = 0; column < 3; ++column) defaults.SetZoneInfo(column, row, 0.0, 0);
  }
  defaults.Tag = nullptr;
  defaults.Attributes.Clear();
  // The row table failing fails InitGrid; a row failing leaves that row null.
  run.Check("VornTreatmentGridEx::InitGrid", o, Allow().NewArray(kFailed | kNullRow),
            WithResult(result, Snap(grid)),
            {WithResult(true, Snap(defaults)), {},
             {WithResult(false, Uninitialised(grid, fixture))}});

  std::optional<VornTreatmentGridEx> copy;
  BuildStep(run, "VornTreatmentGridEx(VornTreatmentGridEx)",
            Allow().Malloc(kLostText).New(kThrewNull).NewArray(kThrewGrid | kNullRow), copy,
            Snap(fixture), [&] { copy.emplace(fixture); });
  VornTreatmentGridEx target;
  target.InitGrid(0.0, 0.0, 1.0, 1.0, 1, 1);
  target.Tag = "old";
  target.Attributes = fixture.Attributes;
  Tokens const before = Snap(target);
  Tokens const failedInit = Uninitialised(target, fixture);
  VornTreatmentGridEx reset(defaults);
  reset.Tag = fixture.Tag;
  reset.Attributes = fixture.Attributes;
  Tokens const resetTokens = Snap(reset);
  o = run.Do([&] { target = fixture; });
  run.Check("VornTreatmentGridEx = VornTreatmentGridEx", o,
            Allow().Malloc(kLostText).New(kThrewPartial).NewArray(kThrewGrid | kNullRow),
            Snap(target),
            {Snap(fixture), before, {failedInit},
             [&](Tokens const& actual) { return OneLoss(resetTokens, actual) == kTruncated; }});

  FactoryStep<VornTreatmentGridEx>(run, "Alloc_VornTreatmentGridEx()", Allow().Malloc(kFailed),
                                   Snap(VornTreatmentGridEx()),
                                   [] { return Vorn::Alloc_VornTreatmentGridEx(); },
                                   Vorn::Free_VornTreatmentGridEx);
  VornObjectCollection objects;
  ChangeStep(run, "VornObjectCollection::Add(VornTreatmentGridEx)",
             Allow().Malloc(kNullMember | kLostText).New(kThrewNull | kUnchanged)
                 .NewArray(kThrewGrid | kNullRow),
             objects, Appended(Snap(objects), Snap(fixture)), [&] { objects.Add(fixture); });

  for (VornTreatmentGridEx* used : {&grid, &target}) {
    used->Transform(Shift, nullptr);
    if (!used->IsInit()) continue;
    VornTreatmentGridEx const again(*used);
    EXPECT_EQ(again.NumRows(), used->NumRows());
  }
  objects.Transform(Shift, nullptr);
}

TEST(AllocationFailureSweep, ExtendedTreatmentGrids) {
  Sweep("extended treatment grids", GridExs);
}

VornTreatmentPolygon TreatmentPolygonFixture(int zone) {
  return VornTreatmentPolygon(MultiPolygonFixture(), ZoneFixture(zone));
}

// Building or copying a treatment polygon copies its area (which throws when a ring or
// an attribute cannot be stored) and its zone.
Allow const kCopyArea = Allow().Malloc(kThrewNull | kLostText)
                            .New(kThrewNull | kLostCoordinates).NewArray(kThrewMemory);
// Assigning keeps what it copied before a failure.
Allow const kAssignArea = Allow().Malloc(kThrewPartial | kLostText)
                              .New(kThrewPartial | kLostCoordinates).NewArray(kThrewPartial);

void TreatmentPolygons(Run& run) {
  VornPolygon const ring = PolygonFixture(false);
  VornMultiPolygon const area = MultiPolygonFixture();
  VornTreatmentZone const zone = ZoneFixture(2);
  std::optional<VornTreatmentPolygon> t;
  BuildStep(run, "VornTreatmentPolygon(VornPolygon, zone)", kCopyArea, t,
            Snap(VornTreatmentPolygon(ring, zone)), [&] { t.emplace(ring, zone); });
  BuildStep(run, "VornTreatmentPolygon(VornMultiPolygon, zone)", kCopyArea, t,
            Snap(VornTreatmentPolygon(area, zone)), [&] { t.emplace(area, zone); });
  VornTreatmentPolygon const fixture = TreatmentPolygonFixture(2);
  BuildStep(run, "VornTreatmentPolygon(VornTreatmentPolygon)", kCopyArea, t, Snap(fixture),
            [&] { t.emplace(fixture); });
  // The target holds the fixture's attributes and zone already, so that a failure among
  // the rings leaves exactly a shorter ring list.
  VornTreatmentPolygon target;
  target.Area.Attributes = fixture.Area.Attributes;
  target.Area.Polygons.Add(Pond(), 4, true);
  target.Zone = fixture.Zone;
  ChangeStep(run, "VornTreatmentPolygon = VornTreatmentPolygon", kAssignArea, target,
             Snap(fixture), [&] { target = fixture; });
  FactoryStep<VornTreatmentPolygon>(run, "Alloc_VornTreatmentPolygon()", Allow().Malloc(kFailed),
                                    Snap(VornTreatmentPolygon()),
                                    [] { return Vorn::Alloc_VornTreatmentPolygon(); },
                                    Vorn::Free_VornTreatmentPolygon);

  // Add(area) keeps a copy it cannot allocate as a null member and drops one that gets
  // no node; Add(multi-polygon, zone) refuses both with "Parameter is NULL".
  VornTreatmentPolygonCollection areas;
  ChangeStep(run, "VornTreatmentPolygonCollection::Add(VornTreatmentPolygon)",
             Allow(kCopyArea).Malloc(kNullMember).New(kUnchanged), areas,
             Appended(Snap(areas), Snap(fixture)), [&] { areas.Add(fixture); });
  ChangeStep(run, "VornTreatmentPolygonCollection::Add(VornMultiPolygon, zone)", kCopyArea, areas,
             Appended(Snap(areas), Snap(VornTreatmentPolygon(area, zone))),
             [&] { areas.Add(area, zone); });
  VornTreatmentPolygon* adopted = new VornTreatmentPolygon();
  Tokens const before = Snap(areas);
  Outcome o = run.Do([&] { areas.AddReference(adopted); });
  run.Check("VornTreatmentPolygonCollection::AddReference", o, Allow().New(kThrewNull),
            Snap(areas), {Appended(before, Snap(*adopted)), before});
  if (o.threw) delete adopted;
  VornTreatmentPolygonCollection more;
  more.Add(TreatmentPolygonFixture(1));
  more.Add(TreatmentPolygonFixture(3));
  ChangeStep(run, "VornTreatmentPolygonCollection::AddRange",
             Allow().Malloc(kNullMember | kThrewNull | kThrewPartial | kLostText)
                 .New(kDroppedMember | kTruncated | kThrewNull | kThrewPartial | kLostCoordinates)
                 .NewArray(kThrewMemory | kThrewPartial),
             areas, WithMembers(Snap(areas), Members(Snap(more)), 2),
             [&] { areas.AddRange(more); });
  ShallowCopyStep(run, "VornTreatmentPolygonCollection(VornTreatmentPolygonCollection)", areas);
  VornTreatmentPolygonCollection assigned;
  assigned.Add(TreatmentPolygonFixture(4));
  ChangeStep(run, "VornTreatmentPolygonCollection = VornTreatmentPolygonCollection",
             Allow().Malloc(kNullMember | kThrewPartial | kLostText)
                 .New(kDroppedMember | kTruncated | kThrewPartial | kLostCoordinates)
                 .NewArray(kThrewPartial),
             assigned, Snap(more), [&] { assigned = more; });

  for (VornTreatmentPolygonCollection* used : {&areas, &assigned}) {
    used->Transform(Shift, nullptr);
    VornTreatmentPolygonCollection again;
    again = *used;
    EXPECT_LE(again.Count(), used->Count());  // null members are not copied
  }
  if (t) t->Transform(Shift, nullptr);
  target.Transform(Shift, nullptr);
}

TEST(AllocationFailureSweep, TreatmentPolygons) {
  Sweep("treatment polygons", TreatmentPolygons);
}

VornTreatmentMap MapFixture() {
  VornTreatmentMap map;
  Describe(map, "map");
  map.TreatmentPolygons.Add(TreatmentPolygonFixture(1));
  map.TreatmentPolygons.Add(TreatmentPolygonFixture(2));
  return map;
}

void Maps(Run& run) {
  VornTreatmentMap const fixture = MapFixture();
  // A map copies its areas and attributes but not its Tag.
  Tokens expected = Snap(fixture);
  expected[1] = "~";
  // The areas are added as the collection's Add does: a copy without storage is a null
  // member, one without a node is dropped; a failure inside a copy throws.
  Allow const copying = Allow().Malloc(kNullMember | kThrewNull | kLostText)
                            .New(kDroppedMember | kTruncated | kThrewNull | kLostCoordinates)
                            .NewArray(kThrewMemory);
  std::optional<VornTreatmentMap> copy;
  BuildStep(run, "VornTreatmentMap(VornTreatmentMap)", copying, copy, expected,
            [&] { copy.emplace(fixture); });
  VornTreatmentMap target;
  target.Tag = "old";
  target.Attributes = fixture.Attributes;
  target.TreatmentPolygons.Add(TreatmentPolygonFixture(5));
  expected[1] = "'old'";
  ChangeStep(run, "VornTreatmentMap = VornTreatmentMap",
             Allow().Malloc(kNullMember | kThrewPartial | kLostText)
                 .New(kDroppedMember | kTruncated | kThrewPartial | kLostCoordinates)
                 .NewArray(kThrewPartial),
             target, expected, [&] { target = fixture; });
  FactoryStep<VornTreatmentMap>(run, "Alloc_VornTreatmentMap()", Allow().Malloc(kFailed),
                                Snap(VornTreatmentMap()),
                                [] { return Vorn::Alloc_VornTreatmentMap(); },
                                Vorn::Free_VornTreatmentMap);

  // The object collection copies a map as a whole; AddRange copies every treatment kind.
  VornObjectCollection objects;
  ChangeStep(run, "VornObjectCollection::Add(VornTreatmentMap)",
             Allow(copying).Malloc(kNullMember).New(kUnchanged), objects,
             Appended(Snap(objects), Snap(VornTreatmentMap(fixture))),
             [&] { objects.Add(fixture); });
  VornObjectCollection kinds;
  kinds.Add(GridFixture());
  kinds.Add(GridExFixture());
  kinds.Add(VornTreatmentMap());
  VornObjectCollection copies;
  ChangeStep(run, "VornObjectCollection::AddRange(treatment kinds)",
             Allow().Malloc(kNullMember | kThrewGrid | kLostText)
                 .New(kDroppedMember | kTruncated | kThrewNull | kThrewPartial)
                 .NewArray(kThrewPartial | kNullRow),
             copies, WithMembers(Snap(copies), Members(Snap(kinds)), 3),
             [&] { copies.AddRange(kinds); });

  for (VornTreatmentMap* used : {&target}) {
    used->Transform(Shift, nullptr);
    VornTreatmentMap const again(*used);
    EXPECT_LE(again.TreatmentPolygons.Count(), used->TreatmentPolygons.Count());
  }
  if (copy) copy->Transform(Shift, nullptr);
  objects.Transform(Shift, nullptr);
  copies.Transform(Shift, nullptr);
}

TEST(AllocationFailureSweep, TreatmentMaps) { Sweep("treatment maps", Maps); }

}  // namespace
