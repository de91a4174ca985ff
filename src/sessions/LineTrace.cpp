#include "sessions/LineTrace.h"

#include <cstddef>

#include "base/Fault.h"
#include "sessions/TraceMarks.h"

namespace kelvara::sessions {
namespace {

/// The most text that waits for a line feed.
constexpr std::size_t kPendingBytes = 4096;

}  // namespace

void LineTrace::Sent(std::string_view command) {
  AddMark(kTimeMark + std::to_string(clock_.UtcMilliseconds()));
  AddMark(command);
  Flush();
}

void LineTrace::Cleared(bool /*keeps*/) {
  AddMark(kClearMark);
  Flush();
}

void LineTrace::Restored() {
  AddMark(kUndoMark);
  Flush();
}

void LineTrace::Received(std::string_view text) {
  if (!begun_) {
    // The first byte distinguishes a trace from plain text, so an empty command precedes text
    // received before the first mark.
    Sent("");
  }
  for (const char character : text) {
    pending_ += character;
    if (character == kCommandMark) {
      pending_ += character;
    }
  }
  if (text.find('\n') != std::string_view::npos || pending_.size() >= kPendingBytes) {
    Flush();
  }
}

void LineTrace::Ended() {
  AddMark(kEndMark);
  Flush();
  file_.reset();
}

void LineTrace::AddMark(std::string_view mark) {
  begun_ = true;
  pending_ += kCommandMark;
  pending_ += mark;
  pending_ += kCommandEnd;
}

void LineTrace::Flush() {
  if (file_ && !pending_.empty()) {
    try {
      file_->Write(pending_);
    } catch (const base::Fault& fault) {
      failure_ = fault.what();
      file_.reset();
    }
  }
  pending_.clear();
}

}  // namespace kelvara::sessions
