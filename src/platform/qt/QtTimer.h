#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <utility>

#include "platform/Timer.h"

namespace kelvara::qt {

/// A precise timer of the machine, one of its own or one that a window owns. "Off" means that the
/// QTimer is not active. Ticks go on while an earlier tick still waits in an event loop of its own,
/// such as that of a question to the user; a tick that was under way when the timer was switched
/// off does not come.
class QtTimer : public platform::Timer {
 public:
  /// Over a timer of its own, off, with an interval in milliseconds.
  explicit QtTimer(int milliseconds);

  /// Over a window's timer, which is switched off and set to an interval in milliseconds. The timer
  /// may die first: from then on this one is off and stays so.
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
  // How often it was switched off: tells the ticks of one spell from those of the next.
  unsigned spell_ = 0;
  // The last member: what is posted to it dies before anything else does.
  QObject context_;
};

}  // namespace kelvara::qt
