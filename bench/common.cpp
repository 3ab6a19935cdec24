#include "common.h"

#include <malloc.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include <benchmark/benchmark.h>

namespace bench {

namespace {

// A fixed-seed generator, so that every run and every implementation sees the same data.
class Lcg {
public:
  explicit Lcg(std::uint64_t seed) : m_state(seed) {}
  // Uniform in [0, 1).
  double Next() {
    m_state = m_state * 6364136223846793005ULL + 1442695040888963407ULL;
    return static_cast<double>(m_state >> 11) * 0x1.0p-53;
  }

private:
  std::uint64_t m_state;
};

// glibc moves its mmap threshold whenever a large mapped block is freed, so whether a
// new container's block would come as fresh pages (with their page faults) or from
// recycled heap would depend on what ran before. Pinning both thresholds above every
// block these workloads allocate keeps the heap in the steady state of a long-running
// program, for every implementation in every order: blocks are recycled, not mapped.
int const kHeapPinned =
    mallopt(M_MMAP_THRESHOLD, 32 * 1024 * 1024) + mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);

constexpr double kOriginX = 500000.0;
constexpr double kOriginY = 5300000.0;

}  // namespace

Rotation* SharedRotation() {
  static Rotation rotation{std::cos(1e-4), std::sin(1e-4)};
  return &rotation;
}

VornTransformCallback OpaqueCallback() {
  VornTransformCallback callback = &RotateCoordinate;
  benchmark::DoNotOptimize(callback);
  return callback;
}

std::vector<VornCoordinate> MakeCoordinates(std::size_t count) {
  Lcg random(42);
  std::vector<VornCoordinate> coords(count);
  for (VornCoordinate& c : coords) {
    c.X = kOriginX + 1000.0 * random.Next();
    c.Y = kOriginY + 1000.0 * random.Next();
  }
  return coords;
}

std::vector<VornCoordinate> MakeRings(std::size_t rings, std::size_t ringSize) {
  Lcg random(7);
  std::vector<VornCoordinate> coords;
  coords.reserve(rings * ringSize);
  std::size_t const perRow = static_cast<std::size_t>(std::sqrt(static_cast<double>(rings))) + 1;
  double const step = 2.0 * std::acos(-1.0) / static_cast<double>(ringSize - 1);
  for (std::size_t ring = 0; ring < rings; ++ring) {
    double const centreX = kOriginX + 25.0 * static_cast<double>(ring % perRow);
    double const centreY = kOriginY + 25.0 * static_cast<double>(ring / perRow);
    std::size_t const first = coords.size();
    for (std::size_t i = 0; i + 1 < ringSize; ++i) {
      double const radius = 8.0 + 4.0 * random.Next();
      double const angle = step * static_cast<double>(i);
      coords.push_back({centreX + radius * std::cos(angle), centreY + radius * std::sin(angle)});
    }
    coords.push_back(coords[first]);
  }
  return coords;
}

std::vector<std::u16string> AttributeNames() {
  return {u"FieldName",   u"FarmName",    u"CropType",   u"Variety",     u"SowingDate",
          u"HarvestDate", u"Area",        u"Perimeter",  u"SoilType",    u"OrganicMatter",
          u"Ph",          u"Nitrogen",    u"Phosphorus", u"Potassium",   u"Magnesium",
          u"YieldGoal",   u"Operator",    u"Machine",    u"Implement",   u"WorkingWidth",
          u"Product",     u"ProductUnit", u"TargetRate", u"AppliedRate", u"Moisture",
          u"Elevation",   u"Slope",       u"Comment",    u"Guid",        u"LastModified"};
}

std::vector<std::u16string> UpperCaseNames() {
  std::vector<std::u16string> names = AttributeNames();
  for (std::u16string& name : names) {
    for (char16_t& unit : name) {
      if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - (u'a' - u'A'));
    }
  }
  return names;
}

RawBox EmptyRawBox() {
  double const inf = std::numeric_limits<double>::infinity();
  return RawBox{inf, -inf, inf, -inf};
}

RawBox RawTransform(VornCoordinate* first, std::size_t count, VornTransformCallback callback,
                    void* context) {
  RawBox box = EmptyRawBox();
  for (VornCoordinate* c = first; c != first + count; ++c) {
    double x;
    double y;
    callback(c->X, c->Y, &x, &y, context);
    c->X = x;
    c->Y = y;
    Widen(box, x, y);
  }
  return box;
}

}  // namespace bench
