// Allocation-failure sweep over the geometry objects, their collections, the object
// collection and the factory functions.
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

// After a run: every object still transforms and copies like a whole one.
template <class T>
void Use(T& object) {
  object.Transform(Shift, nullptr);
  T const copy(object);
  EXPECT_EQ(Snap(copy), Snap(object));
}

// A build that threw left nothing to use.
template <class T>
void Use(std::optional<T>& object) {
  if (object) Use(*object);
}

// Copies lose a string on their own; an attribute (or list node) that cannot be stored
// makes the copy throw "Parameter is NULL", so no copy is made.
Allow const kCopyPoint = Allow().Malloc(kLostText).New(kThrewNull);

void PointsAndLines(Run& run) {
  VornPoint const point = PointFixture();
  std::optional<VornPoint> p;
  BuildStep(run, "VornPoint(VornPoint)", kCopyPoint, p, Snap(point), [&] { p.emplace(point); });
  VornPoint pointTarget(5, 6);
  pointTarget.Tag = "old";
  pointTarget.Attributes.Add(W(u"Old"), 1);
  ChangeStep(run, "VornPoint = VornPoint", Allow().Malloc(kLostText).New(kThrewPartial),
             pointTarget, Snap(point), [&] { pointTarget = point; });
  FactoryStep<VornPoint>(run, "Alloc_VornPoint()", Allow().Malloc(kFailed), Snap(VornPoint()),
                         [] { return Vorn::Alloc_VornPoint(); }, Vorn::Free_VornPoint);
  FactoryStep<VornPoint>(run, "Alloc_VornPoint(x, y)", Allow().Malloc(kFailed),
                         Snap(VornPoint(1, 2)), [] { return Vorn::Alloc_VornPoint(1, 2); },
                         Vorn::Free_VornPoint);
  FactoryStep<VornPoint>(run, "Alloc_VornPoint(VornPoint)",
                         Allow().Malloc(kFailed | kLostText).New(kThrewNull), Snap(point),
                         [&] { return Vorn::Alloc_VornPoint(point); }, Vorn::Free_VornPoint);

  // Coordinates come in one reserved block; when it fails they are added one at a time,
  // which a single failure cannot stop.
  Allow const coordinates = Allow().New(kNone);
  VornLine const line = LineFixture();
  VornLine const bare(Square(), 5);
  std::optional<VornLine> l;
  BuildStep(run, "VornLine(array, count)", coordinates, l, Snap(bare),
            [&] { l.emplace(Square(), 5); });
  BuildStep(run, "VornLine(VornCoordinateVector)", coordinates, l, Snap(bare),
            [&] { l.emplace(bare.Coordinates); });
  Allow const copyLine = Allow().Malloc(kLostText).New(kLostCoordinates | kThrewNull);
  BuildStep(run, "VornLine(VornLine)", copyLine, l, Snap(line), [&] { l.emplace(line); });
  VornLine lineTarget(Square(), 1);
  lineTarget.Tag = "old";
  lineTarget.Attributes.Add(W(u"Old"), 1);
  ChangeStep(run, "VornLine = VornLine",
             Allow().Malloc(kLostText).New(kLostCoordinates | kThrewPartial), lineTarget,
             Snap(line), [&] { lineTarget = line; });
  FactoryStep<VornLine>(run, "Alloc_VornLine()", Allow().Malloc(kFailed), Snap(VornLine()),
                        [] { return Vorn::Alloc_VornLine(); }, Vorn::Free_VornLine);
  FactoryStep<VornLine>(run, "Alloc_VornLine(VornLine)",
                        Allow().Malloc(kFailed | kLostText).New(kLostCoordinates | kThrewNull),
                        Snap(line), [&] { return Vorn::Alloc_VornLine(line); },
                        Vorn::Free_VornLine);
  FactoryStep<VornLine>(run, "Alloc_VornLine(array, count)",
                        Allow().Malloc(kFailed).New(kNone), Snap(bare),
                        [] { return Vorn::Alloc_VornLine(Square(), 5); }, Vorn::Free_VornLine);
  FactoryStep<VornLine>(run, "Alloc_VornLine(VornCoordinateVector)",
                        Allow().Malloc(kFailed).New(kNone), Snap(bare),
                        [&] { return Vorn::Alloc_VornLine(bare.Coordinates); },
                        Vorn::Free_VornLine);

  Use(p);
  Use(pointTarget);
  Use(l);
  Use(lineTarget);
}

