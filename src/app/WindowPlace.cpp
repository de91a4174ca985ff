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

/// The part of each screen in which a window fits with its title bar, which the desktop adds above
/// the window.
QList<ScreenArea> ScreenAreas(const QWidget& window) {
  const int titleBar = window.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
  QList<ScreenArea> areas;
  for (const QScreen* const screen : QGuiApplication::screens()) {
    areas += screen->availableGeometry().adjusted(0, 0, 0, -titleBar);
  }
  return areas;
}

}  // namespace

std::optional<QRect> PlaceOnScreen(const QRect& wanted, const QList<ScreenArea>& screens) {
  const QRect titleBar(wanted.topLeft(), QSize(wanted.width(), kSmallestHandle.height()));
  for (const ScreenArea& screen : screens) {
    if (screen.intersected(titleBar).width() < kSmallestHandle.width()) {
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

void WindowPlace::Restore() {
  const QList<ScreenArea> screens = ScreenAreas(window_);
  std::istringstream stored(settings_.Read(kPlaceKey, ""));
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  if (stored >> left >> top >> width >> height) {
    const QSize size = QSize(width, height).expandedTo(window_.minimumSize());
    if (const auto place = PlaceOnScreen(QRect(QPoint(left, top), size), screens)) {
      std::string state;
      stored >> state;
      window_.move(place->topLeft());
      window_.resize(place->size());
      window_.setWindowState(state == kMaximised ? Qt::WindowMaximized : Qt::WindowNoState);
      return;
    }
  }
  // Without a place of its own, the window opens where the desktop puts it.
  const qsizetype screen =
      std::max(qsizetype{0}, QGuiApplication::screens().indexOf(window_.screen()));
  if (screen < screens.size()) {
    window_.resize(window_.size().boundedTo(screens[screen].size()));
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
  const QPoint frame = isMaximised ? QPoint() : window_.geometry().topLeft() - window_.pos();
  const QPoint corner = normal.topLeft() - frame;
  std::ostringstream text;
  text << corner.x() << ' ' << corner.y() << ' ' << normal.width() << ' ' << normal.height();
  if (isMaximised) {
    text << ' ' << kMaximised;
  }
  return text.str();
}

}  // namespace kelvara::app
