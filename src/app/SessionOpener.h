#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Desktop.h"

namespace kelvara::app {

/// Opens recorded sessions for review, each in a program of its own.
class SessionOpener {
 public:
  /// Starts a program that reviews the file; a program that cannot be started is a file fault.
  using StartReview = std::function<void(const std::string& path)>;

  /// The desktop must outlive the opener.
  SessionOpener(const platform::Desktop& desktop, StartReview startReview)
      : desktop_(desktop), startReview_(std::move(startReview)) {}

  /// Lets the user choose a session, at first in `folder`, later where the last one was.
  void mnuOpenSession_Click(const std::string& folder);

  /// Opens a session. A failure is told in a message box.
  void Open(const std::string& path) const;

  /// Opens the sessions that were dropped on the window, but not a folder full by mistake.
  void OpenDropped(const std::vector<std::string>& paths) const;

 private:
  const platform::Desktop& desktop_;
  StartReview startReview_;
  std::string lastFolder_;
};

}  // namespace kelvara::app
