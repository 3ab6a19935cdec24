#include <vorn/geometry/line.h>

#include "geometry_fixtures.h"

namespace geometry_test {

TEST(Line, NullInputThrowsAndTransformMovesTheVerticesAndTheirBox) {
  EXPECT_VORN_ERROR(VornLine line(nullptr, 3), "Parameter is NULL", 5003);
  VornCoordinate ends[2] = {{0, 0}, {1, 2}};
  VornLine line(ends, 2);
  EXPECT_EQ(line.GetType(), Line);
  ShiftContext shift{10, 10};
  line.Transform(Shift, &shift);
  EXPECT_EQ(line.Coordinates.begin()[1].X, 11.0);
  EXPECT_TRUE(HasBox(line.Coordinates, 10, 11, 10, 12));
  EXPECT_VORN_ERROR(line.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
}

TEST(Line, CopiesAndSelfAssignmentKeepEverything) {
  VornCoordinate ends[2] = {{0, 0}, {1, 2}};
  VornLine line(ends, 2);
  line.Tag = "t";
  line.Attributes.Add(W(u"A"), 1);
  VornLine& alias = line;
  line = alias;
  VornLine const copy(line);
  for (VornLine const* l : {static_cast<VornLine const*>(&line), &copy}) {
    EXPECT_TRUE(HasBox(l->Coordinates, 0, 1, 0, 2));
    EXPECT_EQ(l->Attributes.Count(), 1u);
    EXPECT_STREQ(l->Tag.c_str(), "t");
  }
}

}  // namespace geometry_test
