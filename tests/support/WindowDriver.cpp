#include "support/WindowDriver.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QTest>
#include <QWindow>
#include <utility>

namespace kelvara::test {
namespace {

constexpr int kLookMilliseconds = 10;
constexpr int kMostLooks = 500;
constexpr int kMostLooksUntilActive = 100;

QWindow& NativeWindow(const QWidget& widget) {
  QWindow* const window = widget.window()->windowHandle();
  if (window == nullptr) {
    throw std::runtime_error("not shown: " + widget.window()->objectName().toStdString());
  }
  return *window;
}

/// Lets a dialog or menu that a key or a click has closed return to its caller. QTest lets pending
/// events run after each of them. On Windows this makes the loop of the dialog miss its own end,
/// until the next message wakes it.
void WakeEventLoop() { QAbstractEventDispatcher::instance()->wakeUp(); }

QWidget* VisibleWindow(const QString& name) {
  const QWidgetList windows = QApplication::topLevelWidgets();
  for (QWidget* const window : windows) {
    if (window->objectName() == name && window->isVisible()) {
      return window;
    }
  }
  return nullptr;
}

QPalette DarkPalette() {
  const QColor window(45, 45, 48);
  QPalette palette(QColor(63, 63, 66), window);
  palette.setColor(QPalette::Base, QColor(30, 30, 30));
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Highlight, QColor(38, 110, 180));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::ToolTipBase, window);
  palette.setColor(QPalette::ToolTipText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, Qt::gray);
  return palette;
}

/// Whether the control shows a text, for which it must be large enough.
bool HasOwnText(const QWidget& control) {
  return qobject_cast<const QLabel*>(&control) != nullptr ||
         qobject_cast<const QAbstractButton*>(&control) != nullptr ||
         qobject_cast<const QLineEdit*>(&control) != nullptr;
}

/// The visible controls of a parent, without Qt's internal ones.
QWidgetList VisibleControls(const QWidget& parent) {
  QWidgetList visible;
  const auto children = parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  for (QWidget* const child : children) {
    if (child->isVisible() && !child->isWindow() && !child->objectName().startsWith(u"qt_")) {
      visible.append(child);
    }
  }
  return visible;
}

void AddLayoutFaults(const QWidget& parent, std::string& faults) {
  const QWidgetList controls = VisibleControls(parent);
  for (qsizetype i = 0; i < controls.size(); ++i) {
    const QWidget& control = *controls[i];
    const std::string name = control.objectName().toStdString();
    if (!parent.rect().contains(control.geometry())) {
      faults += name + " extends beyond its parent\n";
    }
    const QSize needed = control.minimumSizeHint();
    if (HasOwnText(control) &&
        (control.width() < needed.width() || control.height() < needed.height())) {
      faults += name + " is cut\n";
    }
    for (qsizetype j = i + 1; j < controls.size(); ++j) {
      if (control.geometry().intersects(controls[j]->geometry())) {
        faults += name + " overlaps " + controls[j]->objectName().toStdString() + '\n';
      }
    }
    AddLayoutFaults(control, faults);
  }
}

}  // namespace

void ShowWindow(QWidget& window) {
  window.show();
  window.activateWindow();
  if (!QTest::qWaitForWindowActive(&window)) {
    throw std::runtime_error("not active: " + window.objectName().toStdString());
  }
}

void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(&NativeWindow(window), key, modifiers);
  WakeEventLoop();
}

void Type(QWidget& window, const std::string& text) {
  for (const char character : text) {
    QTest::keyClick(&NativeWindow(window), character);
  }
}

void Click(QWidget& control) {
  if (!control.isVisible()) {
    throw std::runtime_error("not visible: " + control.objectName().toStdString());
  }
  QTest::mouseClick(&NativeWindow(control), Qt::LeftButton, Qt::NoModifier,
                    control.mapTo(control.window(), control.rect().center()));
  WakeEventLoop();
}

void Fill(QWidget& field, const std::string& text) {
  Click(field);
  Press(field, Qt::Key_A, Qt::ControlModifier);
  Press(field, Qt::Key_Delete);
  Type(field, text);
}

bool Closes(const QWidget& window) {
  constexpr int kPatience = 2000;
  return QTest::qWaitFor([&window] { return !window.isVisible(); }, kPatience);
}

std::string FocusName() {
  const QWidget* const focus = QApplication::focusWidget();
  return focus == nullptr ? std::string() : focus->objectName().toStdString();
}

std::string TabOrder(QWidget& window) {
  constexpr int kMostStops = 100;
  const std::string first = FocusName();
  std::string order = first;
  for (int stop = 0; stop < kMostStops; ++stop) {
    Press(window, Qt::Key_Tab);
    const std::string name = FocusName();
    if (name == first) {
      return order;
    }
    order += ' ' + name;
  }
  return order;
}

WhenShown::WhenShown(const char* name, std::function<void(QWidget&)> act)
    : name_(QString::fromLatin1(name)), act_(std::move(act)) {
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Look(); });
  timer_.start(kLookMilliseconds);
}

WhenShown::~WhenShown() { EXPECT_TRUE(hasCome_) << name_.toStdString() << " was not shown"; }

void WhenShown::Look() {
  QWidget* const dialog = VisibleWindow(name_);
  // A window manager may take its time to give a new window the keyboard.
  const bool hasKeyboard = dialog != nullptr && dialog->isActiveWindow() &&
                           dialog->focusWidget() != nullptr && NativeWindow(*dialog).isExposed();
  if (hasKeyboard || (dialog != nullptr && ++looksUntilActive_ == kMostLooksUntilActive)) {
    timer_.stop();
    hasCome_ = true;
    act_(*dialog);
  } else if (dialog == nullptr && ++looks_ == kMostLooks) {
    timer_.stop();
    while (QWidget* const modal = QApplication::activeModalWidget()) {
      modal->close();
    }
  }
}

UseTheme::UseTheme(Theme theme) : before_(QApplication::palette()) {
  QApplication::setPalette(theme == Theme::Dark ? DarkPalette() : QPalette(QColor(239, 239, 239)));
}

UseTheme::~UseTheme() { QApplication::setPalette(before_); }

UseFont::UseFont(double scale) : before_(QApplication::font()) {
  QFont font = before_;
  font.setPointSizeF(font.pointSizeF() * scale);
  QApplication::setFont(font);
}

UseFont::~UseFont() { QApplication::setFont(before_); }

std::string LayoutFaults(const QWidget& window) {
  std::string faults;
  AddLayoutFaults(window, faults);
  return faults;
}

void TakePicture(QWidget& window, const std::string& note) {
  QCoreApplication::processEvents();
  const QDir folder(QStringLiteral(KELVARA_SCREENSHOTS));
  EXPECT_TRUE(folder.mkpath(QStringLiteral(".")));
  const QString name = QStringLiteral("%1-%2-x%3.png")
                           .arg(window.objectName(), QString::fromStdString(note))
                           .arg(window.devicePixelRatioF());
  EXPECT_TRUE(window.grab().save(folder.filePath(name))) << name.toStdString();
}

}  // namespace kelvara::test
