#include "sessions/RecordedModel.h"

#include <string_view>
#include <vector>

#include "platform/Beeper.h"
#include "sessions/RecordedSession.h"
#include "sessions/StartedFile.h"
#include "sync/RfpsParser.h"

namespace kelvara::sessions {
namespace {

class NoLog : public sync::LogFunnel {
 public:
  void PrintLogEntry(std::string_view /*strLog*/) override {}
  bool IsListening() const override { return false; }
};

class NoBeeper : public platform::Beeper {
 public:
  void Beep() override {}
};

class ModelReader : public RecordedTextReader {
 public:
  explicit ModelReader(sync::SyncModel& model) : parser_(model, options_, log_, beeper_) {}

  void ProcessRfpsReport(std::string_view report) override { parser_.ProcessRfpsReport(report); }
  void NoteDropped(DropReason /*reason*/) override {}

 private:
  sync::DisplayOptions options_;
  NoLog log_;
  NoBeeper beeper_;
  sync::RfpsParser parser_;
};

}  // namespace

void ReadRecordedModel(platform::InputFile& file, sync::SyncModel& model) {
  ModelReader reader(model);
  RecordedSession text(reader);
  std::vector<char> piece(kPieceBytes);
  while (const std::size_t got = file.Read(piece)) {
    text.Feed({piece.data(), got});
  }
  text.End();
}

}  // namespace kelvara::sessions
