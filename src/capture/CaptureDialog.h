#pragma once

#include <optional>
#include <string>

#include "capture/DataCapture.h"
#include "capture/LastFilenames.h"
#include "platform/Desktop.h"

namespace kelvara::capture {

/// What the capture dialog does, without its window. It must outlive every window that uses it.
class CaptureDialog {
 public:
  CaptureDialog(DataCapture& dataCapture, const platform::Desktop& desktop)
      : dataCapture_(dataCapture), desktop_(desktop), lastFilenames_(desktop) {}

  /// When the dialog opens: the remembered file name.
  std::string Form_Load() const { return lastFilenames_.GetLastFilename(); }

  /// Lets the user choose a file to log to and remembers it at once; nothing on cancel.
  std::optional<std::string> CommandBrowse_Click();

  /// Starts the capture and remembers the file name. True if the dialog is to close; otherwise one
  /// message box has said why.
  bool StartButton_Click(const std::string& fileName);

 private:
  DataCapture& dataCapture_;
  const platform::Desktop& desktop_;
  LastFilenames lastFilenames_;
};

}  // namespace kelvara::capture
