#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace kelvara::bench {

/// Calls back once, after the program's first window has been painted.
class FirstPaint : public QObject {
 public:
  explicit FirstPaint(std::function<void(QWidget& window)> painted) : painted_(std::move(painted)) {
    qApp->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) {
      qApp->removeEventFilter(this);
      auto* const window = static_cast<QWidget*>(watched)->window();
      // Painting has finished when the event loop runs again.
      QTimer::singleShot(0, window, [this, window] { painted_(*window); });
    }
    return false;
  }

 private:
  std::function<void(QWidget&)> painted_;
};

}  // namespace kelvara::bench
