#include "app/WindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <sstream>
#include <string>

#include "base/Fault.h"

namespace kelvara::app {
namespace {

constexpr const char* kPlaceKey = "Place";
constexpr const char* kMaximised = "maximised";
/// The part of a title bar that a user can still drag a window by.
constexpr QSize kSmallestHandle(80, 10);

/// What the desktop adds to the other sides of a window, in pixels.
constexpr int kFrame = 4;

/// The part of each screen in which a window fits with the title bar and the frame that the desktop
/// adds around it.
QList<ScreenArea> ScreenAreas(const QWidget& window) {
  const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  QList<ScreenArea> areas;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    areas += screen->availableGeometry().adjusted(kFrame, titleBar, -kFrame, -kFrame);
  }
  return areas;
}

}  // namespace

std::optional<QRect> PlaceOnScreen(const QRect& wanted, const QList<ScreenArea>& screens) {
  const QRect handle(wanted.topLeft(), QSize(wanted.width(), kSmallestHandle.height()));
  for (const ScreenArea& screen : screens) {
    if (screen.intersected(handle).width() < kSmallestHandle.width()) {
      continue;
    }
    const QSize size = wanted.size().boundedTo(screen.size());
    const int left =
        std::clamp(wanted.left(), screen.left(), screen.left() + screen.width() - size.width());
    const int top =
        std::clamp(wanted.top(), screen.top(), screen.top() + screen.height() - size.height());
    return QRect(QPoint(left, top), size);
  }
  return std::nullopt;
}

void WindowPlace::Restore(QPoint offset) {
  const QList<ScreenArea> screens = ScreenAreas(window_);
  std::optional<QRect> place;
  std::istringstream stored(settings_.Read(kPlaceKey, ""));
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  if (stored >> left >> top >> width >> height) {
    window_.resize(QSize(width, height).expandedTo(window_.minimumSize()));
    place = PlaceOnScreen(QRect(QPoint(left, top) + offset, window_.size()), screens);
  }
  const qsizetype screen =
      std::max(qsizetype{0}, QGuiApplication::screens().indexOf(window_.screen()));
  if (place) {
    window_.setGeometry(*place);
  } else if (screen < screens.size()) {
    // Without a place that a screen shows, the window opens where the desktop puts it.
    window_.resize(window_.size().boundedTo(screens[screen].size()));
  }
  std::string state;
  if (stored >> state && state == kMaximised) {
    window_.setWindowState(Qt::WindowMaximized);
  }
}

void WindowPlace::Save() {
  const std::string place = Place();
  if (!opened_ || place == *opened_) {
    return;
  }
  try {
    settings_.Write(kPlaceKey, place);
  } catch (const base::Fault&) {
    // The window opens at its last stored place.
  }
}

std::string WindowPlace::Place() const {
  const bool isMaximised = window_.isMaximized();
  const QRect normal = isMaximised ? window_.normalGeometry() : window_.geometry();
  std::ostringstream text;
  text << normal.x() << ' ' << normal.y() << ' ' << normal.width() << ' ' << normal.height();
  if (isMaximised) {
    text << ' ' << kMaximised;
  }
  return text.str();
}

}  // namespace kelvara::app
