#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "link/LineListener.h"
#include "platform/FileSystem.h"

namespace kelvara::sessions {

/// A trace of the line: the received bytes unchanged, with the commands sent among them, each
/// between a command mark and a command end. A received byte that equals the mark is doubled. An
/// empty command precedes text received before the first command, because the first byte
/// distinguishes a trace from plain text. A write that fails ends the trace and is remembered; the
/// link goes on.
class LineTrace : public link::LineListener {
 public:
  explicit LineTrace(std::unique_ptr<platform::OutputFile> file) : file_(std::move(file)) {}

  void Sent(std::string_view command) override;

  /// Text with a line feed is written at once; other text waits for more.
  void Received(std::string_view text) override;

  /// Writes what is still waiting and closes the file.
  void Close();

  /// What went wrong, or an empty text.
  const std::string& Failure() const { return failure_; }

 private:
  void Flush();

  std::unique_ptr<platform::OutputFile> file_;
  bool begun_ = false;
  std::string pending_;
  std::string failure_;
};

}  // namespace kelvara::sessions
