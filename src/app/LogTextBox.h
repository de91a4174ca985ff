#pragma once

#include <QMimeData>
#include <QPlainTextEdit>
#include <functional>
#include <utility>

#include "capture/LogBox.h"

namespace kelvara::app {

/// The log box `TextLog`. Text appended while it is hidden is discarded, and a full box loses its
/// older half.
class LogTextBox : public QPlainTextEdit, public capture::LogBox {
 public:
  explicit LogTextBox(QWidget* parent = nullptr);

  bool IsShown() const override { return !isHidden(); }
  /// Shows or hides it; its text stays.
  void SetShown(bool shown);
  void Append(std::string_view text) override;
  void Clear() override { clear(); }

  /// Sets what is called after the box has been shown or hidden.
  void SetShownChanged(std::function<void()> shownChanged) {
    shownChanged_ = std::move(shownChanged);
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  /// Files that are dropped belong to the window.
  bool canInsertFromMimeData(const QMimeData* source) const override {
    return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source);
  }

 private:
  void DropOlderHalf();

  std::function<void()> shownChanged_;
};

}  // namespace kelvara::app
