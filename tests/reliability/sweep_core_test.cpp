// Allocation-failure sweep over coordinate vectors, attributes and attribute collections.
#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "reliability/snapshot.h"
#include "reliability/sweep.h"
#include "reliability/sweep_fixtures.h"
#include "support/wide.h"

namespace {

using namespace vorn_sweep;
using vorn_test::W;

VornCoordinate ring[] = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};

void CoordinateVectors(Run& run) {
  // A failed reservation for a whole range falls back to growing one coordinate at a
  // time, which a single failure cannot stop.
  Allow const grows = Allow().New(kNone);
  std::optional<VornCoordinateVector> v;
  Outcome o = run.Do([&] { v.emplace(ring, 5); });
  VornCoordinateVector const model(ring, 5);
  run.Check("VornCoordinateVector(array, count)", o, grows, Snap(*v), {Snap(model)});

  Vorn::vector<VornCoordinate> plain;
  for (VornCoordinate const& c : ring) plain.push_back(c);
  std::optional<VornCoordinateVector> fromVector;
  o = run.Do([&] { fromVector.emplace(plain); });
  run.Check("VornCoordinateVector(vector)", o, grows, Snap(*fromVector), {Snap(model)});

  std::optional<VornCoordinateVector> copy;
  o = run.Do([&] { copy.emplace(model); });
  run.Check("VornCoordinateVector(VornCoordinateVector)", o, grows, Snap(*copy), {Snap(model)});

  VornCoordinateVector target;
  target.Add(7, 7);  // capacity 10: a longer source needs a new block
  VornCoordinateVector longer(model);
  longer.AddRange(model);
  longer.AddRange(model);
  Tokens before = Snap(target);
  o = run.Do([&] { target = longer; });
  // A target whose block cannot grow stays empty with its box as it was.
  VornCoordinateVector emptied;
  emptied.Add(7, 7);
  emptied.RemoveAt(0);
  run.Check("VornCoordinateVector = VornCoordinateVector", o, Allow().New(kFailed),
            Snap(target), {Snap(longer), before, {Snap(emptied)}});

  VornCoordinateVector growing(model);  // 5 of 10 slots: the sixth Add fills, the 11th grows
  for (int i = 0; i < 6; ++i) {
    VornCoordinateVector after(growing);
    after.Add(20.0 + i, -1.0);
    VornCoordinateVector widened(growing);  // the box is widened before the append fails
    widened.AddCoordinate(20.0 + i, -1.0);
    before = Snap(growing);
    o = run.Do([&] { growing.Add(20.0 + i, -1.0); });
    run.Check("VornCoordinateVector::Add", o, Allow().New(kFailed), Snap(growing),
              {Snap(after), before, {Snap(widened)}});
  }
  VornCoordinateVector after(growing);
  after.AddRange(growing);
  before = Snap(growing);
  o = run.Do([&] { growing.AddRange(growing); });
  run.Check("VornCoordinateVector::AddRange(itself)", o, Allow().New(kNone), Snap(growing),
            {Snap(after), before});

  bool result = false;
  before = Snap(growing);
  o = run.Do([&] { result = growing.Reserve(100); });
  run.Check("VornCoordinateVector::Reserve", o, Allow().New(kFailed),
            WithResult(result, Snap(growing)), {WithResult(true, before), {},
                                                {WithResult(false, before)}});
  VornCoordinateVector small(ring, 5);
  after = small;
  after.Resize(12);
  before = Snap(small);
  o = run.Do([&] { result = small.Resize(12); });
  run.Check("VornCoordinateVector::Resize", o, Allow().New(kFailed),
            WithResult(result, Snap(small)),
            {WithResult(true, Snap(after)), {}, {WithResult(false, before)}});

  for (VornCoordinateVector* used : {&*v, &*fromVector, &*copy, &target, &growing, &small}) {
    used->Transform(Shift, nullptr);
    VornCoordinateVector const again(*used);
    EXPECT_EQ(again.Count(), used->Count());
  }
}

