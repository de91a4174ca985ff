#include "cli/StatusLine.h"

#include <iostream>

#include "cli/Terminal.h"

namespace kelvara::cli {

using platform::StatusPanel;

StatusLine::StatusLine(const ConsoleStatusBar& statusBar)
    : statusBar_(statusBar), isTerminal_(IsErrorTerminal()) {}

void StatusLine::Show() {
  if (!isTerminal_) {
    return;
  }
  std::string line = statusBar_.Panel(StatusPanel::Link);
  for (const StatusPanel panel : {StatusPanel::Capture, StatusPanel::Reports, StatusPanel::Aas}) {
    const std::string& text = statusBar_.Panel(panel);
    if (!text.empty()) {
      line += "  " + text;
    }
  }
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
