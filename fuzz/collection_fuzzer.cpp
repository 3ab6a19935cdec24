// Random operation sequences on two collections of one kind, compared after every step
// with a model: each member's identity (the pointer held) and content, in order, the
// polygon collection's bounding box, and the exact VornException of every call. Members
// taken back with RemoveReference go to a pool owned here, so AddressSanitizer reports any
// member freed while it should not be, freed twice (as a copy that is not a new object
// would be, by both of its owners), or leaked. Coordinates are small integers, so every
// expected value is exact.
//
// One source, two targets: VORN_FUZZ_COLLECTION names the collection and its member type.
// The polygon collection is the owning list (checked positions, no null members, deep
// assignment) with a box; the object collection holds polygons next to null members and
// objects of a kind it cannot free, does not check positions and shares on assignment.
// Both share their members on copy construction.
#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

#include <vorn/vorn.h>

#include "driver.h"

namespace vorn_fuzz {

// What call() raised: "" for nothing, else the VornException's message and code.
template <class Call>
std::string Outcome(Call call) try {
  call();
  return "";
} catch (VornException const& e) {
  return e.Message() + (" " + std::to_string(e.ErrorCode()));
}

using Box = std::array<double, 4>;  // MinX, MaxX, MinY, MaxY
Box const kNoBox = {9, -9, 9, -9};  // no coordinate yet: they all lie in -4 .. 4

Box Of(VornBoundbox const& b) { return b.IsInit() ? Box{b.MinX, b.MaxX, b.MinY, b.MaxY} : kNoBox; }

void Widen(Box& b, double x, double y) {
  b = {std::min(b[0], x), std::max(b[1], x), std::min(b[2], y), std::max(b[3], y)};
}

// An object of a kind the library does not know, as a newer program might hand over:
// Clear and RemoveAt refuse it.
struct Stranger : IVornObject {
  VornObjectType GetType() const override { return static_cast<VornObjectType>(42); }
  void Transform(VornTransformCallback, void*) override {}
};

// Whether a model entry holds a Stranger.
auto const IsStranger = [](auto& e) { return dynamic_cast<Stranger const*>(e.first) != nullptr; };

std::string Show(IVornObject const* o) {
  auto const* p = dynamic_cast<VornPolygon const*>(o);
  if (p == nullptr) return o ? std::to_string(o->GetType()) + o->Tag.c_str() : "null";
  std::string s = p->IsHole ? "hole" : "ring";
  for (VornCoordinate const& c : p->Coordinates) s += std::to_string(c.X) + std::to_string(c.Y);
  return s + p->Tag.c_str();
}

template <class C, class T>
struct Session {
  static constexpr bool kObjects = std::is_same<T, IVornObject>::value;
  using Model = std::vector<std::pair<T*, std::string>>;  // member (null until seen), content

  FuzzedDataProvider& in;
  C c[2];
  Model model[2];
  std::set<IVornObject*> pool;  // owned here: detached members, and every Stranger
  int next = 0;

  ~Session() {  // a destructor cannot refuse a member: detach those first
    for (int s : {0, 1})
      for (unsigned int i = c[s].Count(); i-- > 0;)
        if (IsStranger(model[s][i])) c[s].RemoveReference(i);
    for (IVornObject* member : pool) delete member;
  }

  // A new polygon tagged with a serial number, or on request sometimes a Stranger (which no
  // collection can free, so the pool owns it from the start).
  T* Make(bool strangers) {
    VornCoordinate ring[4];
    for (VornCoordinate& xy : ring)
      xy = {in.ConsumeIntegralInRange(-4, 4) * 1., in.ConsumeIntegralInRange(-4, 4) * 1.};
    int const count = in.ConsumeIntegralInRange(0, 4);
    if (strangers && in.ConsumeBool()) return static_cast<T*>(*pool.insert(new Stranger).first);
    auto* const polygon = new VornPolygon(ring, count, in.ConsumeBool());
    polygon->Tag = std::to_string(next++).c_str();
    return polygon;
  }

