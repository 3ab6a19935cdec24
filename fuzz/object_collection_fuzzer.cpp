// Random operation sequences on two object collections, checked after every step against
// a model: the members in order, each by identity (pointer), kind and tag. Members of all
// nine kinds, null members, and members of a kind the library does not know (which
// Clear, RemoveAt and AddRange must refuse with their -1 exceptions) are mixed.
//
// Objects detached with RemoveReference or RemoveAllReferences go to a pool the fuzzer
// owns and may be adopted again; AddressSanitizer reports any object the collection
// frees while it should not, frees twice, or leaks. Objects of the unknown kind are
// detached before a collection is destroyed, since its destructor cannot refuse them.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <vorn/vorn.h>

#include "fuzz_check.h"

namespace {

using vorn_fuzz::Expected;
using vorn_fuzz::kNoThrow;
using vorn_fuzz::kParameterIsNull;
using vorn_fuzz::Raises;

constexpr Expected kFreeUnknown{"Free(): Unknown VornObject-Type", -1};
constexpr Expected kAddRangeUnknown{"AddRange(): Unknown VornObject-Type", -1};
// Appending a collection doubles it at most; appends that would pass this size are
// skipped, so that a run stays fast.
constexpr std::size_t kMaxRange = 64;

constexpr int kNull = -1;
constexpr int kStranger = 42;
constexpr int kKnownKinds = 9;

// An object of a kind outside 0..8, as a newer program might hand over.
class Stranger : public IVornObject {
public:
  VornObjectType GetType() const override { return static_cast<VornObjectType>(kStranger); }
  void Transform(VornTransformCallback callback, void*) override {
    if (callback == nullptr) throw VornException("Parameter is NULL", 5003);
  }
};

void Shift(double x, double y, double* outX, double* outY, void*) {
  *outX = x + 1;
  *outY = y - 1;
}

// A new object of `kind` (0..8, or kStranger) tagged `tag`. Grids are small but
// initialised, so that copying them copies cells.
IVornObject* Build(int kind, std::string const& tag) {
  VornCoordinate ring[] = {{0, 0}, {0, 2}, {2, 2}, {0, 0}};
  IVornObject* object = nullptr;
  switch (kind) {
    case Point: object = new VornPoint(1, 2); break;
    case Line: object = new VornLine(ring, 3); break;
    case Polygon: object = new VornPolygon(ring, 4, false); break;
    case MultiPoint: object = new VornMultiPoint(ring, 2); break;
    case MultiLine: {
      auto* lines = new VornMultiLine();
      lines->Lines.Add(ring, 2);
      object = lines;
      break;
    }
    case MultiPolygon: {
      auto* polygons = new VornMultiPolygon();
      polygons->Polygons.Add(ring, 4, false);
      object = polygons;
      break;
    }
    case TreatmentGrid: {
      auto* grid = new VornTreatmentGrid();
      FUZZ_CHECK(grid->InitGrid(0, 0, 1, 1, 2, 2));
      grid->Zones.Add(1, 2.5);
      object = grid;
      break;
    }
    case TreatmentMap: object = new VornTreatmentMap(); break;
    case TreatmentGridEx: {
      auto* grid = new VornTreatmentGridEx();
      FUZZ_CHECK(grid->InitGrid(0, 0, 1, 1, 2, 1));
      object = grid;
      break;
    }
    default: object = new Stranger(); break;
  }
  object->Tag = tag.c_str();
  return object;
}

// Add(const X&) with the overload of the object's kind.
void AddCopy(VornObjectCollection& collection, IVornObject const& object) {
  switch (object.GetType()) {
    case Point: collection.Add(static_cast<VornPoint const&>(object)); break;
    case Line: collection.Add(static_cast<VornLine const&>(object)); break;
    case Polygon: collection.Add(static_cast<VornPolygon const&>(object)); break;
    case MultiPoint: collection.Add(static_cast<VornMultiPoint const&>(object)); break;
    case MultiLine: collection.Add(static_cast<VornMultiLine const&>(object)); break;
    case MultiPolygon: collection.Add(static_cast<VornMultiPolygon const&>(object)); break;
    case TreatmentGrid: collection.Add(static_cast<VornTreatmentGrid const&>(object)); break;
    case TreatmentMap: collection.Add(static_cast<VornTreatmentMap const&>(object)); break;
    case TreatmentGridEx: collection.Add(static_cast<VornTreatmentGridEx const&>(object)); break;
  }
}

// AddReference through the typed overload, or through the IVornObject* one.
void AddReference(VornObjectCollection& collection, IVornObject* object, bool typed) {
  if (!typed || object == nullptr) {
    collection.AddReference(object);
    return;
  }
  switch (object->GetType()) {
    case Point: collection.AddReference(static_cast<VornPoint*>(object)); break;
    case Line: collection.AddReference(static_cast<VornLine*>(object)); break;
    case Polygon: collection.AddReference(static_cast<VornPolygon*>(object)); break;
    case MultiPoint: collection.AddReference(static_cast<VornMultiPoint*>(object)); break;
    case MultiLine: collection.AddReference(static_cast<VornMultiLine*>(object)); break;
    case MultiPolygon: collection.AddReference(static_cast<VornMultiPolygon*>(object)); break;
    case TreatmentGrid: collection.AddReference(static_cast<VornTreatmentGrid*>(object)); break;
    case TreatmentMap: collection.AddReference(static_cast<VornTreatmentMap*>(object)); break;
    case TreatmentGridEx:
      collection.AddReference(static_cast<VornTreatmentGridEx*>(object));
      break;
    default: collection.AddReference(object); break;
  }
}

struct Entry {
  IVornObject* object;  // null until the collection's copy has been seen, or a null member
  int kind;             // kNull for a null member
  std::string tag;
};

struct Side {
  std::unique_ptr<VornObjectCollection> collection{new VornObjectCollection()};
  std::vector<Entry> model;
};

class Session {
public:
  explicit Session(FuzzedDataProvider& input) : input_(input) {}

