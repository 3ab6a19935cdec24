#include <vorn/geometry/factory.h>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include <vorn/core/attribute.h>
#include <vorn/core/coordinate.h>
#include <vorn/core/coordinate_vector.h>
#include <vorn/geometry/line.h>
#include <vorn/geometry/multi_line.h>
#include <vorn/geometry/multi_point.h>
#include <vorn/geometry/multi_polygon.h>
#include <vorn/geometry/object_collection.h>
#include <vorn/geometry/point.h>
#include <vorn/geometry/polygon.h>

#include "geometry_fixtures.h"
#include "support/alloc_failure.h"

using geometry_test::ExpectVornError;
using vorn_test::Channel;
using vorn_test::ScopedFailure;

namespace {

class CountedPoint : public VornPoint {
public:
  ~CountedPoint() override { ++destroyed; }
  static int destroyed;
};
int CountedPoint::destroyed = 0;

VornCoordinate triangle[3] = {{0, 0}, {4, 0}, {0, 3}};

}  // namespace

TEST(Factory, PolygonsTakeTheHoleFlag) {
  VornPolygon* const hole = Vorn::Alloc_VornPolygon(triangle, 3, true);
  VornPolygon* const outer = Vorn::Alloc_VornPolygon(triangle, 3);
  ASSERT_NE(hole, nullptr);
  ASSERT_NE(outer, nullptr);
  EXPECT_TRUE(hole->IsHole);
  EXPECT_FALSE(outer->IsHole);
  ASSERT_EQ(outer->Coordinates.Count(), 3u);
  EXPECT_EQ(outer->Coordinates[1].X, 4.0);
  Vorn::Free_VornPolygon(hole);
  Vorn::Free_VornPolygon(outer);
}

TEST(Factory, EveryConstructorFormBuildsWhatItNames) {
  VornPoint* const point = Vorn::Alloc_VornPoint(1.5, -2.5);
  VornPoint* const pointCopy = Vorn::Alloc_VornPoint(*point);
  EXPECT_EQ(pointCopy->Coordinate.Y, -2.5);
  VornLine* const line = Vorn::Alloc_VornLine(triangle, 3);
  VornLine* const lineCopy = Vorn::Alloc_VornLine(*line);
  VornLine* const fromVector = Vorn::Alloc_VornLine(line->Coordinates);
  EXPECT_EQ(lineCopy->Coordinates.Count(), 3u);
  EXPECT_EQ(fromVector->Coordinates[2].Y, 3.0);

  std::vector<IVornObject*> const made = {point,
                                          lineCopy,
                                          Vorn::Alloc_VornPolygon(),
                                          Vorn::Alloc_VornMultiPoint(),
                                          Vorn::Alloc_VornMultiLine(),
                                          Vorn::Alloc_VornMultiPolygon()};
  for (std::size_t kind = 0; kind < made.size(); ++kind) {
    EXPECT_EQ(made[kind]->GetType(), static_cast<VornObjectType>(kind));
  }
  Vorn::Free_VornPoint(point);
  Vorn::Free_VornLine(lineCopy);
  Vorn::Free_VornPolygon(static_cast<VornPolygon*>(made[2]));
  Vorn::Free_VornMultiPoint(static_cast<VornMultiPoint*>(made[3]));
  Vorn::Free_VornMultiLine(static_cast<VornMultiLine*>(made[4]));
  Vorn::Free_VornMultiPolygon(static_cast<VornMultiPolygon*>(made[5]));
  Vorn::Free_VornPoint(pointCopy);
  Vorn::Free_VornLine(line);
  Vorn::Free_VornLine(fromVector);
  Vorn::Free_VornLine(Vorn::Alloc_VornLine());
  Vorn::Free_VornPoint(Vorn::Alloc_VornPoint());

  VornAttribute* const attribute = Vorn::Alloc_VornAttribute();
  EXPECT_EQ(attribute->DataType(), Int32);
  Vorn::Free_VornAttribute(attribute);
}
TEST(Factory, AThrowingConstructorReleasesTheStorage) {
  ExpectVornError([] { Vorn::Alloc_VornLine(nullptr, 2); }, "Parameter is NULL", 5003);
  ExpectVornError([] { Vorn::Alloc_VornPolygon(nullptr, 2, true); }, "Parameter is NULL", 5003);
}

