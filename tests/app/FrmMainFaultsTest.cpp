#include <gtest/gtest.h>

#include <QDir>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "app/FrmMainRig.h"
#include "sim/Beltpack.h"
#include "sim/LineFault.h"
#include "sim/Site.h"

namespace kelvara::test {
namespace {

constexpr const char* kLog = "/log.txt";
constexpr const char* kQuestionTitle = "Beltpack Comms Lost";
constexpr int kPollMilliseconds = 3000;
constexpr int kPollsToTheLoss = 18;

/// The real main window, capturing a log, with a simulated beltpack on its line. Time passes only
/// in polls.
class FaultyLineRig : public FrmMainRig {
 public:
  FaultyLineRig() {
    port.onCommand = [this] { beltpack.Receive(port.TakeWritten(), clock.ticks); };
    Open();
    EXPECT_TRUE(window.StartLoggingToFile(kLog));
    PassPolls(6);
    EXPECT_EQ(Panel(1), "Beltpack Connected...");
    EXPECT_GE(Reports(), 4);
  }

  void PassPolls(int polls) {
    constexpr int kStepMilliseconds = 50;
    for (int poll = 0; poll < polls; ++poll) {
      Tick("RfpsTimer");
      for (int passed = 0; passed < kPollMilliseconds; passed += kStepMilliseconds) {
        clock.Advance(kStepMilliseconds / 1000.0);
        const std::string bytes = beltpack.TakeOutput(clock.ticks);
        if (!bytes.empty()) {
          port.Receive(bytes);
        }
      }
    }
  }

  int Reports() { return std::stoi(Panel(3).substr(std::string("Reports: ").size())); }

  /// Applies every fault of the line in turn. Recorded data stays, and the link recovers by itself
  /// each time.
  void ApplyEveryFault() {
    // Too few for a loss, so that no question appears.
    constexpr int kFaultyPolls = 5;
    constexpr int kSoundPolls = 4;
    for (const sim::LineFaultName& fault : sim::kLineFaultNames) {
      SCOPED_TRACE(std::string(fault.name));
      const int reportsBefore = Reports();
      const std::string logBefore = files.files[kLog];
      beltpack.SetFault({fault.fault});
      PassPolls(kFaultyPolls);
      EXPECT_GE(Reports(), reportsBefore);
      beltpack.SetFault({});
      beltpack.Plug();
      // After a goodbye the beltpack ignores three commands.
      PassPolls(3 + kSoundPolls);
      EXPECT_EQ(Panel(1), "Beltpack Connected...");
      EXPECT_GT(Reports(), reportsBefore);
      EXPECT_EQ(files.files[kLog].substr(0, logBefore.size()), logBefore);
      EXPECT_GT(files.files[kLog].size(), logBefore.size());
      EXPECT_TRUE(files.files[kLog].ends_with("\r\n"));
    }
    EXPECT_GE(Grid().model()->rowCount(), 13);
  }

  sim::Beltpack beltpack{sim::DemoSite()};
};

/// A window that is opened by a menu entry, or by an entry of the grid's own menu.
struct Opening {
  const char* entry;
  const char* window;
  bool ofGrid = false;
};

void PrintTo(const Opening& opening, std::ostream* stream) { *stream << opening.window; }

class WindowFaultsTest : public testing::TestWithParam<Opening> {
 protected:
  /// Opens the window, types into its first text box, calls `act` while it is open, and expects it
  /// to be unchanged.
  void WithWindowOpen(const std::function<void(QWidget& dialog)>& act) {
    const WhenShown shown(GetParam().window, [&](QWidget& dialog) {
      QLineEdit* const field = FieldOf(dialog);
      if (field != nullptr) {
        Fill(*field, "1234");
      }
      act(dialog);
      EXPECT_TRUE(dialog.isVisible());
      if (field != nullptr) {
        EXPECT_EQ(field->text(), "1234");
      }
      Press(dialog, Qt::Key_Escape);
      EXPECT_TRUE(Closes(dialog));
    });
    if (GetParam().ofGrid) {
      Find<QAction>(rig.Grid(), GetParam().entry).trigger();
    } else {
      rig.Choose(GetParam().entry);
    }
    EXPECT_TRUE(Settled());
    EXPECT_TRUE(shown.HasCome());
  }