  ~Session() {
    for (Side& side : sides_) {
      for (std::size_t i = side.model.size(); i-- > 0;) {
        if (side.model[i].kind != kStranger) continue;
        side.collection->RemoveReference(static_cast<unsigned int>(i));
        delete side.model[i].object;
      }
    }
    for (IVornObject* object : pool_) delete object;
  }

  void Step() {
    Side& side = sides_[input_.ConsumeBool() ? 1 : 0];
    Side& other = &side == &sides_[0] ? sides_[1] : sides_[0];
    switch (input_.ConsumeIntegralInRange(0, 14)) {
      case 0: {  // a copy of the caller's object
        int const kind = input_.ConsumeIntegralInRange(0, kKnownKinds - 1);
        std::string const tag = NextTag();
        std::unique_ptr<IVornObject> local(Build(kind, tag));
        AddCopy(*side.collection, *local);
        side.model.push_back({nullptr, kind, CopiedTag(kind, tag)});
        break;
      }
      case 1: {
        int const kind = input_.ConsumeIntegralInRange(0, kKnownKinds);
        int const built = kind == kKnownKinds ? kStranger : kind;
        std::string const tag = NextTag();
        IVornObject* object = Build(built, tag);
        AddReference(*side.collection, object, input_.ConsumeBool());
        side.model.push_back({object, built, tag});
        break;
      }
      case 2:  // a detached object handed back, or a null member
        if (pool_.empty() || input_.ConsumeBool()) {
          AddReference(*side.collection, nullptr, false);
          side.model.push_back({nullptr, kNull, ""});
        } else {
          IVornObject* object = pool_.back();
          pool_.pop_back();
          AddReference(*side.collection, object, input_.ConsumeBool());
          side.model.push_back({object, KindOf(object), object->Tag.c_str()});
        }
        break;
      case 3: {  // out of range does nothing; an unknown kind is refused and stays
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        bool const stranger = valid && side.model[index].kind == kStranger;
        Raises(stranger ? kFreeUnknown : kNoThrow, [&] { side.collection->RemoveAt(index); });
        if (valid && !stranger) side.model.erase(side.model.begin() + index);
        break;
      }
      case 4: {
        unsigned int const index = PickIndex(side);
        side.collection->RemoveReference(index);
        if (index < side.model.size()) {
          Detach(side.model[index]);
          side.model.erase(side.model.begin() + index);
        }
        break;
      }
      case 5:
        side.collection->RemoveAllReferences();
        for (Entry const& e : side.model) Detach(e);
        side.model.clear();
        break;
      case 6: {  // frees from the front up to the first member of an unknown kind
        std::size_t freed = 0;
        while (freed < side.model.size() && side.model[freed].kind != kStranger) ++freed;
        bool const refused = freed < side.model.size();
        Raises(refused ? kFreeUnknown : kNoThrow, [&] { side.collection->Clear(); });
        side.model.erase(side.model.begin(), side.model.begin() + static_cast<long>(freed));
        break;
      }
      case 7:
        AddRange(side, other);
        break;
      case 8:
        AddRange(side, side);
        break;
      case 9:
        Raises(kNoThrow, [&] { side.collection->Transform(Shift, nullptr); });
        break;
      case 10: {  // the first member that is not null (nor an empty map) refuses it
        bool refused = false;
        for (Entry const& e : side.model) refused |= e.kind != kNull && e.kind != TreatmentMap;
        Raises(refused ? kParameterIsNull : kNoThrow,
               [&] { side.collection->Transform(nullptr, nullptr); });
        break;
      }
      case 11:
        if (!side.model.empty()) {
          unsigned int const index = PickIndex(side) % static_cast<unsigned int>(side.model.size());
          VornObjectCollection const& view = *side.collection;
          if (side.model[index].object != nullptr) {
            FUZZ_CHECK(&view[index] == side.model[index].object);
          }
        }
        break;
      case 12: {  // copies share the objects: detach one side before it goes
        VornObjectCollection copy(*side.collection);
        CheckShares(copy, side);
        copy.RemoveAllReferences();
        VornObjectCollection assigned;
        IVornObject* previous = Build(Point, "previous");
        assigned.AddReference(previous);
        assigned = *side.collection;
        CheckShares(assigned, side);
        assigned.RemoveAllReferences();
        delete previous;  // assignment leaves the previous members to the caller
        break;
      }
      case 13:
        *side.collection = *side.collection;
        break;
      default: {
        std::vector<IVornObject*> forward(side.collection->begin(), side.collection->end());
        std::vector<IVornObject*> backward(side.collection->rbegin(), side.collection->rend());
        FUZZ_CHECK(std::vector<IVornObject*>(backward.rbegin(), backward.rend()) == forward);
        break;
      }
    }
    Verify(sides_[0]);
    Verify(sides_[1]);
  }

private:
  unsigned int PickIndex(Side const& side) {
    return input_.ConsumeIntegralInRange<unsigned int>(
        0, static_cast<unsigned int>(side.model.size()) + 2);
  }

