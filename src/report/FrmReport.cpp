#include "report/FrmReport.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPointer>
#include <QTextDocument>

#include "platform/EventHandler.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"

namespace kelvara::report {
namespace {

constexpr int kFileNameCharacters = 44;
constexpr int kNotesLines = 7;

/// The unchanged text of a multi-line box, its lines separated by CR LF.
std::string TextOf(const QPlainTextEdit& box) {
  QString text = box.document()->toRawText();
  for (const QChar lineEnd : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)}) {
    text.replace(lineEnd, QStringLiteral("\r\n"));
  }
  return qt::ToText(text);
}

bool IsControlEnter(const QKeyEvent& event) {
  return (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) &&
         (event.modifiers() & ~Qt::KeypadModifier) == Qt::ControlModifier;
}

}  // namespace

FrmReport::FrmReport(ReportDialog& reportDialog, platform::Beeper& beeper, QWidget* parent)
    : QDialog(parent), reportDialog_(reportDialog), beeper_(beeper) {
  setObjectName(QStringLiteral("FrmReport"));
  setWindowTitle(QStringLiteral("Generate Reoprt"));
  setModal(true);
  MakeControls();
  LayOut();
  platform::HandleEvent(beeper_, [this] { Form_Load(); });
}

void FrmReport::MakeControls() {
  TxtFileName_ =
      widgets::NewTextBox(*this, "TxtFileName", "File", "Name and path of file to be generated.");
  CommandBrowse_ = widgets::NewButton(*this, "CommandBrowse", "&Browse...", "Browse for file.");
  TxtSite_ = widgets::NewTextBox(*this, "TxtSite", "Site", "Name of customer and site location.");
  TxtTester_ =
      widgets::NewTextBox(*this, "TxtTester", "Tester",
                          "Name of person carrying out the DECT Synchronisation procedure.");
  TxtNotes_ = new QPlainTextEdit(this);
  widgets::NameControl(*TxtNotes_, "TxtNotes", "Notes", "Miscellaneous notes.");
  TxtNotes_->setTabChangesFocus(true);
  const QString lineBreakHint = QStringLiteral("Ctrl+Enter starts a new line.");
  TxtNotes_->setPlaceholderText(lineBreakHint);
  TxtNotes_->setAccessibleDescription(lineBreakHint);
  CheckOpenReport_ = new QCheckBox(QStringLiteral("Show Report"), this);
  CheckOpenReport_->setObjectName(QStringLiteral("CheckOpenReport"));
  CheckOpenReport_->setChecked(ReportFields().showReport);
  CommandGenerate_ =
      widgets::NewButton(*this, "CommandGenerate", "&Generate Report", "Generate report.");
  CommandCancel_ = widgets::NewButton(*this, "CommandCancel", "&Cancel",
                                      "Close window without generating report.");

  for (QWidget* const box : {static_cast<QWidget*>(TxtFileName_), static_cast<QWidget*>(TxtSite_),
                             static_cast<QWidget*>(TxtTester_), static_cast<QWidget*>(TxtNotes_)}) {
    box->installEventFilter(this);
  }
  connect(CommandBrowse_, &QPushButton::clicked, this, &FrmReport::CommandBrowse_Click);
  connect(CommandGenerate_, &QPushButton::clicked, this, &FrmReport::CommandGenerate_Click);
  connect(CommandCancel_, &QPushButton::clicked, this, &FrmReport::CommandCancel_Click);
}

void FrmReport::LayOut() {
  auto* const grid = new QGridLayout;
  grid->addWidget(widgets::NewLabel(*this, "Label1", "File:"), 0, 0);
  grid->addWidget(TxtFileName_, 0, 1);
  grid->addWidget(CommandBrowse_, 0, 2);
  grid->addWidget(widgets::NewLabel(*this, "Label2", "Site:"), 1, 0);
  grid->addWidget(TxtSite_, 1, 1, 1, 2);
  grid->addWidget(widgets::NewLabel(*this, "Label3", "Tester:"), 2, 0);
  grid->addWidget(TxtTester_, 2, 1, 1, 2);
  grid->addWidget(widgets::NewLabel(*this, "Label4", "Notes:"), 3, 0, Qt::AlignTop);
  grid->addWidget(TxtNotes_, 3, 1, 1, 2);
  grid->addWidget(CheckOpenReport_, 4, 1, 1, 2);
  grid->setRowStretch(3, 1);

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(CommandGenerate_);
  buttons->addWidget(CommandCancel_);
  auto* const column = new QVBoxLayout(this);
  column->addLayout(grid);
  column->addLayout(buttons);
  FitToFont();
}

void FrmReport::FitToFont() {
  TxtFileName_->setMinimumWidth(widgets::WidthOf(*TxtFileName_, kFileNameCharacters));
  TxtNotes_->setMinimumHeight(widgets::HeightOf(*TxtNotes_, kNotesLines));
}

void FrmReport::Form_Load() {
  ReportFields fields = Fields();
  TxtFileName_->setText(qt::QStringFromPath(reportDialog_.Form_Load(fields)));
  TxtSite_->setText(qt::ToFieldText(fields.site));
  TxtTester_->setText(qt::ToFieldText(fields.tester));
  CheckOpenReport_->setChecked(fields.showReport);
  TxtNotes_->setPlainText(qt::ToFieldText(fields.notes));
}

ReportFields FrmReport::Fields() const {
  return {qt::ToText(TxtSite_->text()), qt::ToText(TxtTester_->text()),
          CheckOpenReport_->isChecked(), TextOf(*TxtNotes_)};
}

void FrmReport::CommandBrowse_Click() {
  // The program may end, and destroy the window, while a question is open.
  const QPointer<FrmReport> self(this);
  platform::HandleEvent(beeper_, [&] {
    const std::optional<std::string> chosen = reportDialog_.CommandBrowse_Click();
    if (self && chosen) {
      TxtFileName_->setText(qt::QStringFromPath(*chosen));
    }
  });
}

void FrmReport::CommandGenerate_Click() {
  const QPointer<FrmReport> self(this);
  platform::HandleEvent(beeper_, [&] {
    if (reportDialog_.CommandGenerate_Click(qt::PathFromQString(TxtFileName_->text()), Fields()) &&
        self) {
      accept();
    }
  });
}

void FrmReport::CommandCancel_Click() { reject(); }

bool FrmReport::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && watched == TxtNotes_ &&
      IsControlEnter(*static_cast<QKeyEvent*>(event))) {
    TxtNotes_->insertPlainText(QStringLiteral("\n"));
    return true;
  }
  if (event->type() == QEvent::KeyPress && widgets::IsEnter(*static_cast<QKeyEvent*>(event))) {
    const QPointer<FrmReport> self(this);
    CommandGenerate_Click();
    if (!self) {
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void FrmReport::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    FitToFont();
  }
}

}  // namespace kelvara::report
