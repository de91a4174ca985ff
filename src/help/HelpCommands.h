#pragma once

#include <string>
#include <string_view>

#include "platform/DocumentOpener.h"
#include "platform/FileSystem.h"
#include "platform/MessageBoxes.h"

namespace kelvara::help {

/// Where the help pages begin: the program's folder, a backslash at its end left out, and
/// "\Help\index.htm".
std::string HelpPath(std::string_view programFolder);

/// The two entries of the Help menu that open something outside the program.
class HelpCommands {
 public:
  HelpCommands(platform::DocumentOpener& opener, platform::FileSystem& fileSystem,
               platform::MessageBoxes& messageBoxes)
      : opener_(opener), fileSystem_(fileSystem), messageBoxes_(messageBoxes) {}

  /// Opens the help pages at their path. A page that is not there, or that the desktop cannot open,
  /// ends in a message box that names the path.
  void mnuContents_Click(const std::string& sHelpPath);

  /// Opens the maker's website; a message box tells when the desktop cannot.
  void mnuOrrinWeb_Click();

 private:
  platform::DocumentOpener& opener_;
  platform::FileSystem& fileSystem_;
  platform::MessageBoxes& messageBoxes_;
};

}  // namespace kelvara::help
