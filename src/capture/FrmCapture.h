#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

#include "capture/CaptureDialog.h"
#include "platform/Beeper.h"

namespace kelvara::capture {

/// The capture dialog: which file to log to. A new one is made each time it is shown.
class FrmCapture : public QDialog {
  Q_OBJECT

 public:
  /// `captureDialog` and `beeper` must outlive the window.
  FrmCapture(CaptureDialog& captureDialog, platform::Beeper& beeper, QWidget* parent = nullptr);

  /// Lets the user choose a file, which goes into the text box and enables Start.
  void CommandBrowse_Click();

  /// Starts the capture to the file in the text box and closes the window. If the capture cannot be
  /// started, the window stays open.
  void StartButton_Click();

  /// Closes the window; nothing is started.
  void CancelButton_Click();

 protected:
  /// Sees the text box's keys first: any key enables Start, and Enter runs it.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakeControls();
  void LayOut();
  void FitToFont();
  void Form_Load();

  CaptureDialog& captureDialog_;
  platform::Beeper& beeper_;
  QLineEdit* TxtFileName_ = nullptr;
  QPushButton* CommandBrowse_ = nullptr;
  QPushButton* StartButton_ = nullptr;
  QPushButton* CancelButton_ = nullptr;
};

}  // namespace kelvara::capture
