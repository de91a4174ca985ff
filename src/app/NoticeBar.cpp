#include "app/NoticeBar.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QHBoxLayout>

#include "app/WrappedText.h"
#include "platform/qt/PathText.h"
#include "platform/widgets/DialogControls.h"

namespace kelvara::app {
namespace {

constexpr int kMargin = 4;

/// A flat button no wider than high.
class CloseButton : public QPushButton {
 public:
  explicit CloseButton(QWidget* parent) : QPushButton(QString(QChar(u'\u00D7')), parent) {
    setFlat(true);
  }

  QSize sizeHint() const override {
    const int side = widgets::HeightOf(*this, 1) + kMargin;
    return {side, side};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }
};

/// Gives the bar the role by which screen readers know what they should read out.
QAccessibleInterface* MakeAccessible(const QString& /*className*/, QObject* object) {
  auto* const bar = qobject_cast<NoticeBar*>(object);
  return bar == nullptr ? nullptr : new QAccessibleWidget(bar, QAccessible::AlertMessage);
}

}  // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent),
      text_(new WrappedText(this)),
      action_(widgets::NewButton(*this, "NoticeAction", "", "Alt+N")),
      close_(new CloseButton(this)) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(MakeAccessible);
    return true;
  }();
  Q_UNUSED(isInstalled);
  setObjectName(QStringLiteral("NoticeBar"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  text_->setObjectName(QStringLiteral("NoticeText"));
  text_->setForegroundRole(QPalette::ToolTipText);
  widgets::NameControl(*close_, "NoticeClose", "Close", "Close (Alt+Shift+N)");
  close_->setShortcut(QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_N));
  auto* const line = new QHBoxLayout(this);
  line->setContentsMargins(2 * kMargin, kMargin, kMargin, kMargin);
  line->addWidget(text_, 1);
  for (QPushButton* const button : {action_, close_}) {
    button->setFocusPolicy(Qt::NoFocus);
    line->addWidget(button);
  }
  connect(action_, &QPushButton::clicked, this, [this] { acted_(); });
  connect(close_, &QPushButton::clicked, this, [this] { closed_(); });
  FitColours();
  hide();
}

void NoticeBar::ShowNotice(const Notice* notice, bool isNew) {
  if (notice == nullptr) {
    setProperty("notice", QVariant());
    hide();
    return;
  }
  const std::string_view kind = NameOf(notice->kind);
  const QString name = QString::fromLatin1(kind.data(), qsizetype(kind.size()));
  const bool isOther = property("notice").toString() != name;
  setProperty("notice", name);
  const QString text = qt::MessageText(notice->text);
  text_->setText(text);
  text_->setToolTip(text);
  const QString action = QString::fromStdString(notice->action);
  action_->setText(action);
  action_->setAccessibleName(action);
  // A new caption removes the shortcut.
  action_->setShortcut(QKeySequence(Qt::ALT | Qt::Key_N));
  action_->setVisible(!action.isEmpty());
  if (isNew || isOther) {
    // The name does not follow a text that counts, so that it is read out once.
    setAccessibleName(text);
  }
  show();
  if (isNew) {
    ReadOut();
  }
}

void NoticeBar::ReadOut() {
  // Some screen readers wait for an alert, others for an object of that role to appear.
  for (const QAccessible::Event kind : {QAccessible::Alert, QAccessible::ObjectShow}) {
    QAccessibleEvent event(this, kind);
    QAccessible::updateAccessibility(&event);
  }
}

void NoticeBar::changeEvent(QEvent* event) {
  QFrame::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    FitColours();
  }
}

void NoticeBar::FitColours() {
  // A flat button shows the bar's colour behind its text.
  QPalette colours;
  colours.setColor(QPalette::ButtonText, palette().color(QPalette::ToolTipText));
  close_->setPalette(colours);
}

}  // namespace kelvara::app