TEST(AllocationFailureSweep, CoordinateVectors) { Sweep("coordinate vectors", CoordinateVectors); }

unsigned char const bytes[] = {9, 8, 7};

// The state an attribute is left in when the BLOB buffer of SetValue(data, 3) cannot be
// allocated: kind and length already changed, no buffer.
Tokens BlobWithoutBuffer(VornAttribute const& a) {
  Tokens tokens = Snap(a);
  tokens[2] = "k6";
  tokens[3] = "blob3:null";
  tokens.resize(5);
  tokens[4] = ")";
  return tokens;
}

void Attributes(Run& run) {
  Allow const named = Allow().Malloc(kLostText);
  std::optional<VornAttribute> a;
  auto build = [&](std::string const& label, Allow const& allow, VornAttribute const& model,
                   auto construct) {
    a.reset();
    Outcome const o = run.Do([&] { construct(); });
    run.Check(label, o, allow, Built(a), {Snap(model), {"none"}});
  };
  build("VornAttribute(name, double)", named, VornAttribute(W(u"Rate"), 2.5),
        [&] { a.emplace(W(u"Rate"), 2.5); });
  build("VornAttribute(name, int)", named, VornAttribute(W(u"Count"), 3),
        [&] { a.emplace(W(u"Count"), 3); });
  build("VornAttribute(name, long long)", named, VornAttribute(W(u"Big"), 1LL << 40),
        [&] { a.emplace(W(u"Big"), 1LL << 40); });
  build("VornAttribute(name, bool)", named, VornAttribute(W(u"Flag"), true),
        [&] { a.emplace(W(u"Flag"), true); });
  VornDateTime const when{1, 2, 3, 4, 5, 2021};
  build("VornAttribute(name, VornDateTime)", named, VornAttribute(W(u"When"), when),
        [&] { a.emplace(W(u"When"), when); });
  std::tm stamp{};
  stamp.tm_year = 121;
  stamp.tm_mon = 4;
  stamp.tm_mday = 4;
  build("VornAttribute(name, tm)", named, VornAttribute(W(u"Stamp"), stamp),
        [&] { a.emplace(W(u"Stamp"), stamp); });
  build("VornAttribute(name, text)", named, VornAttribute(W(u"Crop"), W(u"Wheat")),
        [&] { a.emplace(W(u"Crop"), W(u"Wheat")); });
  // Each narrow text is converted into a temporary and then copied: either buffer failing
  // loses that text.
  build("VornAttribute(name, narrow text)", named, VornAttribute(W(u"Crop"), "Rye"),
        [&] { a.emplace(W(u"Crop"), "Rye"); });
  build("VornAttribute(narrow name, narrow text)", named, VornAttribute("Crop", "Oats"),
        [&] { a.emplace("Crop", "Oats"); });
  Allow const blob = Allow().Malloc(kLostText).NewArray(kThrewMemory);
  build("VornAttribute(name, bytes)", blob, VornAttribute(W(u"Blob"), bytes, 3),
        [&] { a.emplace(W(u"Blob"), bytes, 3); });
  VornAttribute const text(W(u"Crop"), W(u"Barley"));
  VornAttribute const buffer(W(u"Blob"), bytes, 3);
  build("VornAttribute(text attribute)", named, text, [&] { a.emplace(text); });
  build("VornAttribute(BLOB attribute)", blob, buffer, [&] { a.emplace(buffer); });

  // Assignment releases the old value first, so a failure leaves the new name or value
  // without its buffer; a BLOB that cannot be copied throws with the bytes gone.
  VornAttribute target(W(u"Old"), W(u"Value"));
  Outcome o = run.Do([&] { target = text; });
  run.Check("VornAttribute = text attribute", o, named, Snap(target), {Snap(text)});
  Tokens before = Snap(target);
  o = run.Do([&] { target = buffer; });
  run.Check("VornAttribute = BLOB attribute", o, blob, Snap(target),
            {Snap(buffer), before, {BlobWithoutBuffer(buffer)}});

  VornAttribute setter(W(u"Value"), 1);
  o = run.Do([&] { setter.SetValue(W(u"Loam")); });
  run.Check("VornAttribute::SetValue(text)", o, named, Snap(setter),
            {Snap(VornAttribute(W(u"Value"), W(u"Loam")))});
  VornAttribute scalar(W(u"Value"), 1);
  before = Snap(scalar);
  o = run.Do([&] { scalar.SetValue(bytes, 3); });
  run.Check("VornAttribute::SetValue(bytes)", o, Allow().NewArray(kThrewMemory), Snap(scalar),
            {Snap(VornAttribute(W(u"Value"), bytes, 3)), before, {BlobWithoutBuffer(scalar)}});

  // A BLOB left without its buffer copies as zero bytes of its length.
  for (VornAttribute const* used : {&target, &setter, &scalar}) {
    VornAttribute const again(*used);
    EXPECT_EQ(again.DataType(), used->DataType());
    EXPECT_EQ(again.Length(), used->Length());
  }
}

