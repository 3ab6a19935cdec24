// Random operation sequences on two polygon collections, checked after every step against
// a model: the polygons in order, each by identity (pointer) and content (ring, hole flag,
// tag), and the bounding box, kept by the collection's own rules (additions always widen,
// removals recompute when AutoBoundbox, Clear and a null-callback Transform reset).
//
// Polygons detached with RemoveReference or RemoveAllReferences go to a pool the fuzzer
// owns and may be adopted again; AddressSanitizer reports any polygon the collection
// frees while it should not, frees twice, or leaks. Coordinates are small integers and
// the transformation is an integer affine map, so every expected value is exact.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <vorn/geometry/polygon_collection.h>

#include "fuzz_check.h"

namespace {

using vorn_fuzz::kNoThrow;
using vorn_fuzz::kOutOfRange;
using vorn_fuzz::kParameterIsNull;
using vorn_fuzz::Raises;

struct Ring {
  std::vector<VornCoordinate> coords;
  bool hole = false;
  std::string tag;
};

// The extent an element contributes: its coordinates' envelope, or 0..0 x 0..0 for a
// polygon that never held a coordinate.
struct Box {
  bool init = false;
  double minX = 0, maxX = 0, minY = 0, maxY = 0;

  void Widen(Box const& e) {
    if (!init) {
      *this = e;
      init = true;
      return;
    }
    if (e.minX < minX) minX = e.minX;
    if (e.maxX > maxX) maxX = e.maxX;
    if (e.minY < minY) minY = e.minY;
    if (e.maxY > maxY) maxY = e.maxY;
  }
};

Box ExtentOf(Ring const& ring) {
  Box box;
  for (VornCoordinate const& c : ring.coords) {
    if (!box.init) {
      box = {true, c.X, c.X, c.Y, c.Y};
      continue;
    }
    if (c.X < box.minX) box.minX = c.X;
    if (c.X > box.maxX) box.maxX = c.X;
    if (c.Y < box.minY) box.minY = c.Y;
    if (c.Y > box.maxY) box.maxY = c.Y;
  }
  box.init = true;
  return box;
}

struct Entry {
  VornPolygon* object;  // null until the collection's copy has been seen
  Ring ring;
};

struct Side {
  std::unique_ptr<VornPolygonCollection> collection{new VornPolygonCollection()};
  std::vector<Entry> model;
  Box box;
  bool autoBox = true;

  void Recalc() {
    box.init = false;
    for (Entry const& e : model) box.Widen(ExtentOf(e.ring));
  }
  void RecalcIfAuto() {
    if (autoBox) Recalc();
  }
};

struct Affine {
  double a, b, c, d;  // x' = a x + b, y' = c y + d
};

void Map(double x, double y, double* outX, double* outY, void* context) {
  Affine const& f = *static_cast<Affine const*>(context);
  *outX = f.a * x + f.b;
  *outY = f.c * y + f.d;
}

Ring ReadRing(VornPolygon const& polygon) {
  Ring ring;
  ring.coords.assign(polygon.Coordinates.begin(), polygon.Coordinates.end());
  ring.hole = polygon.IsHole;
  ring.tag = polygon.Tag.c_str();
  return ring;
}

// The ring's coordinates as an array; never null, also for a ring without coordinates.
VornCoordinate* Array(Ring& ring) {
  static VornCoordinate none{0, 0};
  return ring.coords.empty() ? &none : ring.coords.data();
}

bool SameRing(Ring const& a, Ring const& b) {
  if (a.coords.size() != b.coords.size() || a.hole != b.hole || a.tag != b.tag) return false;
  for (std::size_t i = 0; i < a.coords.size(); ++i) {
    if (a.coords[i].X != b.coords[i].X || a.coords[i].Y != b.coords[i].Y) return false;
  }
  return true;
}

class Session {
public:
  explicit Session(FuzzedDataProvider& input) : input_(input) {}

  ~Session() {
    for (VornPolygon* polygon : pool_) delete polygon;
  }

