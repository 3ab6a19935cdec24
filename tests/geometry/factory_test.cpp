#include <vorn/geometry/factory.h>

#include <functional>

#include <vorn/core/attribute.h>
#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/object_collection.h>
#include <vorn/geometry/point.h>

#include "geometry_fixtures.h"

namespace geometry_test {
namespace {

VornCoordinate triangle[3] = {{0, 0}, {4, 0}, {0, 3}};
VornPoint const samplePoint(1.5, -2.5);
VornLine const sampleLine(triangle, 3);

struct Form {
  std::function<IVornObject*(VornCoordinate*)> make;  // given the coordinates to use
  VornObjectType kind;
};
std::vector<Form> const forms = {
    {[](VornCoordinate*) { return Vorn::Alloc_VornPoint(); }, Point},
    {[](VornCoordinate*) { return Vorn::Alloc_VornPoint(1, 2); }, Point},
    {[](VornCoordinate*) { return Vorn::Alloc_VornPoint(samplePoint); }, Point},
    {[](VornCoordinate*) { return Vorn::Alloc_VornLine(); }, Line},
    {[](VornCoordinate*) { return Vorn::Alloc_VornLine(sampleLine); }, Line},
    {[](VornCoordinate* c) { return Vorn::Alloc_VornLine(c, 3); }, Line},
    {[](VornCoordinate*) { return Vorn::Alloc_VornLine(sampleLine.Coordinates); }, Line},
    {[](VornCoordinate*) { return Vorn::Alloc_VornPolygon(); }, Polygon},
    {[](VornCoordinate* c) { return Vorn::Alloc_VornPolygon(c, 3); }, Polygon},
    {[](VornCoordinate* c) { return Vorn::Alloc_VornPolygon(c, 3, true); }, Polygon},
    {[](VornCoordinate*) { return Vorn::Alloc_VornMultiPoint(); }, MultiPoint},
    {[](VornCoordinate*) { return Vorn::Alloc_VornMultiLine(); }, MultiLine},
    {[](VornCoordinate*) { return Vorn::Alloc_VornMultiPolygon(); }, MultiPolygon},
};

}  // namespace

TEST(Factory, EveryFormBuildsWhatItNamesOrPassesItsConstructorsException) {
  for (Form const& form : forms) {
    IVornObject* const object = form.make(triangle);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetType(), form.kind);
    // Any of the object Free_ functions frees any object through its own destructor.
    Vorn::Free_VornLine(reinterpret_cast<VornLine*>(object));
  }
  VornPolygon* const hole = Vorn::Alloc_VornPolygon(triangle, 3, true);
  VornPolygon* const outer = Vorn::Alloc_VornPolygon(triangle, 3);
  EXPECT_TRUE(hole->IsHole);
  EXPECT_FALSE(outer->IsHole);
  EXPECT_EQ(outer->Coordinates.begin()[2].Y, 3.0);
  Vorn::Free_VornPolygon(hole);
  Vorn::Free_VornPolygon(outer);
  VornAttribute* const attribute = Vorn::Alloc_VornAttribute();
  EXPECT_EQ(attribute->DataType(), Int32);
  Vorn::Free_VornAttribute(attribute);
  // The storage goes back when the constructor throws (ASan checks it).
  EXPECT_VORN_ERROR(Vorn::Alloc_VornLine(nullptr, 2), "Parameter is NULL", 5003);
  EXPECT_VORN_ERROR(Vorn::Alloc_VornPolygon(nullptr, 2), "Parameter is NULL", 5003);
}

TEST(Factory, ExhaustedMemoryYieldsNullWithoutConstructing) {
  for (std::size_t i = 0; i < forms.size(); ++i) {
    vorn_test::Reset();
    ScopedFailure failure(Channel::Malloc, 1);
    IVornObject* result = nullptr;
    // A null coordinate pointer: the constructor would throw, had it run.
    EXPECT_NO_THROW(result = forms[i].make(nullptr)) << "form " << i;
    EXPECT_EQ(result, nullptr) << "form " << i;
    EXPECT_EQ(vorn_test::Count(Channel::Malloc), 1u) << "form " << i;
  }
  {
    ScopedFailure noMalloc(Channel::Malloc);
    EXPECT_EQ(Vorn::Alloc_VornObjectCollection(), nullptr);
    VornAttribute* const attribute = Vorn::Alloc_VornAttribute();  // not from VornMalloc
    EXPECT_NE(attribute, nullptr);
    Vorn::Free_VornAttribute(attribute);
  }
  ScopedFailure noNew(Channel::NothrowNew);
  EXPECT_EQ(Vorn::Alloc_VornAttribute(), nullptr);
  VornPoint* const point = Vorn::Alloc_VornPoint();  // not from operator new
  EXPECT_NE(point, nullptr);
  Vorn::Free_VornPoint(point);
}

TEST(Factory, FreeingACollectionDeletesItsObjectsAndEveryFreeAcceptsNull) {
  CountedPoint::destroyed = 0;
  VornObjectCollection* const collection = Vorn::Alloc_VornObjectCollection();
  ASSERT_NE(collection, nullptr);
  collection->AddReference(new CountedPoint(0, 0));
  collection->AddReference(new CountedPoint(0, 0));
  Vorn::Free_VornObjectCollection(collection);
  EXPECT_EQ(CountedPoint::destroyed, 2);

  Vorn::Free_VornPoint(nullptr);
  Vorn::Free_VornLine(nullptr);
  Vorn::Free_VornPolygon(nullptr);
  Vorn::Free_VornMultiPoint(nullptr);
  Vorn::Free_VornMultiLine(nullptr);
  Vorn::Free_VornMultiPolygon(nullptr);
  Vorn::Free_VornObjectCollection(nullptr);
  Vorn::Free_VornAttribute(nullptr);
}

}  // namespace geometry_test
