#include <vorn/geometry/line_collection.h>

#include <gtest/gtest.h>

#include "geometry_fixtures.h"
#include "support/alloc_failure.h"

using geometry_test::ExpectBox;
using geometry_test::ExpectVornError;
using geometry_test::NewLine;
using geometry_test::Pointers;
using geometry_test::Shift;
using geometry_test::ShiftContext;
using vorn_test::Channel;
using vorn_test::ScopedFailure;

TEST(LineCollection, TracksTheUnionOfItsLines) {
  VornLineCollection lines;
  EXPECT_TRUE(lines.AutoBoundbox);
  lines.AddReference(NewLine(0, 0, 2, 1));
  VornCoordinate far[2] = {{5, -3}, {6, 4}};
  lines.Add(far, 2);
  ExpectBox(lines.Boundbox, 0, 6, -3, 4);

  lines.RemoveAt(1);
  ExpectBox(lines.Boundbox, 0, 2, 0, 1);
  lines.Clear();
  EXPECT_FALSE(lines.Boundbox.IsInit());
}

TEST(LineCollection, WithoutAutoBoundboxOnlyTransformAndRecalcTouchTheBox) {
  VornLineCollection lines(false);
  lines.AddReference(NewLine(0, 0, 2, 1));
  VornCoordinate ends[2] = {{3, 3}, {4, 4}};
  lines.Add(VornLine(ends, 2));
  EXPECT_FALSE(lines.Boundbox.IsInit());
  lines.RemoveAt(0);
  EXPECT_FALSE(lines.Boundbox.IsInit());

  lines.RecalcBoundbox();
  ExpectBox(lines.Boundbox, 3, 4, 3, 4);
  VornLine* kept = *lines.begin();
  lines.RemoveReference(0);
  ExpectBox(lines.Boundbox, 3, 4, 3, 4);
  lines.AddReference(kept);
  lines.Clear();
  ExpectBox(lines.Boundbox, 3, 4, 3, 4);

  lines.AddReference(NewLine(0, 0, 1, 1));
  ShiftContext shift{1, 1};
  lines.Transform(Shift, &shift);
  ExpectBox(lines.Boundbox, 1, 2, 1, 2);
}

TEST(LineCollection, EmptyLineContributesTheZeroBox) {
  VornLineCollection lines;
  lines.Add(VornLine());
  ExpectBox(lines.Boundbox, 0, 0, 0, 0);
}

TEST(LineCollection, TransformPassesTheContextAndRebuildsTheBox) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 2));
  lines.AddReference(NewLine(-1, 5, 0, 6));
  lines.Boundbox.Set(-100, 100, -100, 100);  // stale on purpose
  ShiftContext shift{10, 20};
  lines.Transform(Shift, &shift);
  EXPECT_EQ(shift.calls, 4);
  ExpectBox(lines.Boundbox, 9, 11, 20, 26);
}

TEST(LineCollection, NullCallbackChangesNothing) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 2));
  ExpectVornError([&] { lines.Transform(nullptr, nullptr); }, "Parameter is NULL", 5003);
  ExpectBox(lines.Boundbox, 0, 1, 0, 2);
}

TEST(LineCollection, ThrowingCallbackLeavesADestructibleCollection) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 1));
  lines.AddReference(NewLine(5, 5, 6, 6));
  ShiftContext failing{1, 1, 3};
  EXPECT_THROW(lines.Transform(Shift, &failing), std::runtime_error);
  ExpectBox(lines.Boundbox, 1, 2, 1, 2);  // covers the finished line only
  EXPECT_EQ(lines[1].Coordinates.begin()[0].X, 6.0);
  EXPECT_EQ(lines[1].Coordinates.begin()[1].X, 6.0);
}

TEST(LineCollection, PositionsAreChecked) {
  VornLineCollection lines;
  lines.AddReference(NewLine(0, 0, 1, 1));
  ExpectVornError([&] { lines[1]; }, "Index out of range", 5002);
  ExpectVornError([&] { lines.RemoveAt(1); }, "Index out of range", 5002);
  ExpectVornError([&] { lines.RemoveReference(7); }, "Index out of range", 5002);
  EXPECT_EQ(lines.Count(), 1u);
}

TEST(LineCollection, NullInputIsRejectedWithoutLeaking) {
  VornLineCollection lines;
  ExpectVornError([&] { lines.AddReference(nullptr); }, "Parameter is NULL", 5003);
  ExpectVornError([&] { lines.Add(nullptr, 2); }, "Parameter is NULL", 5003);
  EXPECT_EQ(lines.Count(), 0u);
  EXPECT_FALSE(lines.Boundbox.IsInit());
}

TEST(LineCollection, RemoveReferenceHandsTheLineBack) {
  VornLineCollection lines;
  VornLine* line = NewLine(0, 0, 1, 1);
  lines.AddReference(line);
  lines.RemoveReference(0);
  EXPECT_EQ(lines.Count(), 0u);
  EXPECT_FALSE(lines.Boundbox.IsInit());
  EXPECT_EQ(line->Coordinates.Count(), 2u);  // still alive, ours again
  delete line;
}

TEST(LineCollection, CopyIsShallowAndAssignmentDeep) {
  VornLineCollection source(false);
  source.AddReference(NewLine(0, 0, 1, 1));
  source.AddReference(NewLine(2, 2, 3, 3));

  VornLineCollection shallow(source);
  EXPECT_EQ(Pointers(shallow), Pointers(source));
  EXPECT_FALSE(shallow.AutoBoundbox);
  shallow.RemoveAllReferences();
  EXPECT_EQ(source.Count(), 2u);
  EXPECT_EQ(source[1].Coordinates.Count(), 2u);

  VornLineCollection deep;
  deep = source;
  EXPECT_TRUE(deep.AutoBoundbox);
  ASSERT_EQ(deep.Count(), 2u);
  EXPECT_NE(&deep[0], &source[0]);
  ExpectBox(deep.Boundbox, 0, 3, 0, 3);

  auto const before = Pointers(source);
  VornLineCollection& alias = source;
  source = alias;
  EXPECT_EQ(Pointers(source), before);
}

TEST(LineCollection, OutOfMemoryIsReportedAsNullAndLeaksNothing) {
  VornLineCollection lines;
  VornLine const empty;
  {
    ScopedFailure noCopy(Channel::Malloc, 1);
    ExpectVornError([&] { lines.Add(empty); }, "Parameter is NULL", 5003);
  }
  {
    // An empty line copies without allocating, so the first operator new is its node.
    ScopedFailure noNode(Channel::NothrowNew, 1);
    ExpectVornError([&] { lines.Add(empty); }, "Parameter is NULL", 5003);
  }
  VornLine* mine = new VornLine();
  {
    ScopedFailure noNode(Channel::NothrowNew, 1);
    ExpectVornError([&] { lines.AddReference(mine); }, "Parameter is NULL", 5003);
  }
  EXPECT_EQ(lines.Count(), 0u);
  EXPECT_FALSE(lines.Boundbox.IsInit());
  delete mine;  // the caller kept ownership
}
