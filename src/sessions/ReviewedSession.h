#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/FileSystem.h"
#include "sessions/RecordedSession.h"
#include "sessions/ResultsReader.h"
#include "sync/DisplayOptions.h"
#include "sync/SyncModel.h"

namespace kelvara::sessions {

/// A log entry of a recorded session, without its time stamp.
struct ReviewedEntry {
  std::optional<std::int64_t> time;
  std::string text;
};

/// What a recorded session was after one of its reports.
struct ReviewedMoment {
  sync::SyncModel results;
  /// When the report was requested, in milliseconds since the start of 1970 in UTC.
  std::optional<std::int64_t> time;
  /// The newest entries since the last clear, in order.
  std::deque<ReviewedEntry> log;
};

/// How far apart the checkpoints of a session are at first.
inline constexpr std::uint64_t kCheckpointBytes = std::uint64_t{1} << 20U;

/// A file of a recorded session, as RecordedSession reads it, open at any of its reports. It is
/// read once in pieces. Checkpoints kept meanwhile make every report quick to reach: from the
/// checkpoint before it, about one megabyte is read again.
class ReviewedSession {
 public:
  /// A file that cannot be opened and read at any place, or that Kelvara wrote as something else
  /// than a session, is a file fault. What is added to the file from now on is not read.
  ReviewedSession(platform::FileSystem& fileSystem, std::string path,
                  std::uint64_t checkpointBytes = kCheckpointBytes);

  /// Reads the next piece, until it returns false. A failed read is a file fault.
  bool ReadOn();

  /// How much has been read, and of how much, in bytes.
  std::uint64_t BytesRead() const { return place_; }
  std::uint64_t FileBytes() const { return fileBytes_; }

  /// The reports read so far: all that came whole, faulty ones included.
  int Reports() const { return reader_.Reports(); }

  /// The most antennas that there were at once in the results read so far.
  int Antennas() const { return reader_.Antennas(); }

  /// The session after `report` reports, 0 to `Reports()`: with an undo that followed, but not with
  /// a clear, which would hide the report. Of the log, at most `entries` in these options. If the
  /// file has become shorter or cannot be read, this is a file fault.
  ReviewedMoment At(int report, const sync::DisplayOptions& options, std::size_t entries);

 private:
  /// Counts what it reads.
  class CountingReader : public ResultsReader {
   public:
    using ResultsReader::ResultsReader;
    void ProcessRfpsReport(std::string_view report) override;
    int Reports() const { return reports_; }
    int Antennas() const { return antennas_; }

   private:
    int reports_ = 0;
    int antennas_ = 0;
  };

  /// Everything needed to read on from a place in the file.
  struct Checkpoint {
    std::uint64_t place;
    int reports;
    RecordedSession text;
    RecordedResults results;
  };

  std::size_t Read(std::uint64_t place);
  void KeepCheckpoint();
  /// Reads from a checkpoint up to a report. Returns whether the log is complete: it has as many
  /// entries as wanted, or all since a clear.
  bool ReadTo(int report, const Checkpoint& from, const sync::DisplayOptions& options,
              std::size_t entries, ReviewedMoment& moment);
  [[noreturn]] void Refuse(const std::string& reason) const;

  std::string path_;
  std::unique_ptr<platform::InputFile> file_;
  std::uint64_t fileBytes_;
  std::uint64_t place_ = 0;
  RecordedResults results_;
  CountingReader reader_{results_};
  RecordedSession text_{reader_};
  std::vector<std::unique_ptr<const Checkpoint>> checkpoints_;
  std::uint64_t checkpointBytes_;
  std::vector<char> piece_;
};

}  // namespace kelvara::sessions
