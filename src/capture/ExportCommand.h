#pragma once

#include <functional>
#include <utility>

#include "capture/LastFilenames.h"
#include "capture/ResultsExport.h"
#include "platform/Desktop.h"

namespace kelvara::capture {

/// The command to export the results: asks for the file, then writes it.
class ExportCommand {
 public:
  ExportCommand(ResultsExport& resultsExport, const platform::Desktop& desktop,
                std::function<void()> updateGrid)
      : resultsExport_(resultsExport),
        fileChooser_(desktop.fileChooser),
        lastFilenames_(desktop),
        updateGrid_(std::move(updateGrid)) {}

  /// Shows the chooser, which asks before a file is replaced, in the folder of the last capture
  /// file. Writes the results to the file chosen, as the grid shows them; on cancel nothing
  /// happens. The grid is redrawn first only if antennas have been added since it was drawn,
  /// because they would end the export. The export does not remember its file name.
  void ExportResults();

 private:
  ResultsExport& resultsExport_;
  platform::FileChooser& fileChooser_;
  LastFilenames lastFilenames_;
  std::function<void()> updateGrid_;
};

}  // namespace kelvara::capture
