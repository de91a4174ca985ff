#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

/// A user at the keyboard, the mouse and the screen of the windows under test. Keys and clicks go
/// to the native window, so that shortcuts, focus and disabled controls count as they do for users.
namespace kelvara::test {

/// Shows a window and waits until it has the keyboard.
void ShowWindow(QWidget& window);

/// The control of a window by its name; a window without it ends the test.
template <typename Control>
Control& Find(const QWidget& window, const char* name) {
  auto* const control = window.findChild<Control*>(QString::fromLatin1(name));
  if (control == nullptr) {
    throw std::runtime_error(std::string("no control ") + name);
  }
  return *control;
}

/// Presses and releases a key in a window.
void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Types ASCII text into what has the keyboard in a window.
void Type(QWidget& window, const std::string& text);

/// Clicks the middle of a control, which has to be visible.
void Click(QWidget& control);

/// Clicks into a field and types over what it holds.
void Fill(QWidget& field, const std::string& text);

/// Waits until a window is closed; false when it stays. A button that is pressed by its access key
/// stays down for a moment before it acts.
bool Closes(const QWidget& window);

/// The name of the control that has the keyboard.
std::string FocusName();

/// Names of the controls in the order in which Tab reaches them, from the one that has the keyboard
/// until it comes back there.
std::string TabOrder(QWidget& window);

/// Waits for a dialog by its name and does something with it: a message box (`MsgBox`) or any
/// other. It has to be made before the dialog opens, and a dialog that has not come when it goes is
/// a failure. One that does not come in five seconds closes what is open instead, so that the test
/// ends.
class WhenShown {
 public:
  WhenShown(const char* name, std::function<void(QWidget& dialog)> act);
  ~WhenShown();
  WhenShown(const WhenShown&) = delete;
  WhenShown& operator=(const WhenShown&) = delete;

  bool HasCome() const { return hasCome_; }

 private:
  void Look();

  QString name_;
  std::function<void(QWidget&)> act_;
  QTimer timer_;
  int looks_ = 0;
  bool hasCome_ = false;
};

enum class Theme { Light, Dark };

/// The program's colours, as a desktop with such a theme sets them, until it goes.
class UseTheme {
 public:
  explicit UseTheme(Theme theme);
  ~UseTheme();
  UseTheme(const UseTheme&) = delete;
  UseTheme& operator=(const UseTheme&) = delete;

 private:
  QPalette before_;
};

/// The program's font, until it goes.
class UseFont {
 public:
  explicit UseFont(double scale);
  ~UseFont();
  UseFont(const UseFont&) = delete;
  UseFont& operator=(const UseFont&) = delete;

 private:
  QFont before_;
};

/// What a reader would find wrong with a window's layout, one complaint a line: controls that
/// overlap, reach out of their parent, or are smaller than their text.
std::string LayoutFaults(const QWidget& window);

/// Saves what the window shows in the build folder's `screenshots`, named after the window, the
/// note and the scale.
void TakePicture(QWidget& window, const std::string& note);

}  // namespace kelvara::test
