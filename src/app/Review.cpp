#include "app/Review.h"

#include <algorithm>
#include <utility>

#include "base/Fault.h"

namespace kelvara::app {
namespace {

/// An entry is no shorter than this: "1/1/2026, 01->02=0" and a line end.
constexpr std::size_t kShortestEntry = 20;
constexpr std::size_t kMostEntries = capture::kMostLogCharacters / kShortestEntry;

}  // namespace

Review::Review(sessions::ReviewedSession& recorded, Session& results, capture::LogBox& logBox,
               const platform::Machine& machine, std::function<void()> shown)
    : recorded_(recorded),
      results_(results),
      logBox_(logBox),
      machine_(machine),
      shownCommand_(std::move(shown)) {}

bool Review::ReadFor(std::int64_t milliseconds) {
  const std::int64_t end = machine_.clock.TickCount() + milliseconds;
  while (recorded_.ReadOn()) {
    if (machine_.clock.TickCount() >= end) {
      return true;
    }
  }
  return false;
}

int Review::PercentRead() const {
  constexpr std::uint64_t kWhole = 100;
  const std::uint64_t bytes = std::max<std::uint64_t>(recorded_.FileBytes(), 1);
  return static_cast<int>(recorded_.BytesRead() * kWhole / bytes);
}

void Review::MoveTo(int report) {
  wanted_ = std::clamp(report, 0, Reports());
  isStale_ = true;
  if (isShowing_) {
    return;
  }
  isShowing_ = true;
  try {
    while (std::exchange(isStale_, false)) {
      Show(wanted_);
    }
  } catch (const base::Fault&) {
    isShowing_ = false;
    isStale_ = false;
    wanted_ = std::max(shown_, 0);
    throw;
  }
  isShowing_ = false;
}

void Review::Show(int report) {
  sessions::ReviewedMoment moment =
      recorded_.At(report, results_.Options(), logBox_.IsShown() ? kMostEntries : 0);
  shown_ = report;
  time_ = moment.time;
  ShowLog(moment);
  results_.ReplaceResults(std::move(moment.results));
  DrawGrid();
  shownCommand_();
}

void Review::DrawGrid() {
  sync::SyncGrid& grid = results_.Grid();
  if (!isGridWhole_ || results_.Model().AaCount() > static_cast<int>(sync::kMaxAas)) {
    // A redraw that ends early must not leave cells of another report.
    grid.Clear();
  }
  grid.ForgetColours();
  isGridWhole_ = grid.UpdateSyncGrid();
}

void Review::ShowLog(const sessions::ReviewedMoment& moment) {
  logBox_.Clear();
  std::size_t characters = 0;
  std::vector<std::string> entries;
  for (auto entry = moment.log.rbegin(); entry != moment.log.rend(); ++entry) {
    entries.push_back(capture::LogEntryText(
        machine_.dateFormat,
        entry->time ? machine_.clock.LocalTime(*entry->time) : machine_.clock.WallTime(),
        entry->text));
    characters += entries.back().size();
    if (characters > capture::kMostLogCharacters) {
      entries.pop_back();
      break;
    }
  }
  if (entries.empty()) {
    return;
  }
  std::string text;
  for (auto entry = entries.rbegin(); entry + 1 != entries.rend(); ++entry) {
    text += *entry;
  }
  logBox_.Append(text);
  // On its own, because the box scrolls to what it holds before it appends, as in a live session.
  logBox_.Append(entries.front());
}

std::string Review::TimeText() const {
  return time_ ? machine_.dateFormat.General(machine_.clock.LocalTime(*time_)) : "";
}

}  // namespace kelvara::app
