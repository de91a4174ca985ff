#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/Session.h"
#include "capture/LogBox.h"
#include "platform/Machine.h"
#include "sessions/ReviewedSession.h"

namespace kelvara::app {

/// The review of a recorded session: shows its results, its log and its grid at any report, in the
/// display options of the moment.
class Review {
 public:
  /// All arguments must outlive the review. `shown` is called each time results have been shown.
  Review(sessions::ReviewedSession& recorded, Session& results, capture::LogBox& logBox,
         const platform::Machine& machine, std::function<void()> shown);

  /// Reads for about this long, then returns whether there is more to read. A failed read is a file
  /// fault.
  bool ReadFor(std::int64_t milliseconds);

  /// How much of the file has been read, in per cent.
  int PercentRead() const;

  /// The number of reports in the session.
  int Reports() const { return recorded_.Reports(); }

  /// Shows the session after this many reports; a number outside 0 to `Reports()` counts as the
  /// nearest. The redraw lets events run. A call that comes meanwhile returns at once, and the last
  /// such number is shown next. If the file cannot be read any more, this is a file fault, and what
  /// was shown before stays.
  void MoveTo(int report);

  /// Shows the same report again, because the display options have changed or the log box was
  /// shown.
  void Redraw() { MoveTo(wanted_); }

  /// The report that is shown, or is to be shown next.
  int Report() const { return wanted_; }

  /// The date and time of the report shown; empty if the session tells none.
  std::string TimeText() const;

 private:
  void Show(int report);
  void DrawGrid();
  void ShowLog(const sessions::ReviewedMoment& moment);

  sessions::ReviewedSession& recorded_;
  Session& results_;
  capture::LogBox& logBox_;
  const platform::Machine& machine_;
  std::function<void()> shownCommand_;
  int wanted_ = 0;
  int shown_ = -1;
  bool isStale_ = false;
  bool isShowing_ = false;
  bool isGridWhole_ = true;
  std::optional<std::int64_t> time_;
};

}  // namespace kelvara::app