TEST(AllocationFailureSweep, PointsAndLines) { Sweep("points and lines", PointsAndLines); }

void PolygonsAndMultiPoints(Run& run) {
  Allow const coordinates = Allow().New(kNone);
  VornPolygon const outer(Square(), 5);
  VornPolygon const hole(Pond(), 4, true);
  std::optional<VornPolygon> p;
  BuildStep(run, "VornPolygon(array, count)", coordinates, p, Snap(outer),
            [&] { p.emplace(Square(), 5); });
  BuildStep(run, "VornPolygon(array, count, hole)", coordinates, p, Snap(hole),
            [&] { p.emplace(Pond(), 4, true); });
  BuildStep(run, "VornPolygon(VornCoordinateVector, hole)", coordinates, p, Snap(hole),
            [&] { p.emplace(hole.Coordinates, true); });
  // The fixture's BLOB is its second attribute: a copy fails with "Out of Memory", an
  // assignment keeps the first attribute.
  VornPolygon const fixture = PolygonFixture(false);
  BuildStep(run, "VornPolygon(VornPolygon)",
            Allow().Malloc(kLostText).New(kLostCoordinates | kThrewNull).NewArray(kThrewMemory),
            p, Snap(fixture), [&] { p.emplace(fixture); });
  VornPolygon target(Pond(), 1, true);
  target.Tag = "old";
  ChangeStep(run, "VornPolygon = VornPolygon",
             Allow().Malloc(kLostText).New(kLostCoordinates | kThrewPartial)
                 .NewArray(kThrewPartial),
             target, Snap(fixture), [&] { target = fixture; });
  FactoryStep<VornPolygon>(run, "Alloc_VornPolygon()", Allow().Malloc(kFailed),
                           Snap(VornPolygon()), [] { return Vorn::Alloc_VornPolygon(); },
                           Vorn::Free_VornPolygon);
  FactoryStep<VornPolygon>(run, "Alloc_VornPolygon(array, count)",
                           Allow().Malloc(kFailed).New(kNone), Snap(outer),
                           [] { return Vorn::Alloc_VornPolygon(Square(), 5); },
                           Vorn::Free_VornPolygon);
  FactoryStep<VornPolygon>(run, "Alloc_VornPolygon(array, count, hole)",
                           Allow().Malloc(kFailed).New(kNone), Snap(hole),
                           [] { return Vorn::Alloc_VornPolygon(Pond(), 4, true); },
                           Vorn::Free_VornPolygon);

  VornMultiPoint const points = MultiPointFixture();
  std::optional<VornMultiPoint> m;
  BuildStep(run, "VornMultiPoint(array, count)", coordinates, m,
            Snap(VornMultiPoint(Square(), 4)), [&] { m.emplace(Square(), 4); });
  BuildStep(run, "VornMultiPoint(VornMultiPoint)",
            Allow().Malloc(kLostText).New(kLostCoordinates | kThrewNull), m, Snap(points),
            [&] { m.emplace(points); });
  VornMultiPoint pointsTarget(Pond(), 1);
  pointsTarget.Attributes.Add(W(u"Old"), 1);
  ChangeStep(run, "VornMultiPoint = VornMultiPoint",
             Allow().Malloc(kLostText).New(kLostCoordinates | kThrewPartial), pointsTarget,
             Snap(points), [&] { pointsTarget = points; });
  FactoryStep<VornMultiPoint>(run, "Alloc_VornMultiPoint()", Allow().Malloc(kFailed),
                              Snap(VornMultiPoint()), [] { return Vorn::Alloc_VornMultiPoint(); },
                              Vorn::Free_VornMultiPoint);

  Use(p);
  Use(target);
  Use(m);
  Use(pointsTarget);
}