  FaultyLineRig rig;

 private:
  static QLineEdit* FieldOf(const QWidget& dialog) {
    for (QLineEdit* const field : dialog.findChildren<QLineEdit*>()) {
      if (field->isVisible() && field->isEnabled() && !field->isReadOnly()) {
        return field;
      }
    }
    return nullptr;
  }

  /// Waits for the window to close: a modeless window is acted on after its command has returned.
  bool Settled() {
    return QTest::qWaitFor([this] {
      for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window != &rig.window && window->isVisible()) {
          return false;
        }
      }
      return true;
    });
  }
};

TEST_P(WindowFaultsTest, NoLineFaultLosesDataOrDisturbsTheWindow) {
  WithWindowOpen([this](QWidget&) { rig.ApplyEveryFault(); });
}

/// The question about the loss, found by its title because another message may be open.
QMessageBox* Question() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowTitle() == kQuestionTitle) {
      return qobject_cast<QMessageBox*>(window);
    }
  }
  return nullptr;
}

/// Answers the question about the loss whenever it appears.
class QuestionAnswer {
 public:
  explicit QuestionAnswer(QMessageBox::StandardButton button) {
    QObject::connect(&timer_, &QTimer::timeout, [this, button] {
      if (QMessageBox* const box = Question()) {
        ++count;
        Click(*box->button(button));
      }
    });
    timer_.start(10);
  }

  int count = 0;

 private:
  QTimer timer_;
};

TEST_P(WindowFaultsTest, ALostLinkIsAskedAboutOnceAndNoKeepsTheResults) {
  WithWindowOpen([this](QWidget&) {
    const int reports = rig.Reports();
    const int rows = rig.Grid().model()->rowCount();
    const QuestionAnswer answer(QMessageBox::No);
    rig.beltpack.SetFault({sim::LineFault::Silent});
    rig.PassPolls(kPollsToTheLoss);
    EXPECT_EQ(answer.count, 1);
    EXPECT_GE(rig.Reports(), reports);
    EXPECT_GE(rig.Grid().model()->rowCount(), rows);
    EXPECT_EQ(rig.Panel(1), "Attempting To Connect To Beltpack...");
    rig.beltpack.SetFault({});
    rig.PassPolls(5);
    EXPECT_EQ(rig.Panel(1), "Beltpack Connected...");
    EXPECT_GT(rig.Reports(), reports);
  });
}

using OtherWindowFaultsTest = WindowFaultsTest;

TEST_P(OtherWindowFaultsTest, YesToTheQuestionOffersTheReportAndThenClears) {
  WithWindowOpen([this](QWidget& dialog) {
    int reportsOffered = 0;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
      for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window != &dialog && window->objectName() == "FrmReport") {
          ++reportsOffered;
          EXPECT_GE(rig.Reports(), 4) << "the report comes before the clear";
          Press(*window, Qt::Key_Escape);
        }
      }
    });
    closer.start(10);
    const QuestionAnswer answer(QMessageBox::Yes);
    rig.beltpack.SetFault({sim::LineFault::Silent});
    rig.PassPolls(kPollsToTheLoss);
    EXPECT_EQ(answer.count, 1);
    EXPECT_EQ(reportsOffered, 1);
    EXPECT_EQ(rig.Reports(), 0);
    EXPECT_EQ(rig.Grid().model()->rowCount(), 1);
    EXPECT_NE(rig.files.files[kLog].find("->"), std::string::npos) << "the captured file stays";
  });
}

std::string WindowOf(const testing::TestParamInfo<Opening>& tested) { return tested.param.window; }

const auto kOtherWindows = testing::Values(
    Opening{"mnuComPort", "FrmComSelect"}, Opening{"mnuCaptureDataStart", "FrmCapture"},
    Opening{"mnuAbout", "FrmAbout"}, Opening{"mnuConvertor", "FrmConvert"},
    Opening{"mnuViewDebugOn", "FrmDebug"}, Opening{"mnuContents", "MsgBox"},
    Opening{"mnuExportResults", "CommonDialog1", true});

INSTANTIATE_TEST_SUITE_P(Windows, WindowFaultsTest, kOtherWindows, WindowOf);
INSTANTIATE_TEST_SUITE_P(Report, WindowFaultsTest,
                         testing::Values(Opening{"mnuGenReport", "FrmReport"}), WindowOf);
