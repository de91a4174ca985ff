#include "sync/SyncModel.h"

#include <gtest/gtest.h>

#include <array>

#include "support/Faults.h"

namespace kelvara::sync {
namespace {

using base::FaultKind;
using test::FaultOf;

void AddAas(SyncModel& model, int count) {
  for (int rpn = 0; rpn < count; ++rpn) {
    ASSERT_EQ(model.FindOrAddAa(static_cast<std::int16_t>(rpn), 3, 0x5A), rpn);
  }
}

void ExpectEmpty(const SyncModel& model) {
  EXPECT_EQ(model.AaCount(), 0);
  EXPECT_EQ(model.ReportCount(), 0);
  for (int from = 0; from <= 50; ++from) {
    EXPECT_EQ(model.AaRpn(from), 0);
    EXPECT_EQ(model.AaFps(from), 0);
    EXPECT_EQ(model.AaFpn(from), 0);
    for (int to = 0; to <= 50; ++to) {
      ASSERT_EQ(model.Cell(from, to).Sum, 0);
      ASSERT_EQ(model.Cell(from, to).Count, 0);
      ASSERT_EQ(model.Cell(from, to).Max, -32767);
      ASSERT_EQ(model.Cell(from, to).Min, 32767);
    }
  }
}

TEST(SyncModel, StartsEmpty) { ExpectEmpty(SyncModel()); }

TEST(SyncModel, ListsAntennasInOrderOfFirstAppearance) {
  SyncModel model;
  EXPECT_EQ(model.FindOrAddAa(200, 15, 255), 0);
  EXPECT_EQ(model.FindOrAddAa(7, 0, 1), 1);
  EXPECT_EQ(model.FindOrAddAa(0, 3, 90), 2);
  EXPECT_EQ(model.FindOrAddAa(7, 0, 1), 1);
  EXPECT_EQ(model.AaCount(), 3);
  EXPECT_EQ(model.AaRpn(0), 200);
  EXPECT_EQ(model.AaFps(0), 15);
  EXPECT_EQ(model.AaFpn(0), 255);
  EXPECT_EQ(model.AaRpn(1), 7);
  EXPECT_EQ(model.AaRpn(2), 0);
  EXPECT_EQ(model.AaFpn(2), 90);
}

TEST(SyncModel, MatchesOnRpnAloneAndKeepsTheFirstFpsAndFpn) {
  SyncModel model;
  model.FindOrAddAa(5, 3, 90);
  EXPECT_EQ(model.FindOrAddAa(5, 4, 91), 0);
  EXPECT_EQ(model.AaCount(), 1);
  EXPECT_EQ(model.AaFps(0), 3);
  EXPECT_EQ(model.AaFpn(0), 90);
}

// An empty table is full of zeros, which must not be taken for RPN 0.
TEST(SyncModel, RpnZeroIsNewInAnEmptyList) {
  SyncModel model;
  EXPECT_EQ(model.FindOrAddAa(1, 1, 1), 0);
  EXPECT_EQ(model.FindOrAddAa(0, 2, 2), 1);
  EXPECT_EQ(model.AaCount(), 2);
  EXPECT_EQ(model.AaFps(1), 2);
}

TEST(SyncModel, AccumulatesTheReadingsOfAPair) {
  SyncModel model;
  AddAas(model, 2);
  for (const std::int16_t phase : std::array<std::int16_t, 3>{7, -11, 3}) {
    model.AddPhase(0, 1, phase);
  }
  EXPECT_EQ(model.Cell(0, 1).Sum, -1);
  EXPECT_EQ(model.Cell(0, 1).Count, 3);
  EXPECT_EQ(model.Cell(0, 1).Max, 7);
  EXPECT_EQ(model.Cell(0, 1).Min, -11);
  EXPECT_EQ(model.Cell(1, 0).Count, 0);
  EXPECT_EQ(model.Cell(1, 0).Max, -32767);
  EXPECT_EQ(model.Cell(1, 0).Min, 32767);
}

TEST(SyncModel, TheClearedMaximumIsMinus32767SoThatMinus32768NeverRaisesIt) {
  SyncModel model;
  AddAas(model, 2);
  model.AddPhase(0, 1, -32768);
  EXPECT_EQ(model.Cell(0, 1).Max, -32767);
  EXPECT_EQ(model.Cell(0, 1).Min, -32768);
  model.AddPhase(1, 0, 32767);
  EXPECT_EQ(model.Cell(1, 0).Max, 32767);
  EXPECT_EQ(model.Cell(1, 0).Min, 32767);
}

TEST(SyncModel, ASumOutsideThirtyTwoBitsIsAnOverflow) {
  SyncModel model;
  AddAas(model, 2);
  for (int round = 0; round < 65538; ++round) {
    model.AddPhase(0, 1, 32767);
  }
  EXPECT_EQ(model.Cell(0, 1).Sum, 2147483646);
  EXPECT_EQ(FaultOf([&] { model.AddPhase(0, 1, 2); }), FaultKind::Overflow);
  EXPECT_EQ(model.Cell(0, 1).Sum, 2147483646);
  EXPECT_EQ(model.Cell(0, 1).Count, 65538);
  EXPECT_EQ(model.Cell(0, 1).Min, 32767);
  model.AddPhase(0, 1, 1);
  EXPECT_EQ(model.Cell(0, 1).Sum, 2147483647);
}

TEST(SyncModel, RestoresStoredCellsAndReports) {
  SyncModel model;
  AddAas(model, 2);
  model.SetCell(1, 0, {.Sum = -30, .Count = 4, .Max = -5, .Min = -9});
  model.SetReportCount(12);
  model.AddPhase(1, 0, -10);
  EXPECT_EQ(model.Cell(1, 0).Sum, -40);
  EXPECT_EQ(model.Cell(1, 0).Count, 5);
  EXPECT_EQ(model.Cell(1, 0).Max, -5);
  EXPECT_EQ(model.Cell(1, 0).Min, -10);
  EXPECT_EQ(model.ReportCount(), 12);
}

TEST(SyncModel, KeepsReadingsOnRequestUntilAClear) {
  SyncModel model;
  AddAas(model, 3);
  model.AddPhase(0, 1, 5);
  EXPECT_TRUE(model.Readings().empty());
  model.KeepReadings();
  model.AddPhase(2, 1, -7);
  model.AddPhase(0, 1, 6);
  ASSERT_EQ(model.Readings().size(), 2U);
  EXPECT_EQ(model.Readings()[0].from, 2);
  EXPECT_EQ(model.Readings()[0].to, 1);
  EXPECT_EQ(model.Readings()[0].phase, -7);
  EXPECT_EQ(model.Readings()[1].phase, 6);
  model.Clear();
  EXPECT_TRUE(model.Readings().empty());
  AddAas(model, 2);
  model.AddPhase(1, 0, 1);
  EXPECT_EQ(model.Readings().size(), 1U);
}

TEST(SyncModel, CountsReports) {
  SyncModel model;
  model.CountReport();
  model.CountReport();
  EXPECT_EQ(model.ReportCount(), 2);
}

TEST(SyncModel, AClearEmptiesEverything) {
  SyncModel model;
  AddAas(model, 51);
  model.AddPhase(0, 50, 5);
  model.AddPhase(50, 0, -5);
  model.AddPhase(50, 49, 1);
  model.CountReport();
  const std::uint64_t clears = model.ClearCount();

  model.Clear();
  ExpectEmpty(model);
  EXPECT_EQ(model.ClearCount(), clears + 1);
  EXPECT_EQ(model.FindOrAddAa(42, 1, 2), 0);
}

TEST(SyncModel, Holds51Antennas) {
  SyncModel model;
  AddAas(model, 51);
  EXPECT_EQ(model.AaCount(), 51);
  EXPECT_EQ(model.AaRpn(50), 50);
  model.AddPhase(50, 49, 8);
  EXPECT_EQ(model.Cell(50, 49).Sum, 8);
}

TEST(SyncModel, The52ndAntennaFaultsAndTheCountStaysAt52) {
  SyncModel model;
  AddAas(model, 51);
  EXPECT_EQ(FaultOf([&] { return model.FindOrAddAa(100, 3, 0x5A); }), FaultKind::Subscript);
  EXPECT_EQ(model.AaCount(), 52);
  EXPECT_EQ(FaultOf([&] { return model.FindOrAddAa(101, 3, 0x5A); }), FaultKind::Subscript);
  EXPECT_EQ(FaultOf([&] { return model.FindOrAddAa(100, 3, 0x5A); }), FaultKind::Subscript);
  EXPECT_EQ(model.AaCount(), 52);
}

TEST(SyncModel, KnownAntennasAreStillFoundAfterThe52nd) {
  SyncModel model;
  AddAas(model, 51);
  ASSERT_NE(FaultOf([&] { return model.FindOrAddAa(100, 3, 0x5A); }), std::nullopt);
  EXPECT_EQ(model.FindOrAddAa(0, 3, 0x5A), 0);
  EXPECT_EQ(model.FindOrAddAa(50, 3, 0x5A), 50);
  model.AddPhase(0, 50, 4);
  EXPECT_EQ(model.Cell(0, 50).Count, 1);
  EXPECT_EQ(model.AaCount(), 52);

  model.Clear();
  ExpectEmpty(model);
  EXPECT_EQ(model.FindOrAddAa(100, 3, 0x5A), 0);
  EXPECT_EQ(model.AaCount(), 1);
}

TEST(SyncModel, AnIndexOutsideTheTablesIsASubscriptFault) {
  SyncModel model;
  AddAas(model, 51);
  for (const int index : {-1, 51, 52}) {
    EXPECT_EQ(FaultOf([&] { return model.AaRpn(index); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { return model.AaFps(index); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { return model.AaFpn(index); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { return model.Cell(index, 0); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { model.SetCell(0, index, {}); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { return model.Cell(0, index); }), FaultKind::Subscript) << index;
    const auto index16 = static_cast<std::int16_t>(index);
    EXPECT_EQ(FaultOf([&] { model.AddPhase(index16, 0, 1); }), FaultKind::Subscript) << index;
    EXPECT_EQ(FaultOf([&] { model.AddPhase(0, index16, 1); }), FaultKind::Subscript) << index;
  }
}

}  // namespace
}  // namespace kelvara::sync
