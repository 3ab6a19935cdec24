// Random operation sequences on two attribute collections, checked after every step
// against a model: the attributes in order, each by identity (the pointer the collection
// holds) and by content (name and an id stored as the Int32 value), the caseless setting,
// name lookups, and the VornExceptions of out-of-range positions and unknown names.
//
// Attributes taken back with RemoveReference go to a pool the fuzzer owns and may be
// handed over again with AddReference; AddressSanitizer reports any attribute the
// collection frees while it should not, frees twice, or leaks.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <vorn/core/attribute_collection.h>

#include "fuzz_check.h"

namespace {

using vorn_fuzz::Expected;
using vorn_fuzz::kNoThrow;
using vorn_fuzz::kOutOfRange;
using vorn_fuzz::kParameterIsNull;
using vorn_fuzz::Raises;

// Appending a collection doubles it at most; appends that would pass this size are
// skipped, so that a run stays fast.
constexpr std::size_t kMaxRange = 64;

constexpr Expected kNoSuchName{"No Attribute of this name", -1};

// Names differ in case only, so that the caseless setting matters.
char16_t const* const kNames[] = {u"A", u"a", u"B", u"b", u"Ab", u"aB", u""};
constexpr std::size_t kNameCount = sizeof kNames / sizeof kNames[0];

unsigned short const* Wide(char16_t const* text) {
  return reinterpret_cast<unsigned short const*>(text);
}

std::u16string NameOf(VornAttribute const& attribute) {
  return std::u16string(reinterpret_cast<char16_t const*>(attribute.Name.c_str()));
}

char16_t Fold(char16_t c) { return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c; }

bool SameKey(std::u16string const& a, std::u16string const& b, bool caseless) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (caseless ? Fold(a[i]) != Fold(b[i]) : a[i] != b[i]) return false;
  }
  return true;
}

struct Entry {
  VornAttribute const* object;  // null until the collection's copy has been seen
  std::u16string name;
  int id;
};

struct Side {
  std::unique_ptr<VornAttributeCollection> collection{new VornAttributeCollection()};
  std::vector<Entry> model;
  bool caseless = false;

  int Find(std::u16string const& key) const {
    for (std::size_t i = 0; i < model.size(); ++i) {
      if (SameKey(model[i].name, key, caseless)) return static_cast<int>(i);
    }
    return -1;
  }
};

class Session {
public:
  explicit Session(FuzzedDataProvider& input) : input_(input) {}

  ~Session() {
    for (VornAttribute* attribute : pool_) delete attribute;
  }

