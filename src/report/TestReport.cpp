#include "report/TestReport.h"

#include <array>
#include <cstdint>

namespace kelvara::report {
namespace {

struct TestPhase {
  std::int16_t from;
  std::int16_t to;
  std::int16_t phase;
};

constexpr std::int16_t kTestAas = 4;
constexpr std::array<TestPhase, 12> kTestPhases{{{0, 1, 3},
                                                 {0, 2, 0},
                                                 {0, 3, 0},
                                                 {1, 0, -10},
                                                 {1, 2, -10},
                                                 {1, 3, -10},
                                                 {2, 0, 0},
                                                 {2, 1, 10},
                                                 {2, 3, 0},
                                                 {3, 0, 0},
                                                 {3, 1, 10},
                                                 {3, 2, 0}}};

}  // namespace

bool TestReport::Run(const std::function<void()>& clearSyncResults) {
  clearSyncResults();
  FillModel();
  const std::string path = desktop_.programFolder + "/test.html";
  const bool written =
      syncReport_.GenerateReport(path, "HGC", "Marro", "Test with automatically generated data");
  OpenReport(path, desktop_.documentOpener, desktop_.messageBoxes);
  return written;
}

void TestReport::FillModel() {
  for (std::int16_t rpn = 0; rpn < kTestAas; ++rpn) {
    model_.FindOrAddAa(rpn, 0, 0);
  }
  for (const TestPhase& cell : kTestPhases) {
    model_.AddPhase(cell.from, cell.to, cell.phase);
  }
}

}  // namespace kelvara::report
