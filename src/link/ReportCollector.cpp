#include "link/ReportCollector.h"

namespace kelvara::link {

void ReportCollector::Expect() {
  Reset();
  iRfpsLinesLeft_ = kRfpsReportLines;
}

void ReportCollector::Reset() {
  iRfpsLinesLeft_ = 0;
  tooLarge_ = false;
  sRfpsBuffer_.clear();
}

ReportCollector::Step ReportCollector::Append(std::string_view text) {
  if (iRfpsLinesLeft_ == 0) {
    return {text.size(), Event::None};
  }
  std::size_t taken = 0;
  Event event = Event::None;
  while (iRfpsLinesLeft_ > 0 && taken < text.size()) {
    const std::size_t lineFeed = text.find('\n', taken);
    if (lineFeed == std::string_view::npos) {
      taken = text.size();
      break;
    }
    taken = lineFeed + 1;
    --iRfpsLinesLeft_;
    event = Event::Line;
  }
  Keep(text.substr(0, taken));
  if (iRfpsLinesLeft_ == 0) {
    event = tooLarge_ ? Event::Dropped : Event::Report;
  }
  return {taken, event};
}

void ReportCollector::Keep(std::string_view text) {
  if (!tooLarge_ && text.size() > kMaxReportBytes - sRfpsBuffer_.size()) {
    // The lines are still counted, so that the next report begins where it should.
    tooLarge_ = true;
    sRfpsBuffer_.clear();
    sRfpsBuffer_.shrink_to_fit();
  }
  if (!tooLarge_) {
    sRfpsBuffer_ += text;
  }
}

}  // namespace kelvara::link
