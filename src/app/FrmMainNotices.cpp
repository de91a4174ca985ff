#include <QVBoxLayout>

#include "app/FrmMain.h"
#include "app/NoticeBar.h"
#include "platform/EventHandler.h"
#include "platform/qt/PathText.h"
#include "survey/FrmSurvey.h"

namespace kelvara::app {

void FrmMain::BuildClient() {
  // The bar is outside the client area, whose layout is in twips.
  auto* const central = new QWidget(this);
  setCentralWidget(central);
  noticeBar_ = new NoticeBar(central);
  client_ = new QWidget(central);
  client_->installEventFilter(this);
  auto* const column = new QVBoxLayout(central);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(noticeBar_);
  column->addWidget(client_, 1);
}

void FrmMain::BuildNotices() {
  notices_ = std::make_unique<app::Notices>(*live_, desktop_);
  notices_->SetShow(
      [this](const Notice* notice, bool isNew) { noticeBar_->ShowNotice(notice, isNew); });
  noticeBar_->SetActed(
      [this] { platform::HandleEvent(desktop_.beeper, [this] { notices_->Act(); }); });
  noticeBar_->SetClosed([this] { notices_->Close(); });
}

void FrmMain::SetDemo() {
  notices_->NoteDemo();
  reportDialog_->SetDemo();
}

void FrmMain::ShowResultsChange() {
  if (survey_ != nullptr) {
    survey_->ResultsChanged();
  }
  notices_->Update();
  ShowJournalFailure();
}

void FrmMain::ShowJournalFailure() {
  const std::string reason = live_->JournalFailure();
  if (reason.empty() || isJournalFailureShown_) {
    return;
  }
  isJournalFailureShown_ = true;
  sessionsMenu_->ShowJournalFailure(qt::MessageText(reason));
  if (journalFailed_) {
    journalFailed_(reason);
  }
}

}  // namespace kelvara::app
