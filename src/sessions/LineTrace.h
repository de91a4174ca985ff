#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "sessions/SessionListener.h"

namespace kelvara::sessions {

/// A trace of a session: the received bytes unchanged, with marks among them for the commands sent,
/// each with its time, and for what was done to the results. A received byte that equals the first
/// byte of a mark is doubled. An empty command precedes text received before the first mark,
/// because the first byte distinguishes a trace from plain text. A write that fails ends the trace
/// and is remembered; the session goes on.
class LineTrace : public SessionListener {
 public:
  /// The clock must outlive the trace.
  LineTrace(std::unique_ptr<platform::OutputFile> file, const platform::Clock& clock)
      : file_(std::move(file)), clock_(clock) {}

  void Sent(std::string_view command) override;
  void Cleared(bool keeps) override;
  void Restored() override;

  /// Text with a line feed is written at once; other text waits for more.
  void Received(std::string_view text) override;

  /// Also closes the file.
  void Ended() override;

  /// Writes what is still waiting.
  void Flush();

  /// What went wrong, or an empty text.
  const std::string& Failure() const { return failure_; }

 private:
  void AddMark(std::string_view mark);

  std::unique_ptr<platform::OutputFile> file_;
  const platform::Clock& clock_;
  bool begun_ = false;
  std::string pending_;
  std::string failure_;
};

}  // namespace kelvara::sessions