TEST(AllocationFailureSweep, PolygonsAndMultiPoints) {
  Sweep("polygons and multi-points", PolygonsAndMultiPoints);
}

// A list collection's Add refuses a copy it cannot make or link: "Parameter is NULL" with
// nothing added; the copy itself may lose a string or its coordinates (a copy made from
// bare coordinates adds them one at a time when their block fails, and keeps them).
Allow const kAddLine = Allow().Malloc(kThrewNull | kLostText).New(kThrewNull | kLostCoordinates);
Allow const kAddBuilt = Allow().Malloc(kThrewNull).New(kThrewNull | kNone);

void MultiLines(Run& run) {
  VornLine const line = LineFixture();
  VornLineCollection lines;
  ChangeStep(run, "VornLineCollection::Add(VornLine)", kAddLine, lines,
             Appended(Snap(lines), Snap(line)), [&] { lines.Add(line); });
  VornLine const bare(Pond(), 4);
  ChangeStep(run, "VornLineCollection::Add(VornCoordinateVector)", kAddBuilt, lines,
             Appended(Snap(lines), Snap(bare)), [&] { lines.Add(bare.Coordinates); });
  ChangeStep(run, "VornLineCollection::Add(array, count)", kAddBuilt, lines,
             Appended(Snap(lines), Snap(bare)), [&] { lines.Add(Pond(), 4); });
  VornLine* adopted = new VornLine(Square(), 3);
  Tokens const before = Snap(lines);
  Outcome o = run.Do([&] { lines.AddReference(adopted); });
  run.Check("VornLineCollection::AddReference", o, Allow().New(kThrewNull), Snap(lines),
            {Appended(before, Snap(*adopted)), before});
  if (o.threw) delete adopted;  // refused: still the caller's
  ShallowCopyStep(run, "VornLineCollection(VornLineCollection)", lines);
  VornLineCollection copies;
  copies.Add(bare);
  ChangeStep(run, "VornLineCollection = VornLineCollection",
             Allow().Malloc(kThrewPartial | kLostText).New(kThrewPartial | kLostCoordinates),
             copies, Snap(lines), [&] { copies = lines; });

  VornMultiLine const fixture = MultiLineFixture();
  std::optional<VornMultiLine> m;
  BuildStep(run, "VornMultiLine(VornMultiLine)",
            Allow().Malloc(kLostText | kThrewNull).New(kLostCoordinates | kThrewNull), m,
            Snap(fixture), [&] { m.emplace(fixture); });
  // The target already has the fixture's attributes, so that a failure among the lines
  // (which come first) leaves exactly a shorter line list.
  VornMultiLine target;
  target.Tag = "old";
  target.Lines.Add(bare);
  target.Attributes = fixture.Attributes;
  ChangeStep(run, "VornMultiLine = VornMultiLine",
             Allow().Malloc(kLostText | kThrewPartial).New(kLostCoordinates | kThrewPartial),
             target, Snap(fixture), [&] { target = fixture; });
  FactoryStep<VornMultiLine>(run, "Alloc_VornMultiLine()", Allow().Malloc(kFailed),
                             Snap(VornMultiLine()), [] { return Vorn::Alloc_VornMultiLine(); },
                             Vorn::Free_VornMultiLine);

  lines.Transform(Shift, nullptr);
  copies = lines;
  EXPECT_EQ(Snap(copies), Snap(lines));
  Use(m);
  Use(target);
}

TEST(AllocationFailureSweep, MultiLines) { Sweep("multi-lines", MultiLines); }

Allow const kAddPolygon = Allow().Malloc(kThrewNull | kLostText)
                              .New(kThrewNull | kLostCoordinates).NewArray(kThrewMemory);

