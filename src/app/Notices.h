#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/LiveSession.h"
#include "platform/Machine.h"
#include "sessions/Journal.h"

namespace kelvara::app {

/// What the user is told beside the results, the most urgent first.
enum class NoticeKind {
  NotPolled,
  LogFailed,
  LogStopped,
  Silent,
  UnfinishedSession,
  Cleared,
  Demo
};
inline constexpr std::size_t kNoticeKinds = 7;

/// The name of a kind, such as "not-polled".
std::string_view NameOf(NoticeKind kind);

struct Notice {
  NoticeKind kind;
  std::string text;
  /// The caption of the button; empty where there is nothing to do.
  std::string action;

  bool operator==(const Notice&) const = default;
};

/// Decides which notice is shown: the most urgent one that applies and has not been closed. A
/// notice that was closed comes back with a new occurrence of what it tells.
class Notices {
 public:
  /// Takes the notice to be shown, null for none. `isNew` is true the first time that this
  /// occurrence is shown, which is when it should be read out.
  using Show = std::function<void(const Notice* notice, bool isNew)>;

  /// The session and the machine must outlive the notices.
  Notices(LiveSession& live, const platform::Machine& machine) : live_(live), machine_(machine) {}

  /// Sets what shows a notice. Called each time the notice shown or its text changes.
  void SetShow(Show show) { show_ = std::move(show); }

  /// Call this after anything in the session may have changed.
  void Update();

  /// The readings come from the built-in beltpack.
  void NoteDemo();

  /// The port was opened without the start of the link, so that nothing is polled.
  void NotePortOpened();

  /// Offers an earlier session to be continued. Its journal stays locked until the offer is
  /// accepted or closed.
  void Offer(sessions::UnfinishedSession session);

  /// Restores the results that were cleared; the notice says why if that fails.
  void UndoClear();

  /// The notice that is shown; null if there is none.
  const Notice* Shown() const { return shown_ ? &*shown_ : nullptr; }

  /// Does what the button of the notice shown says. Faults of the capture are passed on.
  void Act();

  /// Closes the notice shown.
  void Close();

 private:
  /// A notice that applies, and which occurrence it is about.
  struct Occurrence {
    Notice notice;
    std::uint64_t number = 0;
  };

  struct State {
    std::optional<Occurrence> occurrence;
    bool isClosed = false;
    bool wasShown = false;
  };

  State& Of(NoticeKind kind) { return states_.at(static_cast<std::size_t>(kind)); }
  std::optional<Occurrence> Applying(NoticeKind kind);
  std::optional<Occurrence> NotPolled();
  std::optional<Occurrence> LogFailed() const;
  std::optional<Occurrence> LogStopped() const;
  std::optional<Occurrence> Silent() const;
  std::optional<Occurrence> Unfinished() const;
  std::optional<Occurrence> Cleared() const;
  std::optional<Occurrence> Demo() const;
  void Continue();
  /// Shows a notice again that says why its action failed.
  void Reopen(NoticeKind kind);

  LiveSession& live_;
  const platform::Machine& machine_;
  Show show_;
  std::array<State, kNoticeKinds> states_;
  std::optional<Notice> shown_;
  bool isDemo_ = false;
  bool isPortOpened_ = false;
  std::optional<sessions::UnfinishedSession> session_;
  std::string continueFailure_;
  std::string undoFailure_;
  /// The occurrence of which the undo failed.
  std::uint64_t undoneNumber_ = 0;
};

}  // namespace kelvara::app
