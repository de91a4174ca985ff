#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/Session.h"
#include "cli/CommandMachine.h"
#include "cli/Streams.h"
#include "sessions/RecordedText.h"
#include "sessions/TraceClock.h"

namespace kelvara::cli {

/// The name that stands for standard input.
inline constexpr const char* kStandardInput = "-";

/// Opens a file, or standard input. One that cannot be opened is a file fault.
std::unique_ptr<platform::InputFile> OpenRecorded(const std::string& name, const Streams& streams,
                                                  const CommandMachine& machine);

/// Throws a file fault if one of the files is not a readable file.
void ExpectReadable(const std::vector<std::string>& names);

/// Hands recorded reports to the session's parser and notes dropped reports on standard error.
class RecordedFiles : public sessions::RecordedTextReader {
 public:
  /// `clock` follows the times in the files; null if the session does not use one.
  RecordedFiles(app::Session& session, const Streams& streams, sessions::TraceClock* clock)
      : session_(session), streams_(streams), clock_(clock) {}

  void ProcessRfpsReport(std::string_view report) override;
  void NoteDropped(sessions::DropReason reason) override;
  void SetTime(std::int64_t utcMilliseconds) override;
  void ClearResults() override;
  void RestoreResults() override;

  /// Reads one file to its end.
  void ReadFile(const std::string& name, platform::InputFile& file, sessions::RecordedText& text);

  /// What to note if none of the files contained a report of an antenna; empty if one did.
  std::string NothingFound() const;

 private:
  std::int64_t Counted() const;

  app::Session& session_;
  Streams streams_;
  sessions::TraceClock* clock_;
  std::string name_;
  std::string names_;       ///< All the files, with the kind of each that is Kelvara's own.
  std::int64_t taken_ = 0;  ///< Reports of antennas, including abandoned ones.
  bool found_ = false;
};

}  // namespace kelvara::cli
