#include <vorn/geometry/line_collection.h>

#include <memory>

#include "geometry_fixtures.h"

namespace geometry_test {

TEST(LineCollection, AutoBoundboxTracksEveryAdditionAndRemoval) {
  VornLineCollection lines;
  EXPECT_TRUE(lines.AutoBoundbox);
  lines.Add(VornLine());  // a line without coordinates contributes 0..0 x 0..0
  EXPECT_TRUE(HasBox(lines.Boundbox, 0, 0, 0, 0));
  lines.Clear();
  EXPECT_FALSE(lines.Boundbox.IsInit());

  VornLine* const first = NewLine(0, 0, 2, 1);
  lines.AddReference(first);
  VornCoordinate far[2] = {{5, -3}, {6, 4}};
  lines.Add(far, 2);
  lines.Add(VornCoordinateVector(far, 2));
  EXPECT_TRUE(HasBox(lines.Boundbox, 0, 6, -3, 4));
  lines.RemoveAt(2);
  lines.RemoveAt(1);
  EXPECT_TRUE(HasBox(lines.Boundbox, 0, 2, 0, 1));
  lines.RemoveReference(0);  // handed back alive, box reset
  EXPECT_FALSE(lines.Boundbox.IsInit());
  EXPECT_EQ(first->Coordinates.Count(), 2u);
  delete first;
}

TEST(LineCollection, WithoutAutoBoundboxOnlyTransformAndRecalcTouchTheBox) {
  VornLineCollection lines(false);
  lines.AddReference(NewLine(0, 0, 2, 1));
  lines.Add(*std::unique_ptr<VornLine>(NewLine(3, 3, 4, 4)));
  lines.RemoveAt(0);
  EXPECT_FALSE(lines.Boundbox.IsInit());
  lines.RecalcBoundbox();
  EXPECT_TRUE(HasBox(lines.Boundbox, 3, 4, 3, 4));
  VornLine* const kept = *lines.begin();
  lines.RemoveReference(0);
  lines.AddReference(kept);
  lines.RemoveAllReferences();
  lines.AddReference(kept);
  lines.Clear();
  EXPECT_TRUE(HasBox(lines.Boundbox, 3, 4, 3, 4));

  lines.AddReference(NewLine(0, 0, 1, 1));
  ShiftContext shift{1, 1};
  lines.Transform(Shift, &shift);
  EXPECT_TRUE(HasBox(lines.Boundbox, 1, 2, 1, 2));
}

TEST(LineCollection, TransformRebuildsTheBoxOrChangesNothing) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 2));
  lines.AddReference(NewLine(-1, 5, 0, 6));
  EXPECT_VORN_ERROR(lines.Transform(nullptr, nullptr), "Parameter is NULL", 5003);
  EXPECT_TRUE(HasBox(lines.Boundbox, -1, 1, 0, 6));

  lines.Boundbox.Set(-100, 100, -100, 100);  // stale on purpose
  ShiftContext shift{10, 20};
  lines.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 4);
  EXPECT_TRUE(HasBox(lines.Boundbox, 9, 11, 20, 26));

  ShiftContext failing{0, 1, 3};  // fails on the second vertex of the second line
  EXPECT_THROW(lines.Transform(Shift, &failing), std::runtime_error);
  EXPECT_TRUE(HasBox(lines.Boundbox, 10, 11, 21, 23));  // covers the finished line only
  EXPECT_EQ(lines[1].Coordinates.begin()[0].Y, 26.0);
  EXPECT_EQ(lines[1].Coordinates.begin()[1].Y, 26.0);
}

TEST(LineCollection, BadInputAndExhaustionChangeNothingAndLeakNothing) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 1));
  EXPECT_VORN_ERROR(lines[1], "Index out of range", 5002);
  EXPECT_VORN_ERROR(lines.RemoveAt(1), "Index out of range", 5002);
  EXPECT_VORN_ERROR(lines.RemoveReference(7), "Index out of range", 5002);
  EXPECT_VORN_ERROR(lines.AddReference(nullptr), "Parameter is NULL", 5003);
  EXPECT_VORN_ERROR(lines.Add(nullptr, 2), "Parameter is NULL", 5003);
  VornLine const empty;  // copies without operator new, so the first one is its node
  for (Channel channel : {Channel::Malloc, Channel::NothrowNew}) {
    ScopedFailure failure(channel, 1);
    EXPECT_VORN_ERROR(lines.Add(empty), "Parameter is NULL", 5003);
  }
  std::unique_ptr<VornLine> const mine(new VornLine());
  {
    ScopedFailure noNode(Channel::NothrowNew, 1);
    EXPECT_VORN_ERROR(lines.AddReference(mine.get()), "Parameter is NULL", 5003);
  }
  EXPECT_EQ(lines.Count(), 1u);  // mine is still the caller's
  EXPECT_TRUE(HasBox(lines.Boundbox, 0, 1, 0, 1));
}

TEST(LineCollection, CopyIsShallowAndAssignmentDeep) {
  VornLineCollection source(false);
  source.AddReference(NewLine(0, 0, 1, 1));
  source.AddReference(NewLine(2, 2, 3, 3));
  VornLineCollection shallow(source);
  EXPECT_EQ(Pointers(shallow), Pointers(source));
  EXPECT_FALSE(shallow.AutoBoundbox);
  // The box is copied member by member: its references still name the source's values.
  EXPECT_TRUE(&shallow.Boundbox.MinX == &source.Boundbox.MinX &&
              &shallow.Boundbox.MaxY == &source.Boundbox.MaxY);
  shallow.RemoveAllReferences();
  EXPECT_EQ(source[1].Coordinates.Count(), 2u);

  VornLineCollection deep;
  deep = source;
  EXPECT_TRUE(deep.AutoBoundbox);
  ASSERT_EQ(deep.Count(), 2u);
  EXPECT_NE(&deep[0], &source[0]);
  EXPECT_TRUE(HasBox(deep.Boundbox, 0, 3, 0, 3));
  auto const before = Pointers(source);
  VornLineCollection& alias = source;
  source = alias;
  EXPECT_EQ(Pointers(source), before);
}

}  // namespace geometry_test
