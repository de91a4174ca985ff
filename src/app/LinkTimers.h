#pragma once

#include <QObject>

#include "platform/qt/QtTimer.h"

namespace kelvara::app {

/// The link's timers, as QTimers that belong to the main window: `RfpsTimer`, `TimerComPort`, and
/// the one that notices when the line has fallen silent.
struct LinkTimers {
  explicit LinkTimers(QObject& window);

  qt::QtTimer RfpsTimer;
  qt::QtTimer TimerComPort;
  qt::QtTimer silenceTimer;
};

}  // namespace kelvara::app
