#include <QAction>
#include <QEvent>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"
#include "survey/FrmSurvey.h"
#include "survey/StatusSign.h"
#include "survey/SurveyRows.h"

namespace kelvara::survey {
namespace {

constexpr int kLengthCharacters = 10;
constexpr QSize kStartSize(1180, 680);
constexpr int kSmallestTableLines = 4;

/// With fewer lines of text than this, the window shows pages.
constexpr int kLinesWithoutPages = 32;

QLabel* NewSentence(QWidget& dialog, const char* name) {
  QLabel* const label = widgets::NewLabel(dialog, name, "");
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  return label;
}

QWidget* Column(QWidget* parent, QLabel* label, QWidget* control) {
  auto* const column = new QWidget(parent);
  column->setObjectName(control->objectName() + QStringLiteral("Column"));
  auto* const layout = new QVBoxLayout(column);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(label);
  layout->addWidget(control, 1);
  label->setBuddy(control);
  return column;
}

}  // namespace

void FrmSurvey::MakeControls() {
  Label1_ = widgets::NewLabel(*this, "Label1", "Lengths count &from:");
  ComboReference_ = new QComboBox(this);
  widgets::NameControl(*ComboReference_, "ComboReference", "Lengths count from",
                       "The antenna that lengths count from.");
  ComboReference_->addItem(QStringLiteral("shortest antenna"), kShortest);
  Label1_->setBuddy(ComboReference_);
  Label2_ = widgets::NewLabel(*this, "Label2", "which has a &length of");
  TxtReferenceLength_ =
      widgets::NewTextBox(*this, "TxtReferenceLength", "Known length of the reference in metres",
                          "Known length of the reference. A wrong one shifts all lengths.");
  Label2_->setBuddy(TxtReferenceLength_);
  Label2_->setEnabled(false);
  TxtReferenceLength_->setEnabled(false);
  wrongLength_ = TxtReferenceLength_->addAction(StatusSign(AntennaStatus::Suspect),
                                                QLineEdit::TrailingPosition);
  wrongLength_->setToolTip(QStringLiteral("This is not a length; the last valid one is used."));
  wrongLength_->setVisible(false);
  Label3_ = widgets::NewLabel(*this, "Label3", "metres");
  Label3_->setEnabled(false);
  Label4_ = NewSentence(*this, "Label4");

  Label5_ = widgets::NewLabel(*this, "Label5", "&Antennas:");
  SurveyTable_ = new SurveyTableView(AntennaColumns(), this);
  widgets::NameControl(*SurveyTable_, "SurveyTable", "Antennas", "");
  SurveyTable_->setAccessibleDescription(
      QStringLiteral("Every antenna with its length, its standard error and its status."));
  SurveyTable_->setColumnHidden(kChangeColumn, true);
  Label6_ = widgets::NewLabel(*this, "Label6", "&Network:");
  SurveyNetwork_ = new SurveyNetworkView(this);
  widgets::NameControl(*SurveyNetwork_, "SurveyNetwork", "Picture of the network",
                       "Wider lines have more readings. The underlined antenna is the reference.");
  Label7_ = widgets::NewLabel(*this, "Label7", "&Pairs:");
  SurveyPairs_ = new SurveyTableView(PairColumns(), this);
  widgets::NameControl(*SurveyPairs_, "SurveyPairs", "Pairs of the chosen antenna", "");
  SurveyNext_ = NewSentence(*this, "SurveyNext");
  SurveyNext_->setAccessibleDescription(QStringLiteral("Where to stand next, and why"));
  Label8_ = NewSentence(*this, "Label8");
  Label8_->hide();

  CmdSaveSurvey_ = widgets::NewButton(*this, "CmdSaveSurvey", "&Save Survey...",
                                      "Save the survey as an HTML file.");
  CmdCompare_ = widgets::NewButton(*this, "CmdCompare", "C&ompare...",
                                   "Show which antennas changed since an earlier session.");
  CmdClose_ = widgets::NewButton(*this, "CmdClose", "&Close", "Close the window.");

  connect(ComboReference_, &QComboBox::currentIndexChanged, this,
          &FrmSurvey::ComboReference_Change);
  connect(TxtReferenceLength_, &QLineEdit::textChanged, this,
          &FrmSurvey::TxtReferenceLength_Change);
  connect(SurveyTable_, &SurveyTableView::Chosen, this, &FrmSurvey::ShowPairs);
  connect(SurveyNetwork_, &SurveyNetworkView::Chosen, this,
          [this](int antenna) { SurveyTable_->Choose(survey_.Antenna(antenna).rpn); });
  connect(CmdSaveSurvey_, &QPushButton::clicked, this, &FrmSurvey::CmdSaveSurvey_Click);
  connect(CmdCompare_, &QPushButton::clicked, this, &FrmSurvey::CmdCompare_Click);
  connect(CmdClose_, &QPushButton::clicked, this, &QDialog::close);
}

void FrmSurvey::LayOut() {
  auto* const datum = new QHBoxLayout;
  datum->addWidget(Label1_);
  datum->addWidget(ComboReference_);
  datum->addWidget(Label2_);
  datum->addWidget(TxtReferenceLength_);
  datum->addWidget(Label3_);
  datum->addStretch();

  sides_ = new QSplitter(Qt::Horizontal, this);
  sides_->setObjectName(QStringLiteral("SidesSplitter"));
  right_ = new QSplitter(Qt::Vertical, sides_);
  right_->setObjectName(QStringLiteral("RightSplitter"));
  tablePart_ = Column(sides_, Label5_, SurveyTable_);
  networkPart_ = Column(right_, Label6_, SurveyNetwork_);
  pairsPart_ = Column(right_, Label7_, SurveyPairs_);
  sides_->addWidget(tablePart_);
  sides_->addWidget(right_);
  right_->addWidget(networkPart_);
  right_->addWidget(pairsPart_);
  DivideSpace();
  SurveyPages_ = new QTabWidget(this);
  SurveyPages_->setObjectName(QStringLiteral("SurveyPages"));
  SurveyPages_->setDocumentMode(true);
  SurveyPages_->hide();

  auto* const buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(CmdSaveSurvey_);
  buttons->addWidget(CmdCompare_);
  buttons->addWidget(CmdClose_);

  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(datum);
  layout->addWidget(Label4_);
  layout->addWidget(sides_, 1);
  layout->addWidget(SurveyPages_, 1);
  layout->addWidget(SurveyNext_);
  layout->addWidget(Label8_);
  layout->addLayout(buttons);
  SurveyTable_->setFocus();
  FitToFont();
  resize(kStartSize.boundedTo(screen()->availableSize() * 0.94));
}

void FrmSurvey::FitToFont() {
  TxtReferenceLength_->setMaximumWidth(
      widgets::WidthOf(*TxtReferenceLength_, kLengthCharacters + 4));
  const int least = widgets::HeightOf(*SurveyTable_, kSmallestTableLines);
  SurveyTable_->setMinimumHeight(least);
  SurveyPairs_->setMinimumHeight(least);
}

void FrmSurvey::DivideSpace() {
  for (QSplitter* const splitter : {sides_, right_}) {
    splitter->setSizes({kStartSize.width() * 3 / 5, kStartSize.width() * 2 / 5});
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
  }
}

void FrmSurvey::SetPaged(bool paged) {
  if (paged == paged_) {
    return;
  }
  paged_ = paged;
  const QWidget* const focus = focusWidget();
  if (paged) {
    SurveyPages_->addTab(tablePart_, Label5_->text().remove(u':'));
    SurveyPages_->addTab(networkPart_, Label6_->text().remove(u':'));
    SurveyPages_->addTab(pairsPart_, Label7_->text().remove(u':'));
    SurveyPages_->setCurrentWidget(focus == SurveyNetwork_ ? networkPart_
                                   : focus == SurveyPairs_ ? pairsPart_
                                                           : tablePart_);
  } else {
    sides_->insertWidget(0, tablePart_);
    right_->insertWidget(0, networkPart_);
    right_->insertWidget(1, pairsPart_);
    for (QWidget* const part : {tablePart_, networkPart_, pairsPart_}) {
      part->show();
    }
  }
  for (QLabel* const label : {Label5_, Label6_, Label7_}) {
    label->setVisible(!paged);
  }
  if (!paged) {
    DivideSpace();
  }
  sides_->setVisible(!paged);
  SurveyPages_->setVisible(paged);
}

void FrmSurvey::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  SetPaged(height() < widgets::HeightOf(*this, kLinesWithoutPages));
}

void FrmSurvey::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) {
    FitToFont();
  }
}

}  // namespace kelvara::survey
