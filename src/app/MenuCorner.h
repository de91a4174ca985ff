#pragma once

#include <QHBoxLayout>
#include <QMenuBar>
#include <QPushButton>

namespace kelvara::app {

/// The right corner of the menu bar: flat buttons beside each other. The menu bar keeps the height
/// that its menus need.
class MenuCorner : public QWidget {
  Q_OBJECT

 public:
  /// Takes its place in the menu bar, which owns it.
  explicit MenuCorner(QMenuBar& menuBar);

  /// Adds a button to the right of those that are there. It is reached by its access key, not by
  /// Tab, as the menus are.
  QPushButton& AddButton(const char* name, const char* caption, const char* toolTip);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void FitHeight();

  QMenuBar& menuBar_;
  QHBoxLayout* buttons_;
};

}  // namespace kelvara::app
