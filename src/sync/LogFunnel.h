#pragma once

#include <string_view>

namespace kelvara::sync {

/// The single entry point for log entries.
class LogFunnel {
 public:
  virtual ~LogFunnel() = default;

  /// Logs one entry with its time stamp; an empty text logs nothing. A failed file write is a
  /// fault.
  virtual void PrintLogEntry(std::string_view strLog) = 0;

  /// Whether an entry would be shown or stored anywhere. If not, callers need not build one.
  virtual bool IsListening() const = 0;
};

}  // namespace kelvara::sync
