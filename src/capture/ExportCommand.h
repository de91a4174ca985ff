#pragma once

#include "capture/ResultsExport.h"
#include "platform/FileChooser.h"
#include "platform/LastFilenames.h"

namespace kelvara::capture {

/// The command to export the results: asks for the file, then writes it.
class ExportCommand {
 public:
  ExportCommand(ResultsExport& resultsExport, platform::FileChooser& fileChooser,
                platform::LastFilenames lastFilenames)
      : resultsExport_(resultsExport), fileChooser_(fileChooser), lastFilenames_(lastFilenames) {}

  /// Shows the chooser, which asks before a file is replaced, in the folder of the last capture
  /// file. Writes the results to the file chosen; on cancel nothing happens. The export remembers
  /// no file name of its own.
  void ExportResults();

 private:
  ResultsExport& resultsExport_;
  platform::FileChooser& fileChooser_;
  platform::LastFilenames lastFilenames_;
};

}  // namespace kelvara::capture