TEST(AllocationFailureSweep, Attributes) { Sweep("attributes", Attributes); }

// An attribute collection refuses what it cannot store: the attribute's own allocation
// and its list node both fail as "Parameter is NULL" with nothing added.
Allow const kAddText = Allow().New(kThrewNull).Malloc(kLostText);
Allow const kAddBlob = Allow().New(kThrewNull).Malloc(kLostText).NewArray(kThrewMemory);

template <class Op>
void AddStep(Run& run, std::string const& label, Allow const& allow, VornAttributeCollection& c,
             VornAttribute const& added, Op op) {
  Tokens const before = Snap(c);
  Outcome const o = run.Do(op);
  run.Check(label, o, allow, Snap(c), {Appended(before, Snap(added)), before});
}

// Appending copies of several attributes keeps those made before a failure (the result
// is then the expected one cut short).
template <class Op>
void RangeStep(Run& run, std::string const& label, Allow const& allow, VornAttributeCollection& c,
               Tokens const& source, Op op) {
  Tokens const before = Snap(c);
  std::vector<Tokens> const added = Members(source);
  Outcome const o = run.Do(op);
  run.Check(label, o, allow, Snap(c), {WithMembers(before, added, added.size()), before});
}

void AttributeCollections(Run& run) {
  VornAttributeCollection c;
  VornAttribute const text(W(u"Crop"), W(u"Wheat"));
  VornAttribute const blob(W(u"Blob"), bytes, 3);
  AddStep(run, "Add(attribute)", kAddText, c, text, [&] { c.Add(text); });
  AddStep(run, "Add(BLOB attribute)", kAddBlob, c, blob, [&] { c.Add(blob); });
  AddStep(run, "Add(name, text)", kAddText, c, VornAttribute(W(u"Soil"), W(u"Clay")),
          [&] { c.Add(W(u"Soil"), W(u"Clay")); });
  AddStep(run, "Add(narrow name, narrow text)", kAddText, c, VornAttribute("Farm", "North"),
          [&] { c.Add("Farm", "North"); });
  AddStep(run, "Add(name, double)", kAddText, c, VornAttribute(W(u"Rate"), 1.5),
          [&] { c.Add(W(u"Rate"), 1.5); });
  AddStep(run, "Add(name, int)", kAddText, c, VornAttribute(W(u"Count"), 4),
          [&] { c.Add(W(u"Count"), 4); });
  AddStep(run, "Add(name, long long)", kAddText, c, VornAttribute(W(u"Big"), 5LL),
          [&] { c.Add(W(u"Big"), 5LL); });
  AddStep(run, "Add(name, bool)", kAddText, c, VornAttribute(W(u"Flag"), false),
          [&] { c.Add(W(u"Flag"), false); });
  VornDateTime const when{0, 30, 12, 1, 6, 2020};
  AddStep(run, "Add(name, VornDateTime)", kAddText, c, VornAttribute(W(u"When"), when),
          [&] { c.Add(W(u"When"), when); });
  std::tm stamp{};
  stamp.tm_year = 120;
  stamp.tm_mday = 1;
  AddStep(run, "Add(name, tm)", kAddText, c, VornAttribute(W(u"Stamp"), stamp),
          [&] { c.Add(W(u"Stamp"), stamp); });
  AddStep(run, "Add(name, bytes)", kAddBlob, c, VornAttribute(W(u"Bytes"), bytes, 3),
          [&] { c.Add(W(u"Bytes"), bytes, 3); });

  // AddReference takes the caller's attribute; a missing node leaves it with the caller.
  VornAttribute* adopted = new VornAttribute(W(u"Own"), 9);
  Tokens before = Snap(c);
  Tokens const expected = Appended(before, Snap(*adopted));
  Outcome o = run.Do([&] { c.AddReference(adopted); });
  run.Check("AddReference", o, Allow().New(kThrewNull), Snap(c), {expected, before});
  if (o.threw) delete adopted;

  VornAttributeCollection small;
  small.Add(text);
  small.Add(blob);
  small.Add(W(u"Depth"), 30);
  // The first copy failing changes nothing; a later one keeps the copies before it. The
  // BLOB comes second here, so its failure is always part-way.
  Allow const blobSecond =
      Allow().New(kThrewNull | kThrewPartial).Malloc(kLostText).NewArray(kThrewPartial);
  RangeStep(run, "AddRange(collection)", blobSecond, c, Snap(small), [&] { c.AddRange(small); });
  VornAttribute array[] = {text, blob};
  RangeStep(run, "AddRange(array, count)", blobSecond, c, Snap(VornAttributeCollection(array, 2)),
            [&] { c.AddRange(array, 2); });
  VornAttributeCollection::AttributeVector vector;
  vector.push_back(blob);
  vector.push_back(text);
  RangeStep(run, "AddRange(vector)", Allow().New(kThrewNull | kThrewPartial).Malloc(kLostText)
                                         .NewArray(kThrewMemory),
            c, Snap(VornAttributeCollection(vector)), [&] { c.AddRange(vector); });
  VornAttributeCollection twice(small);
  RangeStep(run, "AddRange(itself)", blobSecond, twice, Snap(small),
            [&] { twice.AddRange(twice); });

  // The copying constructors destroy what they copied when one copy fails.
  Allow const copying = Allow().New(kThrewNull).Malloc(kLostText).NewArray(kThrewMemory);
  std::optional<VornAttributeCollection> built;
  o = run.Do([&] { built.emplace(small); });
  run.Check("VornAttributeCollection(collection)", o, copying, Built(built),
            {Snap(small), {"none"}});
  built.reset();
  o = run.Do([&] { built.emplace(array, 2); });
  run.Check("VornAttributeCollection(array, count)", o, copying, Built(built),
            {Snap(VornAttributeCollection(array, 2)), {"none"}});
  built.reset();
  o = run.Do([&] { built.emplace(vector); });
  run.Check("VornAttributeCollection(vector)", o, copying, Built(built),
            {Snap(VornAttributeCollection(vector)), {"none"}});

  // Assignment clears first and keeps the copies made before a failure.
  VornAttributeCollection target;
  target.Add(W(u"Old"), 1);
  o = run.Do([&] { target = small; });
  run.Check("VornAttributeCollection = collection", o,
            Allow().New(kThrewPartial).Malloc(kLostText).NewArray(kThrewPartial), Snap(target),
            {Snap(small)});

  for (VornAttributeCollection* used : {&c, &twice, &target}) {
    VornAttributeCollection const again(*used);
    EXPECT_EQ(Snap(again), Snap(*used));
  }
}

TEST(AllocationFailureSweep, AttributeCollections) {
  Sweep("attribute collections", AttributeCollections);
}

}  // namespace
