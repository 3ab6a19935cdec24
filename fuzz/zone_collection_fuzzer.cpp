// Random operation sequences on two treatment-zone collections, checked after every step
// against a model: the zones in order, each by identity (pointer) and content (number,
// rate, designator), and the VornExceptions of out-of-range positions and null zones.
//
// Zones detached with RemoveReference or RemoveAllReferences go to a pool the fuzzer
// owns and may be handed over again; AddressSanitizer reports any zone the collection
// frees while it should not, frees twice, or leaks.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <vorn/treatment/treatment_zone_collection.h>

#include "fuzz_check.h"

namespace {

using vorn_fuzz::kNoThrow;
using vorn_fuzz::kOutOfRange;
using vorn_fuzz::kParameterIsNull;
using vorn_fuzz::Raises;

std::u16string DesignatorOf(VornTreatmentZone const& zone) {
  return std::u16string(reinterpret_cast<char16_t const*>(zone.GetDesignator()));
}

// Appending a collection doubles it at most; appends that would pass this size are
// skipped, so that a run stays fast.
constexpr std::size_t kMaxRange = 64;

struct Entry {
  VornTreatmentZone const* object;  // null until the collection's copy has been seen
  int number;
  double rate;
  std::u16string designator;
};

Entry EntryOf(VornTreatmentZone const& zone) {
  return {&zone, zone.ZoneNumber, zone.Rate, DesignatorOf(zone)};
}

struct Side {
  std::unique_ptr<VornTreatmentZoneCollection> collection{new VornTreatmentZoneCollection()};
  std::vector<Entry> model;
};

class Session {
public:
  explicit Session(FuzzedDataProvider& input) : input_(input) {}

  ~Session() {
    for (VornTreatmentZone* zone : pool_) delete zone;
  }

  void Step() {
    Side& side = sides_[input_.ConsumeBool() ? 1 : 0];
    Side& other = &side == &sides_[0] ? sides_[1] : sides_[0];
    switch (input_.ConsumeIntegralInRange(0, 14)) {
      case 0: {  // a copy of the caller's zone, designator included
        int const number = nextId_++;
        double const rate = input_.ConsumeIntegralInRange(0, 100) / 4.0;
        std::u16string const designator = u"Z" + std::u16string(static_cast<std::size_t>(number % 3), u'x');
        VornTreatmentZone const local(number, rate, Wide(designator), Wide(u"kg/ha"), 0);
        side.collection->Add(local);
        side.model.push_back({nullptr, number, rate, designator});
        break;
      }
      case 1: {
        int const number = nextId_++;
        double const rate = input_.ConsumeIntegralInRange(0, 100) / 4.0;
        side.collection->Add(number, rate);
        side.model.push_back({nullptr, number, rate, u""});
        break;
      }
      case 2: {
        auto* zone = new VornTreatmentZone(nextId_++, 1.5);
        side.collection->AddReference(zone);
        side.model.push_back(EntryOf(*zone));
        break;
      }
      case 3:
        if (pool_.empty()) {
          Raises(kParameterIsNull, [&] { side.collection->AddReference(nullptr); });
        } else {
          VornTreatmentZone* zone = pool_.back();
          pool_.pop_back();
          side.collection->AddReference(zone);
          side.model.push_back(EntryOf(*zone));
        }
        break;
      case 4: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        Raises(valid ? kNoThrow : kOutOfRange, [&] { side.collection->RemoveAt(index); });
        if (valid) side.model.erase(side.model.begin() + index);
        break;
      }
      case 5: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { side.collection->RemoveReference(index); });
        if (valid) {
          Detach(side.model[index]);
          side.model.erase(side.model.begin() + index);
        }
        break;
      }
      case 6:
        side.collection->RemoveAllReferences();
        for (Entry const& e : side.model) Detach(e);
        side.model.clear();
        break;
      case 7:
        side.collection->Clear();
        side.model.clear();
        break;
      case 8: {
        if (side.model.size() + other.model.size() > kMaxRange) break;
        std::vector<Entry> const added = Copies(other.model);
        side.collection->AddRange(*other.collection);
        side.model.insert(side.model.end(), added.begin(), added.end());
        break;
      }
      case 9:  // copies of the source's zones; assigning to itself empties
        *side.collection = *other.collection;
        side.model = Copies(other.model);
        break;
      case 10:
        *side.collection = *side.collection;
        side.model.clear();
        break;
      case 11: {  // the copy owns copies of its own
        std::unique_ptr<VornTreatmentZoneCollection> copy(
            new VornTreatmentZoneCollection(*other.collection));
        side.collection = std::move(copy);
        side.model = Copies(other.model);
        break;
      }
      case 12: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        VornTreatmentZoneCollection const& view = *side.collection;
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { FUZZ_CHECK(&view[index] == side.model[index].object); });
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { FUZZ_CHECK(*side.collection->at(index) == side.model[index].object); });
        break;
      }
      case 13:
        if (!side.model.empty()) {  // a zone changed in place stays where it is
          unsigned int const index = PickIndex(side) % static_cast<unsigned int>(side.model.size());
          std::u16string const designator(static_cast<std::size_t>(index % 4 + 1), u'd');
          (*side.collection->at(index))->SetDesignator(Wide(designator));
          side.model[index].designator = designator;
        }
        break;
      default: {
        std::vector<VornTreatmentZone*> forward(side.collection->begin(), side.collection->end());
        FUZZ_CHECK(forward.size() == side.model.size());
        break;
      }
    }
    Verify(sides_[0]);
    Verify(sides_[1]);
  }

private:
  static unsigned short const* Wide(std::u16string const& text) {
    return reinterpret_cast<unsigned short const*>(text.c_str());
  }

  unsigned int PickIndex(Side const& side) {
    return input_.ConsumeIntegralInRange<unsigned int>(
        0, static_cast<unsigned int>(side.model.size()) + 1);
  }

  static std::vector<Entry> Copies(std::vector<Entry> const& entries) {
    std::vector<Entry> copies(entries);
    for (Entry& e : copies) e.object = nullptr;
    return copies;
  }

  void Detach(Entry const& e) {
    FUZZ_CHECK(e.object->ZoneNumber == e.number);  // still alive
    pool_.push_back(const_cast<VornTreatmentZone*>(e.object));
  }

  void Verify(Side& side) {
    VornTreatmentZoneCollection const& collection = *side.collection;
    FUZZ_CHECK(collection.Count() == side.model.size());
    std::size_t i = 0;
    for (VornTreatmentZone const* zone : collection) {
      Entry& expected = side.model[i++];
      if (expected.object == nullptr) {
        FUZZ_CHECK(!IsKnown(zone));
        expected.object = zone;
      }
      FUZZ_CHECK(zone == expected.object);
      FUZZ_CHECK(zone->ZoneNumber == expected.number && zone->Rate == expected.rate);
      FUZZ_CHECK(DesignatorOf(*zone) == expected.designator);
    }
  }

  bool IsKnown(VornTreatmentZone const* zone) const {
    return vorn_fuzz::IsKnownObject(zone, sides_, pool_);
  }

  FuzzedDataProvider& input_;
  Side sides_[2];
  std::vector<VornTreatmentZone*> pool_;  // detached zones, owned here
  int nextId_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  return vorn_fuzz::RunSession<Session>(data, size, 200);
}
