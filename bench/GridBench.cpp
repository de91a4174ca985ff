#include <benchmark/benchmark.h>

#include "FullModel.h"
#include "QuietMachine.h"
#include "SiteSizes.h"
#include "sync/GridCells.h"
#include "sync/SyncGrid.h"

namespace kelvara::bench {
namespace {

/// Draws a full matrix in metres with hexadecimal RPNs and the FPS, which gives the longest texts.
class GridRig {
 public:
  explicit GridRig(std::int64_t aas) { FillModel(model_, static_cast<std::int16_t>(aas)); }

  bool Draw(sync::GridCells& cells) {
    sync::SyncGrid grid(model_, cells, options_, machine_.machine);
    return grid.UpdateSyncGrid();
  }

 private:
  sync::SyncModel model_;
  const sync::DisplayOptions options_{
      .units = sync::PhaseUnits::Metres, .rpnHex = true, .fpsShown = true};
  const QuietMachine machine_;
};

void FirstGrid(benchmark::State& state) {
  GridRig rig(state.range(0));
  for (auto _ : state) {
    sync::GridCells cells;
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
    benchmark::DoNotOptimize(cells);
  }
}
BENCHMARK(FirstGrid)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);

void RedrawnGrid(benchmark::State& state) {
  GridRig rig(state.range(0));
  sync::GridCells cells;
  for (auto _ : state) {
    if (!rig.Draw(cells)) {
      state.SkipWithError("the grid was not drawn");
    }
  }
}
BENCHMARK(RedrawnGrid)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvara::bench
