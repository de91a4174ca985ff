#include "survey/FrmSurvey.h"

#include <QAction>
#include <QPointer>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>

#include "base/Fault.h"
#include "base/NumberReading.h"
#include "platform/EventHandler.h"
#include "platform/qt/Text.h"
#include "platform/widgets/DialogControls.h"
#include "platform/widgets/DialogManners.h"
#include "report/CableLengths.h"
#include "survey/Survey.h"
#include "survey/SurveyRows.h"
#include "survey/SurveyWords.h"

namespace kelvara::survey {
namespace {

constexpr double kMostMetres = 1e6;
/// The length in metres that a field holds, an empty one none; no value if it is not a number.
std::optional<double> LengthIn(const QString& text) {
  if (text.trimmed().isEmpty()) {
    return 0.0;
  }
  try {
    const double metres = base::ReadWholeNumber(qt::ToText(text));
    return std::abs(metres) <= kMostMetres ? std::optional(metres) : std::nullopt;
  } catch (const base::Fault&) {
    return std::nullopt;
  }
}

}  // namespace

FrmSurvey::FrmSurvey(app::Session& results, const platform::Desktop& desktop, QWidget* parent)
    : QDialog(parent), results_(results), desktop_(desktop), commands_(desktop) {
  setObjectName(QStringLiteral("FrmSurvey"));
  setWindowTitle(QStringLiteral("Survey"));
  setWindowFlag(Qt::WindowMinMaxButtonsHint);
  SurveyTimer_ = new QTimer(this);
  SurveyTimer_->setObjectName(QStringLiteral("SurveyTimer"));
  SurveyTimer_->setSingleShot(true);
  connect(SurveyTimer_, &QTimer::timeout, this,
          [this] { platform::HandleEvent(desktop_.beeper, [this] { Follow(); }); });
  MakeControls();
  LayOut();
}

void FrmSurvey::Open() {  // NOLINT(bugprone-virtual-near-miss): not modal
  SurveyTimer_->stop();
  stale_ = true;
  Follow();
  widgets::ShowInFront(*this);
}

void FrmSurvey::ResultsChanged() {
  stale_ = true;
  OptionsChanged();
}

void FrmSurvey::OptionsChanged() {
  if (isVisible()) {
    SurveyTimer_->start(0);
  }
}

void FrmSurvey::Follow() {
  if (stale_) {
    MakeSurvey();
  }
  ShowSurvey();
}

void FrmSurvey::MakeSurvey() {
  const sync::SyncModel& model = results_.Model();
  SurveyOptions options;
  options.reportMetres = report::ReportedMetres(model);
  if (reference_) {
    options.reference = AntennaWithRpn(model, *reference_);
    options.referenceMetres = referenceMetres_;
    if (!options.reference) {
      reference_.reset();
    }
  }
  survey_ = survey::MakeSurvey(model, options);
  stale_ = false;
  ++surveyCount_;
}

void FrmSurvey::ShowSurvey() {
  const sync::DisplayOptions& options = results_.Options();
  ShowReferences();
  const bool lengthGiven = reference_ && !TxtReferenceLength_->text().trimmed().isEmpty();
  Label4_->setText(qt::ToQString(SummaryWords(survey_, lengthGiven, options)));
  const std::vector<DelayChange> changes = Changes();
  SurveyTable_->ShowRows(AntennaRows(survey_, changes, options));
  SurveyNetwork_->ShowNetwork(survey_, options);
  SurveyNext_->setText(qt::ToQString(NextWords(survey_, options)));
  Label8_->setVisible(earlier_.has_value());
  if (earlier_) {
    Label8_->setText(QString::fromStdString(ChangeWords(changes, earlier_->name, options)));
  }
  if (SurveyTable_->ChosenId() < 0 && !survey_.antennas.empty()) {
    SurveyTable_->Choose(survey_.antennas.front().rpn);
  } else {
    ShowPairs();
  }
}

void FrmSurvey::ShowPairs() {
  const auto chosen = std::find_if(
      survey_.antennas.begin(), survey_.antennas.end(),
      [this](const SurveyAntenna& each) { return each.rpn == SurveyTable_->ChosenId(); });
  const int antenna =
      chosen == survey_.antennas.end() ? -1 : static_cast<int>(chosen - survey_.antennas.begin());
  const sync::DisplayOptions& options = results_.Options();
  SurveyNetwork_->SetChosen(antenna);
  QString caption = QStringLiteral("&Pairs");
  if (antenna >= 0) {
    caption += qt::ToQString(" of antenna " + options.RpnText(chosen->rpn));
  }
  Label7_->setText(caption + u':');
  if (paged_) {
    SurveyPages_->setTabText(SurveyPages_->indexOf(pairsPart_), caption);
  }
  SurveyPairs_->setAccessibleName(caption.remove(u'&'));
  SurveyPairs_->ShowRows(antenna < 0 ? std::vector<SurveyRow>()
                                     : PairRows(survey_, results_.Model(), antenna, options));
}

void FrmSurvey::ShowReferences() {
  const sync::DisplayOptions& options = results_.Options();
  std::vector<std::int16_t> rpns;
  for (const SurveyAntenna& antenna : survey_.antennas) {
    rpns.push_back(antenna.rpn);
  }
  std::sort(rpns.begin(), rpns.end());
  const QSignalBlocker quiet(ComboReference_);
  const int count = static_cast<int>(rpns.size());
  while (ComboReference_->count() > count + 1) {
    ComboReference_->removeItem(ComboReference_->count() - 1);
  }
  for (int index = 0; index < count; ++index) {
    const std::int16_t rpn = rpns[static_cast<std::size_t>(index)];
    const QString text = qt::ToQString(options.RpnText(rpn));
    if (index + 1 == ComboReference_->count()) {
      ComboReference_->addItem(text, rpn);
    } else if (ComboReference_->itemText(index + 1) != text ||
               ComboReference_->itemData(index + 1).toInt() != rpn) {
      ComboReference_->setItemText(index + 1, text);
      ComboReference_->setItemData(index + 1, rpn);
    }
  }
  ComboReference_->setCurrentIndex(ComboReference_->findData(reference_.value_or(kShortest)));
  for (QWidget* const control :
       {static_cast<QWidget*>(Label2_), static_cast<QWidget*>(TxtReferenceLength_),
        static_cast<QWidget*>(Label3_)}) {
    control->setEnabled(reference_.has_value());
  }
}

void FrmSurvey::ComboReference_Change() {
  const int rpn = ComboReference_->currentData().toInt();
  reference_ = rpn == kShortest ? std::nullopt : std::optional(rpn);
  ResultsChanged();
}

void FrmSurvey::TxtReferenceLength_Change() {
  const std::optional<double> metres = LengthIn(TxtReferenceLength_->text());
  wrongLength_->setVisible(!metres.has_value());
  TxtReferenceLength_->setProperty("valid", metres.has_value());
  TxtReferenceLength_->setAccessibleDescription(metres ? QString() : wrongLength_->toolTip());
  if (metres) {
    referenceMetres_ = *metres;
    ResultsChanged();
  }
}

void FrmSurvey::CmdSaveSurvey_Click() {
  // The program may end, and destroy the window, while a question is open.
  const QPointer<FrmSurvey> self(this);
  platform::HandleEvent(desktop_.beeper, [&] {
    const std::optional<std::string> path = commands_.ChooseWhereToSave();
    if (self && path) {
      // The results may have changed while the chooser was open.
      stale_ = true;
      Follow();
      commands_.Save(*path, results_.Model(), survey_, earlier_ ? &*earlier_ : nullptr, Changes());
    }
  });
}

void FrmSurvey::CmdCompare_Click() {
  const QPointer<FrmSurvey> self(this);
  platform::HandleEvent(desktop_.beeper, [&] {
    std::optional<EarlierSurvey> earlier = commands_.ReadEarlier();
    if (!self || !earlier) {
      return;
    }
    if (CompareSurveys(earlier->survey, survey_).empty()) {
      commands_.RefuseEarlier(*earlier);
      return;
    }
    earlier_ = std::move(earlier);
    SurveyTable_->setColumnHidden(kChangeColumn, false);
    ShowSurvey();
    SurveyTable_->FitColumns();
  });
}

std::vector<DelayChange> FrmSurvey::Changes() const {
  return earlier_ ? CompareSurveys(earlier_->survey, survey_) : std::vector<DelayChange>();
}

}  // namespace kelvara::survey
