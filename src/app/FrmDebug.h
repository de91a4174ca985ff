#pragma once

#include <QDialog>
#include <functional>
#include <string_view>

#include "link/DebugView.h"

class QLineEdit;
class QPlainTextEdit;
class QTimer;

namespace kelvara::app {

/// The debug window: the last command sent, in green for half a second, and the report text that is
/// being collected. Modeless. Closing only hides it; it is empty each time it opens.
class FrmDebug : public QDialog, public link::DebugView {
  Q_OBJECT

 public:
  /// `closed` is called each time the window has been closed, in whatever way.
  FrmDebug(std::function<void()> closed, QWidget* parent);

  /// Opens the window, or brings it to the front if it is open. Either way its text is emptied.
  void Open();  // NOLINT(bugprone-virtual-near-miss): not modal

  /// Adds a line to the text.
  void DebugPrint(std::string_view strDbg);

  /// Empties the text.
  void DebugCls();

  void DebugLastTxMsg(std::string_view strTx) override;
  void ShowReportText(std::string_view text) override;

 protected:
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void AddControls();
  void TimerColor_Timer();
  void ShowTextColour();
  void Form_Unload();

  std::function<void()> closed_;
  QLineEdit* TxtLastTxMsg_ = nullptr;
  QPlainTextEdit* TextDebug_ = nullptr;
  QTimer* TimerColor_ = nullptr;
};

}  // namespace kelvara::app
