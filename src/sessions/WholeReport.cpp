#include "sessions/WholeReport.h"

#include <algorithm>

#include "link/ReportCollector.h"

namespace kelvara::sessions {

void WholeReport::Feed(std::string_view piece) {
  if (tooLarge_) {
    return;
  }
  // The piece is cut where the limit lies, so that its own size makes no difference.
  if (text_.size() < link::kMaxReportBytes && text_.size() + piece.size() > link::kMaxReportBytes) {
    const std::size_t room = link::kMaxReportBytes - text_.size();
    Feed(piece.substr(0, room));
    Feed(piece.substr(room));
    return;
  }
  if (text_.size() >= link::kMaxReportBytes && lines_ < link::kRfpsReportLines && !piece.empty()) {
    tooLarge_ = true;
    text_ = {};
    return;
  }
  text_ += piece;
  lines_ += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '\n'));
}

void WholeReport::End() {
  if (tooLarge_) {
    reader_.NoteDropped(DropReason::TooLarge);
  } else {
    reader_.ProcessRfpsReport(text_);
  }
  text_ = {};
  lines_ = 0;
  tooLarge_ = false;
}

}  // namespace kelvara::sessions
