#include <vorn/geometry/multi_line.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/wide.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::NewLine;
using geometry_test::Pointers;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::W;

TEST(MultiLine, OwnsItsLinesAndTransformsThem) {
  VornMultiLine* paths = new VornMultiLine();
  EXPECT_EQ(paths->GetType(), MultiLine);
  EXPECT_TRUE(paths->Lines.AutoBoundbox);
  paths->Lines.AddReference(NewLine(0, 0, 1, 1));
  paths->Lines.AddReference(NewLine(2, 0, 3, 1));
  ShiftContext shift{1, 0};
  paths->Transform(Shift, &shift);
  ExpectBox(paths->Lines.Boundbox, 1, 4, 0, 1);
  ExpectVornError([&] { paths->Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  ExpectBox(paths->Lines.Boundbox, 1, 4, 0, 1);
  delete paths;  // deletes both lines (ASan reports a leak otherwise)
}

TEST(MultiLine, SelfAssignmentKeepsEverythingAndCopiesAreDeep) {
  VornMultiLine paths;
  paths.Lines.AddReference(NewLine(0, 0, 1, 1));
  paths.Attributes.Add(W(u"A"), 1);
  auto const before = Pointers(paths.Lines);
  VornMultiLine& alias = paths;
  paths = alias;
  EXPECT_EQ(Pointers(paths.Lines), before);
  EXPECT_EQ(paths.Attributes.Count(), 1u);

  VornMultiLine const copy(paths);
  ASSERT_EQ(copy.Lines.Count(), 1u);
  EXPECT_NE(&copy.Lines[0], &paths.Lines[0]);
  EXPECT_EQ(copy.Attributes.Count(), 1u);
}