  void Step() {
    Side& side = sides_[input_.ConsumeBool() ? 1 : 0];
    Side& other = &side == &sides_[0] ? sides_[1] : sides_[0];
    switch (input_.ConsumeIntegralInRange(0, 17)) {
      case 0: {
        std::u16string const name = PickName();
        int const id = NextId();
        side.collection->Add(Wide(name.c_str()), id);
        side.model.push_back({nullptr, name, id});
        break;
      }
      case 1: {  // a copy of the caller's attribute, which stays the caller's
        std::u16string const name = PickName();
        int const id = NextId();
        VornAttribute const local(Wide(name.c_str()), id);
        side.collection->Add(local);
        side.model.push_back({nullptr, name, id});
        FUZZ_CHECK(&(*side.collection)[side.collection->Count() - 1] != &local);
        break;
      }
      case 2: {
        std::u16string const name = PickName();
        int const id = NextId();
        auto* attribute = new VornAttribute(Wide(name.c_str()), id);
        side.collection->AddReference(attribute);
        side.model.push_back({attribute, name, id});
        break;
      }
      case 3:  // hand a detached attribute back
        if (pool_.empty()) {
          Raises(kParameterIsNull, [&] { side.collection->AddReference(nullptr); });
        } else {
          VornAttribute* attribute = pool_.back();
          pool_.pop_back();
          side.collection->AddReference(attribute);
          side.model.push_back({attribute, NameOf(*attribute), attribute->ValueInt32()});
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
        std::u16string const key = PickName();
        int const found = side.Find(key);
        Raises(found >= 0 ? kNoThrow : kNoSuchName,
               [&] { side.collection->Remove(Wide(key.c_str())); });
        if (found >= 0) side.model.erase(side.model.begin() + found);
        break;
      }
      case 6: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        VornAttribute* const detached =
            valid ? const_cast<VornAttribute*>(side.model[index].object) : nullptr;
        Raises(valid ? kNoThrow : kOutOfRange,
               [&] { side.collection->RemoveReference(index); });
        if (valid) {
          side.model.erase(side.model.begin() + index);
          pool_.push_back(detached);
          FUZZ_CHECK(detached->ValueInt32() >= 0);  // still alive
        }
        break;
      }
      case 7:
        side.collection->Clear();
        side.model.clear();
        break;
      case 8:
        side.caseless = input_.ConsumeBool();
        side.collection->SetCaselessCompare(side.caseless);
        break;
      case 9: {
        std::u16string const key = PickName();
        int const found = side.Find(key);
        FUZZ_CHECK(side.collection->GetIndexOfKey(Wide(key.c_str())) == found);
        FUZZ_CHECK(side.collection->KeyExists(Wide(key.c_str())) == (found >= 0));
        break;
      }
      case 10: {
        unsigned int const index = PickIndex(side);
        bool const valid = index < side.model.size();
        VornAttributeCollection const& view = *side.collection;
        Raises(valid ? kNoThrow : kOutOfRange, [&] {
          VornAttribute const& attribute = view[index];
          FUZZ_CHECK(&attribute == side.model[index].object);
        });
        break;
      }
      case 11:  // assignment: copies, this side's caseless setting kept
        *side.collection = *other.collection;
        side.model = Copies(other.model);
        break;
      case 12:  // self-assignment empties
        *side.collection = *side.collection;
        side.model.clear();
        break;
      case 13: {
        if (side.model.size() + other.model.size() > kMaxRange) break;
        std::vector<Entry> const added = Copies(other.model);
        side.collection->AddRange(*other.collection);
        side.model.insert(side.model.end(), added.begin(), added.end());
        break;
      }
      case 14: {  // appending to itself copies the attributes present at the call
        if (2 * side.model.size() > kMaxRange) break;
        std::vector<Entry> const added = Copies(side.model);
        side.collection->AddRange(*side.collection);
        side.model.insert(side.model.end(), added.begin(), added.end());
        break;
      }
      case 15: {  // copy construction: deep copies, comparing exactly
        std::unique_ptr<VornAttributeCollection> copy(
            new VornAttributeCollection(*other.collection));
        FUZZ_CHECK(!copy->IsCaselessCompare());
        side.collection = std::move(copy);
        side.model = Copies(other.model);
        side.caseless = false;
        break;
      }
      case 16: {  // an array of attributes; a null array is fine only without a count
        int const count = input_.ConsumeIntegralInRange(-1, 3);
        bool const null = input_.ConsumeBool();
        std::vector<VornAttribute> array;
        std::vector<Entry> added;
        for (int i = 0; i < 3; ++i) {
          std::u16string const name = PickName();
          int const id = NextId();
          array.emplace_back(Wide(name.c_str()), id);
          if (i < count) added.push_back({nullptr, name, id});
        }
        VornAttribute* const attrs = null ? nullptr : array.data();
        Raises(null && count > 0 ? kParameterIsNull : kNoThrow,
               [&] { side.collection->AddRange(attrs, count); });
        if (!null) side.model.insert(side.model.end(), added.begin(), added.end());
        break;
      }
      default: {  // both iteration directions visit the same attributes
        std::vector<VornAttribute*> forward(side.collection->begin(), side.collection->end());
        std::vector<VornAttribute*> backward(side.collection->rbegin(), side.collection->rend());
        FUZZ_CHECK(std::vector<VornAttribute*>(backward.rbegin(), backward.rend()) == forward);
        break;
      }
    }
    Verify(sides_[0]);
    Verify(sides_[1]);
  }

private:
  std::u16string PickName() { return kNames[input_.ConsumeIntegralInRange<std::size_t>(0, kNameCount - 1)]; }

  unsigned int PickIndex(Side const& side) {
    return input_.ConsumeIntegralInRange<unsigned int>(
        0, static_cast<unsigned int>(side.model.size()) + 1);
  }

  int NextId() { return nextId_++; }

  // The model of copies of `entries`: same names and ids, objects not yet known.
  static std::vector<Entry> Copies(std::vector<Entry> const& entries) {
    std::vector<Entry> copies;
    for (Entry const& e : entries) copies.push_back({nullptr, e.name, e.id});
    return copies;
  }

  // The collection holds the model's attributes in the model's order. A copy seen for the
  // first time must be a new object, held nowhere else.
  void Verify(Side& side) {
    VornAttributeCollection const& collection = *side.collection;
    FUZZ_CHECK(collection.Count() == side.model.size());
    FUZZ_CHECK(collection.IsCaselessCompare() == side.caseless);
    std::size_t i = 0;
    for (VornAttribute const* attribute : collection) {
      Entry& expected = side.model[i++];
      if (expected.object == nullptr) {
        FUZZ_CHECK(!IsKnown(attribute));
        expected.object = attribute;
      }
      FUZZ_CHECK(attribute == expected.object);
      FUZZ_CHECK(attribute->DataType() == Int32);
      FUZZ_CHECK(attribute->ValueInt32() == expected.id);
      FUZZ_CHECK(NameOf(*attribute) == expected.name);
    }
    FUZZ_CHECK(i == side.model.size());
  }

  bool IsKnown(VornAttribute const* attribute) const {
    return vorn_fuzz::IsKnownObject(attribute, sides_, pool_);
  }

  FuzzedDataProvider& input_;
  Side sides_[2];
  std::vector<VornAttribute*> pool_;  // detached attributes, owned here
  int nextId_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  return vorn_fuzz::RunSession<Session>(data, size, 200);
}