void MultiPolygons(Run& run) {
  VornPolygon const outer = PolygonFixture(false);
  VornPolygonCollection rings;
  ChangeStep(run, "VornPolygonCollection::Add(VornPolygon)", kAddPolygon, rings,
             Appended(Snap(rings), Snap(outer)), [&] { rings.Add(outer); });
  VornPolygon const hole(Pond(), 4, true);
  ChangeStep(run, "VornPolygonCollection::Add(VornCoordinateVector, hole)", kAddBuilt, rings,
             Appended(Snap(rings), Snap(hole)), [&] { rings.Add(hole.Coordinates, true); });
  ChangeStep(run, "VornPolygonCollection::Add(array, count, hole)", kAddBuilt, rings,
             Appended(Snap(rings), Snap(hole)), [&] { rings.Add(Pond(), 4, true); });
  VornPolygon* adopted = new VornPolygon(Square(), 4);
  Tokens const before = Snap(rings);
  Outcome o = run.Do([&] { rings.AddReference(adopted); });
  run.Check("VornPolygonCollection::AddReference", o, Allow().New(kThrewNull), Snap(rings),
            {Appended(before, Snap(*adopted)), before});
  if (o.threw) delete adopted;
  ShallowCopyStep(run, "VornPolygonCollection(VornPolygonCollection)", rings);
  VornPolygonCollection copies;
  copies.Add(hole);
  ChangeStep(run, "VornPolygonCollection = VornPolygonCollection",
             Allow().Malloc(kThrewPartial | kLostText).New(kThrewPartial | kLostCoordinates)
                 .NewArray(kThrewPartial),
             copies, Snap(rings), [&] { copies = rings; });

  VornMultiPolygon const fixture = MultiPolygonFixture();
  std::optional<VornMultiPolygon> m;
  BuildStep(run, "VornMultiPolygon(VornMultiPolygon)",
            Allow().Malloc(kLostText | kThrewNull).New(kLostCoordinates | kThrewNull)
                .NewArray(kThrewMemory),
            m, Snap(fixture), [&] { m.emplace(fixture); });
  VornMultiPolygon target;
  target.Tag = "old";
  target.Polygons.Add(hole);
  target.Attributes = fixture.Attributes;
  ChangeStep(run, "VornMultiPolygon = VornMultiPolygon",
             Allow().Malloc(kLostText | kThrewPartial).New(kLostCoordinates | kThrewPartial)
                 .NewArray(kThrewPartial),
             target, Snap(fixture), [&] { target = fixture; });
  FactoryStep<VornMultiPolygon>(run, "Alloc_VornMultiPolygon()", Allow().Malloc(kFailed),
                                Snap(VornMultiPolygon()),
                                [] { return Vorn::Alloc_VornMultiPolygon(); },
                                Vorn::Free_VornMultiPolygon);

  rings.Transform(Shift, nullptr);
  copies = rings;
  EXPECT_EQ(Snap(copies), Snap(rings));
  Use(m);
  Use(target);
}

TEST(AllocationFailureSweep, MultiPolygons) { Sweep("multi-polygons", MultiPolygons); }

// Copying a multi-polygon into a vector: storage that cannot be allocated becomes a null
// slot, a failure inside the copy passes its exception on with nothing appended.
Allow const kCopyInto = Allow().Malloc(kNullMember | kLostText | kThrewNull)
                            .New(kLostCoordinates | kThrewNull).NewArray(kThrewMemory);

