#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "base/Fault.h"
#include "sessions/RecordedSession.h"
#include "sessions/TraceMarks.h"
#include "support/Doubles.h"
#include "support/RecordingLog.h"
#include "sync/RfpsParser.h"
#include "sync/SyncModel.h"

namespace kelvara::test {

/// The results of replaying a trace with the default display options.
class ReplayedTrace : private sessions::RecordedTextReader {
 public:
  explicit ReplayedTrace(std::string_view trace) {
    sessions::RecordedSession session(*this);
    session.Feed(trace);
    session.End();
  }
  ReplayedTrace(const ReplayedTrace&) = delete;
  ReplayedTrace& operator=(const ReplayedTrace&) = delete;

  sync::SyncModel model;
  RecordingLog log;

 private:
  void ProcessRfpsReport(std::string_view report) override { parser_.ProcessRfpsReport(report); }
  void NoteDropped(sessions::DropReason /*reason*/) override {}
  void ClearResults() override {
    if (model.ReportCount() > 0) {
      cleared_ = model;
    }
    model.Clear();
  }
  void RestoreResults() override {
    try {
      model.AddOlder(cleared_);
      cleared_.Clear();
    } catch (const base::Fault&) {
      // Too many antennas: nothing is restored.
    }
  }

  sync::SyncModel cleared_;
  sync::DisplayOptions options_;
  CountingBeeper beeper_;
  sync::RfpsParser parser_{model, options_, log, beeper_};
};

/// The whole content of a model as text. Equal models have equal texts.
inline std::string ModelText(const sync::SyncModel& model) {
  std::string text = std::to_string(model.ReportCount()) + " reports\n";
  const int aas = std::min<int>(model.AaCount(), sync::kMaxAas);
  for (int from = 0; from < aas; ++from) {
    text += std::to_string(model.AaRpn(from)) + " " + std::to_string(model.AaFps(from)) + " " +
            std::to_string(model.AaFpn(from)) + ":";
    for (int to = 0; to < aas; ++to) {
      const sync::PhaseCell& cell = model.Cell(from, to);
      text += " " + std::to_string(cell.Sum) + "/" + std::to_string(cell.Count) + "/" +
              std::to_string(cell.Max) + "/" + std::to_string(cell.Min);
    }
    text += "\n";
  }
  return text;
}

/// The number of commands in a trace.
inline int CommandsIn(std::string_view trace) {
  int commands = 0;
  for (const std::string_view command : {"\x01rfps\x02",
                                         "\x01"
                                         "cho\x02",
                                         "\x01"
                                         "bho\x02"}) {
    for (std::size_t at = trace.find(command); at != std::string_view::npos;
         at = trace.find(command, at + 1)) {
      ++commands;
    }
  }
  return commands;
}

}  // namespace kelvara::test
