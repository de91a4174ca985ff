#include "sync/RfpsParser.h"

#include "base/CheckedInteger.h"
#include "base/Fault.h"

namespace kelvara::sync {

void RfpsParser::ProcessRfpsReport(std::string_view report) {
  try {
    Record(ReadRfpsReport(report));
  } catch (const base::Fault&) {
    ++abandonedCount_;
    beeper_.Beep();
  }
}

void RfpsParser::Record(RfpsReport report) {
  if (report.count == 0) {
    return;
  }
  model_.BeginReport();
  const RfpsEntry sync = base::At(report.entries, report.syncIndex);
  for (int index = report.count - 1; index >= 0; --index) {
    RfpsEntry& entry = base::At(report.entries, index);
    entry.FromRpn = sync.ToRpn;
    entry.FromFps = sync.ToFps;
    entry.FromFpn = sync.ToFpn;
    if (index != report.syncIndex) {
      Log(entry);
    }
    const std::int16_t from = model_.FindOrAddAa(entry.FromRpn, entry.FromFps, entry.FromFpn);
    // A new neighbour gets the FPN of the antenna it was heard from, not its own.
    const std::int16_t to = model_.FindOrAddAa(entry.ToRpn, entry.ToFps, entry.FromFpn);
    if (from != to) {
      model_.AddPhase(from, to, entry.Phase);
    }
  }
  model_.CountReport();
  if (reportCounted_) {
    reportCounted_();
  }
}

void RfpsParser::Log(const RfpsEntry& entry) {
  if (!log_.IsListening()) {
    return;
  }
  logLine_ = options_.AaText(entry.FromRpn, entry.FromFps);
  logLine_ += "->";
  logLine_ += options_.AaText(entry.ToRpn, entry.ToFps);
  logLine_ += '=';
  logLine_ += std::to_string(entry.Phase);
  log_.PrintLogEntry(logLine_);
}

}  // namespace kelvara::sync
