#pragma once

#include <memory>
#include <string>

#include "platform/Machine.h"
#include "sync/DisplayOptions.h"
#include "sync/GridCells.h"
#include "sync/SyncModel.h"

namespace kelvara::capture {

/// The results as comma-separated text: the sync grid as it is shown, with a short header.
class ResultsExport {
 public:
  ResultsExport(const sync::SyncModel& model, const sync::GridCells& grid,
                const sync::DisplayOptions& options, const platform::Machine& machine)
      : model_(model), grid_(grid), options_(options), machine_(machine) {}

  /// Writes the file, replacing one that exists. A fault beeps once and ends the writing; the file
  /// then stays open, and the next export fails at its first step.
  void WriteResults(const std::string& path);

  /// Whether the grid has a row for every antenna; otherwise the writing ends in a fault.
  bool IsGridWhole() const { return model_.AaCount() < grid_.Rows(); }

 private:
  void WriteLine(std::string line);
  void WriteHeader();
  void WriteMatrix();
  std::string Label(int aa) const { return "AA." + options_.RpnText(model_.AaRpn(aa)); }

  const sync::SyncModel& model_;
  const sync::GridCells& grid_;
  const sync::DisplayOptions& options_;
  const platform::Machine& machine_;
  std::unique_ptr<platform::OutputFile> file_;
};

}  // namespace kelvara::capture
