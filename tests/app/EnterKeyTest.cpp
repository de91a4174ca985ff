#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QKeyEvent>
#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "app/FrmDebug.h"
#include "capture/FrmCaptureRig.h"
#include "convert/FrmConvert.h"
#include "help/FrmAbout.h"
#include "link/FrmComSelectRig.h"
#include "report/FrmReportRig.h"
#include "support/WindowDriver.h"

namespace kelvara::test {
namespace {

/// An open dialog as a user finds it, with the objects that it works on.
class OpenDialog {
 public:
  virtual ~OpenDialog() = default;
  virtual QWidget& Window() = 0;
};

/// A dialog that a rig opens.
template <typename Rig>
class RiggedDialog : public OpenDialog {
 public:
  template <typename... Arguments>
  explicit RiggedDialog(const Arguments&... arguments) {
    rig_.Open(arguments...);
  }
  QWidget& Window() override { return *rig_.window; }

 private:
  Rig rig_;
};

/// A dialog that needs only its constructor's arguments.
template <typename Dialog>
class PlainDialog : public OpenDialog {
 public:
  template <typename... Arguments>
  explicit PlainDialog(Arguments&&... arguments)
      : window_(std::forward<Arguments>(arguments)..., &main_) {
    ShowWindow(window_);
  }
  QWidget& Window() override { return window_; }

 private:
  QWidget main_;
  Dialog window_;
};

/// How a dialog is opened, how many buttons it has, and which of them Enter presses from anywhere.
struct Tested {
  const char* name;
  std::function<std::unique_ptr<OpenDialog>()> open;
  qsizetype buttons;
  const char* defaultButton;
};

void PrintTo(const Tested& tested, std::ostream* stream) { *stream << tested.name; }

CountingBeeper beeper;

const std::vector<Tested> kDialogs = {
    {"FrmAbout", [] { return std::make_unique<PlainDialog<help::FrmAbout>>(); }, 1, "cmdOK"},
    {"FrmComSelect", [] { return std::make_unique<RiggedDialog<FrmComSelectRig>>(); }, 2, "CmdOK"},
    {"FrmCapture",
     [] { return std::make_unique<RiggedDialog<FrmCaptureRig>>(std::string("log.txt")); }, 3, ""},
    {"FrmReport", [] { return std::make_unique<RiggedDialog<FrmReportRig>>(); }, 3, ""},
    {"FrmConvert", [] { return std::make_unique<PlainDialog<convert::FrmConvert>>(beeper); }, 9,
     ""},
    {"FrmDebug",
     [] { return std::make_unique<PlainDialog<app::FrmDebug>>(std::function<void()>([] {})); }, 1,
     ""}};

/// Every dialog, with buttons that only record that they were pressed.
class EnterKeyTest : public testing::TestWithParam<Tested> {
 protected:
  EnterKeyTest() : dialog_(GetParam().open()) {
    const auto buttons = dialog_->Window().findChildren<QPushButton*>();
    for (QPushButton* const button : buttons) {
      button->disconnect();
      QObject::connect(button, &QPushButton::clicked,
                       [this, button] { pressed_ += button->objectName().toStdString() + ' '; });
    }
  }

  QWidget& Window() { return dialog_->Window(); }

  /// The buttons that the two Enter keys press, one after the other, while a control has the focus.
  std::string PressedFrom(QWidget& control) {
    pressed_.clear();
    control.setFocus();
    EXPECT_TRUE(control.hasFocus()) << control.objectName().toStdString();
    Press(Window(), Qt::Key_Return);
    Press(Window(), Qt::Key_Enter, Qt::KeypadModifier);
    return pressed_;
  }

  static std::string Twice(const std::string& name) {
    return name.empty() ? name : name + ' ' + name + ' ';
  }

 private:
  std::string pressed_;
  std::unique_ptr<OpenDialog> dialog_;
};

TEST_P(EnterKeyTest, PressesTheFocusedButton) {
  const auto buttons = Window().findChildren<QPushButton*>();
  EXPECT_EQ(buttons.size(), GetParam().buttons);
  for (QPushButton* const button : buttons) {
    EXPECT_EQ(PressedFrom(*button), Twice(button->objectName().toStdString()));
  }
  EXPECT_TRUE(Window().isVisible());
}

TEST_P(EnterKeyTest, PressesOnlyTheDefaultButtonFromElsewhere) {
  for (QWidget* control : Window().findChildren<QWidget*>()) {
    // In the text boxes of the capture and report dialogs Enter acts like a button without pressing
    // one; other tests cover the message boxes that may follow.
    const bool runsTheDialog =
        control->objectName().startsWith(u"Txt") &&
        (Window().objectName() == u"FrmCapture" || Window().objectName() == u"FrmReport");
    if (control->focusPolicy() != Qt::NoFocus && control->isVisible() && !runsTheDialog &&
        control->focusProxy() == nullptr && qobject_cast<QPushButton*>(control) == nullptr) {
      EXPECT_EQ(PressedFrom(*control), Twice(GetParam().defaultButton))
          << control->objectName().toStdString();
    }
  }
  EXPECT_TRUE(Window().isVisible());
}

TEST_P(EnterKeyTest, HeldDownPressesAButtonOnce) {
  QPushButton& button = *Window().findChildren<QPushButton*>().constLast();
  button.setFocus();
  int pressed = 0;
  QObject::connect(&button, &QPushButton::clicked, [&pressed] { ++pressed; });
  Press(Window(), Qt::Key_Return);
  for (int repeat = 0; repeat < 3; ++repeat) {
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QCoreApplication::sendEvent(&button, &held);
  }
  EXPECT_EQ(pressed, 1);
}

INSTANTIATE_TEST_SUITE_P(Dialogs, EnterKeyTest, testing::ValuesIn(kDialogs),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(DefaultButtonTest, IsTheDefaultUntilAnotherButtonHasTheFocus) {
  FrmComSelectRig rig;
  rig.Open();
  EXPECT_TRUE(rig.Button("CmdOK").isDefault());
  rig.Button("CmdCancel").setFocus();
  EXPECT_FALSE(rig.Button("CmdOK").isDefault());
  EXPECT_TRUE(rig.Button("CmdCancel").isDefault());
  rig.ComboCom().setFocus();
  EXPECT_TRUE(rig.Button("CmdOK").isDefault());
}

}  // namespace
}  // namespace kelvara::test
