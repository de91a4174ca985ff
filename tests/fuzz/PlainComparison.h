#pragma once

#include <string>

#include "Expect.h"
#include "support/PlainSyncModel.h"
#include "support/SyncRig.h"

namespace kelvara::test {

/// Feeds reports to the program's parser and matrix and to the plain, slow model of both, which
/// must agree.
class PlainComparison {
 public:
  PlainComparison() { rig_.options.rpnHex = true; }

  void Process(const std::string& report) {
    rig_.Process(report);
    plain_.Process(report);
  }

  void Check() const {
    Expect(rig_.model.ReportCount() == plain_.reports, "the same number of reports is counted");
    Expect(rig_.parser.AbandonedCount() == plain_.beeps, "the same number of reports is abandoned");
    Expect(rig_.beeper.count == plain_.beeps, "the number of beeps is the same");
    Expect(rig_.log.entries == plain_.log, "the logs are the same");
    CheckAas();
    CheckCells();
  }

 private:
  void CheckAas() const {
    Expect(rig_.model.AaCount() == plain_.aaCount, "the same number of antennas is counted");
    for (int index = 0; index < static_cast<int>(plain_.aas.size()); ++index) {
      const PlainSyncModel::Aa& aa = plain_.aas[static_cast<std::size_t>(index)];
      Expect(rig_.model.AaRpn(index) == aa.rpn, "an antenna has the same RPN");
      Expect(rig_.model.AaFps(index) == aa.fps, "an antenna has the same FPS");
      Expect(rig_.model.AaFpn(index) == aa.fpn, "an antenna has the same FPN");
    }
  }

  void CheckCells() const {
    for (int from = 0; from < static_cast<int>(sync::kMaxAas); ++from) {
      for (int to = 0; to < static_cast<int>(sync::kMaxAas); ++to) {
        const auto found = plain_.cells.find({from, to});
        const auto expected = found == plain_.cells.end() ? PlainSyncModel::Cell() : found->second;
        const sync::PhaseCell& cell = rig_.model.Cell(from, to);
        Expect(cell.Sum == expected.sum, "a cell has the same sum");
        Expect(cell.Count == expected.count, "a cell has the same count");
        Expect(cell.Max == expected.max, "a cell has the same maximum");
        Expect(cell.Min == expected.min, "a cell has the same minimum");
      }
    }
  }

  SyncRig rig_;
  PlainSyncModel plain_;
};

}  // namespace kelvara::test
