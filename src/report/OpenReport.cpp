#include "report/OpenReport.h"

namespace kelvara::report {

void OpenReport(const std::string& path, platform::DocumentOpener& documentOpener,
                platform::MessageBoxes& messageBoxes) {
  if (!documentOpener.OpenDocument(path)) {
    messageBoxes.Show("Could not open the HTML formatted report.", "Web Browser Error",
                      platform::MessageIcon::Critical, platform::MessageButtons::Ok);
  }
}

}  // namespace kelvara::report
