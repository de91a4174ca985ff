#pragma once

#include <string>
#include <string_view>

#include "platform/Desktop.h"

namespace kelvara::help {

/// Where the help pages begin: the program's folder, a backslash at its end left out, and
/// "\Help\index.htm".
std::string HelpPath(std::string_view programFolder);

/// The two entries of the Help menu that open something outside the program.
class HelpCommands {
 public:
  explicit HelpCommands(const platform::Desktop& desktop) : desktop_(desktop) {}

  /// Opens the help pages at their path. A page that is not there, or that the desktop cannot open,
  /// ends in a message box that names the path.
  void mnuContents_Click(const std::string& sHelpPath);

  /// Opens the maker's website; a message box tells when the desktop cannot.
  void mnuOrrinWeb_Click();

 private:
  const platform::Desktop& desktop_;
};

}  // namespace kelvara::help
