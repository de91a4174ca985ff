#include "app/SessionOpener.h"

#include <cstddef>
#include <optional>

#include "base/Fault.h"
#include "help/ProgramTitle.h"
#include "platform/DirectoryOf.h"

namespace kelvara::app {
namespace {

constexpr std::size_t kMostDropped = 5;

}  // namespace

void SessionOpener::mnuOpenSession_Click(const std::string& folder) {
  const std::optional<std::string> chosen =
      desktop_.fileChooser.Choose({platform::FileChooserKind::Open,
                                   "Open a Recorded Session",
                                   "Recorded Sessions (*.trace)|*.trace|All Files (*)|*|",
                                   lastFolder_.empty() ? folder : lastFolder_,
                                   {}});
  if (chosen) {
    lastFolder_ = platform::DirectoryOfOrEmpty(*chosen);
    Open(*chosen);
  }
}

void SessionOpener::Open(const std::string& path) const {
  try {
    startReview_(path);
  } catch (const base::Fault& fault) {
    desktop_.messageBoxes.Show(fault.what(), help::kProgramTitle, platform::MessageIcon::Critical,
                               platform::MessageButtons::Ok);
  }
}

void SessionOpener::OpenDropped(const std::vector<std::string>& paths) const {
  if (paths.size() > kMostDropped) {
    desktop_.messageBoxes.Show(
        "At most " + std::to_string(kMostDropped) + " sessions can be opened at once.",
        help::kProgramTitle, platform::MessageIcon::Exclamation, platform::MessageButtons::Ok);
    return;
  }
  for (const std::string& path : paths) {
    Open(path);
  }
}

}  // namespace kelvara::app
