#include <vorn/geometry/line.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::W;

TEST(Line, NullCoordinatesThrowWithoutLeaking) {
  ExpectVornError([] { VornLine line(nullptr, 3); }, "Parameter is NULL", 5003);
  // The heap form releases its storage when the constructor throws (ASan checks it).
  ExpectVornError([] { delete new VornLine(nullptr, 0); }, "Parameter is NULL", 5003);
}

TEST(Line, TransformMovesVerticesAndBox) {
  VornCoordinate coords[2] = {{0, 0}, {1, 2}};
  VornLine line(coords, 2);
  ShiftContext shift{10, 10};
  line.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 2);
  EXPECT_EQ(line.Coordinates.begin()[1].X, 11.0);
  ExpectBox(line.Coordinates, 10, 11, 10, 12);
  ExpectVornError([&] { line.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
}

TEST(Line, CopiesAndSelfAssignmentKeepEverything) {
  VornCoordinate coords[2] = {{0, 0}, {1, 2}};
  VornLine line(coords, 2);
  line.Tag = "t";
  line.Attributes.Add(W(u"A"), 1);

  VornLine copy(line);
  EXPECT_EQ(copy.Coordinates.Count(), 2u);
  EXPECT_STREQ(copy.Tag.c_str(), "t");
  EXPECT_EQ(copy.Attributes.Count(), 1u);

  VornLine& alias = line;
  line = alias;
  EXPECT_EQ(line.Coordinates.Count(), 2u);
  EXPECT_EQ(line.Attributes.Count(), 1u);
  EXPECT_STREQ(line.Tag.c_str(), "t");
}
