#include "sync/MeasuredCells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvara::sync {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;

class MeasuredCellsTest : public testing::Test {
 protected:
  MeasuredCellsTest() {
    for (std::int16_t rpn = 0; rpn < 3; ++rpn) {
      model_.FindOrAddAa(rpn, 0, 0);
    }
  }

  SyncModel model_;
  MeasuredCells measured_;
};

TEST_F(MeasuredCellsTest, AreThoseOfTheLastReportByRows) {
  model_.BeginReport();
  model_.AddPhase(1, 0, 5);
  model_.BeginReport();
  model_.AddPhase(2, 0, 5);
  model_.AddPhase(0, 1, 5);
  EXPECT_THAT(measured_.Take(model_),
              Optional(ElementsAre(GridPosition{1, 2}, GridPosition{3, 1})));
}

TEST_F(MeasuredCellsTest, AreTakenOnceForEachReport) {
  EXPECT_THAT(measured_.Take(model_), Eq(std::nullopt));
  for (int report = 0; report < 2; ++report) {
    model_.BeginReport();
    model_.AddPhase(0, 1, 5);
    EXPECT_THAT(measured_.Take(model_), Optional(ElementsAre(GridPosition{1, 2})));
    EXPECT_THAT(measured_.Take(model_), Eq(std::nullopt));
  }
}

TEST_F(MeasuredCellsTest, AreNoneAfterAClear) {
  model_.BeginReport();
  model_.AddPhase(0, 1, 5);
  model_.Clear();
  EXPECT_THAT(measured_.Take(model_), Optional(IsEmpty()));
}

TEST_F(MeasuredCellsTest, AreNotThoseOfRestoredResults) {
  SyncModel older;
  older.FindOrAddAa(1, 0, 0);
  older.FindOrAddAa(2, 0, 0);
  older.BeginReport();
  older.BeginReport();
  older.AddPhase(0, 1, 3);
  model_.AddOlder(older);
  EXPECT_THAT(measured_.Take(model_), Optional(IsEmpty()));
  model_.BeginReport();
  model_.AddPhase(1, 0, 3);
  EXPECT_THAT(measured_.Take(model_), Optional(ElementsAre(GridPosition{2, 1})));
}

}  // namespace
}  // namespace kelvara::sync