  void Step() {
    Side& side = sides_[input_.ConsumeBool() ? 1 : 0];
    Side& other = &side == &sides_[0] ? sides_[1] : sides_[0];
    switch (input_.ConsumeIntegralInRange(0, 19)) {
      case 0: {  // a copy of the caller's polygon
        Ring const ring = NewRing(true);
        std::unique_ptr<VornPolygon> local(Build(ring));
        side.collection->Add(*local);
        Append(side, nullptr, ring);
        break;
      }
      case 1: {
        Ring const ring = NewRing(true);
        VornPolygon* polygon = Build(ring);
        side.collection->AddReference(polygon);
        Append(side, polygon, ring);
        break;
      }
      case 2:
        if (pool_.empty()) {
          Raises(kParameterIsNull, [&] { side.collection->AddReference(nullptr); });
        } else {
          VornPolygon* polygon = pool_.back();
          pool_.pop_back();
          side.collection->AddReference(polygon);
          Append(side, polygon, ReadRing(*polygon));
        }
        break;
      case 3: {
        Ring const ring = NewRing(false);
        VornCoordinateVector coords;
        for (VornCoordinate const& c : ring.coords) coords.Add(c);
        side.collection->Add(coords, ring.hole);
        Append(side, nullptr, ring);
        break;
      }
      case 4: {  // a null array is rejected by the polygon's constructor, nothing changes
        Ring ring = NewRing(false);
        bool const null = input_.ConsumeBool();
        VornCoordinate* const coords = null ? nullptr : Array(ring);
        int const count = static_cast<int>(ring.coords.size());
        Raises(null ? kParameterIsNull : kNoThrow,
               [&] { side.collection->Add(coords, count, ring.hole); });
        if (!null) Append(side, nullptr, ring);
        break;
      }
      case 5: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        Raises(valid ? kNoThrow : kOutOfRange, [&] { side.collection->RemoveAt(index); });
        if (valid) {
          side.model.erase(side.model.begin() + index);
          side.RecalcIfAuto();
        }
        break;
      }
      case 6: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { side.collection->RemoveReference(index); });
        if (valid) {
          Detach(side.model[index]);
          side.model.erase(side.model.begin() + index);
          side.RecalcIfAuto();
        }
        break;
      }
      case 7:
        if (!side.model.empty()) {
          unsigned int const index = PickIndex(side) % static_cast<unsigned int>(side.model.size());
          VornPolygonCollection::iterator it = side.collection->begin();
          for (unsigned int i = 0; i < index; ++i) ++it;
          side.collection->Remove(it);
          side.model.erase(side.model.begin() + index);
          side.RecalcIfAuto();
        }
        break;
      case 8:
        side.collection->RemoveAllReferences();
        for (Entry const& e : side.model) Detach(e);
        side.model.clear();
        side.RecalcIfAuto();
        break;
      case 9:
        side.collection->Clear();
        side.model.clear();
        side.box.init = false;
        break;
      case 10:
        side.collection->RecalcBoundbox();
        side.Recalc();
        break;
      case 11: {
        Affine f{Small(), Small(), Small(), Small()};
        side.collection->Transform(Map, &f);
        side.box.init = false;
        for (Entry& e : side.model) {
          for (VornCoordinate& c : e.ring.coords) Map(c.X, c.Y, &c.X, &c.Y, &f);
          side.box.Widen(ExtentOf(e.ring));
        }
        break;
      }
      case 12:  // the box is reset before the callback is tested
        Raises(kParameterIsNull, [&] { side.collection->Transform(nullptr, nullptr); });
        side.box.init = false;
        break;
      case 13: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        VornPolygonCollection const& view = *side.collection;
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { FUZZ_CHECK(&view[index] == side.model[index].object); });
        break;
      }
      case 14:
        side.collection->SortHoles();
        SortHoles(side.model);
        break;
      case 15:  // deep copies in order; the target's AutoBoundbox is kept
        *side.collection = *other.collection;
        side.model = Copies(other.model);
        side.box.init = false;
        for (Entry const& e : side.model) side.box.Widen(ExtentOf(e.ring));
        break;
      case 16:  // no self-assignment test: it empties the collection
        *side.collection = *side.collection;
        side.model.clear();
        side.box.init = false;
        break;
      case 17: {  // the copy constructor shares the very same polygons
        VornPolygonCollection copy(*side.collection);
        FUZZ_CHECK(copy.Count() == side.model.size());
        FUZZ_CHECK(copy.AutoBoundbox == side.autoBox);
        std::size_t i = 0;
        for (VornPolygon* polygon : copy) FUZZ_CHECK(polygon == side.model[i++].object);
        copy.RemoveAllReferences();
        break;
      }
      case 18:
        side.autoBox = input_.ConsumeBool();
        side.collection->AutoBoundbox = side.autoBox;
        break;
      default:  // the argument is ignored: AutoBoundbox is true
        side.collection.reset(new VornPolygonCollection(input_.ConsumeBool()));
        side.model.clear();
        side.box = Box();
        side.autoBox = true;
        break;
    }
    Verify(sides_[0]);
    Verify(sides_[1]);
  }

