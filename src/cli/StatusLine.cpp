#include "cli/StatusLine.h"

#include <ostream>

namespace kelvara::cli {

void StatusLine::Show() {
  if (!streams_.errIsTerminal) {
    return;
  }
  const app::Session& results = live_.Results();
  std::string line = live_.Link().StatusText();
  if (!results.Capture().StatusText().empty()) {
    line += "  ";
    line += results.Capture().StatusText();
  }
  line += "  Reports: " + std::to_string(results.Model().ReportCount());
  line += "  AAs: " + std::to_string(results.Model().AaCount());
  if (line != shown_) {
    streams_.err << kWipeLine << line << std::flush;
    shown_ = line;
  }
}

void StatusLine::Remove() {
  if (!shown_.empty()) {
    streams_.err << kWipeLine << std::flush;
    shown_.clear();
  }
}

}  // namespace kelvara::cli
