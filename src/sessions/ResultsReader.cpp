#include "sessions/ResultsReader.h"

#include "base/Fault.h"

namespace kelvara::sessions {

ResultsReader::ResultsReader(RecordedResults& results, const sync::DisplayOptions& options,
                             sync::LogFunnel* log)
    : results_(results),
      options_(options),
      parser_(results.model, options_, log == nullptr ? noLog_ : *log, beeper_) {}

void ResultsReader::ProcessRfpsReport(std::string_view report) {
  parser_.ProcessRfpsReport(report);
}

void ResultsReader::ClearResults() {
  if (results_.model.ReportCount() > 0) {
    results_.cleared = std::make_shared<const sync::SyncModel>(results_.model);
  }
  results_.model.Clear();
}

void ResultsReader::RestoreResults() {
  if (results_.cleared == nullptr) {
    return;
  }
  try {
    results_.model.AddOlder(*results_.cleared);
    results_.cleared = nullptr;
  } catch (const base::Fault&) {
    // The results stay as they are.
  }
}

}  // namespace kelvara::sessions