private:
  double Small() { return input_.ConsumeIntegralInRange(-4, 4); }

  unsigned int PickIndex(Side const& side) {
    return input_.ConsumeIntegralInRange<unsigned int>(
        0, static_cast<unsigned int>(side.model.size()) + 1);
  }

  Ring NewRing(bool tagged) {
    Ring ring;
    int const count = input_.ConsumeIntegralInRange(0, 4);
    for (int i = 0; i < count; ++i) ring.coords.push_back({Small(), Small()});
    ring.hole = input_.ConsumeBool();
    if (tagged) ring.tag = std::to_string(nextId_++);
    return ring;
  }

  static VornPolygon* Build(Ring ring) {
    auto* polygon = new VornPolygon(Array(ring), static_cast<int>(ring.coords.size()), ring.hole);
    polygon->Tag = ring.tag.c_str();
    return polygon;
  }

  // Every addition widens the box, whatever AutoBoundbox says.
  static void Append(Side& side, VornPolygon* object, Ring const& ring) {
    side.model.push_back({object, ring});
    side.box.Widen(ExtentOf(ring));
  }

  void Detach(Entry const& e) {
    FUZZ_CHECK(SameRing(ReadRing(*e.object), e.ring));  // still alive and unchanged
    pool_.push_back(e.object);
  }

  static std::vector<Entry> Copies(std::vector<Entry> const& entries) {
    std::vector<Entry> copies;
    for (Entry const& e : entries) copies.push_back({nullptr, e.ring});
    return copies;
  }

  // Outer rings of all but the last, then the last whatever its flag, then the holes of
  // all but the last.
  static void SortHoles(std::vector<Entry>& model) {
    if (model.size() < 2) return;
    std::vector<Entry> outer, holes;
    for (std::size_t i = 0; i + 1 < model.size(); ++i) {
      (model[i].ring.hole ? holes : outer).push_back(model[i]);
    }
    outer.push_back(model.back());
    outer.insert(outer.end(), holes.begin(), holes.end());
    model = outer;
  }

  void Verify(Side& side) {
    VornPolygonCollection const& collection = *side.collection;
    FUZZ_CHECK(collection.Count() == side.model.size());
    FUZZ_CHECK(collection.AutoBoundbox == side.autoBox);
    std::size_t i = 0;
    for (VornPolygon const* polygon : collection) {
      Entry& expected = side.model[i++];
      if (expected.object == nullptr) {
        FUZZ_CHECK(!IsKnown(polygon));
        expected.object = const_cast<VornPolygon*>(polygon);
      }
      FUZZ_CHECK(polygon == expected.object);
      FUZZ_CHECK(SameRing(ReadRing(*polygon), expected.ring));
    }
    FUZZ_CHECK(collection.Boundbox.IsInit() == side.box.init);
    if (side.box.init) {
      FUZZ_CHECK(collection.Boundbox.MinX == side.box.minX);
      FUZZ_CHECK(collection.Boundbox.MaxX == side.box.maxX);
      FUZZ_CHECK(collection.Boundbox.MinY == side.box.minY);
      FUZZ_CHECK(collection.Boundbox.MaxY == side.box.maxY);
    }
  }

  bool IsKnown(VornPolygon const* polygon) const {
    return vorn_fuzz::IsKnownObject(polygon, sides_, pool_);
  }

  FuzzedDataProvider& input_;
  Side sides_[2];
  std::vector<VornPolygon*> pool_;  // detached polygons, owned here
  int nextId_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  return vorn_fuzz::RunSession<Session>(data, size, 200);
}
