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
  const std::size_t lineFeed = text.find('\n');
  if (lineFeed == std::string_view::npos) {
    Keep(text);
    return {text.size(), Event::None};
  }
  Keep(text.substr(0, lineFeed + 1));
  --iRfpsLinesLeft_;
  if (iRfpsLinesLeft_ > 0) {
    return {lineFeed + 1, Event::Line};
  }
  return {lineFeed + 1, tooLarge_ ? Event::Dropped : Event::Report};
}

void ReportCollector::Keep(std::string_view text) {
  if (!tooLarge_ && text.size() > kMaxReportBytes - sRfpsBuffer_.size()) {
    // The lines go on being counted, so that the reports behind this one keep their places.
    tooLarge_ = true;
    sRfpsBuffer_.clear();
    sRfpsBuffer_.shrink_to_fit();
  }
  if (!tooLarge_) {
    sRfpsBuffer_ += text;
  }
}

}  // namespace kelvara::link
