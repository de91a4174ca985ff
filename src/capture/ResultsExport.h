#pragma once

#include <memory>
#include <string>

#include "platform/Beeper.h"
#include "platform/Clock.h"
#include "platform/DateFormat.h"
#include "platform/FileSystem.h"
#include "platform/GridControl.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::capture {

/// The results as comma-separated text: the sync grid as it is shown, with a short header.
class ResultsExport {
 public:
  ResultsExport(const sync::SyncModel& model, const platform::GridControl& grid,
                sync::DisplayOptions options, const platform::Clock& clock,
                const platform::DateFormat& dateFormat, platform::FileSystem& fileSystem,
                platform::Beeper& beeper)
      : model_(model),
        grid_(grid),
        options_(options),
        clock_(clock),
        dateFormat_(dateFormat),
        fileSystem_(fileSystem),
        beeper_(beeper) {}

  /// Writes the file, replacing one that exists. A fault beeps once and ends the writing; the file
  /// then stays open, and the next export fails at its first step.
  void WriteResults(const std::string& path);

  /// Whether the grid has a row for every antenna, without which the writing ends in a fault.
  bool IsGridWhole() const { return model_.AaCount() < grid_.Rows(); }

 private:
  void WriteLine(std::string line);
  void WriteHeader();
  void WriteMatrix();
  std::string Label(int aa) const { return "AA." + options_.RpnText(model_.AaRpn(aa)); }

  const sync::SyncModel& model_;
  const platform::GridControl& grid_;
  sync::DisplayOptions options_;
  const platform::Clock& clock_;
  const platform::DateFormat& dateFormat_;
  platform::FileSystem& fileSystem_;
  platform::Beeper& beeper_;
  std::unique_ptr<platform::OutputFile> file_;
};

}  // namespace kelvara::capture
