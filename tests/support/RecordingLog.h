#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Fault.h"
#include "sync/LogFunnel.h"

namespace kelvara::test {

/// A log funnel that keeps the entries. If `entriesLeft` is set, that many more are accepted; then
/// entries throw a fault, as when a capture file cannot be written.
class RecordingLog : public sync::LogFunnel {
 public:
  void PrintLogEntry(std::string_view strLog) override {
    if (entriesLeft && (*entriesLeft)-- <= 0) {
      throw base::Fault(base::FaultKind::File, "cannot write the log");
    }
    entries.emplace_back(strLog);
    if (onEntry) {
      onEntry();
    }
  }

  bool IsListening() const override { return listening; }

  std::vector<std::string> entries;
  std::optional<int> entriesLeft;
  std::function<void()> onEntry;
  bool listening = true;
};

}  // namespace kelvara::test
