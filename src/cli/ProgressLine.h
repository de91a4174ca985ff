#pragma once

#include <cstddef>
#include <string>

#include "cli/Streams.h"

namespace kelvara::cli {

/// A line on standard error that shows how much of a large file has been read. It is shown only for
/// files over 16 MiB and only if standard error is a terminal, and is cleared at the end.
class ProgressLine {
 public:
  ProgressLine(std::string name, std::size_t size, const Streams& streams);
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// Adds `bytes` to what has been read.
  void Advance(std::size_t bytes);

 private:
  Streams streams_;
  std::string name_;
  std::size_t size_;
  std::size_t done_ = 0;
  int percentShown_ = -1;
  bool shown_;
};

}  // namespace kelvara::cli
