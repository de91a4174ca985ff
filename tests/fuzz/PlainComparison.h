#pragma once

#include <string>

#include "Expect.h"
#include "support/PlainSyncModel.h"
#include "support/SyncRig.h"

namespace kelvara::test {

/// Takes reports into the program's parser and matrix and into the plain and slow model of both,
/// which must say the same of them.
class PlainComparison {
 public:
  PlainComparison() { room_.options.rpnHex = true; }

  void Process(const std::string& report) {
    room_.Process(report);
    plain_.Process(report);
  }

  void Check() const {
    Expect(room_.model.ReportCount() == plain_.reports, "as many reports count");
    Expect(room_.parser.AbandonedCount() == plain_.beeps, "as many reports are abandoned");
    Expect(room_.beeper.count == plain_.beeps, "as many beeps sound");
    Expect(room_.log.entries == plain_.log, "the log says the same");
    CheckAas();
    CheckCells();
  }

 private:
  void CheckAas() const {
    Expect(room_.model.AaCount() == plain_.aaCount, "as many antennas are counted");
    for (int index = 0; index < static_cast<int>(plain_.aas.size()); ++index) {
      const PlainSyncModel::Aa& aa = plain_.aas[static_cast<std::size_t>(index)];
      Expect(room_.model.AaRpn(index) == aa.rpn, "an antenna has the same RPN");
      Expect(room_.model.AaFps(index) == aa.fps, "an antenna has the same FPS");
      Expect(room_.model.AaFpn(index) == aa.fpn, "an antenna has the same FPN");
    }
  }

  void CheckCells() const {
    for (int from = 0; from < static_cast<int>(sync::kMaxAas); ++from) {
      for (int to = 0; to < static_cast<int>(sync::kMaxAas); ++to) {
        const auto found = plain_.cells.find({from, to});
        const auto expected = found == plain_.cells.end() ? PlainSyncModel::Cell() : found->second;
        const sync::PhaseCell& cell = room_.model.Cell(from, to);
        Expect(cell.Sum == expected.sum, "a cell has the same sum");
        Expect(cell.Count == expected.count, "a cell has the same count");
        Expect(cell.Max == expected.max, "a cell has the same maximum");
        Expect(cell.Min == expected.min, "a cell has the same minimum");
      }
    }
  }

  SyncRig room_;
  PlainSyncModel plain_;
};

}  // namespace kelvara::test
