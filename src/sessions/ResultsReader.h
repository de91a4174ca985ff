#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/Beeper.h"
#include "sessions/RecordedText.h"
#include "sync/RfpsParser.h"
#include "sync/SyncModel.h"

namespace kelvara::sessions {

/// The results of a recorded session as far as it has been read.
struct RecordedResults {
  sync::SyncModel model;
  /// What the last clear of at least one report removed; null if that has been restored.
  std::shared_ptr<const sync::SyncModel> cleared;
  /// The last time read, in milliseconds since the start of 1970 in UTC.
  std::optional<std::int64_t> time;
};

/// Makes the results of a recorded session, as a live session would have, without beeps. Results
/// that cannot be restored, because the record is damaged, are left out.
class ResultsReader : public RecordedTextReader {
 public:
  /// Reads without a log.
  explicit ResultsReader(RecordedResults& results) : ResultsReader(results, {}, nullptr) {}

  /// Logs the readings in these options, unless `log` is null.
  ResultsReader(RecordedResults& results, const sync::DisplayOptions& options,
                sync::LogFunnel* log);
  ResultsReader(const ResultsReader&) = delete;
  ResultsReader& operator=(const ResultsReader&) = delete;

  void ProcessRfpsReport(std::string_view report) override;
  void NoteDropped(DropReason /*reason*/) override {}
  void SetTime(std::int64_t utcMilliseconds) override { results_.time = utcMilliseconds; }
  void ClearResults() override;
  void RestoreResults() override;

 protected:
  RecordedResults& Results() { return results_; }

 private:
  class NoLog : public sync::LogFunnel {
   public:
    void PrintLogEntry(std::string_view /*strLog*/) override {}
    bool IsListening() const override { return false; }
  };

  class NoBeeper : public platform::Beeper {
   public:
    void Beep() override {}
  };

  RecordedResults& results_;
  sync::DisplayOptions options_;
  NoLog noLog_;
  NoBeeper beeper_;
  sync::RfpsParser parser_;
};

}  // namespace kelvara::sessions
