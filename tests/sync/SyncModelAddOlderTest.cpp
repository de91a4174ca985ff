#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "support/Faults.h"
#include "support/ReplayedTrace.h"
#include "sync/SyncModel.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;
using test::ModelText;

std::int16_t Add(SyncModel& model, int rpn, int fps = 3, int fpn = 0x5A) {
  return model.FindOrAddAa(static_cast<std::int16_t>(rpn), static_cast<std::int16_t>(fps),
                           static_cast<std::int16_t>(fpn));
}

/// A report of one reading.
void AddReading(SyncModel& model, int fromRpn, int toRpn, int phase) {
  const std::int16_t from = Add(model, fromRpn);
  const std::int16_t to = Add(model, toRpn);
  model.AddPhase(from, to, static_cast<std::int16_t>(phase));
  model.CountReport();
}

SyncModel ModelOf(int firstRpn, int count) {
  SyncModel model;
  for (int rpn = firstRpn; rpn < firstRpn + count; ++rpn) {
    Add(model, rpn);
  }
  return model;
}

TEST(AddOlder, ListsTheOlderAntennasFirstWithTheirFpsAndFpn) {
  SyncModel older;
  Add(older, 7, 1, 2);
  Add(older, 3, 1, 2);
  SyncModel model;
  Add(model, 9, 5, 6);
  Add(model, 3, 5, 6);
  model.AddOlder(older);
  ASSERT_EQ(model.AaCount(), 3);
  EXPECT_EQ(model.AaRpn(0), 7);
  EXPECT_EQ(model.AaRpn(1), 3);
  EXPECT_EQ(model.AaFps(1), 1);
  EXPECT_EQ(model.AaFpn(1), 2);
  EXPECT_EQ(model.AaRpn(2), 9);
  EXPECT_EQ(model.AaFps(2), 5);
  EXPECT_EQ(model.AaFpn(2), 6);
}

TEST(AddOlder, AddsSumsCountsAndReportsAndWidensMaxAndMin) {
  SyncModel older;
  AddReading(older, 1, 2, -30);
  AddReading(older, 1, 2, 10);
  SyncModel model;
  AddReading(model, 2, 1, 4);
  AddReading(model, 1, 2, 40);
  model.AddOlder(older);
  const PhaseCell& cell = model.Cell(0, 1);
  EXPECT_EQ(cell.Sum, 20);
  EXPECT_EQ(cell.Count, 3);
  EXPECT_EQ(cell.Max, 40);
  EXPECT_EQ(cell.Min, -30);
  EXPECT_EQ(model.Cell(1, 0).Sum, 4);
  EXPECT_EQ(model.ReportCount(), 4);
}

TEST(AddOlder, ToAnEmptyModelRestoresIt) {
  SyncModel older;
  AddReading(older, 1, 2, -30);
  SyncModel model;
  model.AddOlder(older);
  EXPECT_EQ(ModelText(model), ModelText(older));
}

TEST(AddOlder, CountsAsAClear) {
  SyncModel model;
  model.Clear();
  model.AddOlder(SyncModel());
  EXPECT_EQ(model.ClearCount(), 2U);
}

TEST(AddOlder, JoinsTheReadingsThatWereKept) {
  SyncModel older;
  older.KeepReadings();
  AddReading(older, 1, 2, 5);
  SyncModel model;
  model.KeepReadings();
  AddReading(model, 2, 3, 6);
  model.AddOlder(older);
  ASSERT_EQ(model.Readings().size(), 2U);
  EXPECT_EQ(model.Readings()[0].phase, 5);
  EXPECT_EQ(model.Readings()[1].from, 1);
  EXPECT_EQ(model.Readings()[1].to, 2);
  EXPECT_EQ(model.Readings()[1].phase, 6);
  AddReading(model, 2, 3, 7);
  EXPECT_EQ(model.Readings().size(), 3U);
}

TEST(AddOlder, FillsTheTableButNotBeyond) {
  SyncModel model = ModelOf(20, 31);
  model.AddOlder(ModelOf(0, 20));
  EXPECT_EQ(model.AaCount(), 51);
  EXPECT_EQ(model.AaRpn(50), 50);

  SyncModel tooMany = ModelOf(20, 32);
  AddReading(tooMany, 20, 21, 3);
  const std::string before = ModelText(tooMany);
  EXPECT_EQ(FaultOf([&] { tooMany.AddOlder(ModelOf(0, 20)); }), FaultKind::Subscript);
  EXPECT_EQ(ModelText(tooMany), before);
  EXPECT_EQ(tooMany.AaCount(), 32);
}

TEST(AddOlder, KeepsTheCountOfARefusedAntenna) {
  SyncModel full = ModelOf(0, 51);
  EXPECT_EQ(FaultOf([&] { Add(full, 51); }), FaultKind::Subscript);
  SyncModel few = ModelOf(10, 3);
  SyncModel fewAfterFull = few;
  fewAfterFull.AddOlder(full);
  EXPECT_EQ(fewAfterFull.AaCount(), 52);
  EXPECT_EQ(fewAfterFull.AaRpn(50), 50);
  SyncModel fullAfterFew = full;
  fullAfterFew.AddOlder(few);
  EXPECT_EQ(fullAfterFew.AaCount(), 52);
  EXPECT_EQ(fullAfterFew.AaRpn(0), 10);
  EXPECT_EQ(FaultOf([&] { Add(fullAfterFew, 60); }), FaultKind::Subscript);
}

TEST(AddOlder, ChangesNothingWhereANumberWouldOverflow) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (const PhaseCell& cell : {PhaseCell{kMost, 1, 5, 5}, PhaseCell{5, kMost, 5, 5}}) {
    SyncModel older = ModelOf(1, 2);
    older.SetCell(0, 1, cell);
    SyncModel model;
    AddReading(model, 1, 2, 1);
    const std::string before = ModelText(model);
    EXPECT_EQ(FaultOf([&] { model.AddOlder(older); }), FaultKind::Overflow);
    EXPECT_EQ(ModelText(model), before);
  }
  SyncModel older;
  older.SetReportCount(kMost);
  SyncModel model;
  AddReading(model, 1, 2, 1);
  EXPECT_EQ(FaultOf([&] { model.AddOlder(older); }), FaultKind::Overflow);
  EXPECT_EQ(model.ReportCount(), 1);
}

TEST(AddOlder, GivesWhatTheReadingsGiveWithoutAClear) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    SyncModel whole;
    SyncModel older;
    SyncModel model;
    for (SyncModel* const part : {&older, &model}) {
      for (int left = static_cast<int>(random() % 60); left > 0; --left) {
        const int from = static_cast<int>(random() % 51);
        const int to = static_cast<int>(random() % 51);
        const int phase = static_cast<int>(random() % 1999) - 999;
        AddReading(*part, from, to, phase);
        AddReading(whole, from, to, phase);
      }
    }
    model.AddOlder(older);
    ASSERT_EQ(ModelText(model), ModelText(whole)) << round;
  }
}

}  // namespace
}  // namespace kelvara::sync
