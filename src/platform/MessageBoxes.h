#pragma once

#include <string_view>

namespace kelvara::platform {

enum class MessageIcon { Critical, Exclamation, Question };
enum class MessageButtons {
  Ok,
  OkCancel,
  YesNo,
  YesNoDefaultNo,  ///< Yes and No, for a box that may open while the user is typing.
};
enum class MessageAnswer { Ok, Cancel, Yes, No };

/// Modal message boxes. Other events run while a box is open.
class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;

  /// Shows one box and returns the button that closed it. The text is plain; CR LF separates its
  /// lines.
  virtual MessageAnswer Show(std::string_view text, std::string_view title, MessageIcon icon,
                             MessageButtons buttons) = 0;
};

}  // namespace kelvara::platform
