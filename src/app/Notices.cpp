#include "app/Notices.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdio>

namespace kelvara::app {
namespace {

constexpr std::array<std::string_view, kNoticeKinds> kNames{
    "not-polled", "log-failed", "log-stopped", "silent", "unfinished-session", "cleared", "demo"};

std::string Counted(int count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// "52 reports, 12 antennas".
std::string Size(const sync::SyncModel& results) {
  // The count goes one beyond the table when an antenna was refused.
  const int antennas = std::min<int>(results.AaCount(), sync::kMaxAas);
  return Counted(results.ReportCount(), "report") + ", " + Counted(antennas, "antenna");
}

/// A sentence that says why something failed.
std::string Failed(const std::string& what, std::string reason) {
  if (reason.empty()) {
    return {};
  }
  reason.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(reason.front())));
  return " " + what + " failed: " + reason + ".";
}

}  // namespace

std::string_view NameOf(NoticeKind kind) { return kNames.at(static_cast<std::size_t>(kind)); }

void Notices::Update() {
  const State* next = nullptr;
  for (std::size_t i = 0; i < kNoticeKinds; ++i) {
    State& state = states_.at(i);
    std::optional<Occurrence> now = Applying(static_cast<NoticeKind>(i));
    if (!now || !state.occurrence || now->number != state.occurrence->number) {
      state = {};
    }
    state.occurrence = std::move(now);
    if (next == nullptr && state.occurrence && !state.isClosed) {
      next = &state;
    }
  }
  const std::optional<Notice> shown =
      next == nullptr ? std::nullopt : std::optional(next->occurrence->notice);
  const bool isNew = next != nullptr && !next->wasShown;
  if (shown == shown_ && !isNew) {
    return;
  }
  shown_ = shown;
  if (shown_) {
    Of(shown_->kind).wasShown = true;
  }
  if (show_) {
    show_(Shown(), isNew);
  }
}

void Notices::NoteDemo() {
  isDemo_ = true;
  Update();
}

void Notices::NotePortOpened() {
  isPortOpened_ = true;
  Update();
}

void Notices::Offer(sessions::UnfinishedSession session) {
  session_ = std::move(session);
  Update();
}

void Notices::UndoClear() {
  const std::optional<Occurrence> cleared = Cleared();
  undoFailure_ = live_.RestoreClearedResults();
  if (cleared && !undoFailure_.empty()) {
    undoneNumber_ = cleared->number;
    Reopen(NoticeKind::Cleared);
  }
}

void Notices::Act() {
  switch (shown_ ? shown_->kind : NoticeKind::Demo) {
    case NoticeKind::NotPolled:
      live_.StartLink();
      break;
    case NoticeKind::LogFailed:
      live_.Results().Capture().AbandonLogging();
      break;
    case NoticeKind::LogStopped:
      live_.Results().Capture().ResumeLoggingToFile();
      break;
    case NoticeKind::UnfinishedSession:
      Continue();
      break;
    case NoticeKind::Cleared:
      UndoClear();
      break;
    case NoticeKind::Silent:
    case NoticeKind::Demo:
      break;
  }
  Update();
}

void Notices::Close() {
  if (!shown_) {
    return;
  }
  if (shown_->kind == NoticeKind::UnfinishedSession) {
    session_.reset();
  }
  Of(shown_->kind).isClosed = true;
  Update();
}

void Notices::Continue() {
  // A fault after the results have been restored must not leave the session to be continued twice.
  sessions::UnfinishedSession session = std::move(*session_);
  session_.reset();
  continueFailure_ = live_.Continue(session);
  if (!continueFailure_.empty()) {
    session_ = std::move(session);
    Reopen(NoticeKind::UnfinishedSession);
  }
}

void Notices::Reopen(NoticeKind kind) {
  Of(kind) = {};
  Update();
}

