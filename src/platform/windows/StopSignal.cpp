#include "platform/qt/StopSignal.h"

#include <windows.h>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <mutex>
#include <utility>

namespace kelvara::qt {
namespace {

class StopSignal : public QAbstractNativeEventFilter {
 public:
  explicit StopSignal(std::function<void()> stop) : stop_(std::move(stop)) {
    const std::scoped_lock lock(mutex);
    current = this;
    ::SetConsoleCtrlHandler(HandleConsole, TRUE);
    QCoreApplication::instance()->installNativeEventFilter(this);
  }

  ~StopSignal() override {
    ::SetConsoleCtrlHandler(HandleConsole, FALSE);
    const std::scoped_lock lock(mutex);
    current = nullptr;
  }

  StopSignal(const StopSignal&) = delete;
  StopSignal& operator=(const StopSignal&) = delete;

  /// Windows may end the program as soon as its windows have been told that the session ends, so
  /// the program stops before this returns.
  bool nativeEventFilter(const QByteArray& /*eventType*/, void* message,
                         qintptr* /*result*/) override {
    const MSG& event = *static_cast<const MSG*>(message);
    if (event.message == WM_ENDSESSION && event.wParam != FALSE) {
      stop_();
    }
    return false;
  }

 private:
  /// Called by the system in a thread of its own.
  static BOOL WINAPI HandleConsole(DWORD event) {
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    {
      const std::scoped_lock lock(mutex);
      if (current == nullptr || (isKey && current->isStopping_)) {
        // The system ends the program.
        return FALSE;
      }
      if (!std::exchange(current->isStopping_, true)) {
        QMetaObject::invokeMethod(&current->context_, current->stop_, Qt::QueuedConnection);
      }
    }
    if (!isKey) {
      // The console closes. The system ends the program as soon as this returns, or after some
      // seconds.
      ::Sleep(INFINITE);
    }
    return TRUE;
  }

  inline static std::mutex mutex;
  inline static StopSignal* current = nullptr;

  std::function<void()> stop_;
  bool isStopping_ = false;
  QObject context_;
};

}  // namespace

std::shared_ptr<void> AtStopSignal(std::function<void()> stop) {
  return std::make_shared<StopSignal>(std::move(stop));
}

}  // namespace kelvara::qt
