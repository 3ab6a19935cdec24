#include <vorn/geometry/multi_line.h>

#include "geometry_fixtures.h"

namespace geometry_test {

TEST(MultiLine, OwnsItsLinesAndTransformsThem) {
  VornMultiLine* paths = new VornMultiLine();
  EXPECT_EQ(paths->GetType(), MultiLine);
  EXPECT_TRUE(paths->Lines.AutoBoundbox);
  paths->Lines.AddReference(NewLine(0, 0, 1, 1));
  paths->Lines.AddReference(NewLine(2, 0, 3, 1));
  ShiftContext shift{1, 0};
  paths->Transform(Shift, &shift);
  EXPECT_TRUE(HasBox(paths->Lines.Boundbox, 1, 4, 0, 1));
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
  VornMultiLine const copy(paths);
  EXPECT_NE(Pointers(copy.Lines), before);
  for (VornMultiLine const* p : {static_cast<VornMultiLine const*>(&paths), &copy}) {
    EXPECT_EQ(p->Lines.Count(), 1u);
    EXPECT_EQ(p->Attributes.Count(), 1u);
  }
}

}  // namespace geometry_test
