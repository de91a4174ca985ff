#pragma once

#include "platform/MessageBoxes.h"

namespace kelvara::widgets {

/// The desktop's message boxes, over the active window. Each is a QMessageBox named `MsgBox` with
/// plain text.
class QtMessageBoxes : public platform::MessageBoxes {
 public:
  platform::MessageAnswer Show(std::string_view text, std::string_view title,
                               platform::MessageIcon icon,
                               platform::MessageButtons buttons) override;
};

}  // namespace kelvara::widgets
