#pragma once

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "platform/qt/QtFileSystem.h"
#include "platform/widgets/QtFileChooser.h"
#include "platform/widgets/QtMessageBoxes.h"
#include "report/FrmReport.h"
#include "report/ReportDialog.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/TextFile.h"
#include "support/WindowDriver.h"

namespace kelvara::test {

/// The report dialog with the machine's own files, message boxes and choosers; documents are
/// recorded and not opened.
struct FrmReportRig
    : DesktopDoubles<qt::QtFileSystem, widgets::QtMessageBoxes, widgets::QtFileChooser> {
  FrmReportRig() {
    EXPECT_TRUE(folder.isValid());
    model.FindOrAddAa(13, 1, 2);
    model.FindOrAddAa(7, 0, 2);
    model.AddPhase(0, 1, 9);
  }

  /// Makes and opens a new window, as the program does.
  report::FrmReport& Open() {
    window = std::make_unique<report::FrmReport>(dialog, beeper);
    ShowWindow(*window);
    return *window;
  }

  /// A path in the test's own folder.
  std::string Path(const std::string& name) const {
    return QDir::toNativeSeparators(folder.filePath(QString::fromStdString(name))).toStdString();
  }

  bool Exists(const std::string& name) const {
    return QFileInfo::exists(QString::fromStdString(Path(name)));
  }

  QLineEdit& TxtFileName() { return Find<QLineEdit>(*window, "TxtFileName"); }
  QLineEdit& TxtSite() { return Find<QLineEdit>(*window, "TxtSite"); }
  QLineEdit& TxtTester() { return Find<QLineEdit>(*window, "TxtTester"); }
  QPlainTextEdit& TxtNotes() { return Find<QPlainTextEdit>(*window, "TxtNotes"); }
  QCheckBox& CheckOpenReport() { return Find<QCheckBox>(*window, "CheckOpenReport"); }
  QPushButton& Button(const char* name) { return Find<QPushButton>(*window, name); }

  QTemporaryDir folder;
  sync::SyncModel model;
  sync::DisplayOptions options;
  report::SyncReport syncReport{model, options, machine};
  report::ReportDialog dialog{model, syncReport, InProgramFolder()};
  std::unique_ptr<report::FrmReport> window;

 private:
  platform::Desktop& InProgramFolder() {
    desktop.programFolder = folder.path().toStdString();
    return desktop;
  }
};

}  // namespace kelvara::test
