// Copies, fills and byte swaps of every level that this processor has.
#include "tests/support/module/levels.h"
#include "tools/proof/overlaps.h"
#include "tools/proof/shapes.h"

using RoutinesOfLevel = EachLevel;

INSTANTIATE_TEST_SUITE_P(Processor, RoutinesOfLevel, ::testing::ValuesIn(simd::kAllLevels),
                         LevelName);

TEST_P(RoutinesOfLevel, DoTheirWorkInEveryShapeAndNothingAround) {
  for (const proof::Subject& subject : proof::RoutineSubjects(GetParam())) {
    EXPECT_EQ(proof::CheckShapes(subject), std::nullopt);
  }
}

TEST_P(RoutinesOfLevel, CopyWhatOverlaps) {
  for (const proof::Subject& subject : proof::RoutineSubjects(GetParam())) {
    EXPECT_EQ(proof::CheckOverlaps(subject), std::nullopt);
  }
}
