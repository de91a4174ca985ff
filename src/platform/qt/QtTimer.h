#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Timer.h"

namespace kelvara::qt {

/// A precise timer, with its own QTimer or one that a window owns. "Off" means that the QTimer is
/// not active. Ticks continue while an earlier tick runs its own event loop, such as that of a
/// question to the user. Switching the timer off drops a pending tick.
class QtTimer : public platform::Timer {
 public:
  /// Creates its own QTimer, switched off, with an interval in milliseconds.
  explicit QtTimer(int milliseconds);

  /// Uses a window's QTimer, which is switched off and set to an interval in milliseconds. If the
  /// QTimer is destroyed first, this timer stays off.
  QtTimer(QTimer& timer, int milliseconds);

  void SwitchOn() override;
  void SwitchOff() override;
  bool IsOn() const override;
  void SetTick(std::function<void()> tick) override { tick_ = std::move(tick); }

 private:
  void Prepare(int milliseconds);
  void PostTick();

  std::unique_ptr<QTimer> owned_;
  QPointer<QTimer> timer_;
  std::function<void()> tick_;
  bool tickPosted_ = false;
  // Incremented when the timer is switched off, to recognise ticks that were posted before.
  unsigned generation_ = 0;
  // The last member, so that posted ticks are dropped before any other member is destroyed.
  QObject context_;
};

}  // namespace kelvara::qt
