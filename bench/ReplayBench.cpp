#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "AllocationCount.h"
#include "QuietControls.h"
#include "sessions/RecordedSession.h"
#include "sync/RfpsParser.h"
#include "sync/SyncModel.h"

namespace kelvara::bench {
namespace {

constexpr std::size_t kSessionBytes = std::size_t{64} << 20U;
constexpr std::size_t kPieceBytes = std::size_t{256} << 10U;

/// The example session, repeated.
const std::string& SessionText() {
  static const std::string text = [] {
    std::ifstream file(KELVARA_EXAMPLE_SESSION, std::ios::binary);
    const std::string example{std::istreambuf_iterator<char>(file), {}};
    std::string session;
    while (!example.empty() && session.size() < kSessionBytes) {
      session += example;
    }
    return session;
  }();
  return text;
}

std::size_t CountLines(std::string_view text) {
  std::size_t lines = 0;
  const char* next = text.data();
  const char* const end = text.data() + text.size();
  while (const void* lineFeed = std::memchr(next, '\n', static_cast<std::size_t>(end - next))) {
    next = static_cast<const char*>(lineFeed) + 1;
    ++lines;
  }
  return lines;
}

/// Hands reports to a parser as a replay does.
class ReplayRig : public sessions::RecordedTextReader {
 public:
  ReplayRig() : parser_(model_, options_, log_, beeper_), session_(*this) {}

  void ProcessRfpsReport(std::string_view report) override { parser_.ProcessRfpsReport(report); }
  void NoteDropped(sessions::DropReason /*reason*/) override { ++dropped_; }

  /// Replays a session into an empty matrix.
  void Replay(std::string_view text) {
    model_.Clear();
    while (!text.empty()) {
      const std::string_view piece = text.substr(0, kPieceBytes);
      session_.Feed(piece);
      text.remove_prefix(piece.size());
    }
    session_.End();
  }

  bool ReadEverything() const { return model_.ReportCount() > 0 && dropped_ + beeper_.count == 0; }

 private:
  sync::SyncModel model_;
  sync::DisplayOptions options_;
  QuietLog log_;
  QuietBeeper beeper_;
  sync::RfpsParser parser_;
  sessions::RecordedSession session_;
  int dropped_ = 0;
};

void Replay(benchmark::State& state) {
  const std::string& text = SessionText();
  ReplayRig rig;
  // The first round sizes the buffers.
  rig.Replay(text);
  const std::int64_t allocations = AllocationCount();
  for (auto _ : state) {
    rig.Replay(text);
  }
  const auto lines =
      static_cast<double>(CountLines(text)) * static_cast<double>(state.iterations());
  state.counters["allocations_per_line"] =
      static_cast<double>(AllocationCount() - allocations) / lines;
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
  if (!rig.ReadEverything()) {
    state.SkipWithError("not every report was read");
  }
}
BENCHMARK(Replay)->Unit(benchmark::kMillisecond);

void NewlineScan(benchmark::State& state) {
  const std::string& text = SessionText();
  for (auto _ : state) {
    benchmark::DoNotOptimize(CountLines(text));
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}
BENCHMARK(NewlineScan)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvara::bench