void MultiPolygonVectors(Run& run) {
  VornMultiPolygon const area = MultiPolygonFixture();
  VornMultiPolygon second;
  second.Polygons.Add(Square(), 5, false);
  VornMultiPolygonVector vector;
  ChangeStep(run, "VornMultiPolygonVector::Add", Allow(kCopyInto).New(kUnchanged), vector,
             Appended(Snap(vector), Snap(area)), [&] { vector.Add(area); });

  VornMultiPolygonVector adopting;
  VornMultiPolygon* adopted = new VornMultiPolygon(second);
  Tokens before = Snap(adopting);
  Outcome o = run.Do([&] { adopting.AddReference(adopted); });
  run.Check("VornMultiPolygonVector::AddReference", o, Allow().New(kUnchanged), Snap(adopting),
            {Appended(before, Snap(second)), before});
  if (Snap(adopting) == before) delete adopted;  // not taken: still the caller's

  // The ranges reserve room once; should that fail, each copy grows the block itself.
  Vorn::multi_polygon_pointers pointers;
  pointers.push_back(const_cast<VornMultiPolygon*>(&second));
  pointers.push_back(nullptr);
  pointers.push_back(const_cast<VornMultiPolygon*>(&area));
  // The BLOBs are in the second copy, whose failures keep the first.
  Allow const range = Allow().Malloc(kNullMember | kLostText | kThrewNull | kThrewPartial)
                          .New(kNone | kLostCoordinates | kThrewNull | kThrewPartial)
                          .NewArray(kThrewPartial);
  VornMultiPolygonVector ranged;
  ChangeStep(run, "VornMultiPolygonVector::AddRange(pointers)", range, ranged,
             Appended(Appended(Snap(ranged), Snap(second)), Snap(area)),
             [&] { ranged.AddRange(pointers); });
  VornMultiPolygonVector const source(pointers);
  ChangeStep(run, "VornMultiPolygonVector::AddRange(VornMultiPolygonVector)", range, ranged,
             Appended(Appended(Snap(ranged), Snap(second)), Snap(area)),
             [&] { ranged.AddRange(source); });

  // The copying constructors: a failure that throws leaves no vector.
  std::optional<VornMultiPolygonVector> built;
  Allow const building = Allow(kCopyInto).New(kNone).NewArray(0);
  BuildStep(run, "VornMultiPolygonVector(pointers)", building, built, Snap(source),
            [&] { built.emplace(pointers); });
  BuildStep(run, "VornMultiPolygonVector(VornMultiPolygonVector)", building, built,
            Snap(source), [&] { built.emplace(source); });

  VornMultiPolygonVector target;
  VornMultiPolygon old;
  old.Tag = "old";
  target.Add(old);
  ChangeStep(run, "VornMultiPolygonVector = VornMultiPolygonVector",
             Allow().Malloc(kNullMember | kLostText | kThrewPartial)
                 .New(kLostCoordinates | kThrewPartial).NewArray(kThrewPartial),
             target, Snap(source), [&] { target = source; });

  bool result = false;
  before = Snap(vector);
  o = run.Do([&] { result = vector.Reserve(64); });
  run.Check("VornMultiPolygonVector::Reserve", o, Allow().New(kFailed),
            WithResult(result, Snap(vector)), {WithResult(true, before), {},
                                               {WithResult(false, before)}});
  VornMultiPolygonVector sized;
  before = Snap(sized);
  o = run.Do([&] { result = sized.Resize(3); });
  run.Check("VornMultiPolygonVector::Resize", o, Allow().New(kFailed),
            WithResult(result, Snap(sized)),
            {WithResult(true, {"[V", "(null)", "(null)", "(null)", "]"}), {},
             {WithResult(false, before)}});

  for (VornMultiPolygonVector* used : {&vector, &adopting, &ranged, &target}) {
    for (VornMultiPolygon* element : *used) {
      if (element != nullptr) element->Transform(Shift, nullptr);
    }
    used->RecalcBoundbox();
    VornMultiPolygonVector const copy(*used);
    EXPECT_LE(copy.Count(), used->Count());  // null slots are not copied
  }
}

TEST(AllocationFailureSweep, MultiPolygonVectors) {
  Sweep("multi-polygon vectors", MultiPolygonVectors);
}

// An object collection appends a null member for a copy it cannot allocate, drops a
// copy that gets no list node, and passes on what the copy constructor throws.
Allow const kCollect = Allow().Malloc(kNullMember | kLostText).New(kThrewNull | kUnchanged);

