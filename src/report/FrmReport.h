#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/Beeper.h"
#include "report/ReportDialog.h"

namespace kelvara::report {

/// The report dialog: where the report goes, its header fields, and whether to show it. A new one
/// is made each time it is shown.
class FrmReport : public QDialog {
  Q_OBJECT

 public:
  /// `reportDialog` and `beeper` must outlive the window.
  FrmReport(ReportDialog& reportDialog, platform::Beeper& beeper, QWidget* parent = nullptr);

  /// Lets the user choose a file, which goes into the text box.
  void CommandBrowse_Click();

  /// Writes the report from what the fields hold and closes the window. If the report is not
  /// written, the window stays open.
  void CommandGenerate_Click();

  /// Closes the window; no report is written.
  void CommandCancel_Click();

 protected:
  /// Sees the text boxes' keys first: Enter runs Generate and then acts in the box as usual;
  /// Ctrl+Enter breaks the line in the notes.
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakeControls();
  void LayOut();
  void FitToFont();
  void Form_Load();
  ReportFields Fields() const;

  ReportDialog& reportDialog_;
  platform::Beeper& beeper_;
  QLineEdit* TxtFileName_ = nullptr;
  QPushButton* CommandBrowse_ = nullptr;
  QLineEdit* TxtSite_ = nullptr;
  QLineEdit* TxtTester_ = nullptr;
  QPlainTextEdit* TxtNotes_ = nullptr;
  QCheckBox* CheckOpenReport_ = nullptr;
  QPushButton* CommandGenerate_ = nullptr;
  QPushButton* CommandCancel_ = nullptr;
};

}  // namespace kelvara::report
