#pragma once

#include <QWinEventNotifier>
#include <functional>
#include <utility>

#include "ports/PortDeviceWindows.h"

namespace kelvara::ports {

/// A read or write that the system carries out while the program goes on. It must be cancelled
/// before it is destroyed, since the system writes to it until it ends.
class OverlappedOperation {
 public:
  /// `ended` is called from the event loop when it may have ended, while it is watched.
  explicit OverlappedOperation(std::function<void()> ended) {
    notifier_.setHandle(event_.get());
    QObject::connect(&notifier_, &QWinEventNotifier::activated, &notifier_, std::move(ended));
  }

  void Watch(bool watched) { notifier_.setEnabled(watched); }

  bool IsRunning() const { return isRunning_; }

  /// Starts it by `start(OVERLAPPED*)`, a call of the system. Returns the error if it cannot start.
  /// For one that ends immediately, `ended` is called too.
  template <typename Start>
  DWORD Begin(const Start& start) {
    overlapped_ = {};
    overlapped_.hEvent = event_.get();
    if (start(&overlapped_) == FALSE && ::GetLastError() != ERROR_IO_PENDING) {
      return ::GetLastError();
    }
    isRunning_ = true;
    return ERROR_SUCCESS;
  }

  /// Takes the result if it has ended; otherwise returns `ERROR_IO_INCOMPLETE`.
  DWORD End(HANDLE device, DWORD& count) { return Finish(device, count, FALSE); }

  /// Ends it, and waits for the device's driver to let go of it.
  void Cancel(HANDLE device) {
    if (isRunning_) {
      ::CancelIoEx(device, &overlapped_);
      DWORD count = 0;
      Finish(device, count, TRUE);
    }
  }

 private:
  DWORD Finish(HANDLE device, DWORD& count, BOOL wait) {
    if (!isRunning_) {
      return ERROR_IO_INCOMPLETE;
    }
    const DWORD error = ::GetOverlappedResult(device, &overlapped_, &count, wait) != FALSE
                            ? ERROR_SUCCESS
                            : ::GetLastError();
    if (error != ERROR_IO_INCOMPLETE) {
      isRunning_ = false;
      ::ResetEvent(event_.get());
    }
    return error;
  }

  UniqueHandle event_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED overlapped_{};
  bool isRunning_ = false;
  QWinEventNotifier notifier_;
};

}  // namespace kelvara::ports
