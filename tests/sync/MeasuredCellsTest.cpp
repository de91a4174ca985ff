#include "sync/MeasuredCells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvara::sync {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MeasuredCellsTest : public testing::Test {
 protected:
  void AddAas(std::int16_t count) {
    for (std::int16_t rpn = 0; rpn < count; ++rpn) {
      model_.FindOrAddAa(rpn, 0, 0);
    }
  }

  SyncModel model_;
  MeasuredCells measured_;
};

TEST_F(MeasuredCellsTest, AreThoseWithNewReadingsByRows) {
  AddAas(3);
  model_.AddPhase(2, 0, 5);
  model_.AddPhase(0, 1, 5);
  EXPECT_THAT(measured_.Take(model_), ElementsAre(GridPosition{1, 2}, GridPosition{3, 1}));
  EXPECT_THAT(measured_.Take(model_), IsEmpty());
  model_.AddPhase(0, 1, 5);
  EXPECT_THAT(measured_.Take(model_), ElementsAre(GridPosition{1, 2}));
}

TEST_F(MeasuredCellsTest, AreFoundAgainAfterAClear) {
  AddAas(2);
  model_.AddPhase(0, 1, 5);
  measured_.Take(model_);
  model_.Clear();
  AddAas(2);
  EXPECT_THAT(measured_.Take(model_), IsEmpty());
  model_.Clear();
  AddAas(2);
  model_.AddPhase(0, 1, 5);
  EXPECT_THAT(measured_.Take(model_), ElementsAre(GridPosition{1, 2}));
}

TEST_F(MeasuredCellsTest, RestoredResultsAreNotMeasured) {
  AddAas(51);
  for (int to = 1; to < 51; ++to) {
    model_.SetCell(0, to, {.Sum = 3, .Count = 1, .Max = 3, .Min = 3});
    model_.SetCell(to, 0, {.Sum = 3, .Count = 1, .Max = 3, .Min = 3});
  }
  EXPECT_THAT(measured_.Take(model_), IsEmpty());
  model_.AddPhase(7, 0, 3);
  EXPECT_THAT(measured_.Take(model_), ElementsAre(GridPosition{8, 1}));
}

}  // namespace
}  // namespace kelvara::sync
