#include "sessions/ReviewedSession.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/Fault.h"
#include "sessions/KelvaraFile.h"

namespace kelvara::sessions {
namespace {

/// How much is read at a time.
constexpr std::size_t kReviewPieceBytes = std::size_t{64} << 10U;

/// In a long file, every second checkpoint is dropped each time there are so many. They share 16
/// MB, or 32 MB in a session that is cleared again and again.
constexpr std::size_t kMostCheckpoints = 512;

/// A checkpoint waits while more text than this would have to be kept with it.
constexpr std::size_t kMostKeptBytes = std::size_t{64} << 10U;

/// How many checkpoints before the nearest to read from until the log has its entries.
constexpr std::array<std::size_t, 4> kCheckpointsBack{0, 1, 3, 16};

/// Keeps the newest entries of the log, each with the time of the results.
class NewestEntries : public sync::LogFunnel {
 public:
  NewestEntries(ReviewedMoment& moment, const RecordedResults& results, std::size_t most)
      : moment_(moment), results_(results), most_(most) {}

  void PrintLogEntry(std::string_view strLog) override {
    moment_.log.push_back({results_.time, std::string(strLog)});
    if (moment_.log.size() > most_) {
      moment_.log.pop_front();
    }
  }
  bool IsListening() const override { return most_ > 0; }

 private:
  ReviewedMoment& moment_;
  const RecordedResults& results_;
  std::size_t most_;
};

/// Reads until a report, and what belongs to it.
class MomentReader : public ResultsReader {
 public:
  MomentReader(RecordedResults& results, const sync::DisplayOptions& options, NewestEntries& log,
               ReviewedMoment& moment, int reportsLeft)
      : ResultsReader(results, options, &log), moment_(moment), reportsLeft_(reportsLeft) {}

  void ProcessRfpsReport(std::string_view report) override {
    isOver_ = isOver_ || reportsLeft_ == 0;
    if (!isOver_) {
      ResultsReader::ProcessRfpsReport(report);
      --reportsLeft_;
    }
  }
  void ClearResults() override {
    isOver_ = isOver_ || reportsLeft_ == 0;
    if (!isOver_) {
      ResultsReader::ClearResults();
      moment_.log.clear();
      clearsLog_ = true;
    }
  }
  void RestoreResults() override {
    if (!isOver_) {
      ResultsReader::RestoreResults();
    }
  }
  void SetTime(std::int64_t utcMilliseconds) override {
    // Before the first report, the time is that of the session's beginning.
    if (reportsLeft_ > 0 || !Results().time) {
      ResultsReader::SetTime(utcMilliseconds);
    }
  }

  bool IsOver() const { return isOver_; }
  bool HasReport() const { return reportsLeft_ == 0; }
  bool ClearsLog() const { return clearsLog_; }

 private:
  ReviewedMoment& moment_;
  int reportsLeft_;
  bool isOver_ = false;
  bool clearsLog_ = false;
};

}  // namespace

void ReviewedSession::CountingReader::ProcessRfpsReport(std::string_view report) {
  ResultsReader::ProcessRfpsReport(report);
  ++reports_;
  const int antennas = std::min<int>(Results().model.AaCount(), sync::kMaxAas);
  antennas_ = std::max(antennas_, antennas);
}

ReviewedSession::ReviewedSession(platform::FileSystem& fileSystem, std::string path,
                                 std::uint64_t checkpointBytes)
    : path_(std::move(path)),
      file_(fileSystem.OpenForInput(path_)),
      fileBytes_(file_->Size()),
      checkpointBytes_(checkpointBytes),
      piece_(kReviewPieceBytes) {
  file_->Seek(0);
  std::array<char, kFileStartBytes> start{};
  const std::string_view kind = KelvaraFile({start.data(), file_->Read(start)});
  if (!kind.empty()) {
    Refuse("is " + std::string(kind) + ", not a recorded session");
  }
  KeepCheckpoint();
}

bool ReviewedSession::ReadOn() {
  const std::size_t got = Read(place_);
  if (got == 0) {
    fileBytes_ = place_;
    return false;
  }
  text_.Feed({piece_.data(), got});
  place_ += got;
  if (place_ - checkpoints_.back()->place >= checkpointBytes_ &&
      text_.KeptBytes() <= kMostKeptBytes) {
    KeepCheckpoint();
  }
  return true;
}

ReviewedMoment ReviewedSession::At(int report, const sync::DisplayOptions& options,
                                   std::size_t entries) {
  // A checkpoint after this report may be after a clear, too.
  const auto after = std::find_if(checkpoints_.begin() + 1, checkpoints_.end(),
                                  [&](const auto& kept) { return kept->reports >= report; });
  const auto nearest = static_cast<std::size_t>(after - checkpoints_.begin()) - 1;
  ReviewedMoment moment;
  for (const std::size_t back : kCheckpointsBack) {
    const std::size_t from = nearest - std::min(back, nearest);
    moment = {};
    if (ReadTo(report, *checkpoints_[from], options, entries, moment) || from == 0) {
      break;
    }
  }
  return moment;
}

bool ReviewedSession::ReadTo(int report, const Checkpoint& from,
                             const sync::DisplayOptions& options, std::size_t entries,
                             ReviewedMoment& moment) {
  RecordedResults results = from.results;
  NewestEntries log(moment, results, entries);
  MomentReader reader(results, options, log, moment, report - from.reports);
  RecordedSession text(from.text, reader);
  std::uint64_t place = from.place;
  while (!reader.IsOver() && place < place_) {
    const std::size_t got = Read(place);
    if (got == 0) {
      break;
    }
    text.Feed({piece_.data(), got});
    place += got;
  }
  if (!reader.HasReport() || (!reader.IsOver() && place < place_)) {
    Refuse("has changed since it was opened");
  }
  moment.results = std::move(results.model);
  moment.time = results.time;
  return moment.log.size() == entries || reader.ClearsLog();
}

std::size_t ReviewedSession::Read(std::uint64_t place) {
  const auto most = std::min<std::uint64_t>(piece_.size(), fileBytes_ - place);
  file_->Seek(place);
  return file_->Read(std::span(piece_).first(static_cast<std::size_t>(most)));
}

void ReviewedSession::KeepCheckpoint() {
  if (checkpoints_.size() == kMostCheckpoints) {
    checkpointBytes_ *= 2;
    for (std::size_t kept = 0; kept < kMostCheckpoints / 2; ++kept) {
      checkpoints_[kept] = std::move(checkpoints_[2 * kept]);
    }
    checkpoints_.resize(kMostCheckpoints / 2);
  }
  checkpoints_.push_back(std::make_unique<const Checkpoint>(
      Checkpoint{place_, Reports(), RecordedSession(text_, reader_), results_}));
}

void ReviewedSession::Refuse(const std::string& reason) const {
  throw base::Fault(base::FaultKind::File, "\"" + path_ + "\" " + reason);
}

}  // namespace kelvara::sessions