  void Step() {
    int const s = in.ConsumeBool(), from = in.ConsumeBool();
    unsigned int const i = in.ConsumeIntegralInRange(0u, c[s].Count() + 1);
    bool const valid = i < model[s].size();
    std::string const range = valid || kObjects ? "" : "Index out of range 5002";
    std::string const unknown = "Free(): Unknown VornObject-Type -1";
    bool const refused = valid && IsStranger(model[s][i]);                         // by RemoveAt
    auto const stop = std::find_if(model[s].begin(), model[s].end(), IsStranger);  // Clear's
    switch (in.ConsumeIntegralInRange(0, 4)) {
      case 0: {  // Add copies a polygon; AddReference takes a new member, or null
        bool const copy = in.ConsumeBool();
        T* const member = copy || in.ConsumeBool() ? Make(kObjects && !copy) : nullptr;
        if (member || kObjects) model[s].emplace_back(copy ? nullptr : member, Show(member));
        if (copy) c[s].Add(*std::unique_ptr<VornPolygon>(static_cast<VornPolygon*>(member)));
        FUZZ_CHECK(copy || Outcome([&] { c[s].AddReference(member); }) ==
                               (member || kObjects ? "" : "Parameter is NULL 5003"));
        break;
      }
      case 1:  // delete one
        FUZZ_CHECK(Outcome([&] { c[s].RemoveAt(i); }) == (refused ? unknown : range));
        if (valid && !refused) model[s].erase(model[s].begin() + i);
        break;
      case 2:  // detach one
        if (valid) pool.insert(model[s][i].first);
        FUZZ_CHECK(Outcome([&] { c[s].RemoveReference(i); }) == range);
        if (valid) model[s].erase(model[s].begin() + i);
        break;
      case 3:  // delete all, up to the first member the collection cannot free
        FUZZ_CHECK(Outcome([&] { c[s].Clear(); }) == (stop == model[s].end() ? "" : unknown));
        model[s].erase(model[s].begin(), stop);
        break;
      default: {  // copies share the members; so does the object collection's assignment
        C target(c[!s]);
        if constexpr (kObjects) {
          target = c[from];  // the previous members, !s's, stay
          c[s] = c[s];       // changes nothing
        } else {  // deep (leaving !s, which target copied, alone); assigned to itself, empty
          model[s] = from == s ? Model() : model[from];
          c[s] = c[from];
          for (auto& e : model[s]) e.first = nullptr;
        }
        auto const& shared = model[kObjects ? from : !s];  // the very members, in order
        FUZZ_CHECK(std::equal(target.begin(), target.end(), shared.begin(), shared.end(),
                              [](T* member, auto& e) { return member == e.first; }));
        target.RemoveAllReferences();  // before it goes
      }
    }
    // Both collections against the model: every member, in order, and the polygon
    // collection's box, the envelope of its members (a polygon without coordinates
    // counting as (0, 0)).
    for (int k : {0, 1}) {
      FUZZ_CHECK(c[k].Count() == model[k].size());
      auto e = model[k].begin();
      Box box = kNoBox;
      for (T* member : c[k]) {
        if (e->first == nullptr) e->first = member;  // a copy, seen for the first time
        FUZZ_CHECK(member == e->first && Show(member) == e++->second);
        if constexpr (!kObjects) {
          if (member->Coordinates.Count() == 0) Widen(box, 0, 0);
          for (VornCoordinate const& xy : member->Coordinates) Widen(box, xy.X, xy.Y);
        }
      }
      if constexpr (!kObjects) FUZZ_CHECK(box == Of(c[k].Boundbox));
    }
  }
};

void Run(FuzzedDataProvider&& input) {
  Session<VORN_FUZZ_COLLECTION> session{input, {}, {}, {}, 0};
  for (int step = 0; step < 200 && input.remaining_bytes() > 0; ++step) session.Step();
}

}  // namespace vorn_fuzz
