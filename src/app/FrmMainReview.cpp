#include <QLayout>
#include <utility>

#include "app/FrmMain.h"
#include "base/Fault.h"
#include "help/ProgramTitle.h"
#include "platform/qt/PathText.h"
#include "platform/qt/Text.h"
#include "survey/FrmSurvey.h"

namespace kelvara::app {
namespace {

/// How long the session is read before other events run.
constexpr int kReadMilliseconds = 20;

/// The most characters of a file's name that the status bar shows.
constexpr qsizetype kMostNameCharacters = 40;

/// The name of a file without its folder.
QString FileName(const std::string& path) {
  const QString name = qt::MessageText(path).replace(u'\\', u'/');
  return name.mid(name.lastIndexOf(u'/') + 1);
}

/// A name that fits into the status bar: of a longer one, its beginning and its end.
QString Shortened(const QString& name) {
  constexpr qsizetype kHalf = kMostNameCharacters / 2;
  return name.size() <= kMostNameCharacters
             ? name
             : name.left(kHalf) + QStringLiteral("...") + name.right(kHalf);
}

/// What belongs to a live session.
constexpr const char* kLiveCommands[] = {"mnuComPort",          "mnuClearGrid",   "mnuForceSearch",
                                         "mnuCaptureDataStart", "mnuCaptureData", "mnuClearLog",
                                         "mnuViewDebug"};

}  // namespace

void FrmMain::OpenReview(std::unique_ptr<sessions::ReviewedSession> recorded,
                         const std::string& path, std::function<void()> failed) {
  recorded_ = std::move(recorded);
  reviewName_ = path;
  reviewFailed_ = std::move(failed);
  review_ = std::make_unique<Review>(*recorded_, live_->Results(), *TextLog_, desktop_,
                                     [this] { ShowReview(); });
  StatusBar1_->SetPanel(StatusPanel::Link, "Review: " + qt::ToText(Shortened(FileName(path))));
  StatusBar1_->findChild<QLabel*>(QStringLiteral("Panel1"))->setToolTip(qt::MessageText(path));
  Grid_->SetEmptyText(QStringLiteral("The session is being read."));
  DisableForReview();
  BuildReviewBar();
  live_->Display().GetDisplaySettings();
  Form_Resize();
  reviewTimer_.SetTick([this] { ReadReview(); });
  reviewTimer_.SwitchOn();
}

void FrmMain::DisableForReview() {
  for (const char* const name : kLiveCommands) {
    menu_->Entry(name).setEnabled(false);
  }
}

void FrmMain::BuildReviewBar() {
  reviewBar_ = new ReviewBar(centralWidget());
  centralWidget()->layout()->addWidget(reviewBar_);
  connect(reviewBar_, &ReviewBar::Moved, this, &FrmMain::MoveReviewTo);
  connect(reviewBar_, &ReviewBar::Cancelled, this, &FrmMain::close);
}

void FrmMain::ReadReview() {
  bool reads = false;
  try {
    reads = review_->ReadFor(kReadMilliseconds);
    if (!reads && recorded_->Antennas() == 0) {
      throw base::Fault(base::FaultKind::File,
                        "\"" + reviewName_ + "\" holds no report of an antenna");
    }
  } catch (const base::Fault& fault) {
    reviewTimer_.SwitchOff();
    ShowReviewFault(fault.what());
    if (!isUnloaded_) {
      reviewFailed_();
    }
    return;
  }
  reviewBar_->ShowProgress(review_->PercentRead());
  if (!reads) {
    reviewTimer_.SwitchOff();
    Grid_->SetEmptyText(QStringLiteral("No results yet.\nMove the slider through the session."));
    reviewBar_->ShowSlider(review_->Reports());
    MoveReviewTo(review_->Reports());
  }
}

void FrmMain::ShowReviewFault(const std::string& text) {
  desktop_.messageBoxes.Show(text, help::kProgramTitle, platform::MessageIcon::Critical,
                             platform::MessageButtons::Ok);
}

void FrmMain::MoveReviewTo(int report) {
  try {
    review_->MoveTo(report);
  } catch (const base::Fault& fault) {
    ShowReview();
    ShowReviewFaultLater(fault.what());
  }
}

void FrmMain::ShowReviewFaultLater(const std::string& text) {
  if (isUnloaded_ || showsReviewFault_) {
    return;
  }
  showsReviewFault_ = true;
  // Only after the press of a mouse button or key that moved the slider has been handled. Its
  // release goes to the message box, so the bar would keep repeating it.
  const auto show = [this, text] {
    reviewBar_->StopRepeating();
    ShowReviewFault(text);
    showsReviewFault_ = false;
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void FrmMain::RedrawReview() {
  if (!IsReview() || reviewTimer_.IsOn()) {
    return;
  }
  // An option is set in several steps; only the last is worth a redraw.
  reviewTimer_.SetTick([this] {
    reviewTimer_.SwitchOff();
    MoveReviewTo(review_->Report());
  });
  reviewTimer_.SwitchOn();
}

void FrmMain::ShowReview() {
  if (isUnloaded_) {
    return;
  }
  reviewBar_->ShowReport(review_->Report(), qt::ToQString(review_->TimeText()));
  if (survey_ != nullptr) {
    survey_->ResultsChanged();
  }
}

}  // namespace kelvara::app
