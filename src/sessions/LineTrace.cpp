#include "sessions/LineTrace.h"

#include <cstddef>

#include "base/Fault.h"
#include "sessions/TraceMarks.h"

namespace kelvara::sessions {
namespace {

/// As much as waits for a line feed.
constexpr std::size_t kPendingBytes = 4096;

}  // namespace

void LineTrace::Sent(std::string_view command) {
  begun_ = true;
  pending_ += kCommandMark;
  pending_ += command;
  pending_ += kCommandEnd;
  Flush();
}

void LineTrace::Received(std::string_view text) {
  if (!begun_) {
    // A trace is told from plain text by its first byte, so an empty command stands in front of
    // text that comes before the first one.
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

void LineTrace::Close() {
  Flush();
  file_.reset();
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
