#pragma once

#include <string>
#include <string_view>

#include "platform/Desktop.h"

namespace kelvara::help {

/// The path of the first help page: the program's folder without a separator at its end, then
/// "\Help\index.htm".
std::string HelpPath(std::string_view programFolder);

/// The two entries of the Help menu that open something outside the program.
class HelpCommands {
 public:
  explicit HelpCommands(const platform::Desktop& desktop) : desktop_(desktop) {}

  /// Opens the help pages at their path. If the page is missing or the desktop cannot open it, a
  /// message box names the path.
  void mnuContents_Click(const std::string& sHelpPath);

  /// Opens the maker's website; if the desktop cannot, a message box says so.
  void mnuOrrinWeb_Click();

 private:
  const platform::Desktop& desktop_;
};

}  // namespace kelvara::help
