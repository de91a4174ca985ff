#include "capture/FrmCapture.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>

#include "platform/EventHandler.h"
#include "platform/qt/PathText.h"
#include "platform/widgets/DialogControls.h"

namespace kelvara::capture {
namespace {

constexpr int kFileNameCharacters = 44;

/// Keys that type nothing and only modify others.
bool IsModifier(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
      return true;
    default:
      return false;
  }
}

}  // namespace

FrmCapture::FrmCapture(CaptureDialog& captureDialog, platform::Beeper& beeper, QWidget* parent)
    : QDialog(parent), captureDialog_(captureDialog), beeper_(beeper) {
  setObjectName(QStringLiteral("FrmCapture"));
  setWindowTitle(QStringLiteral("Capture Sync Reports To File"));
  setModal(true);
  MakeControls();
  LayOut();
  platform::HandleEvent(beeper_, [this] { Form_Load(); });
}

void FrmCapture::MakeControls() {
  TxtFileName_ =
      widgets::NewTextBox(*this, "TxtFileName", "File", "Path and name of file to log to.");
  CommandBrowse_ = widgets::NewButton(*this, "CommandBrowse", "&Browse...", "Browse for file.");
  StartButton_ =
      widgets::NewButton(*this, "StartButton", "&Start", "Start logging raw sync data to file.");
  CancelButton_ = widgets::NewButton(*this, "CancelButton", "&Cancel", "Cancel logging.");

  TxtFileName_->installEventFilter(this);
  connect(CommandBrowse_, &QPushButton::clicked, this, &FrmCapture::CommandBrowse_Click);
  connect(StartButton_, &QPushButton::clicked, this, &FrmCapture::StartButton_Click);
  connect(CancelButton_, &QPushButton::clicked, this, &FrmCapture::CancelButton_Click);
}

void FrmCapture::LayOut() {
  auto* const file = new QHBoxLayout;
  file->addWidget(widgets::NewLabel(*this, "Label1", "File:"));
  file->addWidget(TxtFileName_, 1);
  file->addWidget(CommandBrowse_);
  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(StartButton_);
  buttons->addWidget(CancelButton_);
  auto* const column = new QVBoxLayout(this);
  column->addLayout(file);
  column->addStretch();
  column->addLayout(buttons);
  FitToFont();
}

void FrmCapture::FitToFont() {
  TxtFileName_->setMinimumWidth(widgets::WidthOf(*TxtFileName_, kFileNameCharacters));
}

void FrmCapture::Form_Load() {
  TxtFileName_->setText(qt::QStringFromPath(captureDialog_.Form_Load()));
  StartButton_->setEnabled(!TxtFileName_->text().isEmpty());
}

void FrmCapture::CommandBrowse_Click() {
  // The program may end, and destroy the window, while a question is open.
  const QPointer<FrmCapture> self(this);
  platform::HandleEvent(beeper_, [&] {
    const std::optional<std::string> chosen = captureDialog_.CommandBrowse_Click();
    if (self && chosen) {
      TxtFileName_->setText(qt::QStringFromPath(*chosen));
      StartButton_->setEnabled(true);
    }
  });
}

void FrmCapture::StartButton_Click() {
  const QPointer<FrmCapture> self(this);
  platform::HandleEvent(beeper_, [&] {
    if (captureDialog_.StartButton_Click(qt::PathFromQString(TxtFileName_->text())) && self) {
      accept();
    }
  });
}

void FrmCapture::CancelButton_Click() { reject(); }

bool FrmCapture::eventFilter(QObject* watched, QEvent* event) {
  // Letters composed of several keys arrive from an input method, without a key press.
  if (event->type() == QEvent::InputMethod) {
    StartButton_->setEnabled(true);
  }
  if (event->type() == QEvent::KeyPress) {
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (!IsModifier(key)) {
      StartButton_->setEnabled(true);
    }
    if (widgets::IsEnter(key)) {
      const QPointer<FrmCapture> self(this);
      StartButton_Click();
      if (!self) {
        return true;
      }
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmCapture::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    FitToFont();
  }
}

}  // namespace kelvara::capture
