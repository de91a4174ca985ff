#include "sessions/WholeReport.h"

namespace kelvara::sessions {

void WholeReport::Feed(std::string_view piece) { text_ += piece; }

void WholeReport::End() {
  reader_.ProcessRfpsReport(text_);
  text_ = {};
}

}  // namespace kelvara::sessions
