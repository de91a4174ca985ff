#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <stdexcept>
#include <string>

/// Operates windows with keyboard and mouse and reads what they show. Keys and clicks go to the
/// native window, so that shortcuts, focus and disabled controls work as for a user.
namespace kelvara::test {

/// Shows a window and waits until it is active.
void ShowWindow(QWidget& window);

/// The control of a window with this name. Throws if there is none.
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

/// Types ASCII text into the focused control of a window.
void Type(QWidget& window, const std::string& text);

/// Clicks the middle of a control, which must be visible.
void Click(QWidget& control);

/// Clicks into a field and replaces its text by typing.
void Fill(QWidget& field, const std::string& text);

/// Waits until a window is closed. False if it stays open for two seconds. A button pressed by its
/// access key stays down for a moment before it acts.
bool Closes(const QWidget& window);

/// The name of the focused control.
std::string FocusName();

/// The names of the controls in tab order, starting at the focused control.
std::string TabOrder(QWidget& window);

/// Waits for a dialog with this name, such as a message box (`MsgBox`), and runs `act` on it.
/// Create it before the dialog opens. The destructor adds a failure if the dialog was never shown.
/// After five seconds without the dialog, closes all modal windows so that the test ends.
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
  int looksUntilActive_ = 0;
  bool hasCome_ = false;
};

enum class Theme { Light, Dark };

/// Gives the program the colours of a desktop theme until this is destroyed.
class UseTheme {
 public:
  explicit UseTheme(Theme theme);
  ~UseTheme();
  UseTheme(const UseTheme&) = delete;
  UseTheme& operator=(const UseTheme&) = delete;

 private:
  QPalette before_;
};

/// Scales the program's font until this is destroyed.
class UseFont {
 public:
  explicit UseFont(double scale);
  ~UseFont();
  UseFont(const UseFont&) = delete;
  UseFont& operator=(const UseFont&) = delete;

 private:
  QFont before_;
};

/// The faults of a window's layout, one a line: controls that overlap, extend beyond their parent,
/// or are smaller than their text.
std::string LayoutFaults(const QWidget& window);

/// Saves a picture of the window in the build folder's `screenshots`, named after the window, the
/// note and the scale.
void TakePicture(QWidget& window, const std::string& note);

}  // namespace kelvara::test
