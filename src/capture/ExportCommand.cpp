#include "capture/ExportCommand.h"

#include <optional>
#include <string>

#include "platform/DirectoryOf.h"

namespace kelvara::capture {

void ExportCommand::ExportResults() {
  const std::optional<std::string> chosen =
      fileChooser_.Choose({platform::FileChooserKind::SaveConfirmed,
                           "Select a file to write to",
                           "CSV File (*.csv)|*.csv|",
                           platform::DirectoryOfOrEmpty(lastFilenames_.GetLastFilename()),
                           {}});
  if (chosen) {
    if (!resultsExport_.IsGridWhole()) {
      updateGrid_();
    }
    resultsExport_.WriteResults(*chosen);
  }
}

}  // namespace kelvara::capture