  std::string NextTag() { return std::to_string(nextId_++); }

  // A copy carries the source's tag, except a treatment map's, which deliberately starts
  // empty.
  static std::string CopiedTag(int kind, std::string const& tag) {
    return kind == TreatmentMap ? std::string() : tag;
  }

  static int KindOf(IVornObject const* object) {
    int const kind = object->GetType();
    return kind >= 0 && kind < kKnownKinds ? kind : kStranger;
  }

  // Deep copies of the non-null members, in order, up to the first of an unknown kind,
  // which is refused with the copies made so far kept. `source` may be `target`.
  static void AddRange(Side& target, Side const& source) {
    if (target.model.size() + source.model.size() > kMaxRange) return;
    std::vector<Entry> added;
    bool refused = false;
    for (Entry const& e : source.model) {
      if (e.kind == kNull) continue;
      if (e.kind == kStranger) {
        refused = true;
        break;
      }
      added.push_back({nullptr, e.kind, CopiedTag(e.kind, e.tag)});
    }
    Raises(refused ? kAddRangeUnknown : kNoThrow,
           [&] { target.collection->AddRange(*source.collection); });
    target.model.insert(target.model.end(), added.begin(), added.end());
  }

  void Detach(Entry const& e) {
    if (e.object == nullptr) return;
    FUZZ_CHECK(KindOf(e.object) == e.kind);  // still alive
    FUZZ_CHECK(e.tag == e.object->Tag.c_str());
    pool_.push_back(e.object);
  }

  static void CheckShares(VornObjectCollection const& copy, Side const& side) {
    FUZZ_CHECK(copy.Count() == side.model.size());
    std::size_t i = 0;
    for (IVornObject const* object : copy) FUZZ_CHECK(object == side.model[i++].object);
  }

  void Verify(Side& side) {
    VornObjectCollection const& collection = *side.collection;
    FUZZ_CHECK(collection.Count() == side.model.size());
    std::size_t i = 0;
    for (IVornObject* object : collection) {
      Entry& expected = side.model[i++];
      if (expected.kind == kNull) {
        FUZZ_CHECK(object == nullptr);
        continue;
      }
      FUZZ_CHECK(object != nullptr);
      if (expected.object == nullptr) {
        FUZZ_CHECK(!IsKnown(object));
        expected.object = object;
      }
      FUZZ_CHECK(object == expected.object);
      FUZZ_CHECK(KindOf(object) == expected.kind);
      FUZZ_CHECK(expected.tag == object->Tag.c_str());
    }
  }

  bool IsKnown(IVornObject const* object) const {
    return vorn_fuzz::IsKnownObject(object, sides_, pool_);
  }

  FuzzedDataProvider& input_;
  Side sides_[2];
  std::vector<IVornObject*> pool_;  // detached objects, owned here
  int nextId_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  return vorn_fuzz::RunSession<Session>(data, size, 100);
}
