#include "help/HelpCommands.h"

#include "help/MakerTexts.h"
#include "help/ProgramTitle.h"
#include "platform/FileExists.h"

namespace kelvara::help {
namespace {

constexpr std::string_view kHelpPage = "\\Help\\index.htm";
constexpr std::string_view kHelpFailure = "Error occured while attempting to display ";
constexpr std::string_view kWebFailure = "Could not connect to the HGC Website.";
constexpr std::string_view kWebFailureTitle = "Halden Group Communications Website";

}  // namespace

std::string HelpPath(std::string_view programFolder) {
  if (programFolder.ends_with('\\') || programFolder.ends_with('/')) {
    programFolder.remove_suffix(1);
  }
  std::string path(programFolder);
  path += kHelpPage;
  return path;
}

void HelpCommands::mnuContents_Click(const std::string& sHelpPath) {
  // Desktops that hand a missing page to a browser report success, so the page is looked for first.
  if (platform::FileExists(desktop_.fileSystem, sHelpPath) &&
      desktop_.documentOpener.OpenDocument(sHelpPath)) {
    return;
  }
  std::string text(kHelpFailure);
  text += sHelpPath;
  std::string title(kProgramTitle);
  title += " Help";
  desktop_.messageBoxes.Show(text, title, platform::MessageIcon::Critical,
                             platform::MessageButtons::Ok);
}

void HelpCommands::mnuOrrinWeb_Click() {
  if (!desktop_.documentOpener.OpenAddress(std::string(kMakerWebAddress))) {
    desktop_.messageBoxes.Show(kWebFailure, kWebFailureTitle, platform::MessageIcon::Critical,
                               platform::MessageButtons::Ok);
  }
}

}  // namespace kelvara::help
