#pragma once

#include <QList>
#include <QRect>
#include <QWidget>
#include <optional>
#include <string>

#include "platform/SettingsStore.h"

namespace kelvara::app {

/// The part of a screen that windows may use without their frames, in logical pixels.
using ScreenArea = QRect;

/// The geometry for a window that is to be at `wanted`: as there, but no larger than the screen
/// that shows its upper edge, and wholly on it. Nothing if no screen shows its upper edge.
std::optional<QRect> PlaceOnScreen(const QRect& wanted, const QList<ScreenArea>& screens);

/// Keeps the size and position of a window between runs, under the key `Place`: left, top, width
/// and height without the frame, in logical pixels, followed by "maximised" if it was.
class WindowPlace {
 public:
  /// The window and the settings must outlive this.
  WindowPlace(QWidget& window, platform::SettingsStore& settings)
      : window_(window), settings_(settings) {}

  /// Before the window is shown: moves it to its last place, moved by the offset, if a screen still
  /// shows that, and makes it no larger than its screen.
  void Restore(QPoint offset = {});

  /// Notes the place in which the desktop has put the window. Later changes are the user's.
  void NoteOpened() { opened_ = Place(); }

  /// Stores the place if the user has changed it. Settings that cannot be written are ignored.
  void Save();

 private:
  std::string Place() const;

  QWidget& window_;
  platform::SettingsStore& settings_;
  std::optional<std::string> opened_;
};

}  // namespace kelvara::app
