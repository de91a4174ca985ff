#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "FullModel.h"
#include "QuietMachine.h"
#include "SiteSizes.h"
#include "report/SyncReport.h"

namespace kelvara::bench {
namespace {

/// Writes the report of a site to a real file, either a new file each time or the same one again.
/// The latter depends on the disk: file systems wait for it when a file is truncated and rewritten.
void Report(benchmark::State& state, bool isNewFile) {
  sync::SyncModel model;
  FillModel(model, static_cast<std::int16_t>(state.range(0)));
  const sync::DisplayOptions options;
  const QuietMachine machine;
  report::SyncReport report(model, options, machine.machine);
  const std::filesystem::path file =
      std::filesystem::temp_directory_path() / "kelvara-bench-report.html";
  for (auto _ : state) {
    if (isNewFile) {
      state.PauseTiming();
      std::filesystem::remove(file);
      state.ResumeTiming();
    }
    if (!report.GenerateReport(file.string(), "Site", "Tester", "Notes")) {
      state.SkipWithError("the report was not written");
    }
  }
  std::filesystem::remove(file);
}
BENCHMARK_CAPTURE(Report, New, true)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Report, Replaced, false)->Apply(SiteSizes)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace kelvara::bench
