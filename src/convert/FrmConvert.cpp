#include "convert/FrmConvert.h"

#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QList>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/EventHandler.h"
#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"

namespace kelvara::convert {
namespace {

// A text as long as the longest usual result, with a little space beside it.
constexpr const char* kWidestText = "-4.48275862068966E+15 ";

}  // namespace

FrmConvert::FrmConvert(platform::Beeper& beeper, QWidget* parent)
    : QDialog(parent), beeper_(beeper) {
  setObjectName(QStringLiteral("FrmConvert"));
  setWindowTitle(QStringLiteral("Converter"));

  auto* const layout = new QVBoxLayout(this);
  for (const ConverterFrame& frame : ConverterFrames()) {
    layout->addWidget(AddFrame(frame));
  }
  QPushButton* const cmdOK = widgets::NewButton(*this, "CmdOK", "&OK", "Close Converter.");
  connect(cmdOK, &QPushButton::clicked, this, &QDialog::close);
  layout->addWidget(cmdOK, 0, Qt::AlignRight);
  layout->setSizeConstraint(QLayout::SetFixedSize);

  FitToFont();
  Form_Unload();
}

QWidget* FrmConvert::AddFrame(const ConverterFrame& frame) {
  auto* const box = new QGroupBox(QString::fromLatin1(frame.caption), this);
  box->setObjectName(QString::fromLatin1(frame.control));
  auto* const layout = new QGridLayout(box);
  for (const ConverterField& field : frame.fields) {
    AddField(field, *box, *layout);
  }
  return box;
}

void FrmConvert::AddField(const ConverterField& field, QWidget& frame, QGridLayout& layout) {
  const QString labelName = QStringLiteral("Label%1").arg(++labelCount_);
  QLabel* const label = widgets::NewLabel(frame, labelName.toLatin1().constData(), field.label);
  const QString spokenName = QString::fromLatin1(field.label).remove(u':');

  QLineEdit* const edit = widgets::NewTextBox(frame, field.control, "", field.toolTip);
  edit->setAccessibleName(spokenName);
  label->setBuddy(edit);
  EditOf(field.field) = edit;

  QPushButton* const button =
      widgets::NewButton(frame, field.button, "Update", field.buttonToolTip);
  button->setAccessibleName(QStringLiteral("Update from ") + spokenName);
  connect(button, &QPushButton::clicked, this,
          [this, source = field.field] { UpdateFrom(source); });

  const int row = layout.rowCount();
  layout.addWidget(label, row, 0);
  layout.addWidget(edit, row, 1);
  layout.addWidget(button, row, 2);
}

void FrmConvert::FitToFont() {
  int widestLabel = 0;
  const QList<QLabel*> labels = findChildren<QLabel*>();
  for (const QLabel* const label : labels) {
    widestLabel = std::max(widestLabel, label->sizeHint().width());
  }
  // One width for the labels of both frames, so that all fields line up.
  const QList<QGridLayout*> layouts = findChildren<QGridLayout*>();
  for (QGridLayout* const layout : layouts) {
    layout->setColumnMinimumWidth(0, widestLabel);
  }
  const QString widestText = QString::fromLatin1(kWidestText);
  const QList<QLineEdit*> edits = findChildren<QLineEdit*>();
  for (QLineEdit* const edit : edits) {
    edit->setMinimumWidth(edit->fontMetrics().horizontalAdvance(widestText));
  }
}

void FrmConvert::UpdateFrom(Field source) {
  platform::HandleEvent(beeper_, [this, source] {
    for (const auto& [field, text] :
         converter_.Update(source, qt::ToText(EditOf(source)->text()))) {
      EditOf(field)->setText(qt::ToQString(text));
    }
  });
}

void FrmConvert::UpdateFromFocusedField() {
  for (const ConverterFrame& frame : ConverterFrames()) {
    for (const ConverterField& field : frame.fields) {
      if (field.enterUpdates && EditOf(field.field)->hasFocus()) {
        UpdateFrom(field.field);
      }
    }
  }
}

void FrmConvert::keyPressEvent(QKeyEvent* event) {
  if (widgets::IsEnter(*event)) {
    UpdateFromFocusedField();
  }
  QDialog::keyPressEvent(event);
}

void FrmConvert::hideEvent(QHideEvent* event) {
  QDialog::hideEvent(event);
  // Minimising a window hides it too, but does not close it.
  if (!event->spontaneous()) {
    Form_Unload();
  }
}

void FrmConvert::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    FitToFont();
  }
}

void FrmConvert::Form_Unload() {
  converter_ = Converter();
  for (const auto& [field, edit] : edits_) {
    edit->setText(QString());
  }
  EditOf(Field::TextRfps)->setFocus();
}

}  // namespace kelvara::convert
