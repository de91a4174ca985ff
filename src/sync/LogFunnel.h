#pragma once

#include <string_view>

namespace kelvara::sync {

/// The one funnel that every log entry passes through, as those who log see it.
class LogFunnel {
 public:
  virtual ~LogFunnel() = default;

  /// Logs one entry with its time stamp; an empty text writes nothing anywhere. A file write that
  /// fails is a fault.
  virtual void PrintLogEntry(std::string_view strLog) = 0;

  /// Whether an entry would reach anything at all, so that nobody builds one for nothing.
  virtual bool IsListening() const = 0;
};

}  // namespace kelvara::sync
