#include "capture/CaptureDialog.h"

#include "platform/DirectoryOf.h"

namespace kelvara::capture {

std::optional<std::string> CaptureDialog::CommandBrowse_Click() {
  const std::string remembered = lastFilenames_.GetLastFilename();
  std::optional<std::string> chosen = desktop_.fileChooser.Choose(
      {platform::FileChooserKind::Open, "Select a file to log to", "Log File (*.txt)|*.txt|",
       platform::DirectoryOfOrEmpty(remembered), remembered});
  if (chosen) {
    lastFilenames_.SaveLastFilename(*chosen);
  }
  return chosen;
}

bool CaptureDialog::StartButton_Click(const std::string& fileName) {
  if (fileName.empty()) {
    desktop_.messageBoxes.Show("Filename and path must be specified.", "File Error",
                               platform::MessageIcon::Critical, platform::MessageButtons::Ok);
    return false;
  }
  if (!dataCapture_.StartLoggingToFile(fileName)) {
    return false;
  }
  lastFilenames_.SaveLastFilename(fileName);
  return true;
}

}  // namespace kelvara::capture
