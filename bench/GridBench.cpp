#include <benchmark/benchmark.h>

#include "FullModel.h"
#include "QuietControls.h"
#include "SiteSizes.h"
#include "app/OptionGroups.h"
#include "platform/MemoryGrid.h"
#include "platform/MemoryMenuBar.h"
#include "sync/SyncGrid.h"

namespace kelvara::bench {
namespace {

/// Draws a full matrix in metres, with the FPS beside each hexadecimal RPN: the longest texts.
class GridRig {
 public:
  explicit GridRig(std::int64_t aas) {
    FillModel(model_, static_cast<std::int16_t>(aas));
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
  GridRig rig(state.range(0));
  for (auto _ : state) {
    platform::MemoryGrid cells;
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
    benchmark::DoNotOptimize(cells);
  }
}
BENCHMARK(FirstGrid)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);

void RedrawnGrid(benchmark::State& state) {
  GridRig rig(state.range(0));
  platform::MemoryGrid cells;
  for (auto _ : state) {
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
  }
}
BENCHMARK(RedrawnGrid)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvara::bench
