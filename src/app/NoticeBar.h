#pragma once

#include <QFrame>
#include <QPushButton>
#include <functional>
#include <utility>

#include "app/Notices.h"

namespace kelvara::app {

class WrappedText;

/// The line between the menu bar and the grid that tells the user what is wrong or what can be
/// undone: a text, a button and a close button. Hidden while there is nothing to say. It never
/// takes the keyboard focus; Alt+N presses its button, Alt+Shift+N closes it.
class NoticeBar : public QFrame {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent);

  /// Shows a notice; hides the bar if it is null. A new one is read out by screen readers.
  void ShowNotice(const Notice* notice, bool isNew);

  /// Sets what is called when the user presses the button, and when the notice is closed.
  void SetActed(std::function<void()> acted) { acted_ = std::move(acted); }
  void SetClosed(std::function<void()> closed) { closed_ = std::move(closed); }

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ReadOut();
  void FitColours();

  WrappedText* text_;
  QPushButton* action_;
  QPushButton* close_;
  std::function<void()> acted_;
  std::function<void()> closed_;
};

}  // namespace kelvara::app
