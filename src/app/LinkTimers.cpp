#include "app/LinkTimers.h"

#include <QTimer>

#include "link/BeltpackLink.h"

namespace kelvara::app {
namespace {

QTimer& NamedTimer(QObject& window, const char* name) {
  auto* const timer = new QTimer(&window);
  timer->setObjectName(QString::fromLatin1(name));
  return *timer;
}

}  // namespace

LinkTimers::LinkTimers(QObject& window)
    : RfpsTimer(NamedTimer(window, "RfpsTimer"), link::kRfpsTimerMilliseconds),
      TimerComPort(NamedTimer(window, "TimerComPort"), link::kTimerComPortMilliseconds),
      silenceTimer(NamedTimer(window, "SilenceTimer"), link::kSilenceMilliseconds) {}

}  // namespace kelvara::app
