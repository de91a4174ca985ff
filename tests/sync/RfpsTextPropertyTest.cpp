#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/Faults.h"
#include "support/PlainRfpsReader.h"
#include "support/PlainSyncModel.h"
#include "support/RandomText.h"
#include "support/SyncRig.h"
#include "sync/RfpsReport.h"

namespace kelvara::sync {
namespace {

using test::FaultOf;
using test::PlainEntry;
using test::PlainReport;
using test::PlainRfpsReader;
using test::PlainSyncModel;
using test::RandomText;
using test::SyncRig;

std::string AnyText(RandomText& random) {
  switch (random.Below(4)) {
    case 0:
      return random.Bytes(400);
    case 1:
      return random.Mixture(60);
    case 2:
      return random.DamagedReport(0);
    default:
      return random.DamagedReport(6);
  }
}

void ExpectSameReading(const std::string& text) {
  const PlainReport expected = PlainRfpsReader(text).Read();
  RfpsReport report;
  const auto fault = FaultOf([&] { report = ReadRfpsReport(text); });
  if (expected.faulted) {
    ASSERT_EQ(fault, base::FaultKind::Subscript);
    return;
  }
  ASSERT_EQ(fault, std::nullopt);
  ASSERT_EQ(report.count, static_cast<int>(expected.entries.size()));
  ASSERT_EQ(report.syncIndex, expected.syncIndex);
  for (std::size_t index = 0; index < expected.entries.size(); ++index) {
    const RfpsEntry& entry = report.entries.at(index);
    const PlainEntry read{entry.ToRpn, entry.ToFps, entry.ToFpn, entry.Phase};
    ASSERT_EQ(read, expected.entries[index]) << index;
  }
}

void ExpectWithinBounds(const SyncModel& model) {
  ASSERT_GE(model.AaCount(), 0);
  ASSERT_LE(model.AaCount(), 52);
  for (int from = 0; from <= 50; ++from) {
    ASSERT_GE(model.AaRpn(from), 0);
    ASSERT_LE(model.AaRpn(from), 255);
    ASSERT_LE(model.AaFps(from), 15);
    ASSERT_LE(model.AaFpn(from), 255);
    for (int to = 0; to <= 50; ++to) {
      const PhaseCell& cell = model.Cell(from, to);
      ASSERT_GE(cell.Count, 0);
      if (cell.Count == 0) {
        ASSERT_EQ(cell.Sum, 0);
        ASSERT_EQ(cell.Max, -32767);
        ASSERT_EQ(cell.Min, 32767);
        continue;
      }
      ASSERT_NE(from, to);
      ASSERT_LT(from, model.AaCount());
      ASSERT_LT(to, model.AaCount());
      const double mean = static_cast<double>(cell.Sum) / cell.Count;
      ASSERT_LE(cell.Min, cell.Max);
      ASSERT_LE(cell.Min, mean);
      ASSERT_LE(mean, cell.Max);
    }
  }
}

void ExpectSameModel(const SyncRig& rig, const PlainSyncModel& plain) {
  ASSERT_EQ(rig.model.AaCount(), plain.aaCount);
  ASSERT_EQ(rig.model.ReportCount(), plain.reports);
  ASSERT_EQ(rig.beeper.count, plain.beeps);
  ASSERT_EQ(rig.parser.AbandonedCount(), plain.beeps);
  ASSERT_EQ(rig.log.entries, plain.log);
  for (int index = 0; index < static_cast<int>(plain.aas.size()); ++index) {
    const PlainSyncModel::Aa& aa = plain.aas[static_cast<std::size_t>(index)];
    ASSERT_EQ(rig.model.AaRpn(index), aa.rpn);
    ASSERT_EQ(rig.model.AaFps(index), aa.fps);
    ASSERT_EQ(rig.model.AaFpn(index), aa.fpn);
  }
  for (int from = 0; from <= 50; ++from) {
    for (int to = 0; to <= 50; ++to) {
      const auto found = plain.cells.find({from, to});
      const PlainSyncModel::Cell expected =
          found == plain.cells.end() ? PlainSyncModel::Cell() : found->second;
      const PhaseCell& cell = rig.model.Cell(from, to);
      ASSERT_EQ(cell.Sum, expected.sum);
      ASSERT_EQ(cell.Count, expected.count);
      ASSERT_EQ(cell.Max, expected.max);
      ASSERT_EQ(cell.Min, expected.min);
    }
  }
}

TEST(AnyReportText, IsReadAsThePlainRulesReadIt) {
  RandomText random(81);
  for (int round = 0; round < 40000; ++round) {
    const std::string text = AnyText(random);
    ASSERT_NO_FATAL_FAILURE(ExpectSameReading(text)) << "round " << round << ": " << text;
  }
}

TEST(AnyReportText, IsReadAsThePlainRulesReadItWhereverItIsCutOff) {
  RandomText random(82);
  for (int round = 0; round < 40; ++round) {
    std::string text = random.DamagedReport(2);
    while (!text.empty()) {
      ASSERT_NO_FATAL_FAILURE(ExpectSameReading(text)) << text;
      text.pop_back();
    }
  }
}

// The reader must not read past the end of its text.
TEST(AnyReportText, EndsWhereTheViewEnds) {
  RandomText random(83);
  for (int round = 0; round < 2000; ++round) {
    const std::string text = AnyText(random) + " Sync 100ec5A301 Sync";
    const auto length = static_cast<std::size_t>(random.Below(static_cast<int>(text.size()) + 1));
    const std::string cut = text.substr(0, length);
    const std::vector<char> bytes(cut.begin(), cut.end());
    RfpsReport whole;
    RfpsReport view;
    RfpsReport exact;
    const auto wholeFault = FaultOf([&] { whole = ReadRfpsReport(cut); });
    const auto viewFault =
        FaultOf([&] { view = ReadRfpsReport(std::string_view(text).substr(0, length)); });
    // A sanitizer detects a read past the end of these bytes.
    const auto exactFault =
        FaultOf([&] { exact = ReadRfpsReport(std::string_view(bytes.data(), bytes.size())); });
    ASSERT_EQ(exactFault, wholeFault) << cut;
    ASSERT_EQ(exact.count, whole.count) << cut;
    ASSERT_EQ(viewFault, wholeFault) << cut;
    ASSERT_EQ(view.count, whole.count) << cut;
    ASSERT_EQ(view.syncIndex, whole.syncIndex) << cut;
  }
}

TEST(AnyReportText, KeepsTheModelWithinItsBounds) {
  RandomText random(84);
  SyncRig rig;
  for (int round = 0; round < 20000; ++round) {
    if (round % 500 == 0) {
      ASSERT_NO_FATAL_FAILURE(ExpectWithinBounds(rig.model));
      rig.Clear();
    }
    rig.Process(AnyText(random));
    ASSERT_LE(rig.model.AaCount(), 52);
  }
  ASSERT_NO_FATAL_FAILURE(ExpectWithinBounds(rig.model));
}

TEST(AnyReportText, FillsTheModelAsThePlainRulesFillIt) {
  RandomText random(85);
  for (int session = 0; session < 100; ++session) {
    SyncRig rig;
    rig.options.rpnHex = true;
    PlainSyncModel plain;
    for (int round = random.Below(60); round >= 0; --round) {
      const std::string text = AnyText(random);
      rig.Process(text);
      plain.Process(text);
    }
    ASSERT_NO_FATAL_FAILURE(ExpectSameModel(rig, plain)) << "session " << session;
  }
}

TEST(AnyReportText, OverfillsTheAntennaListAsThePlainRulesDo) {
  RandomText random(86);
  for (int session = 0; session < 20; ++session) {
    SyncRig rig;
    rig.options.rpnHex = true;
    PlainSyncModel plain;
    for (int round = 0; round < 40; ++round) {
      const std::string text =
          test::ReportOfMany(random.Below(80), random.Below(70), random.Below(11));
      rig.Process(text);
      plain.Process(text);
    }
    ASSERT_EQ(plain.aaCount, 52);
    ASSERT_NO_FATAL_FAILURE(ExpectSameModel(rig, plain)) << "session " << session;
    ASSERT_NO_FATAL_FAILURE(ExpectWithinBounds(rig.model));
  }
}

TEST(AnyReportText, CanBeDrawnUnlessTheAntennaListOverflowed) {
  RandomText random(87);
  SyncRig rig;
  for (int round = 0; round < 200; ++round) {
    rig.Process(AnyText(random));
    if (round % 20 == 0) {
      rig.Clear();
    }
    ASSERT_EQ(rig.syncGrid.UpdateSyncGrid(), rig.model.AaCount() <= 51) << round;
  }
}

}  // namespace
}  // namespace kelvara::sync