INSTANTIATE_TEST_SUITE_P(Windows, OtherWindowFaultsTest, kOtherWindows, WindowOf);

TEST(LossQuestionFaults, YesUsesTheOpenReportDialogAndClearsAfterItHasClosed) {
  FaultyLineRig rig;
  const int reports = rig.Reports();
  std::ptrdiff_t dialogs = 0;
  const WhenShown shown("FrmReport", [&](QWidget& dialog) {
    const QuestionAnswer answer(QMessageBox::Yes);
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
      // The dialog takes no keys until the question is gone for good.
      if (answer.count == 0 || Question() != nullptr || !dialog.isVisible()) {
        return;
      }
      const auto windows = QApplication::topLevelWidgets();
      dialogs = std::count_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->objectName() == "FrmReport";
      });
      EXPECT_GE(rig.Reports(), reports) << "nothing is cleared while it is open";
      Press(dialog, Qt::Key_Escape);
    });
    closer.start(20);
    rig.beltpack.SetFault({sim::LineFault::Silent});
    rig.PassPolls(kPollsToTheLoss);
    EXPECT_EQ(answer.count, 1);
    EXPECT_TRUE(Closes(dialog));
  });
  rig.Choose("mnuGenReport");
  EXPECT_TRUE(shown.HasCome());
  EXPECT_EQ(dialogs, 1);
  EXPECT_EQ(rig.Reports(), 0);
  EXPECT_EQ(rig.Grid().model()->rowCount(), 1);
}

TEST(LossQuestionFaults, YesDuringAQuestionOfTheReportDialogClearsAfterTheReportIsWritten) {
  FaultyLineRig rig;
  const int reports = rig.Reports();
  const QString report = QDir::toNativeSeparators(QStringLiteral("/report.html"));
  std::string& file = rig.files.files[report.toStdString()];
  file = "old";
  const WhenShown shown("FrmReport", [&](QWidget& dialog) {
    Fill(Find<QLineEdit>(dialog, "TxtFileName"), report.toStdString());
    const BoxAnswer replace(QMessageBox::Yes, [&] {
      const QuestionAnswer answer(QMessageBox::Yes);
      rig.beltpack.SetFault({sim::LineFault::Silent});
      rig.PassPolls(kPollsToTheLoss);
      EXPECT_EQ(answer.count, 1);
      EXPECT_GE(rig.Reports(), reports) << "nothing is cleared while the dialog is open";
    });
    Click(Find<QPushButton>(dialog, "CommandGenerate"));
    EXPECT_TRUE(replace.HasCome());
    EXPECT_TRUE(Closes(dialog));
  });
  rig.Choose("mnuGenReport");
  EXPECT_TRUE(shown.HasCome());
  EXPECT_NE(file.find("<td width=75>"), std::string::npos) << "the report lists antennas";
  EXPECT_EQ(rig.Reports(), 0);
}

TEST(LossQuestionFaults, NoLineFaultLosesDataWhileTheQuestionIsOpen) {
  FaultyLineRig rig;
  const int reports = rig.Reports();
  BoxAnswer box(QMessageBox::No, [&] { rig.ApplyEveryFault(); });
  rig.beltpack.SetFault({sim::LineFault::Silent});
  rig.PassPolls(kPollsToTheLoss);
  EXPECT_TRUE(box.HasCome());
  EXPECT_EQ(box.title, kQuestionTitle);
  EXPECT_GT(rig.Reports(), reports);
}

TEST(MainWindowFaults, NoLineFaultLosesDataWithTheModelessWindowsOpen) {
  FaultyLineRig rig;
  rig.Choose("mnuDisplayLogOn");
  rig.Choose("mnuConvertor");
  rig.Choose("mnuViewDebugOn");
  rig.ApplyEveryFault();
  EXPECT_TRUE(Find<QWidget>(rig.window, "FrmConvert").isVisible());
  EXPECT_TRUE(Find<QWidget>(rig.window, "FrmDebug").isVisible());
  EXPECT_FALSE(rig.TextLog().toPlainText().isEmpty());
}

}  // namespace
}  // namespace kelvara::test
