// The allocation-failure sweep: the workload runs once per allocation channel to count
// the allocations it makes there, and then once for every one of them with exactly that
// allocation failing. A run may end early with one of the library's reports of a failed
// allocation ("Parameter is NULL" 5003, "Unable to initialize Grid" 5004, "Out of Memory"
// 5005) and with nothing else: no crash, no std::bad_alloc, no report without a failure.
// Every run destroys what it built, and under AddressSanitizer a leak check after every
// failure point names the point that leaked.
//
// The workload calls the library directly; everything it allocates is counted and can
// fail. Where a header promises a specific result for a failed allocation (false, null,
// an empty string, a report, nothing dropped) the workload checks it at that call.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>

#include <gtest/gtest.h>
#include <vorn/vorn.h>

#include "support/alloc_failure.h"
#include "support/helpers.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

namespace {

using vorn_test::W;

// The channel whose allocation fails in this run.
vorn_test::Channel armed = vorn_test::Channel::Malloc;

// Whether this run's failing allocation has happened by now.
bool Failed() { return vorn_test::Fired(armed); }

// A call that returns `failed` exactly when an allocation inside it fails. A call that yields
// false and is given `true` must report every failing allocation inside it by throwing.
template <class R, class Op>
R Returns(R failed, Op&& op) {
  bool const before = Failed();
  R const result = op();
  EXPECT_EQ(result == failed, Failed() && !before);
  return result;
}

// Runs the object factory `alloc`: null only when an allocation inside it fails (its constructor
// may fill in less, or throw), else an object of `kind`; then its Free_.
template <class Alloc, class T>
void Made(int kind, void (*free)(T*), Alloc alloc) {
  T* const made = alloc();  // one allocation fails per run, so an earlier one means none here
  EXPECT_TRUE(made == nullptr ? Failed() : made->GetType() == kind) << kind;
  free(made);
}

VornCoordinate square[] = {{0, 0}, {0, 10}, {10, 10}, {10, 0}, {0, 0}};
unsigned char const bytes[] = {9, 8, 7};

// The workload: text, coordinate vectors, attributes, every geometry and treatment kind,
// their collections and the factories that have allocation code of their own.
void Workload() {
  // A string whose one buffer cannot be allocated is left empty.
  stringbase<char, astringfuncs> n;
  Returns(0u, [&] { return (n = "crop").length(); });
  Returns(0u, [&] { return (n += " 2021").length(); });
  Returns(0u, [&] { return VornUtil::StringToWString("Gr\xc3\xbcn").length(); });
  Returns(0u, [&] { return VornUtil::WStringToString(W(u"Gr\u00fcn")).length(); });
  Returns(0u, [&] { return VornUtil::GenerateGuid().length(); });

  VornCoordinateVector v(square, 5);
  v.AddRange(v);
  // A failed reservation for a range falls back to one coordinate at a time.
  EXPECT_TRUE(v.Count() == 10 && v.begin()[5] == square[0] && v.begin()[7] == square[2]);
  VornCoordinateVector() = v;
  Returns(false, [&] { return VornCoordinateVector().Reserve(100); });
  Returns(false, [&] { return VornCoordinateVector().Resize(12); });

  VornAttribute blob(W(u"Value"), 1);
  try {
    blob.SetValue(bytes, 3);
  } catch (VornException const& e) {  // the kind and length set, no bytes: copied as zeros
    EXPECT_TRUE(e.ErrorCode() == 5005 && blob.Length() == 3 && blob.ValueBLOB() == nullptr);
  }
  VornAttributeCollection c;
  c.Add(blob);
  std::unique_ptr<VornAttribute> own(new (std::nothrow) VornAttribute(W(u"Own"), 9));
  // Adopted, or it stays the caller's.
  Returns(true, [&] { return c.AddReference(own.get()), own.release(), false; });
  c.AddRange(c);
  c = VornAttributeCollection(c);

  // Every geometry and treatment kind, each with an attribute so that copying it
  // allocates, put together and then copied as a whole.
  VornObjectCollection objects;
  VornTreatmentZone const zone(2, 80.0, W(u"High"), W(u"kg/ha"), 7);
  VornPoint point(3, 4);
  VornLine line(v);
  VornMultiLine lines;
  lines.Lines.Add(v);
  VornMultiPolygon area;
  area.Polygons.Add(square, 5, false);
  [&](auto&&... kinds) {
    ((kinds.Attributes.Add(W(u"Bytes"), bytes, 3), objects.Add(kinds)), ...);
  }(point, line, VornPolygon(square, 4, true), VornMultiPoint(square, 4), lines, area);
  VornTreatmentGrid grid;
  Returns(false, [&] { return grid.InitGrid(0, 0, 1, 1, 4, 3); });
  grid.Zones.Add(zone);
  std::unique_ptr<VornTreatmentZone> adopted(new VornTreatmentZone(5, 2.5));
  Returns(true, [&] { return grid.Zones.AddReference(adopted.get()), adopted.release(), false; });
  grid.Zones.AddRange(grid.Zones);
  if (grid.IsInit()) objects.Add(grid);
  VornTreatmentGridEx rates;  // its rows failing: pinned in the limits and treatment tests
  if (rates.InitGrid(0, 0, 1, 1, 3, 2)) objects.Add(rates);
  VornTreatmentMap map;
  map.TreatmentPolygons.Add(area, zone);
  map.TreatmentPolygons.Add(VornTreatmentPolygon(VornPolygon(square, 4, true), zone));
  map.TreatmentPolygons.AddRange(map.TreatmentPolygons);
  VornTreatmentPolygonCollection() = map.TreatmentPolygons;
  objects.Add(map);
  VornObjectCollection().AddRange(objects);
  VornObjectCollection(objects).RemoveAllReferences();

  // Room for a range is reserved once, so no copy is dropped for want of a slot; a copy
  // that cannot be allocated stays as a null slot, which copying the vector skips.
  Vorn::multi_polygon_pointers const pointers(2, &area);
  VornMultiPolygonVector areas(pointers);
  EXPECT_EQ(areas.Count(), pointers.size());
  auto const whole = areas.Count() - std::count(areas.begin(), areas.end(), nullptr);
  areas.AddRange(areas);
  EXPECT_EQ(areas.Count(), pointers.size() + whole);
  VornMultiPolygonVector() = areas;
  VornMultiPolygonVector const copied(areas);
  Returns(false, [&] { return areas.Reserve(64); });
  Returns(false, [&] { return VornMultiPolygonVector().Resize(3); });

  // Every factory: null exactly when its storage cannot be had, or for the object kinds null
  // only when an allocation fails and else the kind it names (the numbers are interface).
  using namespace Vorn;
  Free_VornObjectCollection(Returns<VornObjectCollection*>(nullptr, Alloc_VornObjectCollection));
  Free_VornAttribute(Returns<VornAttribute*>(nullptr, Alloc_VornAttribute));
  Made(0, Free_VornPoint, [] { return Alloc_VornPoint(); });
  Made(0, Free_VornPoint, [] { return Alloc_VornPoint(3, 5); });
  Made(0, Free_VornPoint, [&] { return Alloc_VornPoint(point); });
  Made(1, Free_VornLine, [] { return Alloc_VornLine(); });
  Made(1, Free_VornLine, [&] { return Alloc_VornLine(line); });
  Made(1, Free_VornLine, [] { return Alloc_VornLine(square, 5); });
  Made(1, Free_VornLine, [&] { return Alloc_VornLine(v); });
  Made(2, Free_VornPolygon, [] { return Alloc_VornPolygon(); });
  Made(2, Free_VornPolygon, [] { return Alloc_VornPolygon(square, 5); });
  Made(2, Free_VornPolygon, [] { return Alloc_VornPolygon(square, 5, true); });
  Made(3, Free_VornMultiPoint, Alloc_VornMultiPoint);
  Made(4, Free_VornMultiLine, Alloc_VornMultiLine);
  Made(5, Free_VornMultiPolygon, Alloc_VornMultiPolygon);
  Made(6, Free_VornTreatmentGrid, Alloc_VornTreatmentGrid);
  Made(7, Free_VornTreatmentMap, Alloc_VornTreatmentMap);  // deliberately before GridEx
  Made(8, Free_VornTreatmentGridEx, Alloc_VornTreatmentGridEx);
  Free_VornTreatmentPolygon(Returns<VornTreatmentPolygon*>(nullptr, Alloc_VornTreatmentPolygon));
  Free_VornTreatmentZone(Returns<VornTreatmentZone*>(nullptr, Alloc_VornTreatmentZone));
  Free_VornTreatmentZoneEx(Returns<VornTreatmentZoneEx*>(nullptr, Alloc_VornTreatmentZoneEx));
}

// One run of the workload with counting on. It may end early, only with one of the
// library's reports of a failed allocation.
void RunWorkload() {
  char const* const reports[] = {"Parameter is NULL", "Unable to initialize Grid", "Out of Memory"};
  vorn_test::ScopedCounting on(true);
  try {
    Workload();
  } catch (VornException const& e) {
    unsigned int const report = static_cast<unsigned int>(e.ErrorCode() - 5003);
    EXPECT_TRUE(Failed() && report < 3 && reports[report] == std::string(e.Message()))
        << e.Message() << " (" << e.ErrorCode() << ")";
  } catch (...) {
    ADD_FAILURE() << "std::bad_alloc or another exception escaped";
  }
}

TEST(AllocationFailureSweep, EveryAllocationOfTheWorkload) {
  char const* const channels[] = {"malloc", "operator new", "operator new[]"};
  vorn_test::ScopedCounting off(false);
  setenv("TZ", "UTC0", 1);  // a fixed zone: reading the clock then allocates nothing
  RunWorkload();            // and what the C runtime allocates once is allocated now
  for (int c = 0; c < 3; ++c) {
    armed = static_cast<vorn_test::Channel>(c);
    unsigned long count = 0;
    for (unsigned long n = 0; n <= count; ++n) {  // n = 0: the run that counts
      SCOPED_TRACE(testing::Message() << "failing " << channels[c] << " #" << n);
      vorn_test::Reset();
      vorn_test::FailNth(armed, n);
      RunWorkload();
      if (n == 0) count = vorn_test::Count(armed);
      EXPECT_EQ(Failed(), n > 0) << "the workload does not repeat itself";
#if defined(__SANITIZE_ADDRESS__)
      EXPECT_EQ(__lsan_do_recoverable_leak_check(), 0);
#endif
      ASSERT_FALSE(HasFailure());
    }
    std::printf("allocation-failure sweep: %-14s %5lu failure points\n", channels[c], count);
  }
}

}  // namespace