void ObjectCollections(Run& run) {
  VornObjectCollection objects;
  auto add = [&](std::string const& label, Allow const& allow, auto const& object) {
    ChangeStep(run, "VornObjectCollection::Add(" + label + ")", allow, objects,
               Appended(Snap(objects), Snap(object)), [&] { objects.Add(object); });
  };
  add("VornPoint", kCollect, PointFixture());
  add("VornLine", Allow(kCollect).New(kLostCoordinates), LineFixture());
  add("VornPolygon", Allow(kCollect).New(kLostCoordinates).NewArray(kThrewMemory),
      PolygonFixture(false));
  add("VornMultiPoint", Allow(kCollect).New(kLostCoordinates), MultiPointFixture());
  add("VornMultiLine", Allow(kCollect).Malloc(kThrewNull).New(kLostCoordinates),
      MultiLineFixture());
  add("VornMultiPolygon",
      Allow(kCollect).Malloc(kThrewNull).New(kLostCoordinates).NewArray(kThrewMemory),
      MultiPolygonFixture());

  // AddReference takes the pointer as it is, null included; without a node the object
  // stays the caller's.
  VornPoint* adopted = Vorn::Alloc_VornPoint(1, 1);
  Tokens before = Snap(objects);
  Outcome o = run.Do([&] { objects.AddReference(adopted); });
  run.Check("VornObjectCollection::AddReference", o, Allow().New(kUnchanged), Snap(objects),
            {Appended(before, Snap(*adopted)), before});
  if (Snap(objects) == before) Vorn::Free_VornPoint(adopted);
  before = Snap(objects);
  o = run.Do([&] { objects.AddReference(static_cast<IVornObject*>(nullptr)); });
  run.Check("VornObjectCollection::AddReference(null)", o, Allow().New(kUnchanged),
            Snap(objects), {Appended(before, {"(null)"}), before});

  // Deep copies of every member but the null ones, in order.
  VornObjectCollection copies;
  copies.Add(VornPoint(9, 9));
  std::vector<Tokens> members;
  for (Tokens const& member : Members(Snap(objects))) {
    if (member != Tokens{"(null)"}) members.push_back(member);
  }
  ChangeStep(run, "VornObjectCollection::AddRange", 
             Allow().Malloc(kNullMember | kLostText | kThrewPartial)
                 .New(kDroppedMember | kTruncated | kLostCoordinates | kThrewNull | kThrewPartial)
                 .NewArray(kThrewPartial),
             copies, WithMembers(Snap(copies), members, members.size()),
             [&] { copies.AddRange(objects); });

  // Copying and assigning share the members; the sharing side lets go before it goes.
  std::optional<VornObjectCollection> shared;
  o = run.Do([&] { shared.emplace(objects); });
  run.Check("VornObjectCollection(VornObjectCollection)", o, Allow().New(kTruncated),
            Snap(*shared), {Snap(objects)});
  shared->RemoveAllReferences();
  VornObjectCollection assigned;
  ChangeStep(run, "VornObjectCollection = VornObjectCollection", Allow().New(kUnchanged),
             assigned, Snap(objects), [&] { assigned = objects; });
  assigned.RemoveAllReferences();

  FactoryStep<VornObjectCollection>(run, "Alloc_VornObjectCollection()", Allow().Malloc(kFailed),
                                    Snap(VornObjectCollection()),
                                    [] { return Vorn::Alloc_VornObjectCollection(); },
                                    Vorn::Free_VornObjectCollection);
  FactoryStep<VornAttribute>(run, "Alloc_VornAttribute()", Allow().New(kFailed),
                             Snap(VornAttribute()), [] { return Vorn::Alloc_VornAttribute(); },
                             Vorn::Free_VornAttribute);

  for (VornObjectCollection* used : {&objects, &copies}) {
    used->Transform(Shift, nullptr);
    VornObjectCollection again;
    again.AddRange(*used);
    EXPECT_LE(again.Count(), used->Count());
  }
}

TEST(AllocationFailureSweep, ObjectCollections) {
  Sweep("object collections", ObjectCollections);
}

}  // namespace
