#include "app/FrmDebug.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QTextCursor>
#include <QTimer>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"
#include "platform/widgets/DialogManners.h"
#include "platform/widgets/FixedPitchFont.h"
#include "sync/Colour.h"

namespace kelvara::app {
namespace {

using namespace std::chrono_literals;

constexpr sync::Colour kJustSent{0x00C000};
constexpr auto kFlash = 500ms;

// A whole report of 29 lines is visible at once, with the empty line after it and one line to
// spare: the box scrolls when the last line touches its edge.
constexpr int kVisibleColumns = 60;
constexpr int kVisibleLines = 31;

}  // namespace

FrmDebug::FrmDebug(std::function<void()> closed, QWidget* parent)
    : QDialog(parent), closed_(std::move(closed)) {
  setObjectName(QStringLiteral("FrmDebug"));
  setWindowTitle(QStringLiteral("Kelvara Debug"));
  setWindowFlag(Qt::WindowMinMaxButtonsHint);

  AddControls();

  TimerColor_ = new QTimer(this);
  TimerColor_->setObjectName(QStringLiteral("TimerColor"));
  TimerColor_->setTimerType(Qt::PreciseTimer);
  TimerColor_->setInterval(kFlash);
  connect(TimerColor_, &QTimer::timeout, this, &FrmDebug::TimerColor_Timer);

  Form_Unload();
}

void FrmDebug::AddControls() {
  QLabel* const label = widgets::NewLabel(*this, "Label1", "Last Message Tx:");
  TxtLastTxMsg_ = widgets::NewTextBox(*this, "TxtLastTxMsg", "Last Message Tx", "");
  TxtLastTxMsg_->setReadOnly(true);
  label->setBuddy(TxtLastTxMsg_);

  TextDebug_ = new QPlainTextEdit(this);
  widgets::NameControl(*TextDebug_, "TextDebug", "Received report text", "");
  TextDebug_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  TextDebug_->setTabChangesFocus(true);
  TextDebug_->setUndoRedoEnabled(false);
  TextDebug_->setLineWrapMode(QPlainTextEdit::NoWrap);
  QFont font = widgets::CourierNew();
  // Otherwise garbled text would make Qt load the machine's fonts one by one in search of its
  // characters, which stops the window for up to a second and keeps memory.
  font.setStyleStrategy(QFont::NoFontMerging);
  TextDebug_->setFont(font);

  QPushButton* const cmdClose = widgets::NewButton(*this, "CmdClose", "&Close", "");
  connect(cmdClose, &QPushButton::clicked, this, &QDialog::close);

  auto* const lastMessage = new QHBoxLayout;
  lastMessage->addWidget(label);
  lastMessage->addWidget(TxtLastTxMsg_);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(lastMessage);
  layout->addWidget(TextDebug_);
  layout->addWidget(cmdClose, 0, Qt::AlignRight);

  const int frame =
      2 * (TextDebug_->frameWidth() + qRound(TextDebug_->document()->documentMargin()));
  const QSize wholeReport(widgets::WidthOf(*TextDebug_, kVisibleColumns) + frame,
                          widgets::HeightOf(*TextDebug_, kVisibleLines) + frame);
  const QSize size = layout->sizeHint() - TextDebug_->sizeHint() + wholeReport;
  resize(size.boundedTo(screen()->availableSize()));
}

void FrmDebug::Open() {  // NOLINT(bugprone-virtual-near-miss): not modal
  widgets::ShowInFront(*this);
  DebugCls();
}

void FrmDebug::DebugPrint(std::string_view strDbg) {
  QTextCursor end(TextDebug_->document());
  end.movePosition(QTextCursor::End);
  end.insertText(qt::ToQString(strDbg) + QStringLiteral("\r\n"));
}

void FrmDebug::DebugCls() { TextDebug_->clear(); }

void FrmDebug::DebugLastTxMsg(std::string_view strTx) {
  // A running timer is left running: its tick ends the green of every command sent before it.
  if (!TimerColor_->isActive()) {
    TimerColor_->start();
  }
  ShowTextColour();
  TxtLastTxMsg_->setText(qt::ToQString(strTx));
}

void FrmDebug::ShowReportText(std::string_view text) {
  // The lines in view stay in view while the text grows.
  const int line = TextDebug_->verticalScrollBar()->value();
  TextDebug_->setPlainText(qt::ToQString(text));
  TextDebug_->verticalScrollBar()->setValue(line);
}

void FrmDebug::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  // The desktop hides a window too, when it is made small; that does not close it.
  if (!event->spontaneous()) {
    Form_Unload();
    closed_();
  }
}

void FrmDebug::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && TimerColor_ != nullptr) {
    ShowTextColour();
  }
}

void FrmDebug::TimerColor_Timer() {
  TimerColor_->stop();
  ShowTextColour();
}

void FrmDebug::ShowTextColour() {
  // Text and background are set as a pair, so that the text is readable in any theme.
  const QPalette system = QApplication::palette(TxtLastTxMsg_);
  QPalette palette = TxtLastTxMsg_->palette();
  palette.setColor(QPalette::Base, system.color(QPalette::Base));
  palette.setColor(QPalette::Text,
                   TimerColor_->isActive()
                       ? QColor(kJustSent.Red(), kJustSent.Green(), kJustSent.Blue())
                       : system.color(QPalette::WindowText));
  TxtLastTxMsg_->setPalette(palette);
}

void FrmDebug::Form_Unload() {
  TimerColor_->stop();
  ShowTextColour();
  TxtLastTxMsg_->clear();
  TextDebug_->clear();
  TxtLastTxMsg_->setFocus();
}

}  // namespace kelvara::app
