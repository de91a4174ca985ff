#include <benchmark/benchmark.h>

#include "FullModel.h"
#include "QuietControls.h"
#include "app/OptionGroups.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "sync/SyncGrid.h"

namespace kelvara::bench {
namespace {

/// Draws the full matrix in metres, with the FPS beside each hexadecimal RPN: the longest texts.
class GridRig {
 public:
  GridRig() {
    FillModel(model_);
    app::CheckOption(menuBar_, platform::MenuEntry::mnuDispMetres);
    app::CheckOption(menuBar_, platform::MenuEntry::mnuRpnHex);
    app::CheckOption(menuBar_, platform::MenuEntry::mnuFpsOn);
  }

  bool Draw(platform::MemoryGrid& cells) {
    sync::SyncGrid grid(model_, cells, sync::DisplayOptions(menuBar_), events_, beeper_);
    return grid.UpdateSyncGrid();
  }

 private:
  sync::SyncModel model_;
  platform::MemoryMenuBar menuBar_;
  QuietEventPump events_;
  QuietBeeper beeper_;
};

void FirstGrid(benchmark::State& state) {
  GridRig rig;
  for (auto _ : state) {
    platform::MemoryGrid cells;
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
    benchmark::DoNotOptimize(cells);
  }
}
BENCHMARK(FirstGrid)->Unit(benchmark::kMicrosecond);

void RedrawnGrid(benchmark::State& state) {
  GridRig rig;
  platform::MemoryGrid cells;
  for (auto _ : state) {
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
  }
}
BENCHMARK(RedrawnGrid)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvara::bench
