#pragma once

#include <string>

#include "platform/DocumentOpener.h"
#include "platform/MessageBoxes.h"

namespace kelvara::report {

/// Shows a finished report in the user's web browser; where the desktop cannot, one message box
/// says so.
void OpenReport(const std::string& path, platform::DocumentOpener& documentOpener,
                platform::MessageBoxes& messageBoxes);

}  // namespace kelvara::report
