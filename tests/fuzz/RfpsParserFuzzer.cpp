#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Expect.h"
#include "PlainComparison.h"
#include "support/Doubles.h"
#include "sync/GridCells.h"
#include "sync/RfpsParser.h"
#include "sync/SyncGrid.h"
#include "sync/SyncModel.h"

namespace kelvara::test {
namespace {

/// Ten neighbours, when the antenna that heard them is named only before the first marker.
constexpr int kMaxLogLines = 10;
constexpr int kMaxPhase = 999;

/// Counts the log lines of one report and checks their form.
class CheckingLog : public sync::LogFunnel {
 public:
  void PrintLogEntry(std::string_view strLog) override {
    ++lines;
    const std::size_t arrow = strLog.find("->");
    Expect(arrow != std::string_view::npos, "a log line has an arrow");
    Expect(strLog.find('=', arrow) != std::string_view::npos, "a log line has a phase");
  }
  bool IsListening() const override { return true; }

  int lines = 0;
};

/// A parser with its model and grid, checked against what must hold for any text.
class ParserUnderTest {
 public:
  explicit ParserUnderTest(const sync::DisplayOptions& options) : options_(options) {}

  /// Adds antennas with RPN 0 to `aaCount` - 1, so that few more fit.
  void FillModel(std::int16_t aaCount) {
    for (std::int16_t rpn = 0; rpn < aaCount; ++rpn) {
      model_.FindOrAddAa(rpn, 3, 0x5A);
    }
  }

  void Process(std::string_view report) {
    const std::int64_t handled = model_.ReportCount() + parser_.AbandonedCount();
    log_.lines = 0;
    parser_.ProcessRfpsReport(report);
    const std::int64_t added = model_.ReportCount() + parser_.AbandonedCount() - handled;
    Expect(added == 0 || added == 1, "a report is counted, abandoned or empty");
    Expect(added == 1 || log_.lines == 0, "an empty report logs nothing");
    Expect(log_.lines <= kMaxLogLines, "a report has at most ten neighbours");
    Expect(parser_.AbandonedCount() == beeper_.count, "an abandoned report beeps once");
  }

  void CheckModel() {
    CheckAas();
    CheckCells();
    CheckGrid();
  }

 private:
  void CheckAas() const {
    Expect(model_.AaCount() >= 0 && model_.AaCount() <= 52, "at most 52 antennas are counted");
    const int listed = std::min<int>(model_.AaCount(), sync::kMaxAas);
    for (int aa = 0; aa < listed; ++aa) {
      Expect(model_.AaRpn(aa) >= 0 && model_.AaRpn(aa) <= 255, "an RPN has two digits");
      Expect(model_.AaFps(aa) >= 0 && model_.AaFps(aa) <= 15, "an FPS has one digit");
      Expect(model_.AaFpn(aa) >= 0 && model_.AaFpn(aa) <= 255, "an FPN has two digits");
      for (int other = 0; other < aa; ++other) {
        Expect(model_.AaRpn(other) != model_.AaRpn(aa), "an RPN is listed once");
      }
    }
  }

  void CheckCells() const {
    for (int from = 0; from < static_cast<int>(sync::kMaxAas); ++from) {
      for (int to = 0; to < static_cast<int>(sync::kMaxAas); ++to) {
        const sync::PhaseCell& cell = model_.Cell(from, to);
        if (cell.Count == 0) {
          Expect(cell.Sum == 0 && cell.Max == sync::PhaseCell::kClearedMax &&
                     cell.Min == sync::PhaseCell::kClearedMin,
                 "a cell without readings is cleared");
          continue;
        }
        Expect(from != to, "no antenna is its own neighbour");
        Expect(from < model_.AaCount() && to < model_.AaCount(),
               "readings belong to listed antennas");
        Expect(cell.Count > 0, "a count is positive");
        Expect(cell.Min <= cell.Max && cell.Max <= kMaxPhase, "a minimum is not above its maximum");
        const std::int64_t count = cell.Count;
        Expect(count * cell.Min <= cell.Sum && cell.Sum <= count * cell.Max,
               "a mean is between minimum and maximum");
      }
    }
  }

  void CheckGrid() {
    const bool complete = grid_.UpdateSyncGrid();
    Expect(complete == (model_.AaCount() <= static_cast<int>(sync::kMaxAas)),
           "a grid is complete unless there are too many antennas");
    Expect(cells_.Rows() == model_.AaCount() + 1, "there is a row for every antenna");
    Expect(cells_.Columns() == model_.AaCount() + 1, "there is a column for every antenna");
    if (!complete) {
      return;
    }
    for (int from = 0; from < model_.AaCount(); ++from) {
      for (int to = 0; to < model_.AaCount(); ++to) {
        Expect(cells_.Text(from + 1, to + 1).empty() == (model_.Cell(from, to).Count == 0),
               "a grid cell shows a phase where there are readings");
        Expect(cells_.At(from + 1, to + 1).background.has_value(), "every grid cell is coloured");
      }
    }
  }

  sync::DisplayOptions options_;
  sync::SyncModel model_;
  CheckingLog log_;
  CountingBeeper beeper_;
  MachineDoubles<> gridMachine_;
  sync::GridCells cells_;
  sync::SyncGrid grid_{model_, cells_, options_, gridMachine_.machine};
  sync::RfpsParser parser_{model_, options_, log_, beeper_};
};

}  // namespace
}  // namespace kelvara::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using kelvara::test::ParserUnderTest;
  const std::string_view report(reinterpret_cast<const char*>(data), size);

  ParserUnderTest fresh({});
  fresh.Process(report);
  fresh.Process(report);
  fresh.CheckModel();

  ParserUnderTest running(
      {.units = kelvara::sync::PhaseUnits::Metres, .rpnHex = true, .fpsShown = true});
  running.FillModel(49);
  running.Process(report);
  running.Process(report.substr(size / 2));
  running.CheckModel();

  kelvara::test::PlainComparison comparison;
  comparison.Process(std::string(report));
  comparison.Process(std::string(report.substr(size / 2)));
  comparison.Process(std::string(report));
  comparison.Check();
  return 0;
}