std::optional<Notices::Occurrence> Notices::Applying(NoticeKind kind) {
  switch (kind) {
    case NoticeKind::NotPolled:
      return NotPolled();
    case NoticeKind::LogFailed:
      return LogFailed();
    case NoticeKind::LogStopped:
      return LogStopped();
    case NoticeKind::Silent:
      return Silent();
    case NoticeKind::UnfinishedSession:
      return Unfinished();
    case NoticeKind::Cleared:
      return Cleared();
    case NoticeKind::Demo:
      return Demo();
  }
  return std::nullopt;
}

std::optional<Notices::Occurrence> Notices::NotPolled() {
  isPortOpened_ = isPortOpened_ && live_.Port().IsOpen() && !live_.IsPolling();
  if (!isPortOpened_) {
    return std::nullopt;
  }
  return Occurrence{{NoticeKind::NotPolled,
                     "COM" + std::to_string(live_.Port().PortNumber()) +
                         " is open, but the beltpack is not polled yet.",
                     "Start polling"}};
}

std::optional<Notices::Occurrence> Notices::LogFailed() const {
  const capture::LogFailure* const failure = live_.Results().Capture().Failure();
  if (failure == nullptr) {
    return std::nullopt;
  }
  return Occurrence{{NoticeKind::LogFailed,
                     "Reports are being dropped: " + failure->fileName + " cannot be written (" +
                         failure->reason + ").",
                     "Stop logging"}};
}

std::optional<Notices::Occurrence> Notices::LogStopped() const {
  const capture::DataCapture& capture = live_.Results().Capture();
  if (!capture.IsStoppedByLink()) {
    return std::nullopt;
  }
  return Occurrence{
      {NoticeKind::LogStopped,
       "Nothing has been logged to " + capture.FileName() + " since the link was started again.",
       "Continue logging"}};
}

std::optional<Notices::Occurrence> Notices::Silent() const {
  const int seconds = live_.Link().SilentSeconds();
  if (seconds == 0) {
    return std::nullopt;
  }
  return Occurrence{{NoticeKind::Silent,
                     "Nothing heard from the beltpack for " + std::to_string(seconds) + " s.",
                     {}}};
}

std::optional<Notices::Occurrence> Notices::Unfinished() const {
  if (!session_) {
    return std::nullopt;
  }
  std::string text = "The last session was cut off";
  if (session_->lastTime) {
    const platform::DateTime end = machine_.clock.LocalTime(*session_->lastTime);
    const bool isToday = std::floor(end) == std::floor(machine_.clock.WallTime());
    const auto minutes = static_cast<int>(std::floor((end - std::floor(end)) * 1440.0 + 1e-6));
    std::array<char, 16> time{};
    std::snprintf(time.data(), time.size(), "%02d:%02d", minutes / 60 % 24, minutes % 60);
    text += isToday ? "" : " on " + machine_.dateFormat.ShortDate(end);
    text += " at ";
    text += time.data();
  }
  text += " (" + Size(session_->results) + ").";
  return Occurrence{{NoticeKind::UnfinishedSession,
                     text + Failed("Continuing it", continueFailure_), "Continue it"}};
}

std::optional<Notices::Occurrence> Notices::Cleared() const {
  const sync::SyncModel* const cleared = live_.Results().ClearedResults();
  if (cleared == nullptr) {
    return std::nullopt;
  }
  // Each clear counts one more, and the results remember the count they were cleared at.
  const std::uint64_t number = cleared->ClearCount();
  const std::string failure = number == undoneNumber_ ? undoFailure_ : std::string();
  return Occurrence{{NoticeKind::Cleared,
                     "Results cleared: " + Size(*cleared) + "." + Failed("Undo", failure), "Undo"},
                    number};
}

std::optional<Notices::Occurrence> Notices::Demo() const {
  if (!isDemo_) {
    return std::nullopt;
  }
  return Occurrence{{NoticeKind::Demo, "Demo: the readings come from the built-in beltpack.", {}}};
}

}  // namespace kelvara::app