TEST(Factory, AnyObjectFreeFunctionFreesAnyObjectByItsOwnDestructor) {
  CountedPoint::destroyed = 0;
  IVornObject* const point = new CountedPoint();
  Vorn::Free_VornLine(reinterpret_cast<VornLine*>(point));
  EXPECT_EQ(CountedPoint::destroyed, 1);
}

TEST(Factory, FreeingACollectionDeletesItsObjects) {
  CountedPoint::destroyed = 0;
  VornObjectCollection* const collection = Vorn::Alloc_VornObjectCollection();
  ASSERT_NE(collection, nullptr);
  collection->AddReference(new CountedPoint());
  collection->AddReference(new CountedPoint());
  Vorn::Free_VornObjectCollection(collection);
  EXPECT_EQ(CountedPoint::destroyed, 2);
}

TEST(Factory, EveryFreeAcceptsNull) {
  Vorn::Free_VornPoint(nullptr);
  Vorn::Free_VornLine(nullptr);
  Vorn::Free_VornPolygon(nullptr);
  Vorn::Free_VornMultiPoint(nullptr);
  Vorn::Free_VornMultiLine(nullptr);
  Vorn::Free_VornMultiPolygon(nullptr);
  Vorn::Free_VornObjectCollection(nullptr);
  Vorn::Free_VornAttribute(nullptr);
}

TEST(Factory, ExhaustedMemoryYieldsNullWithoutConstructing) {
  VornPoint const point;
  VornLine const line;
  VornCoordinateVector const coordinates;
  std::vector<std::function<void*()>> const allocs = {
      [] { return Vorn::Alloc_VornObjectCollection(); },
      [] { return Vorn::Alloc_VornPoint(); },
      [] { return Vorn::Alloc_VornPoint(1, 2); },
      [&] { return Vorn::Alloc_VornPoint(point); },
      [] { return Vorn::Alloc_VornLine(); },
      [&] { return Vorn::Alloc_VornLine(line); },
      // A null coordinate pointer: the constructor would throw, had it run.
      [] { return Vorn::Alloc_VornLine(nullptr, 2); },
      [&] { return Vorn::Alloc_VornLine(coordinates); },
      [] { return Vorn::Alloc_VornPolygon(); },
      [] { return Vorn::Alloc_VornPolygon(nullptr, 2); },
      [] { return Vorn::Alloc_VornPolygon(nullptr, 2, true); },
      [] { return Vorn::Alloc_VornMultiPoint(); },
      [] { return Vorn::Alloc_VornMultiLine(); },
      [] { return Vorn::Alloc_VornMultiPolygon(); },
  };
  for (std::size_t i = 0; i < allocs.size(); ++i) {
    vorn_test::Reset();
    ScopedFailure failure(Channel::Malloc, 1);
    void* result = reinterpret_cast<void*>(1);
    EXPECT_NO_THROW(result = allocs[i]()) << "form " << i;
    EXPECT_EQ(result, nullptr) << "form " << i;
    EXPECT_EQ(vorn_test::Count(Channel::Malloc), 1u) << "form " << i;
  }
  ScopedFailure failure(Channel::NothrowNew, 1);
  EXPECT_EQ(Vorn::Alloc_VornAttribute(), nullptr);
}

TEST(Factory, AttributesAndObjectsUseTheirOwnChannels) {
  VornAttribute* attribute = nullptr;
  VornPoint* point = nullptr;
  {
    ScopedFailure noMalloc(Channel::Malloc);
    attribute = Vorn::Alloc_VornAttribute();
  }
  {
    ScopedFailure noNew(Channel::NothrowNew);
    point = Vorn::Alloc_VornPoint();
  }
  EXPECT_NE(attribute, nullptr);
  EXPECT_NE(point, nullptr);
  Vorn::Free_VornAttribute(attribute);
  Vorn::Free_VornPoint(point);
}
