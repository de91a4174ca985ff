#include "cli/StatusLine.h"

#include <iostream>

#include "cli/Terminal.h"

namespace kelvara::cli {

StatusLine::StatusLine(app::LiveSession& live) : live_(live), isTerminal_(IsErrorTerminal()) {}

void StatusLine::Show() {
  if (!isTerminal_) {
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
    std::cerr << kWipeLine << line << std::flush;
    shown_ = line;
  }
}

void StatusLine::Remove() {
  if (!shown_.empty()) {
    std::cerr << kWipeLine << std::flush;
    shown_.clear();
  }
}

}  // namespace kelvara::cli
