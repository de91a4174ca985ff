#pragma once

#include <optional>
#include <string>

#include "capture/DataCapture.h"
#include "platform/FileChooser.h"
#include "platform/LastFilenames.h"
#include "platform/MessageBoxes.h"

namespace kelvara::capture {

/// What the capture dialog does, without its window. It outlives every window shown over it.
class CaptureDialog {
 public:
  CaptureDialog(DataCapture& dataCapture, platform::FileChooser& fileChooser,
                platform::MessageBoxes& messageBoxes, platform::LastFilenames lastFilenames)
      : dataCapture_(dataCapture),
        fileChooser_(fileChooser),
        messageBoxes_(messageBoxes),
        lastFilenames_(lastFilenames) {}

  /// At the dialog's start: the remembered file name.
  std::string Form_Load() const { return lastFilenames_.GetLastFilename(); }

  /// Lets the user choose a file to log to and remembers it at once; nothing on cancel.
  std::optional<std::string> CommandBrowse_Click();

  /// Starts the capture and remembers the file name. True when the dialog is to close; where it is
  /// not, one message box has said why.
  bool StartButton_Click(const std::string& fileName);

 private:
  DataCapture& dataCapture_;
  platform::FileChooser& fileChooser_;
  platform::MessageBoxes& messageBoxes_;
  platform::LastFilenames lastFilenames_;
};

}  // namespace kelvara::capture
