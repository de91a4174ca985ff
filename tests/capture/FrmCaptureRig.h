#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "capture/CaptureDialog.h"
#include "capture/DataCapture.h"
#include "capture/FrmCapture.h"
#include "platform/qt/QtFileSystem.h"
#include "platform/widgets/QtFileChooser.h"
#include "platform/widgets/QtMessageBoxes.h"
#include "support/DesktopDoubles.h"
#include "support/Doubles.h"
#include "support/TextFile.h"
#include "support/WindowDriver.h"

namespace kelvara::test {

/// The capture dialog with the machine's own files, message boxes and choosers.
struct FrmCaptureRig
    : DesktopDoubles<qt::QtFileSystem, widgets::QtMessageBoxes, widgets::QtFileChooser> {
  FrmCaptureRig() {
    EXPECT_TRUE(folder.isValid());
    clock.wall = 20000.5;
  }

  /// Makes and opens a new window, as the program does, with a remembered file name.
  void Open(const std::string& lastFile = "") {
    store.SetValue("LastFile", lastFile);
    window = std::make_unique<capture::FrmCapture>(dialog, beeper);
    ShowWindow(*window);
  }

  /// A path in the test's own folder.
  std::string Path(const std::string& name) const {
    return QDir::toNativeSeparators(folder.filePath(QString::fromStdString(name))).toStdString();
  }

  QLineEdit& TxtFileName() { return Find<QLineEdit>(*window, "TxtFileName"); }
  QPushButton& Button(const char* name) { return Find<QPushButton>(*window, name); }

  QTemporaryDir folder;
  RecordingLogBox logBox;
  capture::DataCapture dataCapture{machine, &logBox};
  capture::CaptureDialog dialog{dataCapture, desktop};
  std::unique_ptr<capture::FrmCapture> window;
};

}  // namespace kelvara::test
