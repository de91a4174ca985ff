#pragma once

#include "platform/MessageBoxes.h"

namespace kelvara::widgets {

/// Message boxes of the desktop, over the window that is active. Each is a QMessageBox named
/// `MsgBox`, and its text is plain.
class QtMessageBoxes : public platform::MessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override;
};

}  // namespace kelvara::widgets
